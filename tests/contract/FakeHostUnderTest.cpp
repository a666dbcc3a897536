#include "tests/contract/HostUnderTest.h"
#include "tests/support/fakehost/FakeHost.h"

namespace contract {
namespace {

class FakeHostUnderTest : public HostUnderTest {
public:
    FakeHostUnderTest()
    {
        m_host.addProperty(QStringLiteral("Air Temperature"), QStringLiteral("degC"));
        m_host.addProperty(QStringLiteral("Pressure"), QStringLiteral("hPa"));
        auto records = m_host.records();
        for (std::size_t index = 0; index < kTimes.size(); ++index)
            records.at(kTimes[index])
                .value(QStringLiteral("airTemperature"), kTemperatures[index])
                .value(QStringLiteral("pressure"), kPressures[index]);
        m_host.serve(records, fakehost::FakeArchiveManager::Where::OnWorkerThread);
        m_host.dateCreator().setRange(KTVQuickRange::AllTime, plotix::Date{kTimes.front()},
                                      plotix::Date{kTimes.back()});
    }

    KTVAgentPtr agent() override { return m_host.agent(); }
    void setColor(const QString& propertyName, const QColor& color) override
    {
        m_host.agent()->property(propertyName)->setColor(color);
    }
    void archive(const std::function<void(KTVEncoder&)>& write, const std::function<void(KTVDecoder&)>& read) override
    {
        fakehost::FakeArchive archive;
        fakehost::FakeEncoder encoder(archive);
        write(encoder);
        auto decoder = m_host.decoder(archive);
        read(decoder);
    }
    std::unique_ptr<KTVMessageViewController> makeMessageViewController() override
    {
        return KTVMessageViewController::create();
    }
    const KTVNaturalLanguageDateCreator& quickRanges() override { return m_host.dateCreator(); }
    const KTVNaturalLanguageDateCreator& quickRangesWithoutRecords() override
    {
        m_host.dateCreator().refuse(KTVQuickRange::AllTime);
        return m_host.dateCreator();
    }
    const KTVConverter& converter() override { return *KTVHostServices::installed().converter; }
    const KTVBundle& bundle() override { return m_host.bundle(); }

private:
    fakehost::FakeHost m_host;
};

}  // namespace

std::unique_ptr<HostUnderTest> makeFakeHost()
{
    return std::make_unique<FakeHostUnderTest>();
}

}  // namespace contract
