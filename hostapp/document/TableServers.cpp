#include "hostapp/document/TableServers.h"

#include "records/tables/AnyTableServer.h"

namespace plotix {

std::shared_ptr<TableServer> tableServer(const QString& address)
{
    return tableServerAt(address);
}

std::shared_ptr<RecordStore> recordsOfTable(const QByteArray& table)
{
    const AttachedTable read = AttachedTable::of(table);
    return tableServer(read.address)->records(read);
}

}  // namespace plotix
