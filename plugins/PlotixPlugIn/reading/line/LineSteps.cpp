#include "plugins/PlotixPlugIn/reading/line/LineSteps.h"

#include "plugins/PlotixPlugIn/reading/line/LineReadout.h"
#include "plugins/PlotixPlugIn/reading/values/LineEvents.h"
#include "plugins/PlotixPlugIn/reading/values/LineExtremes.h"

#include <algorithm>

namespace plotix {

namespace {

using OptionalTime = std::optional<double>;

// Noise has turns everywhere: what people call a maximum stands out in the picture.
constexpr double kStandsOut = 4;          // points of height, and
constexpr double kStandsOutShare = 0.05;  // of the height of its lane
constexpr double kStandsAlone = 3;        // points of width

OptionalTime timeOf(const OptionalLineRecord& record)
{
    return record ? OptionalTime(record->time) : std::nullopt;
}

OptionalTime timeOfRecord(const LineRecords& line, double time, Towards towards)
{
    return timeOf(towards == Towards::Later ? recordAfter(line, time) : recordBefore(line, time));
}

OptionalTime timeOfGap(const LineRecords& line, double time, Towards towards)
{
    const auto gap = towards == Towards::Later ? gapAfter(line, time) : gapBefore(line, time);
    return gap ? OptionalTime(gap->from) : std::nullopt;
}

OptionalTime timeOfCrossing(const LineRecords& line, double time, double value, Towards towards)
{
    return timeOf(towards == Towards::Later ? crossingAfter(line, time, value) : crossingBefore(line, time, value));
}

/// The nearest place where the line passes any of its limits.
OptionalTime timeOfLimit(const TrendLine& line, double time, Towards towards)
{
    OptionalTime nearest;
    for (const KTVLimit& limit : line.limits) {
        const OptionalTime crossing = timeOfCrossing(line.records, time, limit.value, towards);
        if (crossing && (!nearest || (towards == Towards::Later ? *crossing < *nearest : *crossing > *nearest)))
            nearest = crossing;
    }
    return nearest;
}

OptionalTime timeOfExtreme(const TrendLine& line, double time, Extreme kind, Towards towards,
                           const plotkit::GraphGeometry& geometry)
{
    const CPTPointSeries& series = *line.plot->series();  // as it is drawn: what stands out is a matter of the picture
    const CPTXYPlotSpace& space = geometry.graph.plotSpaceOf(*line.plot);
    const auto values = geometry.yMappingOf(space);
    const double height = std::max(kStandsOut, kStandsOutShare * geometry.areaOf(space).height());
    const ExtremeSize size{height * plotkit::valuePerUnit(values), kStandsAlone * secondsPerPoint(geometry)};
    const auto element =
        towards == Towards::Later ? extremeAfter(series, time, kind, size) : extremeBefore(series, time, kind, size);
    return element ? OptionalTime(series.x().valueAt(*element)) : std::nullopt;
}

OptionalTime timeOfStep(const TrendLine& line, const StepFrom& from, Step step, Towards towards,
                        const plotkit::GraphGeometry& geometry)
{
    switch (step) {
    case Step::Record: return timeOfRecord(line.records, from.time, towards);
    case Step::Extreme: return timeOfExtreme(line, from.time, Extreme::Either, towards, geometry);
    case Step::Maximum: return timeOfExtreme(line, from.time, Extreme::Maximum, towards, geometry);
    case Step::Minimum: return timeOfExtreme(line, from.time, Extreme::Minimum, towards, geometry);
    case Step::Gap: return timeOfGap(line.records, from.time, towards);
    case Step::Limit: return timeOfLimit(line, from.time, towards);
    case Step::SameValue:
        return from.value ? timeOfCrossing(line.records, from.time, *from.value, towards) : std::nullopt;
    case Step::Pixel: break;
    }
    return std::nullopt;
}

}  // namespace

std::optional<double> timeOfStep(const std::vector<TrendLine>& lines, const StepFrom& from, Step step, Towards towards,
                                 const plotkit::GraphGeometry& geometry)
{
    if (step == Step::Pixel)
        return from.time + (towards == Towards::Later ? 1 : -1) * secondsPerPoint(geometry);
    const bool followsOne = std::any_of(lines.begin(), lines.end(),
                                        [&from](const TrendLine& each) { return each.line.key == from.chosen; });
    OptionalTime nearest;
    for (const TrendLine& each : lines) {
        if (followsOne ? each.line.key != from.chosen : step == Step::SameValue)
            continue;
        const OptionalTime time = timeOfStep(each, from, step, towards, geometry);
        if (time && (!nearest || (towards == Towards::Later ? *time < *nearest : *time > *nearest)))
            nearest = time;
    }
    return nearest;
}

}  // namespace plotix
