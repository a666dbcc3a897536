#include "plugins/PlotixPlugIn/reading/values/LineRecords.h"

#include "plotkit/model/CPTSeriesIndex.h"
#include "plotkit/model/UsualDistance.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace plotix {

namespace {

/// How many usual distances the last record counts for where the line joins everything.
constexpr double kDistancesOfLast = 5;

bool canBeLookedUp(const LineRecords& line)
{
    return line.series && line.series->isXSorted();
}

std::span<const double> timesOf(const LineRecords& line)
{
    return line.series->x().span().first(line.series->elementCount());
}

/// The last record before the first element that `isBeyond` holds for.
template <class FirstBeyond>
OptionalLineRecord lastRecordBefore(const LineRecords& line, double time, FirstBeyond firstBeyond)
{
    if (!canBeLookedUp(line) || std::isnan(time))
        return std::nullopt;
    const std::span<const double> times = timesOf(line);
    const auto beyond = static_cast<std::size_t>(firstBeyond(times.begin(), times.end(), time) - times.begin());
    return recordOf(line, line.series->index().lastPointBefore(beyond));
}

constexpr auto kAfter = [](auto first, auto last, double time) { return std::upper_bound(first, last, time); };
constexpr auto kFrom = [](auto first, auto last, double time) { return std::lower_bound(first, last, time); };

}  // namespace

double LineRecords::valueAt(std::size_t element) const
{
    if (!column || element >= column->size())
        return static_cast<double>(series->y()[element]);
    const auto exception = column->exceptions().find(element);
    if (exception != column->exceptions().end() && exception->second)
        return exception->second->unitValue();
    return column->unitValue(element);
}

double lastCountsFor(const LineRecords& line)
{
    return std::isfinite(line.longestJoin) ? line.longestJoin : kDistancesOfLast * line.usualDistance;
}

LineRecords lineRecords(CPTPointSeriesPtr series, std::shared_ptr<const KTVRecordColumn> column, double longestJoin)
{
    LineRecords line{std::move(series), std::move(column)};
    if (longestJoin > 0)
        line.longestJoin = longestJoin;
    if (line.series)
        line.usualDistance = plotkit::usualDistance(*line.series);
    return line;
}

OptionalLineRecord recordOf(const LineRecords& line, std::size_t element)
{
    if (!line.series || element >= line.series->elementCount())
        return std::nullopt;
    return LineRecord{element, line.series->x()[element], line.valueAt(element)};
}

OptionalLineRecord recordAtOrBefore(const LineRecords& line, double time)
{
    return lastRecordBefore(line, time, kAfter);
}

OptionalLineRecord recordBefore(const LineRecords& line, double time)
{
    return lastRecordBefore(line, time, kFrom);
}

OptionalLineRecord recordAfter(const LineRecords& line, double time)
{
    if (!canBeLookedUp(line) || std::isnan(time))
        return std::nullopt;
    const std::span<const double> times = timesOf(line);
    const auto after = static_cast<std::size_t>(kAfter(times.begin(), times.end(), time) - times.begin());
    return recordOf(line, line.series->index().firstPointFrom(after));
}

OptionalLineRecord nearestRecord(const LineRecords& line, double time)
{
    const OptionalLineRecord before = recordAtOrBefore(line, time);
    const OptionalLineRecord after = recordAfter(line, time);
    if (!before || !after)
        return before ? before : after;
    return after->time - time < time - before->time ? after : before;
}

LineReading readingAt(const LineRecords& line, double time, double reach)
{
    const OptionalLineRecord before = recordAtOrBefore(line, time);
    const OptionalLineRecord after = recordAfter(line, time);
    const bool isThere = before && (before->time == time || (after ? after->time - before->time <= line.longestJoin
                                                                   : time - before->time <= lastCountsFor(line)));
    if (isThere)
        return {before, time - before->time};
    const OptionalLineRecord nearest = nearestRecord(line, time);
    if (nearest && std::abs(time - nearest->time) <= reach)
        return {nearest, time - nearest->time};
    return {};
}

}  // namespace plotix
