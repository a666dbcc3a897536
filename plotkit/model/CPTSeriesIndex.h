#pragma once

#include "base/PagedMemory.h"
#include "base/ValidityBitmap.h"
#include "plotkit/model/CPTFineBlocks.h"
#include "plotkit/model/CPTPagedPoints.h"
#include "plotkit/model/CPTSeriesRuns.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

/// A two-level min/max index over the y values of a series: one pair per 32 elements, one per 1024. For a series whose
/// points are paged both levels are paged with them, and above them stand the runs, which are always in memory.
///
/// Dropped elements and points whose value is not finite do not count; a block without points has min > max. Built once
/// in O(n), of paged points without looking at any; then immutable; any thread may read. The operations that say so
/// require that the elements are held (see CPTPointSeries::hold); all others hold what they look at, a page or two.
class CPTSeriesIndex {
public:
    static constexpr std::size_t kFineBlock = CPTFineBlocks::kElements;
    static constexpr std::size_t kCoarseBlock = CPTPagedPoints::kCoarse;

    using MinMax = CPTMinMax;

    /// Borrows y and points, which are in memory; they must outlive the index.
    CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points);
    /// The same, with fine blocks that were filled along with y.
    CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points, CPTFineBlocks fine);
    /// Of paged points and the runs over them; *shares* both.
    CPTSeriesIndex(std::shared_ptr<const CPTPagedPoints> points, std::shared_ptr<const CPTSeriesRuns> runs);
    CPTSeriesIndex(const CPTSeriesIndex&) = delete;
    CPTSeriesIndex& operator=(const CPTSeriesIndex&) = delete;

    /// Smallest and largest y of the points in elements [first, last). Touches at most 2 × 32 samples and 2 × 32 fine
    /// blocks beside the coarse ones; of paged points whole runs are not looked into. Requires: first ≤ last ≤ size.
    MinMax minMax(std::size_t first, std::size_t last) const;

    /// The first point (of a finite value) at or after `element`; size when there is none. Skips empty blocks.
    std::size_t firstPointFrom(std::size_t element) const;
    /// The last point before `element`; size when there is none.
    std::size_t lastPointBefore(std::size_t element) const;

    /// The same of elements [first, last) alone; `last` where there is no point. Requires: they are held.
    MinMax minMaxHeld(std::size_t first, std::size_t last) const;
    std::size_t firstPointIn(std::size_t first, std::size_t last) const;
    std::size_t lastPointIn(std::size_t first, std::size_t last) const;

    std::size_t size() const { return m_y.size(); }
    /// Requires, to read them: their elements are held.
    const CPTFineBlocks& fine() const { return m_fine; }
    /// The coarser level's pairs, one for every 1024 elements. Requires, to read them: their elements are held.
    std::span<const float> coarseLeast() const { return m_coarseLeast; }
    std::span<const float> coarseGreatest() const { return m_coarseGreatest; }
    /// Null where everything is in memory.
    const std::shared_ptr<const CPTSeriesRuns>& runs() const { return m_runs; }

private:
    bool isPointAt(std::size_t element) const;
    MinMax joinedCoarse(std::size_t first, std::size_t last) const;
    bool isCoarseEmpty(std::size_t block) const { return !(m_coarseLeast[block] <= m_coarseGreatest[block]); }
    MinMax minMaxOfPart(std::size_t from, std::size_t to) const;
    MinMax minMaxByRuns(std::size_t first, std::size_t last) const;
    std::size_t firstPointByRuns(std::size_t element) const;
    std::size_t lastPointByRuns(std::size_t element) const;

    std::span<const float> m_y;
    plotix::ValidityBitmap m_points;
    CPTFineBlocks m_fine;
    std::vector<float> m_coarse;  // of points in memory: the least, then the greatest
    std::span<const float> m_coarseLeast, m_coarseGreatest;
    std::shared_ptr<const plotix::PagedMemory> m_pages;  // null where everything is in memory
    std::shared_ptr<const CPTSeriesRuns> m_runs;
};
