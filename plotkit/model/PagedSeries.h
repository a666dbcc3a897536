#pragma once

#include "base/ColumnRuns.h"
#include "plotkit/model/CPTPagedPoints.h"
#include "plotkit/model/CPTPointSeries.h"

#include <cstddef>
#include <memory>
#include <span>

/// Makes series whose points are paged. Free functions; any thread.
namespace plotkit {

/// What is known of the points before any is looked at. *Shared* by the series.
struct PagedSeriesRuns {
    std::shared_ptr<const plotix::TimeRuns> times;
    /// As the points are written, so in their unit. Where the least or the greatest is NaN nothing is known.
    std::shared_ptr<const plotix::KeptRuns> values;
    /// Elements whose points may be others than the values of their run tell: exceptions.
    std::span<const std::size_t> changed = {};
};

/// The series of all `points`, which stand at the first elements of x. Looks into the runs of which too little is
/// known: those with infinite extremes (in single precision), or changed elements, or the one that the series ends in.
/// `pointCount`: how many elements are points. Requires: inside each run x never decreases.
CPTPointSeriesPtr pagedSeries(const plotix::PagedArray<double>& x, const PagedSeriesRuns& runs,
                              const std::shared_ptr<const CPTPagedPoints>& points, std::size_t pointCount);

}  // namespace plotkit
