#include "plugins/PlotixPlugIn/reading/trend/UsualJoin.h"

#include "plotkit/model/UsualDistance.h"

#include <cmath>

namespace plotix {

double usualJoin(const CPTPointSeries& series)
{
    return kUsualDistancesJoined * plotkit::usualDistance(series);
}

double longestJoinOf(const CPTScatterPlot& plot)
{
    const CPTPointSeriesPtr series = plot.series();
    if (std::isfinite(plot.gapThreshold()) || !series)
        return series ? plot.gapThreshold() : 0;
    return usualJoin(*series);
}

}  // namespace plotix
