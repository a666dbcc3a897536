#include "records/store/StorableBlock.h"

#include "base/ReportableError.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace plotix {

void requireWholeRecords(const RecordBlock& block)
{
    const std::span<const double> times = block.times.span();
    if (!std::all_of(times.begin(), times.end(), [](double time) { return std::isfinite(time); }))
        throw ReportableError(QStringLiteral("A record has no time: leave it out."));
    for (const RecordBlock::Column& column : block.columns)
        if (column.values.size() != times.size() ||
            (!column.validity.isAllValid() && column.validity.words().size() < (times.size() + 63) / 64))
            throw ReportableError(QStringLiteral("A column is shorter than its times: give every record a value."));
}

void requireDistinctProperties(const RecordBlock& block)
{
    std::set<RowId> seen;
    for (const RecordBlock::Column& column : block.columns)
        if (!seen.insert(column.property).second)
            throw ReportableError(
                QStringLiteral("Property %1 stands twice: give each one column.").arg(column.property));
}

void refuseProperty(RowId agent, RowId property)
{
    throw ReportableError(QStringLiteral("Agent %1 has no property %2: open the site again.").arg(agent).arg(property));
}

}  // namespace plotix
