#include "hostapp/document/RecordKeeping.h"

#include "hostapp/document/DeskFile.h"
#include "hostapp/document/DeskWriting.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteCatalogue.h"
#include "hostapp/document/SiteSchema.h"
#include "records/sqlite/SqliteRecordStore.h"

#include <QtCore/QFileInfo>

#include <mutex>

namespace plotix {

namespace {

/// Which properties a desk's file has; it is read again where one is asked for that was not there. Any thread.
class KnownOwners {
public:
    explicit KnownOwners(QString desk) : m_desk(std::move(desk)) {}
    bool operator()(RowId agent, RowId property)
    {
        const std::lock_guard lock(m_mutex);
        if (!m_known || !m_known->owns(agent, property))
            m_known = SiteCatalogue::ofFile(m_desk);
        return m_known->owns(agent, property);
    }

private:
    const QString m_desk;
    std::mutex m_mutex;
    std::optional<SiteCatalogue> m_known;  // under the mutex
};

std::shared_ptr<RecordStore> storeOf(const QString& site)
{
    if (const std::optional<QString> address = addressOfDeskFile(site))
        return storeServer(*address)->records([owners = std::make_shared<KnownOwners>(site)](
                                                  RowId agent, RowId property) { return (*owners)(agent, property); });
    return std::make_shared<SqliteRecordStore>(site, siteSchema());
}

std::unique_ptr<RecordTransaction> joined(Database& site)
{
    if (const std::optional<QString> address = addressOfDeskFile(site.file()))
        return deskTransaction(site, storeServer(*address));
    return SqliteRecordStore::join(site);
}

}  // namespace

const RecordKeeping& recordKeeping()
{
    static const RecordKeeping keeping{&storeOf, &joined};
    return keeping;
}

std::shared_ptr<RecordStore> recordsOfSite(const QString& path)
{
    return recordKeeping().open(QFileInfo(path).absoluteFilePath());
}

}  // namespace plotix
