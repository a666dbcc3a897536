#pragma once

#include "base/SharedArray.h"
#include "plotkit/model/TimeCourse.h"

#include <cstddef>
#include <memory>

/// Whether times stand in order and how they run on, looked at once for all series that share them. Any thread.
namespace plotkit {

/// Whether the first `count` times are finite and never decrease. What was found of an array is remembered as long as
/// somebody owns it. Requires: count ≤ times.size().
bool areTimesSorted(const plotix::SharedArray<double>& times, std::size_t count);

/// The course of the times, of the first `count` at least; null where those are not in order or there are none. The
/// same for all who ask, *shared*. Requires: count ≤ times.size().
std::shared_ptr<const TimeCourse> courseOfTimes(const plotix::SharedArray<double>& times, std::size_t count);

}  // namespace plotkit
