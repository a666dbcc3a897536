#pragma once

#include <cstdint>
#include <limits>

/// The figures of one line over a span of time, and the sums that they are made of. Values and free functions; any
/// thread. Times are seconds since 1970-01-01 UTC.
namespace plotix {

/// What is added up over a stretch of points. Two stretches that follow each other are joined into one.
struct PointSums {
    std::int64_t count = 0;
    double minimum = 0, maximum = 0, sum = 0;  ///< without points nothing of this means anything
    double squares = 0;                        ///< of the distances to the mean
    double firstTime = 0, firstValue = 0, lastTime = 0, lastValue = 0;
    double covered = 0;             ///< seconds between points that are joined
    double held = 0, straight = 0;  ///< value × seconds: held until the next point; beneath straight lines
    std::int64_t gaps = 0;          ///< pairs of points further apart than what is joined

    friend bool operator==(const PointSums&, const PointSums&) = default;
};

/// Requires: `later` begins at or after the end of `sums`.
void append(PointSums& sums, const PointSums& later, double longestJoin);

/// A part of the way from one point to the next: adds what lies in it to covered, held, straight or the gaps.
struct Stretch {
    double firstTime = 0, firstValue = 0, lastTime = 0, lastValue = 0;  ///< of the two points
    double from = 0, to = 0;                                            ///< which part
};
void addStretch(PointSums& sums, const Stretch& stretch, double longestJoin);

/// A NaN is a figure that does not exist: nothing was recorded, or too little.
struct LineFigures {
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    std::int64_t points = 0;                      ///< records with a value, inside the span
    double minimum = kNone, minimumTime = kNone;  ///< of equal ones the first
    double maximum = kNone, maximumTime = kNone;
    double first = kNone, firstTime = kNone;
    double last = kNone, lastTime = kNone;
    double sum = kNone, mean = kNone;
    double deviation = kNone;                               ///< of a sample: divided by one less than the points
    double heldMean = kNone;                                ///< weighted by time, each value held until the next
    double straightMean = kNone;                            ///< weighted by time, along straight lines
    double heldIntegral = kNone, straightIntegral = kNone;  ///< value × seconds
    double covered = 0;                                     ///< seconds of the span between records that are joined
    double coverage = kNone;  ///< the share of the span that is covered, 0 to 1; a span of no length has none
    std::int64_t gaps = 0;    ///< stretches of the span in which nothing was recorded

    double range() const { return maximum - minimum; }
};

}  // namespace plotix
