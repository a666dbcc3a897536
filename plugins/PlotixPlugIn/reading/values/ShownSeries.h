#pragma once

#include "base/RecordTimes.h"
#include "plotkit/model/CPTPointSeries.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"

/// Series of paged records that are shown now, for whoever shows the same records in the same unit: a second trend of
/// ten years. Keeps none of them. Free functions; main thread only, as columns are.
namespace plotix {

/// Null where nobody shows such a series.
CPTPointSeriesPtr shownSeries(const RecordTimes& time, const KTVRecordColumn& column);

/// `series` was made of these, all of which it keeps. Requires: they are paged, in a unit that a linear map leads to.
void noteShown(const RecordTimes& time, const KTVRecordColumn& column, const CPTPointSeriesPtr& series);

}  // namespace plotix
