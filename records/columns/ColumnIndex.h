#pragma once

#include "records/columns/ColumnSummary.h"
#include "records/columns/ExactTotal.h"

#include <vector>

/// What a frame and a table need to know of a column without its values: of the whole column and of runs of its
/// elements, how many are valid, the least and greatest, the first and the last with their places, and sums without
/// rounding.
///
/// Values; any thread. The same values give the same index on every processor.
namespace plotix {

/// Of a stretch of elements: over the valid ones that are no NaN. Without any, everything is 0.
struct RunFigures {
    struct Point {
        double value = 0;    ///< bit for bit
        std::size_t at = 0;  ///< element, counted from the beginning of the stretch
    };
    std::size_t valid = 0;
    Point first, last;
    Point least, greatest;  ///< the first of those that compare equal; −0.0 equals 0.0

    /// With those of the stretch that follows, which begins at `begin`.
    void append(const RunFigures& next, std::size_t begin);
};

bool isSame(const RunFigures& one, const RunFigures& other);  ///< bit for bit

/// Whether all runs of a stretch of so many elements have its figures, however they are cut.
inline bool isEverywhereTheSame(const RunFigures& whole, std::size_t count)
{
    return whole.valid == 0 || (whole.valid == count && whole.least.value == whole.greatest.value);
}

/// Exact sums of successive runs, as bytes of whole numbers that all begin at the same place; see ExactTotal. Sums have
/// no infinities: whether a run has some, its extremes tell.
struct RunSums {
    std::size_t at = 0, width = 0;  ///< bytes
    std::vector<std::byte> bytes;   ///< `width` a run

    static RunSums of(std::span<const ExactTotal> totals);
    std::span<const std::byte> bytesOf(std::size_t run) const { return std::span(bytes).subspan(run * width, width); }
};

struct ColumnIndex {
    std::size_t count = 0;      ///< elements of the column
    RunFigures whole;           ///< of all
    ExactTotal sum;             ///< of all, with infinities
    std::size_t runLength = 0;  ///< elements of a run, the last one may be shorter; 0: nothing is known of runs
    std::vector<RunFigures> runs;
    RunSums sums;  ///< of the runs

    /// Of so many elements none of which is valid, without runs.
    static ColumnIndex ofNothing(std::size_t count);

    /// Of one run. Requires: run < runs.size().
    ExactTotal sumOf(std::size_t run) const;
    /// With runs twice as long. Requires: there are runs.
    ColumnIndex coarser() const;
    /// What is said of the whole column alone.
    ColumnIndex withoutRuns() &&;
    /// Whether both say the same; runs count only where both have them, of one length.
    bool agreesWith(const ColumnIndex& other) const;
};

/// Runs of 512 elements. Adds each run's sum to the summary, where there is one: the same as summaryOf.
ColumnIndex indexOf(const ColumnView& column, std::size_t count, SummaryInWork* summary = nullptr);

/// The times of runs: of the first and of the last record of each.
struct RunTimes {
    std::size_t runLength = 0;  ///< 0: nothing is known
    std::vector<double> first, last;

    friend bool operator==(const RunTimes&, const RunTimes&) = default;
};

/// Of runs of 512 records.
RunTimes runTimesOf(std::span<const double> times);

}  // namespace plotix
