#include "hostapp/document/ServerSites.h"

#include "hostapp/core/DataFolder.h"
#include "hostapp/document/MemoryBudget.h"
#include "records/clickhouse/ClickHouseServer.h"
#include "records/clickhouse/LocalColumns.h"

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

void keepWhatServersSend()
{
    const std::uint64_t bytes = serverCacheBudget();
    LocalColumns::use(
        bytes == 0 ? nullptr : std::make_shared<LocalColumns>(dataFolder() + QStringLiteral("/server-cache"), bytes));
}

std::shared_ptr<StoreServer> siteOnServer(const QString& address)
{
    const std::shared_ptr<StoreServer> server = storeServer(address);
    server->requireUsable();
    return server;
}

}  // namespace plotix
