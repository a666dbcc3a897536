#include "plugins/PlotixPlugIn/reading/values/LineEvents.h"

#include "plugins/PlotixPlugIn/reading/values/SeriesReader.h"
#include "plugins/PlotixPlugIn/reading/values/SeriesWalk.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kChunk = 4096;  // elements; a multiple of 64

/// Whether all of the elements [first, first + kChunk] are points, none too far from the next. Written so that the
/// compiler makes vectors of it.
bool isJoinedThroughout(const LineRecords& line, std::size_t first)
{
    const CPTPointSeries& series = *line.series;
    const CPTPointSeries::Hold held = series.hold(first, first + kChunk + 1);
    if (!series.points().isAllValid())
        for (std::size_t word = first / 64; word <= (first + kChunk) / 64; ++word)
            if (series.points().words()[word] != ~std::uint64_t{0})
                return false;
    const double* x = series.x().data() + first;
    const float* y = series.y().data() + first;
    std::int64_t farApart = 0;
    std::int32_t unusual = 0;
    for (std::size_t index = 0; index < kChunk; ++index)
        farApart += x[index + 1] - x[index] > line.longestJoin ? 1 : 0;
    for (std::size_t index = 0; index <= kChunk; ++index)
        unusual += std::abs(y[index]) <= std::numeric_limits<float>::max() ? 0 : 1;
    return farApart == 0 && unusual == 0;
}

bool canHaveGaps(const LineRecords& line, double time)
{
    return line.series && line.series->isXSorted() && std::isfinite(line.longestJoin) && !std::isnan(time);
}

/// The sides of a limit, and the blocks that lie on one of them. Narrowing keeps the order of two numbers or makes them
/// equal, so that the index decides whatever is not at the narrowed limit itself.
struct Sides {
    const LineRecords& line;
    double limit;

    bool isAbove(std::size_t element) const { return line.valueAt(element) > limit; }
    bool isOnSide(bool above, float least, float greatest) const
    {
        const auto narrow = static_cast<float>(limit);
        return above ? least > narrow : greatest < narrow;
    }
};

}  // namespace

std::optional<LineGap> gapAfter(const LineRecords& line, double time)
{
    if (!canHaveGaps(line, time))
        return std::nullopt;
    const OptionalLineRecord start = recordAfter(line, time);
    const CPTPointSeries& series = *line.series;
    const std::size_t count = series.elementCount();
    std::size_t point = start ? start->element : count;
    SeriesReader reader(series);  // it keeps the page that all of these look at
    while (point < count) {
        const double here = reader.x(point);
        if (point % 64 == 0 && point + kChunk < count && isJoinedThroughout(line, point)) {
            point += kChunk;
            continue;
        }
        const std::size_t next = series.index().firstPointFrom(point + 1);
        if (next < count && reader.x(next) - here > line.longestJoin)
            return LineGap{here, reader.x(next)};
        point = next;
    }
    return std::nullopt;
}

std::optional<LineGap> gapBefore(const LineRecords& line, double time)
{
    if (!canHaveGaps(line, time))
        return std::nullopt;
    const OptionalLineRecord start = recordBefore(line, time);
    const CPTPointSeries& series = *line.series;
    const std::size_t count = series.elementCount();
    std::size_t point = start ? start->element : count;
    std::size_t next = start ? series.index().firstPointFrom(point + 1) : count;  // of the gap that begins at `point`
    SeriesReader reader(series);
    while (point < count) {
        const double there = next < count ? reader.x(next) : 0;
        const double here = reader.x(point);
        if (next < count && there - here > line.longestJoin)
            return LineGap{here, there};
        if (point % 64 == 0 && point >= kChunk && isJoinedThroughout(line, point - kChunk))
            point -= kChunk;
        next = point;
        point = series.index().lastPointBefore(point);
    }
    return std::nullopt;
}

OptionalLineRecord crossingAfter(const LineRecords& line, double time, double limit)
{
    OptionalLineRecord start = recordAtOrBefore(line, time);
    if (!start)
        start = recordAfter(line, time);
    if (!start || std::isnan(limit))
        return std::nullopt;
    const Sides sides{line, limit};
    const bool above = sides.isAbove(start->element);
    const auto found = walkForward(
        *line.series, start->element + 1, line.series->elementCount(),
        [&](float least, float greatest, auto...) { return sides.isOnSide(above, least, greatest); },
        [&](std::size_t element, float) { return sides.isAbove(element) != above; });
    return found ? recordOf(line, *found) : std::nullopt;
}

OptionalLineRecord crossingBefore(const LineRecords& line, double time, double limit)
{
    const OptionalLineRecord start = recordBefore(line, time);
    if (!start || std::isnan(limit))
        return std::nullopt;
    const Sides sides{line, limit};
    const bool above = sides.isAbove(start->element);
    const auto found = walkBackward(
        *line.series, 0, start->element,
        [&](float least, float greatest, auto...) { return sides.isOnSide(above, least, greatest); },
        [&](std::size_t element, float) { return sides.isAbove(element) != above; });
    return found ? recordOf(line, line.series->index().firstPointFrom(*found + 1)) : std::nullopt;
}

}  // namespace plotix
