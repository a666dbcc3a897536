#pragma once

#include "base/SharedArray.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// The finer level of an index: for every 32 elements the least and greatest of the finite points, and the first
/// element as it is, or NaN where that is no finite point. A block without points has least > greatest.
///
/// Copies *share* the memory: fill it, hand it on, and write no more; then any thread may read.
struct CPTFineBlocks {
    static constexpr std::size_t kElements = 32;

    CPTFineBlocks() = default;
    /// As many blocks as `elements` need; undefined until set.
    explicit CPTFineBlocks(std::size_t elements);

    /// Fills one block from its samples. The set bits of `points` (lowest: element 0) say which samples are points; no
    /// others are read.
    void set(std::size_t block, const float* y, std::uint32_t points) const;

    bool isEmpty(std::size_t block) const { return !(least()[block] <= greatest()[block]); }
    float* least() const { return memory.get(); }
    float* greatest() const { return memory.get() + count; }
    float* first() const { return memory.get() + 2 * count; }

    std::size_t count = 0;
    std::shared_ptr<float> memory;
};

/// A two-level min/max index over the y values of a series: one pair per 32 elements, one per 1024.
///
/// Dropped elements and points whose value is not finite do not count; a block without points has min > max. Built once
/// in O(n), then immutable; any thread may read.
class CPTSeriesIndex {
public:
    static constexpr std::size_t kFineBlock = CPTFineBlocks::kElements;
    static constexpr std::size_t kCoarseBlock = 1024;

    struct MinMax {
        float min;
        float max;
        bool isEmpty() const { return !(min <= max); }
    };

    /// Borrows y and points; they must outlive the index.
    CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points);
    /// The same, with fine blocks that were filled along with y.
    CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points, CPTFineBlocks fine);

    /// Smallest and largest y of the points in elements [first, last). Touches at most 2 × 32 samples and 2 × 32 fine
    /// blocks beside the coarse ones. Requires: first ≤ last ≤ size.
    MinMax minMax(std::size_t first, std::size_t last) const;

    /// The first point (of a finite value) at or after `element`; size when there is none. Skips empty blocks.
    std::size_t firstPointFrom(std::size_t element) const;
    /// The last point before `element`; size when there is none.
    std::size_t lastPointBefore(std::size_t element) const;

    std::size_t size() const { return m_y.size(); }
    const CPTFineBlocks& fine() const { return m_fine; }
    /// The coarser level's pairs, one for every 1024 elements.
    std::span<const float> coarseLeast() const { return m_coarseLeast; }
    std::span<const float> coarseGreatest() const { return m_coarseGreatest; }

private:
    MinMax joinedFine(std::size_t first, std::size_t last) const;
    MinMax joinedCoarse(std::size_t first, std::size_t last) const;
    bool isCoarseEmpty(std::size_t block) const { return !(m_coarseLeast[block] <= m_coarseGreatest[block]); }

    std::span<const float> m_y;
    plotix::ValidityBitmap m_points;
    CPTFineBlocks m_fine;
    std::vector<float> m_coarseLeast, m_coarseGreatest;
};
