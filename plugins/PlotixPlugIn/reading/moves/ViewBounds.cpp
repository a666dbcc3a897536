#include "plugins/PlotixPlugIn/reading/moves/ViewBounds.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kBeside = 0.1;      // of the range: so far it may reach beyond the records
constexpr double kLongest = 1.5;     // times all records
constexpr double kTallest = 100;     // times all values
constexpr double kInSight = 0.1;     // of the range, or of the values where they are less
constexpr qint64 kAskAgain = 2'000;  // milliseconds: records may be added meanwhile

bool isRange(const CPTPlotRange& range)
{
    return std::isfinite(range.location) && std::isfinite(range.length) && range.length > 0;
}

bool touch(const CPTPlotRange& range, const TimeSpan& span)
{
    return range.location <= span.to && range.location + range.length >= span.from;
}

/// Whether the graph shows no record: it then has a point at the beginning of 1970, which is fitted like any other.
bool isEmpty(const CPTXYGraph& graph, const TimeSpan& whole)
{
    return std::none_of(graph.allPlots().begin(), graph.allPlots().end(), [&whole](const CPTScatterPlotPtr& plot) {
        const auto extent = plot->series() ? plot->series()->extent() : std::nullopt;
        return extent && extent->minX <= whole.to && extent->maxX >= whole.from;
    });
}

CPTPlotRange shortened(const CPTPlotRange& range, double longest)
{
    if (range.length <= longest)
        return range;
    return {range.location + (range.length - longest) / 2, longest};
}

}  // namespace

CPTPlotRange boundedTimes(const CPTPlotRange& proposed, const TimeSpan& whole)
{
    const double length = whole.to - whole.from;
    if (!isRange(proposed) || !(length > 0))
        return proposed;
    CPTPlotRange range = shortened(proposed, kLongest * length);
    const double beside = kBeside * range.length;
    const double first = whole.from - beside;
    const double last = whole.to + beside - range.length;
    range.location = std::clamp(range.location, std::min(first, last), std::max(first, last));
    return range;
}

CPTPlotRange boundedValues(const CPTPlotRange& proposed, double lowest, double highest)
{
    const double length = highest - lowest;
    if (!isRange(proposed) || !(length > 0) || !std::isfinite(length))
        return proposed;
    CPTPlotRange range = shortened(proposed, kTallest * length);
    const double inSight = kInSight * std::min(range.length, length);
    range.location = std::clamp(range.location, lowest + inSight - range.length, highest - inSight);
    return range;
}

ViewBounds::~ViewBounds()
{
    setOn(false);
}

void ViewBounds::setOn(bool on)
{
    m_isOn = on;
    m_sinceAsked.invalidate();
    const CPTXYGraphPtr graph = m_trend.graph();
    if (on)
        watchSpaces();
    else if (graph)
        for (const CPTXYPlotSpacePtr& space : graph->allPlotSpaces())
            space->setBounder({});
}

void ViewBounds::watchSpaces()
{
    m_sinceAsked.invalidate();
    const CPTXYGraphPtr graph = m_isOn ? m_trend.graph() : nullptr;
    if (!graph)
        return;
    for (const CPTXYPlotSpacePtr& space : graph->allPlotSpaces())
        space->setBounder([this, bounded = space.get()](const CPTPlotRange& proposed, CPTCoordinate coordinate) {
            return this->bounded(*bounded, proposed, coordinate);
        });
}

CPTPlotRange ViewBounds::bounded(const CPTXYPlotSpace& space, const CPTPlotRange& proposed, CPTCoordinate coordinate)
{
    const CPTXYGraphPtr graph = m_trend.graph();
    if (!graph || m_trend.movesByItself())
        return proposed;
    if (coordinate == CPTCoordinate::X) {
        const std::optional<TimeSpan> times = whole();
        if (!times)
            return proposed;
        if (touch(proposed, *times) || !isEmpty(*graph, *times))
            return boundedTimes(proposed, *times);
        const std::optional<TimeSpan> read = m_trend.readSpan();
        return read && read->to > read->from ? CPTPlotRange{read->from, read->to - read->from} : proposed;
    }
    double lowest = HUGE_VAL;
    double highest = -HUGE_VAL;
    for (const CPTScatterPlotPtr& plot : graph->plotsIn(space))
        if (const auto extent = plot->series() ? plot->series()->extent() : std::nullopt) {
            lowest = std::min(lowest, static_cast<double>(extent->minY));
            highest = std::max(highest, static_cast<double>(extent->maxY));
        }
    return boundedValues(proposed, lowest, highest);
}

/// All that is stored, and what the trend shows of it or has asked for.
std::optional<TimeSpan> ViewBounds::whole()
{
    if (!m_sinceAsked.isValid() || m_sinceAsked.hasExpired(kAskAgain)) {
        m_recorded = m_trend.recordedSpan();
        m_sinceAsked.start();
    }
    if (!m_recorded)
        return std::nullopt;
    TimeSpan all = *m_recorded;
    if (const std::optional<TimeSpan> read = m_trend.readSpan())
        all = {std::min(all.from, read->from), std::max(all.to, read->to)};
    return all;
}

}  // namespace plotix
