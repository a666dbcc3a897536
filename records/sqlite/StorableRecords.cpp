#include "records/sqlite/StorableRecords.h"

#include "records/sqlite/RecordSchema.h"
#include "records/store/StorableBlock.h"

#include <algorithm>

namespace plotix {

StorableRecords::StorableRecords(const Database& database)
    : m_owner(database, "SELECT agent FROM property WHERE id = ?")
{
}

bool StorableRecords::require(RowId agent, const RecordBlock& block)
{
    const bool doAscend = requireWholeRecords(block);
    const bool asLast =
        agent == m_lastAgent &&
        std::equal(block.columns.begin(), block.columns.end(), m_lastProperties.begin(), m_lastProperties.end(),
                   [](const RecordBlock::Column& column, RowId id) { return column.property == id; });
    if (!asLast)
        requireProperties(agent, block);
    return doAscend;
}

void StorableRecords::requireProperties(RowId agent, const RecordBlock& block)
{
    requireDistinctProperties(block);
    std::vector<RowId> properties;
    for (const RecordBlock::Column& column : block.columns) {
        if (!isOfAgent(agent, column.property))
            refuseProperty(agent, column.property);
        properties.push_back(column.property);
    }
    m_lastAgent = agent;
    m_lastProperties = std::move(properties);
}

bool StorableRecords::isOfAgent(RowId agent, RowId property)
{
    if (m_known.contains({agent, property}))
        return true;
    const bool exists = property > 0 && property < schema::kPropertiesPerChunk && m_owner.bind(1, property).step() &&
                        m_owner.integer(0) == agent;
    m_owner.reset();
    if (exists)
        m_known.insert({agent, property});
    return exists;
}

void StorableRecords::forget()
{
    m_known.clear();
    m_lastAgent = 0;
    m_lastProperties.clear();
}

}  // namespace plotix
