#pragma once

#include "base/RecordTimes.h"
#include "plotkit/model/CPTPointSeries.h"
#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"

#include <map>

/// Records as the points of a line. Free functions; main thread only, as columns are.
namespace plotix {

/// The points of one column in its current unit; the times are shared. A column shorter than the times ends the series
/// there.
///
/// A paged column of whose runs is known becomes a paged series, without a look at its values but where exceptions or
/// infinities stand; of the same records in the same unit all are one series. Other paged columns, and those in a unit
/// reached by no linear map, are read page by page.
CPTPointSeriesPtr seriesOfRecords(const RecordTimes& time, const KTVRecordColumn& column);

/// Of all columns, by key; long paged ones side by side on several threads, which have ended when this answers.
/// Requires: there are times.
std::map<QString, CPTPointSeriesPtr> seriesOfRecords(const KTVRecordDictionary& records);

}  // namespace plotix
