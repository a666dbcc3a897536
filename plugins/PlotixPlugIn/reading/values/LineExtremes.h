#pragma once

#include "plotkit/model/CPTPointSeries.h"

#include <cstddef>
#include <optional>

/// Where a line turns, as a reader of its picture sees it. Pure; any thread.
///
/// A *maximum* is a point from which the line falls by at least `prominence` on either side before it rises above the
/// point, and above which nothing lies within `reach` on either side; of points equally high the first one counts. A
/// minimum is the same upside down. What lies beyond the first or the last point counts for nothing, so that neither of
/// them is one. Gaps are looked past. The cost is that of the index of the series between here and there, and at most a
/// few steps for every `reach` that the line stays crowded.
namespace plotix {

enum class Extreme { Maximum, Minimum, Either };

struct ExtremeSize {
    double prominence = 0;  ///< value units; not positive: any turn counts
    double reach = 0;       ///< seconds
};

/// The element of the first extreme later than `time`; nothing: there is none, or times run backwards.
std::optional<std::size_t> extremeAfter(const CPTPointSeries& series, double time, Extreme kind, ExtremeSize size);
/// The element of the last extreme earlier than `time`.
std::optional<std::size_t> extremeBefore(const CPTPointSeries& series, double time, Extreme kind, ExtremeSize size);

}  // namespace plotix
