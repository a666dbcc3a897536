#include "plugins/PlotixPlugIn/reading/LineGaps.h"

#include "plotkit/model/UsualDistance.h"

#include <limits>

namespace plotix {

namespace {

double longestJoinOf(const CPTScatterPlot& plot, const ReadingOptions& options)
{
    if (!options.hasBrokenLines())
        return std::numeric_limits<double>::infinity();
    if (options.longestJoin.value_or(0) > 0)
        return *options.longestJoin;
    const CPTPointSeriesPtr series = plot.series();
    return series ? kUsualDistancesJoined * plotkit::usualDistance(*series) : 0;
}

}  // namespace

void breakLinesAtGaps(CPTXYGraph& graph, const ReadingOptions& options)
{
    for (const CPTScatterPlotPtr& plot : graph.allPlots())
        plot->setGapThreshold(longestJoinOf(*plot, options));
}

}  // namespace plotix
