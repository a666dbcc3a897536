#include "records/store/StorableBlock.h"

#include "base/ReportableError.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace plotix {

bool requireWholeRecords(const RecordBlock& block)
{
    const std::span<const double> times = block.times.span();
    const auto isFinite = [](double time) { return std::isfinite(time); };
    // Where times ascend, one that is not finite stands at an end: long blocks are gone through once.
    const bool doAscend = ascend(times);
    if (!(doAscend ? times.empty() || (isFinite(times.front()) && isFinite(times.back()))
                   : std::all_of(times.begin(), times.end(), isFinite)))
        throw ReportableError(QStringLiteral("A record has no time: leave it out."));
    for (const RecordBlock::Column& column : block.columns)
        if (column.values.size() != times.size() ||
            (!column.validity.isAllValid() && column.validity.words().size() < (times.size() + 63) / 64))
            throw ReportableError(QStringLiteral("A column is shorter than its times: give every record a value."));
    return doAscend;
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
