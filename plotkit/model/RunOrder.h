#pragma once

#include "base/ColumnRuns.h"

#include <cstddef>
#include <memory>

/// Whether the times of runs are sorted: worked out once for all series that share the runs. Free function; any thread.
namespace plotkit {

/// Whether the first and last times of the first `count` runs are finite and never decrease. What is found of all runs
/// is remembered as long as somebody owns them. Requires: count ≤ runs->count().
bool areTimesSorted(const std::shared_ptr<const plotix::TimeRuns>& runs, std::size_t count);

}  // namespace plotkit
