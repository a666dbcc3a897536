#pragma once

/// A stretch of time. A value; any thread.
namespace plotix {

/// Seconds since 1970-01-01 UTC; from ≤ to unless said otherwise.
struct TimeSpan {
    double from = 0, to = 0;

    friend bool operator==(const TimeSpan&, const TimeSpan&) = default;
};

/// Whether two spans are the same to a hundredth of a second: a range is kept as location and length, which rounds its
/// end.
bool isSameSpan(const TimeSpan& one, const TimeSpan& other);

}  // namespace plotix
