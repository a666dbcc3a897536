#pragma once

#include "base/PagedArray.h"
#include "plotkit/model/TimeCourse.h"

#include <cstddef>
#include <memory>

/// Whether times are sorted, and their course: worked out once for all series that share the times. Any thread.
namespace plotkit {

/// Whether the first `count` times are finite and never decrease. The answer for an array is remembered as long as
/// somebody owns the array. Requires: count ≤ times.size(), and they are in memory.
bool areTimesSorted(const plotix::PagedArray<double>& times, std::size_t count);

/// The course of the times, of the first `count` at least; null where those are not sorted or there are none. All
/// callers *share* one. Requires: count ≤ times.size(), and they are in memory.
std::shared_ptr<const TimeCourse> courseOfTimes(const plotix::PagedArray<double>& times, std::size_t count);

}  // namespace plotkit
