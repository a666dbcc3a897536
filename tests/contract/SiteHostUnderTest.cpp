#include "hostapp/core/Coder.h"
#include "hostapp/core/Converter.h"
#include "hostapp/core/HostBundle.h"
#include "hostapp/core/QuickRanges.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/window/MessageOverlay.h"
#include "records/store/RecordStore.h"
#include "tests/contract/HostUnderTest.h"

#include <QtCore/QTemporaryDir>

#include <cmath>

namespace contract {
namespace {

/// The stand-alone host with a document of its own in a folder that goes away with it.
class SiteHostUnderTest : public HostUnderTest {
public:
    SiteHostUnderTest()
        : m_document(plotix::SiteDocument::create(m_folder.filePath(QStringLiteral("contract.plotix")))),
          m_agent(m_document->addAgent(QStringLiteral("Meadow"))),
          m_quickRanges(setting(true)),
          m_quickRangesWithoutRecords(setting(false))
    {
        m_agent->addProperty(QStringLiteral("Air Temperature"), QStringLiteral("degC"));
        m_agent->addProperty(QStringLiteral("Pressure"), QStringLiteral("hPa"));
        storeRecords();
    }

    KTVAgentPtr agent() override { return m_agent; }
    void setColor(const QString& propertyName, const QColor& color) override
    {
        for (const auto& property : m_agent->siteProperties())
            if (property->propertyName() == propertyName)
                property->setColor(color);
    }
    void archive(const std::function<void(KTVEncoder&)>& write, const std::function<void(KTVDecoder&)>& read) override
    {
        plotix::Encoder encoder(m_agent->uniqueIdentifier());
        write(encoder);
        const auto agentOf = [this](const QString& identifier) -> KTVAgentPtr {
            return m_document->agentWithIdentifier(identifier);
        };
        plotix::Decoder decoder(encoder.data(), {agentOf, nullptr});
        read(decoder);
    }
    std::unique_ptr<KTVMessageViewController> makeMessageViewController() override
    {
        return std::make_unique<plotix::MessageOverlay>();
    }
    const KTVNaturalLanguageDateCreator& quickRanges() override { return m_quickRanges; }
    const KTVNaturalLanguageDateCreator& quickRangesWithoutRecords() override { return m_quickRangesWithoutRecords; }
    const KTVConverter& converter() override { return m_converter; }
    const KTVBundle& bundle() override { return m_bundle; }

private:
    using AllTime = std::optional<std::pair<plotix::Date, plotix::Date>>;

    static plotix::QuickRanges::Setting setting(bool withRecords)
    {
        plotix::QuickRanges::Setting made;
        made.zone = QTimeZone::utc();
        made.allTime = [withRecords]() -> AllTime {
            if (!withRecords)
                return std::nullopt;
            return std::pair(plotix::Date{kTimes.front()}, plotix::Date{kTimes.back()});
        };
        return made;
    }

    static plotix::RecordBlock::Column column(const plotix::SiteProperty& property, std::span<const double> values)
    {
        std::uint64_t valid = 0;
        for (std::size_t index = 0; index < values.size(); ++index)
            if (!std::isnan(values[index]))
                valid |= std::uint64_t{1} << index;
        return {property.description().id, plotix::SharedArray<double>::fromVector({values.begin(), values.end()}),
                plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector({valid}))};
    }

    void storeRecords()
    {
        const auto& properties = m_agent->siteProperties();
        plotix::RecordBlock block;
        block.times = plotix::SharedArray<double>::fromVector({kTimes.begin(), kTimes.end()});
        block.columns = {column(*properties[0], kTemperatures), column(*properties[1], kPressures)};
        const auto writer = m_document->records()->begin();
        writer->store(m_agent->id(), block);
        writer->commit();
    }

    QTemporaryDir m_folder;
    std::shared_ptr<plotix::SiteDocument> m_document;
    std::shared_ptr<plotix::SiteAgent> m_agent;
    plotix::QuickRanges m_quickRanges, m_quickRangesWithoutRecords;
    plotix::Converter m_converter;
    plotix::HostBundle m_bundle;
};

}  // namespace

std::unique_ptr<HostUnderTest> makeSiteHost()
{
    return std::make_unique<SiteHostUnderTest>();
}

}  // namespace contract
