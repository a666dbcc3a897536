#pragma once

#include "records/columns/ColumnKernels.h"
#include "records/columns/ColumnView.h"

#include <array>

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

/// A summary to which the runs of a column are added one after the other.
class SummaryInWork {
public:
    void add(const ColumnKernels::Sum& run);
    /// The first `count` elements, run by run.
    void add(const ColumnView& column, std::size_t count);
    Summary finished() const;

private:
    Summary m_summary;
    double m_sum = 0, m_lost = 0;  ///< a compensated sum: it keeps what its additions round away (Neumaier 1974)
};

/// Which of a run's elements are valid; those behind its end are not.
using RunMask = std::array<std::uint64_t, ColumnKernels::kMask>;

/// Of the elements [first, first + count). Requires: count ≤ ColumnKernels::kRun.
RunMask maskOfRun(const ColumnView& column, std::size_t first, std::size_t count);

/// Count, extremes and sum of such elements.
ColumnKernels::Sum sumOfRun(const ColumnView& column, std::size_t first, std::size_t count);

/// Adds up each run of 512 in sixteen sums, and the results with a compensated sum: off by at most some 36 units in the
/// last place of the sum of magnitudes, however long the column. Infinities of both signs sum up to NaN.
Summary summaryOf(const ColumnView& column, std::size_t count);

}  // namespace plotix
