#include "records/clickhouse/ShardCheck.h"

#include "base/ReportableError.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/StoreServer.h"

#include <map>
#include <mutex>

namespace plotix {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kSuitableFor = std::chrono::seconds(60);

/// What was looked at, by the site's whole address and the shard. Any thread.
class SuitableShards {
public:
    static SuitableShards& all()
    {
        static SuitableShards shards;
        return shards;
    }
    bool isKnown(const ServerAddress& address, std::size_t shard)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_until.find({address.text(), shard});
        return found != m_until.end() && Clock::now() < found->second;
    }
    void keep(const ServerAddress& address, std::size_t shard)
    {
        const std::lock_guard lock(m_mutex);
        m_until[{address.text(), shard}] = Clock::now() + kSuitableFor;
    }
    void forget()
    {
        const std::lock_guard lock(m_mutex);
        m_until.clear();
    }
    /// Of the site that the address's home has; empty: it is not known.
    std::string origin(const ServerAddress& address)
    {
        const std::lock_guard lock(m_mutex);
        return m_origins[address.text()];
    }
    void setOrigin(const ServerAddress& address, const std::string& origin)
    {
        const std::lock_guard lock(m_mutex);
        m_origins[address.text()] = origin;
    }

private:
    std::mutex m_mutex;  // guards what follows
    std::map<std::pair<QString, std::size_t>, Clock::time_point> m_until;
    std::map<QString, std::string> m_origins;
};

std::uint64_t numberOf(ServerConnection& server, const std::string& statement)
{
    const std::vector<std::byte> answer = server.ask(statement + " FORMAT RowBinary");
    return rowbinary::Reader(answer).number<std::uint64_t>();
}

bool hasTable(ServerConnection& server, const char* table)
{
    const ServerAddress& address = server.address();
    return numberOf(server, QStringLiteral("SELECT count() FROM system.tables WHERE database = '%1' AND name = '%2'")
                                .arg(address.database, SiteTables(address).bareName(table))
                                .toStdString()) > 0;
}

/// Nothing: there is no such table. Asked afterwards, as one of several replicas that was set up anew has none either.
template <class Ask>
auto unlessGone(ServerConnection& server, const char* table, Ask&& ask) -> std::optional<decltype(ask())>
{
    try {
        return ask();
    } catch (const ServerUnreachable&) {
        throw;
    } catch (const ReportableError&) {
        if (hasTable(server, table))
            throw;
    }
    return std::nullopt;
}

QString shardsText(std::size_t count)
{
    return count == 1 ? QStringLiteral("1 shard") : QStringLiteral("%1 shards").arg(count);
}

struct Listed {
    std::size_t number = 0;
    std::string origin;
};

/// By number; once each.
std::vector<Listed> listedOn(ServerConnection& server)
{
    const std::vector<std::byte> rows =
        server.ask("SELECT DISTINCT number, site FROM " + SiteTables(server.address()).shards() +
                   " ORDER BY number, site LIMIT 1 BY number FORMAT RowBinary");
    std::vector<Listed> listed;
    for (rowbinary::Reader row(rows); !row.isAtEnd();) {
        Listed each;
        each.number = row.number<std::uint32_t>();
        each.origin = row.text();
        listed.push_back(std::move(each));
    }
    return listed;
}

void requireShard(ServerConnection& server, const std::string& origin)
{
    const std::size_t number = *server.address().shard + 1;
    const std::vector<Listed> listed =
        unlessGone(server, "shard", [&] { return listedOn(server); }).value_or(std::vector<Listed>());
    if (listed.empty())
        throw ReportableError(QStringLiteral("%1 has no shard %2 of that site: name the shards in the order they were "
                                             "made, with + between.")
                                  .arg(server.address().title())
                                  .arg(number));
    if (listed.size() != 1 || listed.front().number != number || (!origin.empty() && listed.front().origin != origin))
        throw ReportableError(QStringLiteral("%1 has shard %2 of another site, “%3”: correct the address.")
                                  .arg(server.address().title())
                                  .arg(number)
                                  .arg(QString::fromStdString(listed.front().origin)));
}

}  // namespace

std::optional<SiteLayout> layoutOn(ServerConnection& home)
{
    const std::optional<std::uint64_t> version = unlessGone(home, "about", [&] {
        return numberOf(home, "SELECT toUInt64(max(version)) FROM " + SiteTables(home.address()).about());
    });
    if (!version || *version == 0)  // none, or its making was interrupted
        return std::nullopt;
    SiteLayout layout;
    layout.version = static_cast<std::uint32_t>(*version);
    constexpr std::uint32_t kShardsSince = 2;
    if (layout.version < kShardsSince || layout.version > StoreServer::kVersion)
        return layout;
    const std::vector<Listed> listed = listedOn(home);
    if (!listed.empty()) {
        layout.shards = listed.size();
        layout.origin = listed.front().origin;
    }
    return layout;
}

void requireSuitable(const SiteLayout& layout, const ServerAddress& address)
{
    if (layout.version > StoreServer::kVersion)
        throw ReportableError(QStringLiteral("%1 was made by a newer version of this program (%2): update it")
                                  .arg(address.title())
                                  .arg(layout.version));
    const std::size_t named = address.others.size() + 1;
    if (layout.shards < named)
        throw ReportableError(
            QStringLiteral("%1 has %2 and the address names %3: “plotix store %4” adds those "
                           "that are missing")
                .arg(address.title())
                .arg(shardsText(layout.shards))
                .arg(named)
                .arg(layout.version < StoreServer::kVersion ? QStringLiteral("upgrade") : QStringLiteral("create")));
    if (layout.shards > named)
        throw ReportableError(QStringLiteral("%1 has %2 and the address names %3: name all of them in their "
                                             "order, with + between")
                                  .arg(address.title())
                                  .arg(shardsText(layout.shards))
                                  .arg(named));
}

bool requireSuitable(ServerConnection& server, const ServerAddress& address)
{
    SuitableShards& known = SuitableShards::all();
    const std::size_t shard = server.address().shard.value_or(0);
    if (known.isKnown(address, shard))
        return false;
    if (shard > 0) {
        requireShard(server, known.origin(address));
    } else {
        const std::optional<SiteLayout> layout = layoutOn(server);
        if (!layout)
            throw ReportableError(QStringLiteral("there is no site %1: make it with “plotix store create %2”")
                                      .arg(address.title(), address.text()));
        requireSuitable(*layout, address);
        known.setOrigin(address, layout->origin);
    }
    known.keep(address, shard);
    return true;
}

void forgetSuitable()
{
    SuitableShards::all().forget();
}

}  // namespace plotix
