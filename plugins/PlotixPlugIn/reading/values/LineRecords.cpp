#include "plugins/PlotixPlugIn/reading/values/LineRecords.h"

#include "plotkit/model/CPTSeriesIndex.h"
#include "plotkit/model/UsualDistance.h"

#include <cmath>

namespace plotix {

namespace {

/// How many usual distances the last record counts for where the line joins everything.
constexpr double kDistancesOfLast = 5;

bool canBeLookedUp(const LineRecords& line)
{
    return line.series && line.series->isXSorted();
}

/// The last record before the first element that lies beyond the time.
OptionalLineRecord lastRecordBefore(const LineRecords& line, double time,
                                    std::size_t (CPTPointSeries::*firstBeyond)(double) const)
{
    if (!canBeLookedUp(line) || std::isnan(time))
        return std::nullopt;
    const CPTPointSeries& series = *line.series;
    return recordOf(line, series.index().lastPointBefore((series.*firstBeyond)(time)));
}

}  // namespace

double LineRecords::valueAt(std::size_t element) const
{
    if (!column || element >= column->size())
        return static_cast<double>(series->y().valueAt(element));
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
    return LineRecord{element, line.series->x().valueAt(element), line.valueAt(element)};
}

OptionalLineRecord recordAtOrBefore(const LineRecords& line, double time)
{
    return lastRecordBefore(line, time, &CPTPointSeries::elementAfter);
}

OptionalLineRecord recordBefore(const LineRecords& line, double time)
{
    return lastRecordBefore(line, time, &CPTPointSeries::elementFrom);
}

OptionalLineRecord recordAfter(const LineRecords& line, double time)
{
    if (!canBeLookedUp(line) || std::isnan(time))
        return std::nullopt;
    return recordOf(line, line.series->index().firstPointFrom(line.series->elementAfter(time)));
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
