#pragma once

#include <cstddef>
#include <cstdint>

/// The inner loops of the figures of a line: over values, and over each point together with the next one.
///
/// Compiled for several processors, chosen at run time (see base/vectors); all give the same bits. Values are numbers,
/// never NaN; times are seconds and never decrease. What is so short that it has nothing to go through answers zeros.
/// Pure; any thread.
namespace plotix {

struct FigureKernels {
    /// Here a value may be a NaN.
    bool (*holdsNaN)(const double* values, std::size_t count);

    struct Values {
        double minimum = 0, maximum = 0;  ///< a zero may have either sign
        double sum = 0;
    };
    /// Requires: count > 0.
    Values (*values)(const double* values, std::size_t count);

    /// The sum of the squares of the distances to `mean`.
    double (*squares)(const double* values, std::size_t count, double mean);

    struct Pairs {
        double covered = 0;   ///< seconds between points that are joined
        double held = 0;      ///< value × seconds, each value held until the next point
        double straight = 0;  ///< value × seconds beneath straight lines
        std::int64_t gaps = 0;
    };
    /// Points are joined that lie no further apart than `longestJoin` seconds.
    Pairs (*pairs)(const double* times, const double* values, std::size_t count, double longestJoin);

    struct Sides {
        double heldAbove = 0, heldBelow = 0;          ///< seconds
        double straightAbove = 0, straightBelow = 0;  ///< seconds
        std::int64_t crossings = 0;                   ///< from above to elsewhere or back, between joined points
    };
    Sides (*sides)(const double* times, const double* values, std::size_t count, double longestJoin, double limit);

    /// The fastest this processor runs. Alive as long as the program.
    static const FigureKernels& best();
};

}  // namespace plotix
