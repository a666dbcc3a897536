#pragma once

#include "plotkit/layout/BinEdges.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

/// What stands beside the empty columns of an envelope. A value; one thread at a time.
namespace plotkit {

/// The points on both sides of empty columns, as they are in the series. *Borrows* series and edges. Columns are bins
/// from the picture's left.
class ColumnEnds {
public:
    ColumnEnds(const CPTPointSeries& series, const BinEdges& edges, std::size_t columns, bool mirrored, double gap)
        : m_series(series), m_edges(edges), m_columns(columns), m_mirrored(mirrored), m_gap(gap)
    {
    }

    bool hasGaps() const { return std::isfinite(m_gap); }
    /// Whether the line breaks between the points of two columns with empty ones between them. Runs are looked into
    /// only where their times leave it open.
    bool isGapBetween(std::size_t left, std::size_t right) const
    {
        if (isByRuns(left) && isByRuns(right)) {
            const std::size_t earlier = std::min(binOf(left), binOf(right));
            const std::size_t later = std::max(binOf(left), binOf(right));
            const CPTSeriesRuns& runs = *m_series.runs();
            const std::size_t before = runs.filledBefore(m_edges.runs()[earlier + 1]);
            const std::size_t after = runs.filledFrom(m_edges.runs()[later]);
            if (runs.firstTime(after) - runs.lastTime(before) > m_gap)
                return true;
            if (runs.lastTime(after) - runs.firstTime(before) <= m_gap || m_edges.areRunsAlone())
                return false;
        }
        return isGap(rightmost(left), leftmost(right));
    }
    /// The value that the line breaks at, beside the gap; `known` is what the bin says.
    float yBefore(std::size_t column, float known) const { return isByRuns(column) ? known : y(rightmost(column)); }
    float yAfter(std::size_t column, float known) const { return isByRuns(column) ? known : y(leftmost(column)); }

    bool isGap(std::size_t one, std::size_t other) const
    {
        return std::abs(m_series.x().valueAt(one) - m_series.x().valueAt(other)) > m_gap;
    }
    /// Of a column that is not empty.
    std::size_t leftmost(std::size_t column) const { return m_mirrored ? lastIn(column) : firstIn(column); }
    std::size_t rightmost(std::size_t column) const { return m_mirrored ? firstIn(column) : lastIn(column); }
    float y(std::size_t element) const { return m_series.y().valueAt(element); }

private:
    bool isByRuns(std::size_t column) const { return m_edges.isByRuns(binOf(column)); }
    std::size_t binOf(std::size_t column) const { return m_mirrored ? m_columns - 1 - column : column; }
    std::size_t firstIn(std::size_t column) const
    {
        return m_series.index().firstPointFrom(m_edges.edges()[binOf(column)]);
    }
    std::size_t lastIn(std::size_t column) const
    {
        return m_series.index().lastPointBefore(m_edges.edges()[binOf(column) + 1]);
    }

    const CPTPointSeries& m_series;
    const BinEdges& m_edges;
    std::size_t m_columns;
    bool m_mirrored;
    double m_gap;
};

}  // namespace plotkit
