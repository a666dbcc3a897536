#pragma once

#include "plotkit/model/LeastAndGreatest.h"

#include <cstddef>
#include <cstdint>
#include <memory>

/// The finer level of an index: for every 32 elements the least and greatest of the finite points, and the first
/// element as it is, or NaN where that is no finite point. A block without points has least > greatest.
///
/// Copies *share* the memory: fill it, hand it on, and write no more; then any thread may read.
struct CPTFineBlocks {
    static constexpr std::size_t kElements = 32;

    CPTFineBlocks() = default;
    /// As many blocks as `elements` need; undefined until set.
    explicit CPTFineBlocks(std::size_t elements);
    /// Blocks in the memory of somebody who outlives them.
    CPTFineBlocks(std::size_t blocks, float* least, float* greatest, float* first)
        : count(blocks), m_least(least), m_greatest(greatest), m_first(first)
    {
    }

    /// Fills one block from its samples. The set bits of `points` (lowest: element 0) say which samples are points; no
    /// others are read.
    void set(std::size_t block, const float* y, std::uint32_t points) const;

    bool isEmpty(std::size_t block) const { return !(m_least[block] <= m_greatest[block]); }
    float* least() const { return m_least; }
    float* greatest() const { return m_greatest; }
    float* first() const { return m_first; }
    /// Of blocks [from, to).
    CPTMinMax minMax(std::size_t from, std::size_t to) const
    {
        return plotkit::joinedPairs(m_least, m_greatest, from, to);
    }

    /// Of part of a block: the samples from `y` on whose bits are set.
    static CPTMinMax finiteMinMax(const float* y, std::uint32_t points);
    /// Of `count` samples, up to a block, all of which are points.
    static CPTMinMax finiteMinMaxOfRun(const float* y, std::size_t count);

    std::size_t count = 0;

private:
    std::shared_ptr<float> m_memory;
    float* m_least = nullptr;
    float* m_greatest = nullptr;
    float* m_first = nullptr;
};
