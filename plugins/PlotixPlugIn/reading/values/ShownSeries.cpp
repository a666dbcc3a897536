#include "plugins/PlotixPlugIn/reading/values/ShownSeries.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace plotix {

namespace {

/// What a series is made of. The addresses are its own as long as the series lives, which keeps what lies there.
struct Origin {
    const PagedMemory* times = nullptr;
    const TimeRuns* runs = nullptr;
    const PagedMemory* values = nullptr;
    std::size_t size = 0;
    std::int64_t points = 0;
    bool isAsArchived = true;
    double scale = 1, offset = 0;  // of the map to the unit shown

    Origin(const RecordTimes& time, const KTVRecordColumn& column)
        : times(time.memory().get()),
          runs(time.runs().get()),
          values(column.archivedValues().memory().get()),
          size(column.size()),
          points(column.known().count),
          isAsArchived(column.map().isIdentity),
          scale(column.map().scale),
          offset(column.map().offset)
    {
    }
    friend bool operator==(const Origin&, const Origin&) = default;
};

using Noted = std::vector<std::pair<Origin, std::weak_ptr<const CPTPointSeries>>>;

Noted& noted()
{
    static Noted all;
    return all;
}

}  // namespace

CPTPointSeriesPtr shownSeries(const RecordTimes& time, const KTVRecordColumn& column)
{
    if (!column.exceptions().empty())
        return nullptr;
    const Origin origin(time, column);
    for (const auto& [from, series] : noted())
        if (from == origin)
            if (CPTPointSeriesPtr shown = series.lock())
                return shown;
    return nullptr;
}

void noteShown(const RecordTimes& time, const KTVRecordColumn& column, const CPTPointSeriesPtr& series)
{
    std::erase_if(noted(), [](const auto& each) { return each.second.expired(); });
    if (column.exceptions().empty() && shownSeries(time, column) != series)
        noted().emplace_back(Origin(time, column), series);
}

}  // namespace plotix
