#pragma once

#include "records/columns/ColumnView.h"

/// Count, extremes and sum of a column, fast enough to go along with reading it.
///
/// Pure; any thread. The same values give the same bits on every processor.
namespace plotix {

/// Of the valid elements that are no NaN. All zero where there is none.
struct Summary {
    std::size_t valid = 0;
    double minimum = 0, maximum = 0;
    double sum = 0;

    void add(const Summary& other);
};

/// Sums runs of 512 in sixteen sums each, and what those come to with the error of each addition carried along: off by
/// some 36 units in the last place of the sum of magnitudes at the very most, however long the column. Infinities of
/// both signs sum up to NaN.
Summary summaryOf(const ColumnView& column, std::size_t count);

}  // namespace plotix
