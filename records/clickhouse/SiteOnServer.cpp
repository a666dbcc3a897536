#include "records/clickhouse/SiteOnServer.h"

#include "records/clickhouse/AgentReading.h"
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

std::size_t SiteOnServer::shardOf(RowId)
{
    return kHome;
}

std::vector<RowId> SiteOnServer::agentsOn(std::size_t shard)
{
    const Lease server = leaseOn(shard);
    return plotix::agentsOn(*server, server.tables());
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
    {
        const std::lock_guard lock(m_mutex);
        auto& idle = m_shards[shard].idle;
        if (!idle.empty()) {
            std::unique_ptr<ServerConnection> server = std::move(idle.back());
            idle.pop_back();
            return {*this, shard, std::move(server)};
        }
    }
    return {*this, shard, std::make_unique<ServerConnection>(m_shards[shard].address, m_credentials)};
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
