#pragma once

#include "plotkit/model/CPTPlotRange.h"

/// What a proposed axis range becomes.
///
/// Pure: no plot space, no event, no clock. The caller reads the modifier keys at the moment of the proposal and
/// applies the verdict. Lengths are seconds on x and value units on y. Any thread.
namespace plotix {

struct ModifierKeys {
    bool option = false;
    bool shift = false;
};

struct RangeVerdict {
    CPTPlotRange range;     ///< what the plot space stores
    bool accepted = false;  ///< true only for an unchanged proposal on x or y: dates and ticks follow it

    friend bool operator==(const RangeVerdict&, const RangeVerdict&) = default;
};

inline constexpr double kLongestTimeSpan = 307'584'000;  ///< seconds: 3,560 days
inline constexpr double kLongestValueSpan = 5'000;
inline constexpr double kShortestSpan = 0.1;

/// Whether a range of values keeps to the limits of its length. Lifted: any length at which doubles can tell values
/// apart; a shorter one, such as that of a constant, becomes `kShortestSpan` long.
enum class ValueLimits { Kept, Lifted };

/// Limits are inclusive: a length of exactly 0.1 is accepted. A clamped range keeps its location. Option freezes y,
/// Shift alone freezes x, so that with both down only y is frozen. A range that is no number answers the current one.
RangeVerdict judgeRange(const CPTPlotRange& proposed, const CPTPlotRange& current, CPTCoordinate coordinate,
                        ModifierKeys modifiers, ValueLimits limits = ValueLimits::Kept);

}  // namespace plotix
