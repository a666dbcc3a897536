#include "hostapp/document/AttachedRecords.h"

#include "base/ReportableError.h"
#include "hostapp/document/TableServers.h"

namespace plotix {

void AttachedRecords::setAttached(const std::map<RowId, QByteArray>& tables)
{
    const std::shared_ptr<const Agents> before = agents();
    const auto now = std::make_shared<Agents>();
    for (const auto& [agent, table] : tables) {
        if (const auto known = before->find(agent); known != before->end() && known->second.said == table) {
            now->insert(*known);
            continue;
        }
        Attached& attached = (*now)[agent];
        attached.said = table;
        try {
            attached.records = recordsOfTable(table);
            attached.extent = std::make_shared<RememberedExtent>(attached.records);
        } catch (const ReportableError& error) {
            attached.problem = error.message();
        }
    }
    const std::lock_guard lock(m_mutex);
    m_agents = now;
}

std::shared_ptr<const AttachedRecords::Agents> AttachedRecords::agents() const
{
    const std::lock_guard lock(m_mutex);
    return m_agents;
}

std::shared_ptr<RecordStore> AttachedRecords::of(RowId agent) const
{
    const std::shared_ptr<const Agents> all = agents();
    const auto found = all->find(agent);
    if (found == all->end())
        return m_stored;
    if (!found->second.records)
        throw ReportableError(found->second.problem);
    return found->second.records;
}

std::optional<RecordExtent> AttachedRecords::extent(RowId agent)
{
    const std::shared_ptr<const Agents> all = agents();
    const auto found = all->find(agent);
    if (found == all->end())
        return m_stored->extent(agent);
    if (!found->second.extent)
        throw ReportableError(found->second.problem);
    return found->second.extent->extent();
}

std::optional<RecordExtent> AttachedRecords::extent()
{
    std::optional<RecordExtent> all = m_stored->extent();
    for (const auto& [agent, attached] : *agents())
        try {
            if (attached.extent)
                all = united(all, attached.extent->extent());
        } catch (const ReportableError&) {  // whoever reads it is told
        }
    return all;
}

void AttachedRecords::closeIdle()
{
    m_stored->closeIdle();
    for (const auto& [agent, attached] : *agents())
        if (attached.records)
            attached.records->closeIdle();
}

}  // namespace plotix
