#include "hostapp/document/SiteDocument.h"

#include "base/ReportableError.h"
#include "base/ZoneNames.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/document/AttachedAgents.h"
#include "hostapp/document/AttachedRecords.h"
#include "hostapp/document/ComputedRecords.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/DeskWatch.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>

#include <algorithm>
#include <map>
#include <utility>

namespace plotix {

namespace {

const QString kZoneSetting = QLatin1String(kZoneKey);

constexpr int kPatience = 3000;       // milliseconds that other changes wait for another writer
constexpr int kRetryInterval = 1000;  // milliseconds until an unsaved change is tried again
constexpr int kTriesBeforeTelling = 5;
constexpr int kWatchInterval = 500;  // milliseconds between two looks whether the file is still there

}  // namespace

struct SiteDocument::Store {
    explicit Store(const QString& path)
        : database(path, siteSchema(), Database::Access::BestAvailable),
          tables(database),
          attached(std::make_shared<AttachedRecords>(recordsOfSite(path)))
    {
    }

    /// Differs once another connection has written.
    qint64 versionNow()
    {
        Statement statement(database, "PRAGMA data_version");
        return statement.step() ? statement.integer(0) : 0;
    }

    Database database;
    SiteStore tables;
    const std::shared_ptr<AttachedRecords> attached;      // those of the site, and the tables beside them
    std::map<qint64, SiteProperty::Description> stored;   // by id: as last read or written
    std::map<qint64, SiteProperty::Description> unsaved;  // by id: changes that wait for another writer
    int tries = 0;
    QTimer retry, watch;
    std::unique_ptr<DeskWatch> desk;  // of a site on a server
    bool isReplaced = false;
    bool isTakingOver = false;  // values that others stored: not to be stored again
    qint64 version = 0;         // of the file, when others' changes were read last
};

std::shared_ptr<SiteDocument> SiteDocument::create(const QString& path, const QString& siteName)
{
    createSiteFile(path, siteName);
    return open(path);
}

std::shared_ptr<SiteDocument> SiteDocument::open(const QString& path)
{
    const std::shared_ptr<SiteDocument> document(new SiteDocument(path));
    document->reload();
    return document;
}

SiteDocument::SiteDocument(const QString& path)
    : m_store(std::make_unique<Store>(path)),
      m_path(QFileInfo(path).absoluteFilePath()),
      m_computed(std::make_shared<ComputedRecords>(m_store->attached))
{
    m_records = m_computed;
    m_store->retry.setSingleShot(true);
    m_store->retry.setInterval(kRetryInterval);
    connect(&m_store->retry, &QTimer::timeout, this, &SiteDocument::storeUnsaved);
    connect(&m_store->watch, &QTimer::timeout, this, &SiteDocument::lookForTheFile);
    m_store->watch.start(kWatchInterval);
    m_store->version = m_store->versionNow();
    if (const std::optional<QString> address = addressOfDeskFile(m_path))
        m_store->desk = std::make_unique<DeskWatch>(m_path, *address);
}

SiteDocument::~SiteDocument()
{
    storeUnsaved();
    for (const std::shared_ptr<SiteAgent>& agent : m_agents)
        agent->m_document = nullptr;
    m_records->closeIdle();  // an agent that lives on shares them; once no fetch is under way, the file may be moved
}

void SiteDocument::setSite(const QString& name, const QString& location)
{
    inTransaction(m_store->database, [&] { m_store->tables.setSite({name, location}); });
    m_siteName = name;
    m_siteLocation = location;
    emit siteChanged();
}

void SiteDocument::setZone(const QTimeZone& zone)
{
    setSetting(kZoneSetting, zone.id());
    m_zone = zone;
    emit siteChanged();
}

std::shared_ptr<SiteAgent> SiteDocument::agentNamed(const QString& name) const
{
    for (const std::shared_ptr<SiteAgent>& agent : m_agents)
        if (agent->name() == name)
            return agent;
    return {};
}

std::shared_ptr<SiteAgent> SiteDocument::agentWithIdentifier(const QString& uniqueIdentifier) const
{
    for (const std::shared_ptr<SiteAgent>& agent : m_agents)
        if (agent->uniqueIdentifier() == uniqueIdentifier)
            return agent;
    return {};
}

std::shared_ptr<SiteAgent> SiteDocument::addAgent(const QString& name)
{
    SiteStore::Agent row;
    inTransaction(m_store->database, [&] { row = m_store->tables.addAgent(name); });
    m_agents.push_back(std::shared_ptr<SiteAgent>(new SiteAgent(this, row.id, row.identifier, row.name)));
    const std::shared_ptr<SiteAgent> agent = m_agents.back();
    tellFormulas();
    emit agentsChanged();
    return agent;
}

void SiteDocument::reload()
{
    const SiteStore::Site site = m_store->tables.site();
    const QTimeZone zone = zoneNamed(QString::fromUtf8(setting(kZoneSetting))).value_or(QTimeZone());
    const bool renamed = site.name != m_siteName || site.location != m_siteLocation || zone != m_zone;
    m_siteName = site.name;
    m_siteLocation = site.location;
    m_zone = zone;
    m_store->attached->setAttached(attachedAgents(m_store->database));
    std::vector<std::shared_ptr<SiteAgent>> changed;
    const bool differs = reloadAgents(changed);
    const bool saysOtherwise = reloadAnnotations();
    tellFormulas();
    if (renamed)
        emit siteChanged();
    if (differs)
        emit agentsChanged();
    for (const std::shared_ptr<SiteAgent>& agent : changed)
        emit agent->propertiesChanged();
    if (saysOtherwise)
        emit annotationsChanged();
}

QString SiteDocument::attachedTable(const SiteAgent& agent) const
{
    const std::map<RowId, QByteArray> attached = attachedAgents(m_store->database);
    const auto found = attached.find(agent.id());
    return found == attached.end() ? QString() : attachedTitle(found->second);
}

bool SiteDocument::reloadAnnotations()
{
    std::vector<SiteLimit> limits = storedLimits(m_store->database);
    std::vector<SiteNote> notes = storedNotes(m_store->database);
    if (limits == m_limits && notes == m_notes)
        return false;
    m_limits = std::move(limits);
    m_notes = std::move(notes);
    return true;
}

std::shared_ptr<const FormulaDirectory> SiteDocument::formulaDirectory() const
{
    return m_computed->directory();
}

void SiteDocument::tellFormulas()
{
    const auto directory = std::make_shared<FormulaDirectory>();
    for (const std::shared_ptr<SiteAgent>& agent : m_agents) {
        FormulaDirectory::Agent& known = directory->agents.emplace_back();
        known.id = agent->id();
        known.name = agent->name();
        for (const std::shared_ptr<SiteProperty>& property : agent->siteProperties())
            known.properties.push_back(property->description());
    }
    m_computed->setDirectory(directory);
}

/// True when agents came, went or have another name; `changed`: those that stay with other properties.
bool SiteDocument::reloadAgents(std::vector<std::shared_ptr<SiteAgent>>& changed)
{
    bool differs = false;
    std::vector<std::shared_ptr<SiteAgent>> agents;
    for (const SiteStore::Agent& row : m_store->tables.agents()) {
        std::shared_ptr<SiteAgent> agent = agentWithIdentifier(row.identifier);
        const bool isNew = !agent;
        if (isNew)
            agent.reset(new SiteAgent(this, row.id, row.identifier, row.name));
        differs = differs || isNew || agent->m_name != row.name;
        agent->m_name = row.name;
        if (reloadProperties(*agent) && !isNew)
            changed.push_back(agent);
        agents.push_back(std::move(agent));
    }
    for (const std::shared_ptr<SiteAgent>& agent : m_agents)
        if (std::find(agents.begin(), agents.end(), agent) == agents.end()) {
            agent->m_document = nullptr;
            differs = true;
        }
    m_agents = std::move(agents);
    return differs;
}

bool SiteDocument::reloadProperties(SiteAgent& agent)
{
    const std::vector<std::shared_ptr<SiteProperty>> before = std::exchange(agent.m_properties, {});
    bool differs = false;
    for (const SiteProperty::Description& row : m_store->tables.properties(agent.id())) {
        const auto known = std::find_if(before.begin(), before.end(),
                                        [&](const auto& property) { return property->description().id == row.id; });
        if (known == before.end()) {
            adopt(agent, row);
            differs = true;
            continue;
        }
        SiteProperty& property = **known;
        differs = differs || property.name() != row.name || property.description().formula != row.formula ||
                  property.description().archivedUnit != row.archivedUnit;
        if (row.formula)
            property.setFormula(*row.formula, row.archivedUnit);
        property.rename(row.name, row.propertyName);
        agent.m_properties.push_back(*known);
        takeOver(property, row);
    }
    return differs || agent.m_properties.size() != before.size();
}

/// What the user changed here and could not be stored yet is later than what others stored.
void SiteDocument::takeOver(SiteProperty& property, const SiteProperty::Description& stored)
{
    if (isReadOnly() || m_store->unsaved.contains(stored.id))
        return;
    m_store->stored[stored.id] = stored;
    m_store->isTakingOver = true;
    if (property.unit() != stored.unit)
        property.setUnit(stored.unit);
    if (property.color() != stored.color)
        property.setColor(stored.color);
    property.setVisible(stored.visible);
    m_store->isTakingOver = false;
}

void SiteDocument::catchUp()
{
    m_store->version = m_store->versionNow();
    reload();
}

/// Reads only where another connection has written since the last look.
void SiteDocument::lookForChanges()
{
    try {
        const qint64 now = m_store->versionNow();
        if (std::exchange(m_store->version, now) == now)
            return;
        reload();
    } catch (const ReportableError&) {  // another writer is in the way: the next look tries again
        m_store->version = 0;
        return;
    }
    emit changedElsewhere();
}

std::shared_ptr<SiteProperty> SiteDocument::adopt(SiteAgent& agent, const SiteProperty::Description& description)
{
    const auto property = std::make_shared<SiteProperty>(description, Units::shared());
    m_store->stored[description.id] = description;
    connect(property.get(), &SiteProperty::changed, this, [this, changed = property.get()] { storeChange(*changed); });
    agent.m_properties.push_back(property);
    return property;
}

std::shared_ptr<SiteProperty> SiteDocument::addPropertyTo(SiteAgent& agent, const QString& name, const QString& unit,
                                                          std::uint32_t type)
{
    SiteProperty::Description description;
    inTransaction(m_store->database, [&] { description = m_store->tables.addProperty(agent.id(), name, unit, type); });
    const std::shared_ptr<SiteProperty> property = adopt(agent, description);
    tellFormulas();
    emit agent.propertiesChanged();
    return property;
}

void SiteDocument::storeChange(const SiteProperty& property)
{
    if (m_store->isTakingOver || isReadOnly())
        return;
    m_store->unsaved[property.description().id] = property.description();
    storeUnsaved();
}

/// Never waits and never throws: users change units and colours while they do something else, and an import may lock
/// the document for minutes.
void SiteDocument::storeUnsaved()
{
    if (m_store->unsaved.empty())
        return;
    m_store->database.setPatience(0);
    try {
        inTransaction(m_store->database, [&] {
            for (const auto& [id, description] : m_store->unsaved)
                m_store->tables.updateProperty(description, m_store->stored[id]);
        });
        for (const auto& [id, description] : m_store->unsaved)
            m_store->stored[id] = description;
        m_store->unsaved.clear();
        m_store->tries = 0;
    } catch (const ReportableError& error) {
        m_store->retry.start();
        if (++m_store->tries == kTriesBeforeTelling)
            emit changeNotStored(error.message());
    }
    m_store->database.setPatience(kPatience);
}

std::optional<std::pair<Date, Date>> SiteDocument::recordExtent() const
{
    const std::optional<RecordExtent> extent = m_records->extent();
    return extent ? std::optional(std::pair(Date{extent->first}, Date{extent->last})) : std::nullopt;
}

bool SiteDocument::isReadOnly() const
{
    return m_store->database.isReadOnly() || isReplaced();
}

bool SiteDocument::isReplaced() const
{
    return m_store->isReplaced || m_store->database.openedFile().place() == OpenedFile::Place::Replaced;
}

/// The log is emptied with what belongs to the old file before somebody opens the new one.
void SiteDocument::lookForTheFile()
{
    if (m_store->isReplaced)
        return;
    if (!isReplaced()) {
        lookForChanges();
        return;
    }
    m_store->isReplaced = true;
    m_store->watch.stop();
    m_records->closeIdle();
    m_store->database.mergeLogIntoOwnFile();
    QString message = m_store->database.replacedMessage();
    if (!m_store->unsaved.empty())
        message += QStringLiteral(" The last changes of units or colours are lost.");
    emit replaced(message + QStringLiteral(" Open it again to see the new one."));
}

std::vector<ArchivedPlugIn> SiteDocument::archivedPlugIns() const
{
    std::vector<ArchivedPlugIn> plugIns;
    Statement statement(m_store->database, "SELECT id, class_name, state FROM plugin ORDER BY id");
    while (statement.step())
        plugIns.push_back({statement.integer(0), statement.text(1), statement.bytes(2)});
    return plugIns;
}

qint64 SiteDocument::storePlugIn(const ArchivedPlugIn& plugIn)
{
    return storePlugIns(plugIn.id, [&](const auto&) { return std::vector{plugIn}; }).front();
}

std::vector<qint64> SiteDocument::storePlugIns(qint64 id, const Decide& decide)
{
    std::vector<qint64> ids;
    inTransaction(m_store->database, [&] {
        Statement archived(m_store->database, "SELECT class_name, state FROM plugin WHERE id = ?");
        archived.bind(1, id);
        std::optional<ArchivedPlugIn> present;
        if (archived.step())
            present = ArchivedPlugIn{id, archived.text(0), archived.bytes(1)};
        for (const ArchivedPlugIn& plugIn : decide(present))
            ids.push_back(m_store->tables.storePlugIn(plugIn));
    });
    return ids;
}

void SiteDocument::removePlugIn(qint64 id)
{
    inTransaction(m_store->database,
                  [&] { Statement(m_store->database, "DELETE FROM plugin WHERE id = ?").bind(1, id).run(); });
}

QByteArray SiteDocument::setting(const QString& key) const
{
    return m_store->tables.setting(key);
}

void SiteDocument::setSetting(const QString& key, const QByteArray& value)
{
    inTransaction(m_store->database, [&] { m_store->tables.setSetting(key, value); });
}

void SiteDocument::setWindowControllers(std::vector<std::shared_ptr<KTVWindowController>> controllers)
{
    m_windowControllers = std::move(controllers);
}

}  // namespace plotix
