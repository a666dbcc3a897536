#pragma once

#include "records/store/RecordBlock.h"

#include <algorithm>
#include <cmath>
#include <vector>

/// What came to be recorded otherwise than in order of time. Only these exceptions are noted; a record without one came
/// when it was the newest, or before anything later was there. Values; any thread.
namespace plotix {

/// A stretch of one property's records that were amended after the fact. All times: seconds since 1970-01-01 UTC.
struct Amendment {
    /// Stored: never change.
    enum class Kind {
        Late = 1,      ///< put between values that were there
        Corrected = 2  ///< another value, or none, took the place of what was there
    };
    RowId property = 0;
    Kind kind = Kind::Late;
    double from = 0, to = 0;     ///< of its first and last record; from ≤ to
    double first = 0, last = 0;  ///< when that happened, to the record at `from` and to that at `to`

    friend bool operator==(const Amendment&, const Amendment&) = default;
};

/// Records of a source that is always late are one stretch as long as their delays differ by no more than this, so that
/// when each of them came can be told from the ends of the stretch.
inline constexpr double kSameDelay = 60;  // seconds

/// Whether `next`, whose records follow those of `before` with none between, is the same stretch going on.
inline bool goesOn(const Amendment& before, const Amendment& next)
{
    if (before.property != next.property || before.kind != next.kind)
        return false;
    if (before.first == before.last && before.last == next.first && next.first == next.last)
        return true;  // all at one time
    return next.first >= before.last && std::abs((next.first - next.from) - (before.last - before.to)) <= kSameDelay;
}

/// When the record at `time` came: between the ends as time is between those of the stretch.
inline double cameAt(const Amendment& amendment, double time)
{
    const double length = amendment.to - amendment.from;
    const double share = length > 0 ? std::clamp((time - amendment.from) / length, 0.0, 1.0) : 1.0;
    return amendment.first + share * (amendment.last - amendment.first);
}

/// What is left of it before and behind [from, to]: none, one or two stretches.
std::vector<Amendment> without(const Amendment& amendment, double from, double to);
/// What of it lies in [from, to]. Requires: some does.
Amendment within(const Amendment& amendment, double from, double to);

}  // namespace plotix
