#include "hostapp/document/SiteTransaction.h"

#include "base/ReportableError.h"
#include "hostapp/document/AttachedAgents.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QSet>

#include <map>
#include <vector>

namespace plotix {

struct SiteTransaction::Impl {
    /// An agent's properties while one transaction writes, which nobody else can change.
    struct KnownProperties {
        std::vector<SiteProperty::Description> all;  // in the order they were added
        QHash<QString, std::size_t> byName, byKey;   // the first of a name
        QSet<QString> computed;                      // keys of computed ones

        /// Nothing is ever stored into a computed one, whatever it is called.
        void add(const SiteProperty::Description& property)
        {
            if (property.formula) {
                computed.insert(property.propertyName);
                all.push_back(property);
                return;
            }
            if (!byName.contains(property.name))
                byName[property.name] = all.size();
            if (!byKey.contains(property.propertyName))
                byKey[property.propertyName] = all.size();
            all.push_back(property);
        }
        const SiteProperty::Description* find(const QString& name) const
        {
            auto found = byName.constFind(name);
            if (found == byName.constEnd()) {
                found = byKey.constFind(camelCaseString(name));
                if (found == byKey.constEnd())
                    return nullptr;
            }
            return &all[*found];
        }
        const SiteProperty::Description* withId(std::optional<qint64> id) const
        {
            for (const SiteProperty::Description& property : all)
                if (id && property.id == *id && !property.formula)
                    return &property;
            return nullptr;
        }
    };

    Impl(const QString& path, const QString& siteName) : file(QFileInfo(path).absoluteFilePath())
    {
        if (!QFileInfo::exists(file)) {
            createSiteFile(file, siteName);
            created = true;
        }
        try {
            database = std::make_unique<Database>(file, siteSchema(), Database::Access::ReadWrite);
            database->beginWriting();
            // Before anything is looked up: a desk's file is brought up to date then.
            if (isDeskFile(file))
                records = recordKeeping().join(*database);
        } catch (...) {
            removeIfCreated();
            throw;
        }
    }
    ~Impl()
    {
        records.reset();
        if (database)
            database->rollBack();
        if (created && !committed)
            removeIfCreated();
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    /// A file replaced after everything was written to it holds what nobody would find there.
    void commitToFile()
    {
        try {
            database->commit();
        } catch (const FileReplaced& replaced) {
            if (!database->isWriting())
                throw FileReplaced(replaced.message() + QLatin1Char(' ') + database->keepReplaced());
            throw;
        }
    }

    void removeIfCreated() const
    {
        // A file that came later is somebody else's.
        if (!created || (database && database->openedFile().place() != OpenedFile::Place::Same))
            return;
        for (const char* part : {"-wal", "-shm", ""})
            QFile::remove(file + QLatin1String(part));
    }

    KnownProperties& propertiesOf(RowId agent)
    {
        const auto [found, isNew] = properties.try_emplace(agent);
        if (isNew)
            for (const SiteProperty::Description& property : SiteStore(*database).properties(agent))
                found->second.add(property);
        return found->second;
    }

    std::map<RowId, KnownProperties> properties;
    QString file;
    bool created = false;
    bool committed = false;
    std::unique_ptr<Database> database;
    std::unique_ptr<EditStepBuilder> step;  // empty: nothing of it can be undone
    std::unique_ptr<RecordTransaction> records;
};

SiteTransaction::SiteTransaction(const QString& path, const QString& siteName)
    : m_impl(std::make_unique<Impl>(path, siteName))
{
}

SiteTransaction::~SiteTransaction() = default;

bool SiteTransaction::createdFile() const
{
    return m_impl->created;
}

RowId SiteTransaction::findOrCreateAgent(const QString& name)
{
    SiteStore store(*m_impl->database);
    if (const std::optional<SiteStore::Agent> found = store.agentOnceNamed(name)) {
        requireOwnRecords(*m_impl->database, found->id, found->name);
        return found->id;
    }
    return addAgent(name);
}

void SiteTransaction::attach(RowId agent, const AttachedTable& table)
{
    keepAttached(*m_impl->database, agent, table.bytes());
}

RowId SiteTransaction::addAgent(const QString& name)
{
    SiteStore store(*m_impl->database);
    const RowId made = store.addAgent(name).id;
    if (m_impl->step)
        m_impl->step->madeAgent(made);
    return made;
}

QString SiteTransaction::agentName(RowId agent) const
{
    for (const SiteStore::Agent& each : SiteStore(*m_impl->database).agents())
        if (each.id == agent)
            return each.name;
    return {};
}

void SiteTransaction::beginStep(EditStep::Kind kind, const QString& subject)
{
    m_impl->step = std::make_unique<EditStepBuilder>(*m_impl->database, kind, subject);
}

void SiteTransaction::keepForUndo(RowId agent, const std::vector<RowId>& properties, double from, double to)
{
    EditMeter unseen;  // the import tells how far it has come itself
    m_impl->step->keepRecords(*storedRecords(), agent, properties, from, to, unseen);
}

SiteTransaction::Property SiteTransaction::findOrCreateProperty(RowId agent, const QString& name, const QString& unit,
                                                                std::uint32_t type)
{
    SiteStore store(*m_impl->database);
    Impl::KnownProperties& known = m_impl->propertiesOf(agent);
    const SiteProperty::Description* property = known.find(name);
    if (property == nullptr)
        property = known.withId(store.aliasTarget(agent, camelCaseString(name)));
    if (property == nullptr) {
        known.add(store.addProperty(agent, name, unit, type, known.all));
        property = &known.all.back();
        if (known.computed.contains(camelCaseString(name)))  // the next import finds it by this
            store.addAlias(agent, camelCaseString(name), property->id);
        if (m_impl->step)
            m_impl->step->madeProperty(property->id);
    }
    return {property->id, property->archivedUnit, property->propertyName};
}

void SiteTransaction::addLimit(SiteLimit limit)
{
    limit.id = 0;
    storeLimit(*m_impl->database, limit);
}

void SiteTransaction::addNote(SiteNote note)
{
    note.id = 0;
    storeNote(*m_impl->database, note);
}

RecordTransaction& SiteTransaction::records()
{
    if (!m_impl->records)
        m_impl->records = recordKeeping().join(*m_impl->database);
    return *m_impl->records;
}

std::shared_ptr<RecordStore> SiteTransaction::storedRecords() const
{
    return recordsOfSite(m_impl->file);
}

void SiteTransaction::commit()
{
    if (m_impl->committed)
        return;
    // In this order, so that records are never seen without their agent: RecordStore.h says why.
    if (m_impl->step)
        m_impl->step->finish();
    if (m_impl->records)
        m_impl->records->prepare();
    m_impl->commitToFile();
    m_impl->committed = true;
    if (m_impl->records)
        m_impl->records->commit();
}

}  // namespace plotix
