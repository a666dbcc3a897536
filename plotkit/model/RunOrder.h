#pragma once

#include "base/ColumnRuns.h"

#include <memory>

/// Whether the times of runs are sorted: worked out once for all series that share the runs. Free function; any thread.
namespace plotkit {

/// Whether the first and last times of all runs are finite and never decrease. The answer is remembered as long as
/// somebody owns the runs.
bool areTimesSorted(const std::shared_ptr<const plotix::TimeRuns>& runs);

}  // namespace plotkit
