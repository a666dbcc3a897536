#include "plugins/PlotixPlugIn/reading/LineGaps.h"

#include "plugins/PlotixPlugIn/reading/trend/UsualJoin.h"

#include <limits>

namespace plotix {

namespace {

double longestJoinFor(const CPTScatterPlot& plot, const ReadingOptions& options)
{
    if (!options.hasBrokenLines())
        return std::numeric_limits<double>::infinity();
    if (options.longestJoin.value_or(0) > 0)
        return *options.longestJoin;
    const CPTPointSeriesPtr series = plot.series();
    return series ? usualJoin(*series) : 0;
}

}  // namespace

void breakLinesAtGaps(CPTXYGraph& graph, const ReadingOptions& options)
{
    for (const CPTScatterPlotPtr& plot : graph.allPlots())
        plot->setGapThreshold(longestJoinFor(*plot, options));
}

}  // namespace plotix
