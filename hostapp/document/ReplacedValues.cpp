#include "hostapp/document/ReplacedValues.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace plotix {

namespace {

bool isSame(const RecordBlock::Column& one, std::size_t i, const RecordBlock::Column& other, std::size_t j)
{
    return one.validity.isValid(i) == other.validity.isValid(j) &&
           std::memcmp(&one.values[i], &other.values[j], sizeof(double)) == 0;
}

}  // namespace

ReplacedValues replacedValues(RecordStore& stored, RowId agent, const RecordBlock& block)
{
    ReplacedValues replaced;
    if (block.times.size() == 0)
        return replaced;
    std::vector<RowId> properties;
    for (const RecordBlock::Column& column : block.columns)
        properties.push_back(column.property);
    std::set<RowId> changed;
    const std::span<const double> times = block.times.span();
    // Run by run, so that no more than one of them is in memory.
    for (const RecordOverview::Run& run : stored.overview(agent, {}, times.front(), times.back()).runs) {
        const RecordBlock before =
            *stored.read(agent, properties, std::max(run.t0, times.front()), std::min(run.t1, times.back()));
        auto next = times.begin();
        for (std::size_t j = 0; j < before.times.size(); ++j) {
            next = std::lower_bound(next, times.end(), before.times[j]);
            if (next == times.end() || *next != before.times[j])
                continue;
            const auto i = static_cast<std::size_t>(next - times.begin());
            for (std::size_t c = 0; c < properties.size(); ++c)
                if (before.columns[c].validity.isValid(j) && !isSame(block.columns[c], i, before.columns[c], j)) {
                    ++replaced.values;
                    changed.insert(properties[c]);
                }
        }
    }
    replaced.properties = changed.size();
    return replaced;
}

}  // namespace plotix
