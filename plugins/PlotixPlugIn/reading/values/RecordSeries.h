#pragma once

#include "plotkit/model/CPTPointSeries.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"

/// Records as the points of a line. Free functions; main thread only, as columns are.
namespace plotix {

/// The points of one column in its current unit; the times are shared. A column shorter than the times ends the series
/// there.
CPTPointSeriesPtr seriesOfRecords(const SharedArray<double>& time, const KTVRecordColumn& column);

}  // namespace plotix
