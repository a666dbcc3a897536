#include "hostapp/document/SiteAgent.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/AgentAnnotations.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/document/SiteDocument.h"
#include "records/store/RecordStore.h"

#include <algorithm>
#include <array>

namespace plotix {

namespace {

/// The clocks of an agent's site. The agent *owns* it.
class AgentClock : public KTVSiteClock {
public:
    explicit AgentClock(const SiteAgent& agent) : m_agent(agent) {}
    QTimeZone zone() const override { return m_agent.document() ? m_agent.document()->zone() : QTimeZone(); }

private:
    const SiteAgent& m_agent;
};

}  // namespace

SiteAgent::SiteAgent(SiteDocument* document, qint64 id, QString uniqueIdentifier, QString name)
    : m_document(document), m_id(id), m_uniqueIdentifier(std::move(uniqueIdentifier)), m_name(std::move(name))
{
    m_archiveManager = std::make_unique<ArchiveManager>(
        document->records(), id, [this] { return properties().objects(); }, Units::shared());
    m_annotations = std::make_unique<AgentAnnotations>(*this);
    m_siteClock = std::make_unique<AgentClock>(*this);
    connect(document, &SiteDocument::siteChanged, m_siteClock.get(), &KTVSiteClock::changed);
    connect(document, &SiteDocument::annotationsChanged, m_annotations.get(), &KTVAnnotations::changed);
    connect(m_archiveManager.get(), &ArchiveManager::fetchFailed, this,
            [this](const QString& message, RecordFailure failure) {
                if (m_document)
                    emit m_document->recordsNotRead(message, failure);
            });
}

SiteAgent::~SiteAgent() = default;

std::shared_ptr<SiteProperty> SiteAgent::addProperty(const QString& name, const QString& unit, std::uint32_t type)
{
    if (!m_document)
        throw ReportableError(QStringLiteral("The site of “%1” is closed: open it again.").arg(m_name));
    return m_document->addPropertyTo(*this, name, unit, type);
}

KTVPropertyCollection SiteAgent::properties() const
{
    return KTVPropertyCollection(KTVPropertyList(m_properties.begin(), m_properties.end()));
}

KTVArchiveManager* SiteAgent::archiveManager() const
{
    return m_archiveManager.get();
}

// A trend goes without what cannot be read: its records cannot be either, and say why.
std::vector<KTVAmendment> SiteAgent::amendmentsOf(const QString& propertyName, double from, double to) const
{
    std::vector<KTVAmendment> told;
    for (const auto& property : m_properties) {
        if (!m_document || property->propertyName() != propertyName)
            continue;
        try {
            for (const Amendment& each :
                 m_document->records()->amendments(m_id, std::array{property->description().id}, from, to))
                told.push_back(
                    {each.kind == Amendment::Kind::Late ? KTVAmendment::Kind::Late : KTVAmendment::Kind::Corrected,
                     each.from, each.to, each.first, each.last});
        } catch (const ReportableError&) {
            return {};
        }
    }
    std::stable_sort(told.begin(), told.end(),
                     [](const KTVAmendment& one, const KTVAmendment& other) { return one.from < other.from; });
    return told;
}

std::optional<QString> SiteAgent::siteName() const
{
    return m_document ? std::optional(m_document->siteName()) : std::nullopt;
}

std::optional<QString> SiteAgent::siteLocation() const
{
    return m_document ? std::optional(m_document->siteLocation()) : std::nullopt;
}

}  // namespace plotix
