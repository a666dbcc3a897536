#pragma once

#include "plotkit/layout/BinEdges.h"
#include "plotkit/layout/BinRows.h"
#include "plotkit/layout/SlidingRow.h"
#include "plotkit/model/CPTPointSeries.h"

#include <cstddef>
#include <cstdint>

/// What each bin of a series holds; kept from frame to frame. One thread at a time.
namespace plotkit {

/// The summaries of one series.
class SeriesBins {
public:
    /// One summary a bin. Requires: edges of the same series, cover() called for the same grid.
    BinRows summaries(const CPTPointSeries& series, const BinGrid& grid, const BinEdges& edges);
    /// Which bins of a grid are known already.
    KeptBins keptFor(const CPTPointSeries& series, const BinGrid& grid) const;

private:
    BinRows rows();
    double edgeOf(std::size_t bin) const { return m_grid.edge(m_grid.first + static_cast<std::int64_t>(bin)); }
    void sumUp(const CPTPointSeries& series, const BinEdges& edges, std::size_t from, std::size_t to);
    void sumUpPaged(const CPTPointSeries& series, const BinEdges& edges, std::size_t from, std::size_t to);

    std::uint64_t m_serial = 0;  // of the series; 0 before the first
    BinGrid m_grid;
    SlidingRow<float> m_first, m_min, m_max, m_last, m_enter, m_leave;
};

}  // namespace plotkit
