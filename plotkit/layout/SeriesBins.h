#pragma once

#include "plotkit/layout/BinRows.h"
#include "plotkit/layout/SlidingRow.h"
#include "plotkit/model/CPTPointSeries.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// A series cut along x into bins of equal width, and what each bin holds; kept from frame to frame.
///
/// Bins stand at whole multiples of their width, not at the picture's edge. A pan therefore only works out the bins
/// that came into view, and the same sample falls into the same bin in every frame. Only for x that never decreases;
/// one thread at a time.
namespace plotkit {

/// Bins `first` … `first + count − 1`; bin k holds x from origin + k × width to below the next one's.
struct BinGrid {
    double origin = 0;
    double width = 0;  ///< values, positive
    std::int64_t first = 0;
    std::size_t count = 0;

    double edge(std::int64_t bin) const { return origin + static_cast<double>(bin) * width; }

    /// The bins that hold all of [low, high]. Requires: finite values, low ≤ high, width positive.
    static BinGrid covering(double low, double high, double width);
};

/// Which bins are kept from the grid before, as indexes into the new grid: [keptFirst, keptLast). The rest is worked
/// out.
struct KeptBins {
    std::ptrdiff_t moved = 0;  ///< how many bins the grid's beginning moved forward
    std::size_t keptFirst = 0, keptLast = 0;

    /// Nothing is kept where `known` is false or the grids do not match.
    static KeptBins of(const BinGrid& old, const BinGrid& grid, bool known);
};

/// The first element of every bin, and one past the last element of the last bin. Remembers x *weakly*. Plots with the
/// same x array share the edges.
class BinEdges {
public:
    bool isOf(const plotix::SharedArray<double>& x, std::size_t elements) const;

    /// Finds the edges of a grid's bins. In crowded bins an edge may lie a small fraction of a bin off, where a block
    /// of the series' index begins.
    void cover(const CPTPointSeries& series, const BinGrid& grid);

    /// For the grid covered last: one entry more than there are bins, ascending.
    const std::size_t* edges() const { return m_edges.data(); }
    /// Where the first and the last element of each bin stand, as fractions of its width; undefined for an empty bin.
    const float* enter() const { return m_enter.data(); }
    const float* leave() const { return m_leave.data(); }

private:
    struct Found {
        std::size_t element;
        bool wasRead;  // the times had to be read
    };
    void findBins(std::span<const double> x, const TimeCourse* course, std::size_t from, std::size_t to);
    std::size_t blockBy(const TimeCourse& course, std::size_t from, std::size_t guess, double value) const;
    std::size_t blockNear(std::span<const double> x, std::size_t from, std::size_t after, double value) const;
    Found search(std::span<const double> x, const TimeCourse* course, std::size_t from, double value) const;

    std::weak_ptr<const double> m_x;
    std::size_t m_elements = 0;
    BinGrid m_grid;
    SlidingRow<std::size_t> m_edges;
    SlidingRow<float> m_enter, m_leave;
    double m_stride = 0;  // elements a bin
};

/// The summaries of one series.
class SeriesBins {
public:
    /// One summary a bin. Requires: edges of the same series, cover() called for the same grid.
    BinRows summaries(const CPTPointSeries& series, const BinGrid& grid, const BinEdges& edges);

private:
    BinRows rows();

    std::uint64_t m_serial = 0;  // of the series; 0 before the first
    BinGrid m_grid;
    SlidingRow<float> m_first, m_min, m_max, m_last, m_enter, m_leave;
};

}  // namespace plotkit
