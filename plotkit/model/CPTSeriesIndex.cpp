#include "plotkit/model/CPTSeriesIndex.h"

#include "base/LargeMemory.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>

// Elements that are no points, and points whose value is not finite, never reach a pair. A comparison with NaN is
// false, so NaN drops out by itself; infinities are rare enough to be looked for only where a block's pair shows one.

namespace {

using MinMax = CPTSeriesIndex::MinMax;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr MinMax kEmpty{kInfinity, -kInfinity};
constexpr std::size_t kFine = CPTSeriesIndex::kFineBlock;
constexpr std::size_t kFinePerCoarse = CPTSeriesIndex::kCoarseBlock / CPTSeriesIndex::kFineBlock;
constexpr std::uint32_t kAllPoints = ~std::uint32_t{0};

/// Which elements of a fine block are points, as 32 bits.
std::uint32_t pointMask(const plotix::ValidityBitmap& points, std::size_t block)
{
    if (points.isAllValid())
        return kAllPoints;
    return static_cast<std::uint32_t>(points.words()[block / 2] >> (32 * (block % 2)));
}

/// The bits of elements [first, last) of a block. Requires: first < last ≤ 32.
std::uint32_t rangeMask(std::size_t first, std::size_t last)
{
    return (kAllPoints >> (32 - (last - first))) << first;
}

MinMax joined(const MinMax& a, const MinMax& b)
{
    return {b.min < a.min ? b.min : a.min, b.max > a.max ? b.max : a.max};
}

/// Eight running pairs side by side, which compilers turn into vector instructions.
struct Lanes {
    std::array<float, 8> low;
    std::array<float, 8> high;

    Lanes()
    {
        low.fill(kInfinity);
        high.fill(-kInfinity);
    }
    void take(std::size_t lane, float lowest, float highest)
    {
        low[lane] = lowest < low[lane] ? lowest : low[lane];
        high[lane] = highest > high[lane] ? highest : high[lane];
    }
    MinMax result()
    {
        for (std::size_t half = low.size() / 2; half > 0; half /= 2)
            for (std::size_t lane = 0; lane < half; ++lane)
                take(lane, low[lane + half], high[lane + half]);
        return {low[0], high[0]};
    }
};

/// The pair of the finite values among a block's masked elements, one by one.
MinMax finiteMinMax(const float* y, std::uint32_t mask)
{
    MinMax all = kEmpty;
    for (; mask != 0; mask &= mask - 1) {
        const float value = y[std::countr_zero(mask)];
        if (std::isfinite(value))
            all = joined(all, {value, value});
    }
    return all;
}

MinMax minMaxOfWholeBlock(const float* y)
{
    Lanes lanes;
    for (std::size_t element = 0; element < kFine; element += 8)
        for (std::size_t lane = 0; lane < 8; ++lane)
            lanes.take(lane, y[element + lane], y[element + lane]);
    const MinMax all = lanes.result();
    const bool finite = all.max < kInfinity && all.min > -kInfinity;
    return finite ? all : finiteMinMax(y, kAllPoints);
}

MinMax minMaxOfBlock(const float* y, std::uint32_t mask)
{
    return mask == kAllPoints ? minMaxOfWholeBlock(y) : finiteMinMax(y, mask);
}

/// Part of a block, every element of which is a point: the ends of a query.
MinMax minMaxOfRun(const float* y, std::size_t count)
{
    Lanes lanes;
    std::size_t element = 0;
    for (; element + 8 <= count; element += 8)
        for (std::size_t lane = 0; lane < 8; ++lane)
            lanes.take(lane, y[element + lane], y[element + lane]);
    for (; element < count; ++element)
        lanes.take(element % 8, y[element], y[element]);
    const MinMax all = lanes.result();
    const bool finite = all.max < kInfinity && all.min > -kInfinity;
    return finite ? all : finiteMinMax(y, rangeMask(0, count));
}

/// Of blocks [first, last) of a level.
MinMax joinedBlocks(const float* least, const float* greatest, std::size_t first, std::size_t last)
{
    Lanes lanes;
    std::size_t block = first;
    for (; block + 8 <= last; block += 8)
        for (std::size_t lane = 0; lane < 8; ++lane)
            lanes.take(lane, least[block + lane], greatest[block + lane]);
    for (; block < last; ++block)
        lanes.take(0, least[block], greatest[block]);
    return lanes.result();
}

CPTFineBlocks filledBlocks(std::span<const float> y, const plotix::ValidityBitmap& points)
{
    CPTFineBlocks blocks(y.size());
    for (std::size_t block = 0; block < blocks.count; ++block) {
        const std::size_t first = block * kFine;
        blocks.set(block, y.data() + first, pointMask(points, block) & rangeMask(0, std::min(kFine, y.size() - first)));
    }
    return blocks;
}

}  // namespace

CPTFineBlocks::CPTFineBlocks(std::size_t elements)
    : count((elements + kElements - 1) / kElements), memory(plotix::unsetArray<float>(3 * count))
{
}

void CPTFineBlocks::set(std::size_t block, const float* y, std::uint32_t points) const
{
    const MinMax pair = minMaxOfBlock(y, points);
    least()[block] = pair.min;
    greatest()[block] = pair.max;
    const bool begins = (points & 1U) != 0 && std::isfinite(y[0]);
    first()[block] = begins ? y[0] : std::numeric_limits<float>::quiet_NaN();
}

CPTSeriesIndex::CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points)
    : CPTSeriesIndex(y, points, filledBlocks(y, points))
{
}

CPTSeriesIndex::CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points, CPTFineBlocks fine)
    : m_y(y), m_points(points), m_fine(std::move(fine))
{
    assert(m_fine.count == (y.size() + kFineBlock - 1) / kFineBlock);
    const std::size_t blocks = (m_fine.count + kFinePerCoarse - 1) / kFinePerCoarse;
    m_coarseLeast.reserve(blocks);
    m_coarseGreatest.reserve(blocks);
    for (std::size_t first = 0; first < m_fine.count; first += kFinePerCoarse) {
        const MinMax pair = joinedFine(first, std::min(m_fine.count, first + kFinePerCoarse));
        m_coarseLeast.push_back(pair.min);
        m_coarseGreatest.push_back(pair.max);
    }
}

CPTSeriesIndex::MinMax CPTSeriesIndex::joinedFine(std::size_t first, std::size_t last) const
{
    return joinedBlocks(m_fine.least(), m_fine.greatest(), first, last);
}

CPTSeriesIndex::MinMax CPTSeriesIndex::joinedCoarse(std::size_t first, std::size_t last) const
{
    return joinedBlocks(m_coarseLeast.data(), m_coarseGreatest.data(), first, last);
}

CPTSeriesIndex::MinMax CPTSeriesIndex::minMax(std::size_t first, std::size_t last) const
{
    assert(first <= last && last <= size());
    if (first >= last)
        return kEmpty;
    const auto partOfBlock = [this](std::size_t from, std::size_t to) {
        const std::size_t block = from / kFineBlock;
        const std::size_t start = block * kFineBlock;
        const std::uint32_t wanted = rangeMask(from - start, to - start);
        const std::uint32_t mask = pointMask(m_points, block) & wanted;
        return mask == wanted ? minMaxOfRun(m_y.data() + from, to - from) : finiteMinMax(m_y.data() + start, mask);
    };
    const std::size_t firstFine = (first + kFineBlock - 1) / kFineBlock;
    const std::size_t lastFine = last / kFineBlock;
    if (firstFine > lastFine)
        return partOfBlock(first, last);

    MinMax all = kEmpty;
    if (first < firstFine * kFineBlock)
        all = partOfBlock(first, firstFine * kFineBlock);
    if (last > lastFine * kFineBlock)
        all = joined(all, partOfBlock(lastFine * kFineBlock, last));
    const std::size_t firstCoarse = (firstFine + kFinePerCoarse - 1) / kFinePerCoarse;
    const std::size_t lastCoarse = lastFine / kFinePerCoarse;
    if (firstCoarse >= lastCoarse)
        return joined(all, joinedFine(firstFine, lastFine));
    all = joined(all, joinedFine(firstFine, firstCoarse * kFinePerCoarse));
    all = joined(all, joinedFine(lastCoarse * kFinePerCoarse, lastFine));
    return joined(all, joinedCoarse(firstCoarse, lastCoarse));
}

std::size_t CPTSeriesIndex::firstPointFrom(std::size_t element) const
{
    if (element < size() && m_points.isValid(element) && std::isfinite(m_y[element]))
        return element;
    while (element < size()) {
        const std::size_t fine = element / kFineBlock;
        if (isCoarseEmpty(fine / kFinePerCoarse)) {
            element = (fine / kFinePerCoarse + 1) * kCoarseBlock;
        } else if (m_fine.isEmpty(fine)) {
            element = (fine + 1) * kFineBlock;
        } else {
            const std::size_t end = std::min(size(), (fine + 1) * kFineBlock);
            for (; element < end; ++element)
                if (m_points.isValid(element) && std::isfinite(m_y[element]))
                    return element;
        }
    }
    return size();
}

std::size_t CPTSeriesIndex::lastPointBefore(std::size_t element) const
{
    element = std::min(element, size());
    if (element > 0 && m_points.isValid(element - 1) && std::isfinite(m_y[element - 1]))
        return element - 1;
    while (element > 0) {
        const std::size_t fine = (element - 1) / kFineBlock;
        if (isCoarseEmpty(fine / kFinePerCoarse)) {
            element = fine / kFinePerCoarse * kCoarseBlock;
        } else if (m_fine.isEmpty(fine)) {
            element = fine * kFineBlock;
        } else {
            for (; element > fine * kFineBlock; --element)
                if (m_points.isValid(element - 1) && std::isfinite(m_y[element - 1]))
                    return element - 1;
        }
    }
    return size();
}
