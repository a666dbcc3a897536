#include "plugins/PlotixPlugIn/logic/TimeTicks.h"

#include "plotkit/model/CPTClock.h"

#include <cmath>
#include <limits>

namespace plotix {
namespace {

constexpr double kUnbounded = std::numeric_limits<double>::infinity();

// From 30 days up the intervals are 8, 16 and 32 days, and the last one a year of 365 days.
constexpr std::array<TimeTickRow, kTimeTickRowCount> kTable{{
    // span below   major      minor  label
    {60, 15, 2, "h:mm:ssa"},
    {900, 60, 1, "h:mma"},
    {3'600, 900, 2, "h:mma"},
    {14'400, 1'800, 1, "h:mma"},
    {43'200, 3'600, 1, "h:mma"},
    {86'400, 14'400, 1, "MMM-dd\nh:mma"},
    {604'800, 43'200, 1, "MMM-dd\nh:mma"},
    {2'592'000, 86'400, 1, "MMM\ndd"},
    {5'184'000, 691'200, 1, "MMM-dd\nyyyy"},
    {15'552'000, 1'382'400, 1, "MMM-dd\nyyyy"},
    {31'536'000, 2'764'800, 1, "MMM-dd\nyyyy"},
    {kUnbounded, 31'536'000, 1, "MMM-dd\nyyyy"},
}};

}  // namespace

const std::array<TimeTickRow, kTimeTickRowCount>& timeTickTable()
{
    return kTable;
}

double wholeMinutes(double span)
{
    return span - std::fmod(span, 60.0);
}

const TimeTickRow& timeTicksForSpan(double span)
{
    const double minutes = wholeMinutes(span);
    for (const TimeTickRow& row : kTable)
        if (minutes < row.spanBelow)
            return row;
    return kTable.back();
}

double labelingOriginForLocalMidnight(double moment, const QTimeZone& zone)
{
    return -static_cast<double>(plotkit::offsetAt(zone, moment));
}

double majorIntervalForTimeSpan(double span)
{
    if (span <= 3'600)
        return 900;
    if (span <= 86'400)
        return 10'800;
    return span <= 604'800 ? span / 7 : span / 4;
}

double minorIntervalForTimeSpan(double span)
{
    if (span <= 3'600)
        return 4;
    if (span <= 86'400)
        return 2;
    if (span <= 604'800)
        return 1;
    if (span <= 2'419'200)
        return 4;
    return span <= 7'776'000 ? 8 : 16;
}

}  // namespace plotix
