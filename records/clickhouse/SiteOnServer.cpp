#include "records/clickhouse/SiteOnServer.h"

#include "base/ReportableError.h"
#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/HomeRows.h"
#include "records/clickhouse/ShardCheck.h"
#include "records/store/StorableBlock.h"

namespace plotix {

namespace {

constexpr std::size_t kMostIdle = 8;

}  // namespace

SiteOnServer::SiteOnServer(ServerAddress address, ServerCredentials credentials, Owns owns)
    : m_address(std::move(address)), m_credentials(std::move(credentials)), m_owns(std::move(owns))
{
    for (const ServerAddress& shard : m_address.shardByShard())
        m_shards.emplace_back(shard);
}

std::optional<std::size_t> SiteOnServer::placeOf(RowId agent)
{
    if (m_shards.size() == 1)
        return kHome;
    std::optional<RowId> asked = agent;
    {
        const std::lock_guard lock(m_mutex);
        if (const auto found = m_places.find(agent); found != m_places.end())
            return found->second;
        if (!m_knowsPlaces)
            asked = std::nullopt;
    }
    const std::map<RowId, std::size_t> places = placesOn(*leaseOn(kHome), tables(), asked);
    for (const auto& [placed, shard] : places)
        if (shard >= m_shards.size())
            throw ReportableError(QStringLiteral("%1 has a shard %2, which the address does not name: name all of them "
                                                 "in their order, with + between.")
                                      .arg(m_address.title())
                                      .arg(shard + 1));
    const std::lock_guard lock(m_mutex);
    m_places.insert(places.begin(), places.end());
    m_knowsPlaces = true;
    const auto found = m_places.find(agent);
    return found == m_places.end() ? std::nullopt : std::optional(found->second);
}

std::vector<RowId> SiteOnServer::agentsOn(std::size_t shard)
{
    const Lease server = leaseOn(shard);
    std::vector<RowId> agents = plotix::agentsOn(*server, server.tables());
    std::erase_if(agents, [&](RowId agent) { return shardOf(agent) != shard; });
    return agents;
}

void SiteOnServer::requireStorable(RowId agent, const RecordBlock& block) const
{
    requireWholeRecords(block);
    requireDistinctProperties(block);
    for (const RecordBlock::Column& column : block.columns)
        if (!m_owns(agent, column.property))
            refuseProperty(agent, column.property);
}

std::unique_ptr<ServerConnection> SiteOnServer::quickConnection(std::size_t shard) const
{
    constexpr ServerConnection::Patience kQuick{std::chrono::seconds(1), std::chrono::seconds(3),
                                                std::chrono::seconds(5), std::chrono::seconds(3)};
    return std::make_unique<ServerConnection>(m_shards[shard].address, m_credentials, kQuick);
}

SiteOnServer::Lease SiteOnServer::leaseOn(std::size_t shard)
{
    std::unique_ptr<ServerConnection> server;
    {
        const std::lock_guard lock(m_mutex);
        auto& idle = m_shards[shard].idle;
        if (!idle.empty()) {
            server = std::move(idle.back());
            idle.pop_back();
        }
    }
    if (!server)
        server = std::make_unique<ServerConnection>(m_shards[shard].address, m_credentials);
    lookAt(shard, *server);
    return {*this, shard, std::move(server)};
}

/// Once a minute.
void SiteOnServer::lookAt(std::size_t shard, ServerConnection& server)
{
    if (!requireSuitable(server, m_address) || m_shards.size() == 1)
        return;
    try {
        joint::confirmAll(server, tables(shard), *quickConnection(kHome), tables());
    } catch (const ReportableError&) {  // who may only look cannot; whoever writes there next does it
    }
}

SiteOnServer::Lease::~Lease()
{
    if (!m_server)
        return;
    const std::lock_guard lock(m_site->m_mutex);
    auto& idle = m_site->m_shards[m_shard].idle;
    if (idle.size() < kMostIdle)
        idle.push_back(std::move(m_server));
}

void SiteOnServer::closeIdle()
{
    const std::lock_guard lock(m_mutex);
    for (Shard& shard : m_shards)
        shard.idle.clear();
}

}  // namespace plotix
