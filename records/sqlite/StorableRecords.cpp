#include "records/sqlite/StorableRecords.h"

#include "base/ReportableError.h"
#include "storage/SiteSchema.h"

#include <algorithm>
#include <cmath>

namespace plotix {

StorableRecords::StorableRecords(const Database& database)
    : m_owner(database, "SELECT agent FROM property WHERE id = ?")
{
}

void StorableRecords::require(RowId agent, const RecordBlock& block)
{
    const std::span<const double> times = block.times.span();
    if (!std::all_of(times.begin(), times.end(), [](double time) { return std::isfinite(time); }))
        throw ReportableError(QStringLiteral("A record has no time: leave it out."));
    for (const RecordBlock::Column& column : block.columns)
        if (column.values.size() != times.size() ||
            (!column.validity.isAllValid() && column.validity.words().size() < (times.size() + 63) / 64))
            throw ReportableError(QStringLiteral("A column is shorter than its times: give every record a value."));
    const bool asLast =
        agent == m_lastAgent &&
        std::equal(block.columns.begin(), block.columns.end(), m_lastProperties.begin(), m_lastProperties.end(),
                   [](const RecordBlock::Column& column, RowId id) { return column.property == id; });
    if (!asLast)
        requireProperties(agent, block);
}

void StorableRecords::requireProperties(RowId agent, const RecordBlock& block)
{
    std::vector<RowId> properties;
    std::set<RowId> seen;
    for (const RecordBlock::Column& column : block.columns) {
        if (!seen.insert(column.property).second)
            throw ReportableError(
                QStringLiteral("Property %1 stands twice: give each one column.").arg(column.property));
        if (!isOfAgent(agent, column.property))
            throw ReportableError(
                QStringLiteral("Agent %1 has no property %2: open the site again.").arg(agent).arg(column.property));
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
