#pragma once

#include "base/RecordTimes.h"
#include "plugins/PlotixPlugIn/host/KTVAmendments.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <cstdint>
#include <vector>

/// How many records of a property are not what they seem: not valid, late, or corrected. Values and a free function;
/// main thread only, as columns are.
namespace plotix {

struct QualityCounts {
    std::int64_t notValid = 0;  ///< recorded, and no valid value
    std::int64_t late = 0, corrected = 0;

    friend bool operator==(const QualityCounts&, const QualityCounts&) = default;
};

/// Of the records at times in `within`, both ends included. What was never recorded counts nowhere; a record that came
/// late and was corrected counts as both. `times` ascend and may be more than the column has elements. Takes time with
/// the records that are not valid, late or corrected, and with all in a column of which many are not valid.
QualityCounts countQuality(const KTVRecordColumn& column, const RecordTimes& times, const TimeSpan& within,
                           const std::vector<KTVAmendment>& amendments);

}  // namespace plotix
