#include "records/clickhouse/SiteOnServer.h"

#include "records/store/StorableBlock.h"

namespace plotix {

namespace {

constexpr std::size_t kMostIdle = 8;

}  // namespace

void SiteOnServer::requireStorable(RowId agent, const RecordBlock& block) const
{
    requireWholeRecords(block);
    requireDistinctProperties(block);
    for (const RecordBlock::Column& column : block.columns)
        if (!m_owns(agent, column.property))
            refuseProperty(agent, column.property);
}

std::unique_ptr<ServerConnection> SiteOnServer::quickConnection() const
{
    constexpr ServerConnection::Patience kQuick{std::chrono::seconds(1), std::chrono::seconds(3),
                                                std::chrono::seconds(5), std::chrono::seconds(3)};
    return std::make_unique<ServerConnection>(m_address, m_credentials, kQuick);
}

SiteOnServer::Lease SiteOnServer::lease()
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_idle.empty()) {
            std::unique_ptr<ServerConnection> idle = std::move(m_idle.back());
            m_idle.pop_back();
            return {*this, std::move(idle)};
        }
    }
    return {*this, std::make_unique<ServerConnection>(m_address, m_credentials)};
}

SiteOnServer::Lease::~Lease()
{
    if (!m_server)
        return;
    const std::lock_guard lock(m_site->m_mutex);
    if (m_site->m_idle.size() < kMostIdle)
        m_site->m_idle.push_back(std::move(m_server));
}

void SiteOnServer::closeIdle()
{
    const std::lock_guard lock(m_mutex);
    m_idle.clear();
}

}  // namespace plotix
