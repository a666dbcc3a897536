#include "hostapp/document/RecordKeeping.h"

#include "hostapp/document/SiteSchema.h"
#include "records/clickhouse/ClickHouseServer.h"
#include "records/sqlite/RecordSchema.h"
#include "records/sqlite/SqliteRecordStore.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

RecordKeeping insideTheSite()
{
    return {schema::kRecordTables,
            [](const QString& site) { return std::make_shared<SqliteRecordStore>(site, siteSchema()); },
            &SqliteRecordStore::join};
}

}  // namespace

const RecordKeeping& recordKeeping()
{
    static const RecordKeeping keeping = insideTheSite();
    return keeping;
}

std::shared_ptr<RecordStore> recordsOfSite(const QString& path)
{
    return recordKeeping().open(QFileInfo(path).absoluteFilePath());
}

std::shared_ptr<StoreServer> storeServer(const QString& address)
{
    return ClickHouseServer::at(address);
}

}  // namespace plotix
