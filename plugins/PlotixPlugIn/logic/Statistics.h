#pragma once

#include "base/ColumnRuns.h"
#include "base/SharedArray.h"
#include "base/ValidityBitmap.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

/// Minimum, maximum, average and count of a property's valid values.
///
/// Pure: no record, no widget. Everything is computed in double precision, in the order the values are given; the
/// caller narrows the results to store them. Any thread.
namespace plotix {

struct Statistics {
    double minimum = 0;
    double maximum = 0;
    double average = 0;       ///< not rounded
    std::int32_t points = 0;  ///< values counted; stays at the largest 32-bit number beyond it

    friend bool operator==(const Statistics&, const Statistics&) = default;
};

/// What is known of the values of a column that were not read, and what becomes of each: value × scale + offset.
/// *Borrows* the runs.
struct KnownValues {
    const KeptRuns& runs;  ///< of equal values the first one of a run stands there
    std::int64_t count = 0;
    double sum = 0;  ///< rounded once
    double scale = 1, offset = 0;
};

/// Takes values one by one or in blocks; blocks give exactly the same result. A value; one thread at a time.
///
/// Without any value the statistics are all 0. NaNs are never valid and never counted; infinities are.
class StatisticsAccumulator {
public:
    void add(double value);

    /// Adds those values of a block that are valid: element i by bit `first` + i of the bitmap.
    /// Requires: the bitmap covers the block.
    void addBlock(std::span<const double> values, const ValidityBitmap& validity, std::size_t first);

    /// As if all the values were added, but that their sum is rounded once and not at each step. False where only the
    /// values themselves tell the extremes: then nothing has been added.
    bool addKnown(const KnownValues& known);

    bool isEmpty() const { return m_count == 0; }
    Statistics statistics() const;

private:
    void addExtremes(double least, double greatest);
    void addAll(std::span<const double> values);
    /// A whole number of rows; false where a NaN is among them: then nothing has been added.
    bool addNumbers(std::span<const double> values);

    double m_minimum = std::numeric_limits<double>::max();
    double m_maximum = -std::numeric_limits<double>::max();
    double m_sum = 0;
    std::int64_t m_count = 0;
};

}  // namespace plotix
