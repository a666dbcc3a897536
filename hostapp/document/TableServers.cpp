#include "hostapp/document/TableServers.h"

#include "base/ReportableError.h"
#include "records/tables/AnyTableServer.h"

#include <QtCore/QSettings>
#include <QtCore/QStringList>

namespace plotix {

namespace {

constexpr auto kPlaces = "Tables/places";  // stored: never change

}  // namespace

std::shared_ptr<TableServer> tableServer(const QString& address)
{
    return tableServerAt(address);
}

void trustPlace(const TableServer& server)
{
    QSettings settings;
    QStringList places = settings.value(QLatin1String(kPlaces)).toStringList();
    if (places.contains(server.address()))
        return;
    settings.setValue(QLatin1String(kPlaces), places << server.address());
}

std::shared_ptr<RecordStore> recordsOfTable(const QByteArray& table)
{
    const AttachedTable read = AttachedTable::of(table);
    const std::shared_ptr<TableServer> server = tableServer(read.address);
    // A site may come from anybody, and would have this desk's password sent to wherever it says.
    if (!QSettings().value(QLatin1String(kPlaces)).toStringList().contains(server->address()))
        throw ReportableError(
            QStringLiteral("The table “%1” is at %2, which this desk has never asked: if you trust it with your user "
                           "and password, ask it once by “plotix attach SITE %3 --list”.")
                .arg(read.table, server->title(), server->address()));
    return server->records(read);
}

}  // namespace plotix
