#pragma once

#include "plotkit/model/CPTPointSeries.h"

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

/// The first element of every bin, and one past the last bin's last. *Borrows* x only while called; remembers it
/// weakly. Plots with one x array share the edges.
class BinEdges {
public:
    bool isOf(const plotix::SharedArray<double>& x, std::size_t elements) const;

    /// count + 1 elements, ascending. In dense bins an edge may lie a small share of a bin early, where a block of the
    /// series' index begins.
    std::span<const std::size_t> edges(const CPTPointSeries& series, const BinGrid& grid);

private:
    std::size_t search(std::span<const double> x, std::size_t from, double value) const;

    std::weak_ptr<const double> m_x;
    std::size_t m_elements = 0;
    BinGrid m_grid;
    std::vector<std::size_t> m_edges, m_next;
    std::size_t m_stride = 0;  // elements a bin
    bool m_dense = false;
};

/// The points of one bin: the first, the last, and the extremes. Where they stand is a share of the bin's width.
struct BinSummary {
    float first, min, max, last;
    float enter, leave;
    bool isEmpty() const { return !(min <= max); }
};

/// The summaries of one series.
class SeriesBins {
public:
    /// One summary a bin. Requires: edges of the same series and grid.
    std::span<const BinSummary> summaries(const CPTPointSeries& series, const BinGrid& grid,
                                          std::span<const std::size_t> edges);

private:
    std::uint64_t m_serial = 0;  // of the series; 0 before the first
    BinGrid m_grid;
    std::vector<BinSummary> m_summaries, m_next;
};

}  // namespace plotkit
