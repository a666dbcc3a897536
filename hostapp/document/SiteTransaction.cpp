#include "hostapp/document/SiteTransaction.h"

#include "hostapp/document/SiteStore.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace plotix {

struct SiteTransaction::Impl {
    Impl(const QString& path, const QString& siteName) : file(QFileInfo(path).absoluteFilePath())
    {
        if (!QFileInfo::exists(file)) {
            Database::create(file, siteName.isEmpty() ? QFileInfo(file).completeBaseName() : siteName);
            created = true;
        }
        try {
            database = std::make_unique<Database>(file, Database::Access::ReadWrite);
            database->beginWriting();
        } catch (...) {
            removeIfCreated();
            throw;
        }
    }
    ~Impl()
    {
        writer.reset();
        if (database)
            database->rollBack();
        database.reset();
        if (!committed)
            removeIfCreated();
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    void removeIfCreated() const
    {
        if (!created)
            return;
        for (const char* part : {"-wal", "-shm", ""})
            QFile::remove(file + QLatin1String(part));
    }

    QString file;
    bool created = false;
    bool committed = false;
    std::unique_ptr<Database> database;
    std::unique_ptr<RecordWriter> writer;
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
    const std::optional<SiteStore::Agent> found = store.agentNamed(name);
    return found ? found->id : store.addAgent(name).id;
}

SiteTransaction::Property SiteTransaction::findOrCreateProperty(RowId agent, const QString& name, const QString& unit,
                                                                std::uint32_t type)
{
    SiteStore store(*m_impl->database);
    std::optional<SiteProperty::Description> property = store.propertyNamed(agent, name);
    if (!property)
        property = store.addProperty(agent, name, unit, type);
    return {property->id, property->archivedUnit, property->propertyName};
}

RecordWriter& SiteTransaction::records()
{
    if (!m_impl->writer)
        m_impl->writer.reset(new RecordWriter(*m_impl->database));
    return *m_impl->writer;
}

void SiteTransaction::commit()
{
    if (m_impl->committed)
        return;
    if (m_impl->writer)
        m_impl->writer->flush();
    m_impl->database->commit();
    m_impl->committed = true;
}

}  // namespace plotix
