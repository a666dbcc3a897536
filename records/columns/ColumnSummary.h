#pragma once

#include "records/columns/ColumnView.h"

/// Count, extremes and sum of a column, cheap enough to compute while reading it.
///
/// Pure; any thread. The same values give the same bits on every processor.
namespace plotix {

/// Over the valid elements that are not NaN. All zero when there are none.
struct Summary {
    std::size_t valid = 0;
    double minimum = 0, maximum = 0;
    double sum = 0;

    void add(const Summary& other);
};

/// Adds up each run of 512 in sixteen sums, and the results with a compensated sum: off by at most some 36 units in the
/// last place of the sum of magnitudes, however long the column. Infinities of both signs sum up to NaN.
Summary summaryOf(const ColumnView& column, std::size_t count);

}  // namespace plotix
