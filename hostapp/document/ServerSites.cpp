#include "hostapp/document/ServerSites.h"

#include "base/ReportableError.h"
#include "records/clickhouse/ClickHouseServer.h"

namespace plotix {

bool isServerAddress(const QString& place)
{
    return place.contains(QLatin1String("://"));
}

std::shared_ptr<StoreServer> storeServer(const QString& address)
{
    return ClickHouseServer::at(address);
}

std::shared_ptr<StoreServer> siteOnServer(const QString& address)
{
    const std::shared_ptr<StoreServer> server = storeServer(address);
    if (!server->description().exists)
        throw ReportableError(
            QStringLiteral("there is no site %1: make it with “plotix store create %2”").arg(server->title(), address));
    return server;
}

}  // namespace plotix
