#pragma once

#include "base/RecordTimes.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"

#include <vector>

/// Stretches of paged records one behind the other, at moved times: paged themselves, and read where somebody looks.
/// Free functions; main thread only, as columns are.
namespace plotix {

/// Elements [first, last), and how far their times are moved. Not empty.
struct TakenRun {
    std::size_t first = 0, last = 0;
    double shift = 0;
};

/// Of moved times that decrease somewhere nothing is known of their runs. Requires: paged times whose runs are known;
/// there are runs to take.
RecordTimes takenTimes(const RecordTimes& times, const std::vector<TakenRun>& runs);

/// The same elements of a column, all but its exceptions. Elements past its end are no values. Looks at the runs that
/// are taken in part, and at all where some are not valid, to count the others. Requires: the column's values are paged
/// and its runs, which are those of `times`, are known.
std::shared_ptr<KTVRecordColumn> takenColumn(const KTVRecordColumn& column, const RecordTimes& times,
                                             const std::vector<TakenRun>& runs);

}  // namespace plotix
