#include "plugins/PlotixPlugIn/reading/moves/ShownValues.h"

#include "plotkit/model/CPTSeriesIndex.h"
#include "plugins/PlotixPlugIn/reading/trend/FittedValues.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

void join(std::optional<ShownReach>& all, double lowest, double highest)
{
    all =
        all ? ShownReach{std::min(all->lowest, lowest), std::max(all->highest, highest)} : ShownReach{lowest, highest};
}

std::optional<ShownReach> reachOf(const CPTPointSeries& series, const CPTPlotRange& times)
{
    std::optional<ShownReach> reach;
    if (!series.isXSorted()) {
        const CPTPointSeries::Hold held = series.hold(0, series.elementCount());
        for (std::size_t element = 0; element < series.elementCount(); ++element)
            if (series.isPoint(element) && std::isfinite(series.y()[element]) &&
                series.x()[element] >= times.minLimit() && series.x()[element] <= times.maxLimit())
                join(reach, static_cast<double>(series.y()[element]), static_cast<double>(series.y()[element]));
        return reach;
    }
    const std::size_t first = series.elementFrom(times.minLimit());
    const std::size_t last = series.elementAfter(times.maxLimit());
    const CPTSeriesIndex::MinMax found = series.index().minMax(first, std::max(first, last));
    if (!found.isEmpty())
        join(reach, static_cast<double>(found.min), static_cast<double>(found.max));
    return reach;
}

}  // namespace

std::optional<ShownReach> shownReach(const CPTXYGraph& graph, const CPTXYPlotSpace& space)
{
    std::optional<ShownReach> all;
    for (const CPTScatterPlotPtr& plot : graph.plotsIn(space)) {
        const CPTPointSeriesPtr series = plot->isHidden() ? nullptr : plot->series();
        if (const auto reach = series ? reachOf(*series, space.xRange()) : std::nullopt)
            join(all, reach->lowest, reach->highest);
    }
    return all;
}

void fitValuesToShownTimes(CPTXYGraph& graph, CPTXYPlotSpace& space)
{
    const std::optional<ShownReach> reach = shownReach(graph, space);
    if (reach)
        space.setYRange(fittedValues(reach->lowest, reach->highest));
}

void fitValuesToShownTimes(CPTXYGraph& graph)
{
    const std::vector<CPTXYPlotSpacePtr> spaces = graph.allPlotSpaces();
    for (const CPTXYPlotSpacePtr& space : spaces)
        fitValuesToShownTimes(graph, *space);
}

}  // namespace plotix
