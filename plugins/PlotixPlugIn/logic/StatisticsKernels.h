#pragma once

#include <cstddef>

/// The inner loop of the statistics: one sum in the order of the values, and the extremes in the same pass.
///
/// Compiled for several processors, chosen at run time (see base/vectors); all give the same sum. Pure; any thread.
namespace plotix {

struct StatisticsKernels {
    static constexpr std::size_t kRow = 8;  ///< values gone through at once

    struct Found {
        double sum = 0;
        double minimum = 0, maximum = 0;  ///< a zero may have either sign
        bool hasNaN = false;              ///< then nothing else means anything
    };

    /// Adds `count` values to `sum`, one after the other. Requires: count a multiple of kRow, and not 0.
    Found (*addUp)(const double* values, std::size_t count, double sum);

    /// The fastest this processor runs. Alive as long as the program.
    static const StatisticsKernels& best();
};

}  // namespace plotix
