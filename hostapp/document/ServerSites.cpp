#include "hostapp/document/ServerSites.h"

#include "base/ReportableError.h"
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
    const std::optional<std::uint32_t> version = server->version();
    if (!version)
        throw ReportableError(
            QStringLiteral("there is no site %1: make it with “plotix store create %2”").arg(server->title(), address));
    if (*version > StoreServer::kVersion)
        throw ReportableError(QStringLiteral("%1 was made by a newer version of this program (%2): update it")
                                  .arg(server->title())
                                  .arg(*version));
    return server;
}

}  // namespace plotix
