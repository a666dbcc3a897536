#include "hostapp/document/ServerSites.h"

#include "base/ReportableError.h"
#include "records/clickhouse/ClickHouseServer.h"

namespace plotix {

bool isServerAddress(const QString& place)
{
    return ServerAddress::isOne(place);
}

std::shared_ptr<StoreServer> storeServer(const QString& address)
{
    return ClickHouseServer::at(address);
}

std::vector<QString> sitesOnServer(const QString& address)
{
    return ClickHouseServer::sitesAt(address);
}

std::function<void()> enterCredentials(const QString& address, const QString& user,
                                       const std::optional<QString>& password)
{
    return ServerCredentials::enter(ServerAddress::parsed(address), user, password);
}

QString enteredUser(const QString& address)
{
    return ServerCredentials::enteredUser(ServerAddress::parsed(address));
}

QString withoutUser(const QString& address)
{
    ServerAddress parsed = ServerAddress::parsed(address);
    if (!parsed.user.isEmpty())
        ServerCredentials::enter(parsed, parsed.user, std::nullopt);
    parsed.user.clear();
    return parsed.text();
}

std::shared_ptr<StoreServer> siteOnServer(const QString& address)
{
    const std::shared_ptr<StoreServer> server = storeServer(address);
    const StoreServer::Description found = server->description();
    if (found.exists && found.version > StoreServer::kVersion)
        throw ReportableError(QStringLiteral("%1 was made by a newer version of this program (%2): update it")
                                  .arg(server->title())
                                  .arg(found.version));
    if (!found.exists)
        throw ReportableError(
            QStringLiteral("there is no site %1: make it with “plotix store create %2”").arg(server->title(), address));
    return server;
}

}  // namespace plotix
