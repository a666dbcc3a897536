#pragma once

#include "plotkit/layout/BinRows.h"
#include "plotkit/layout/SlidingRow.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <cstddef>
#include <cstdint>

/// The inner loops over bins: samples to summaries, and summaries to coordinates.
///
/// Compiled for several processors, chosen at run time (see base/vectors); all give the same bits. Pure; any thread.
namespace plotkit {

/// A series and the bins it is cut into. Borrows everything. `edges` has one element more than there are bins, `enter`
/// and `leave` one a bin: see BinSummary.
struct BinSource {
    const float* y;
    const std::uint64_t* points;  ///< a bit an element; null: all are points
    const CPTSeriesIndex& index;
    const std::size_t* edges;
    const float* enter;
    const float* leave;
};

/// From a value to its coordinate.
struct ValueScale {
    double location = 0;
    double placesPerValue = 0;
    double firstPlace = 0;
    double farthest = 0;  ///< coordinates are cut to ± this

    double operator()(float y) const { return firstPlace + (static_cast<double>(y) - location) * placesPerValue; }
    float cut(double place) const
    {
        const double notAbove = place < farthest ? place : farthest;
        return static_cast<float>(notAbove > -farthest ? notAbove : -farthest);
    }
};

struct BinKernels {
    /// A bin of at least this many elements that begins and ends where blocks of the index do is summed up from the
    /// blocks. In the smallest such bin half a block is a quarter of the bin.
    static constexpr std::size_t kDense = 2 * CPTFineBlocks::kElements;

    /// Sums up bins [from, to). A bin that this loop cannot sum up gets NaN as `first`: one with dropped elements, with
    /// values that are not finite at its ends, or with very many samples but edges that are not those of blocks.
    void (*summarise)(const BinSource& source, const BinRows& rows, std::size_t from, std::size_t to);

    /// Where the extremes of each bin stand, +infinity and −infinity for an empty one, and in `joins` the coordinate at
    /// which the line from each bin to the next crosses the edge between them: joins[k] is bin k's left edge. joins[0]
    /// and those beside empty bins are undefined. Answers whether a bin is empty. Everything is readable, and all that
    /// is written writable, up to SlidingRow::kPadding numbers beyond the end.
    bool (*map)(const BinRows& rows, std::size_t count, const ValueScale& scale, float* joins, float* low, float* high);

    /// Widens each column's extremes to take in the crossings at its edges, joins[k] and joins[k + 1]. The same
    /// padding.
    void (*takeJoins)(const float* joins, std::size_t count, float* low, float* high);

    /// The fastest this processor runs. Alive as long as the program.
    static const BinKernels& best();
};

}  // namespace plotkit
