#pragma once

#include "base/SharedArray.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

/// A two-level min/max index over the y values of a series: one pair per 32 elements, one per 1024.
///
/// Dropped elements and points whose value is not finite do not count; a block without points has min > max. Built once
/// in O(n), then immutable; any thread may read.
class CPTSeriesIndex {
public:
    static constexpr std::size_t kFineBlock = 32;
    static constexpr std::size_t kCoarseBlock = 1024;

    struct MinMax {
        float min;
        float max;
        bool isEmpty() const { return !(min <= max); }
    };

    /// Borrows y and points; they must outlive the index.
    CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points);

    /// Smallest and largest y of the points in elements [first, last). Touches at most 2 × 32 samples and 2 × 32 fine
    /// blocks beside the coarse ones. Requires: first ≤ last ≤ size.
    MinMax minMax(std::size_t first, std::size_t last) const;

    /// The first point (of a finite value) at or after `element`; size when there is none. Skips empty blocks.
    std::size_t firstPointFrom(std::size_t element) const;
    /// The last point before `element`; size when there is none.
    std::size_t lastPointBefore(std::size_t element) const;

    std::size_t size() const { return m_y.size(); }

private:
    std::span<const float> m_y;
    plotix::ValidityBitmap m_points;
    std::shared_ptr<MinMax> m_memory;  // of the fine blocks
    std::span<const MinMax> m_fine;
    std::vector<MinMax> m_coarse;
};
