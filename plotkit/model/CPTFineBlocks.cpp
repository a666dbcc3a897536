#include "plotkit/model/CPTFineBlocks.h"

#include "base/LargeMemory.h"

#include <bit>
#include <cmath>

// Points whose value is not finite never reach a pair. NaN drops out by itself; infinities are rare enough to be looked
// for only where a block's pair shows one.

namespace {

constexpr std::uint32_t kAllPoints = ~std::uint32_t{0};

bool isFinite(const CPTMinMax& pair)
{
    return pair.max < plotkit::kBeyondAll && pair.min > -plotkit::kBeyondAll;
}

CPTMinMax minMaxOfWholeBlock(const float* y)
{
    plotkit::MinMaxLanes lanes;
    for (std::size_t element = 0; element < CPTFineBlocks::kElements; element += 8)
        for (std::size_t lane = 0; lane < 8; ++lane)
            lanes.take(lane, y[element + lane], y[element + lane]);
    const CPTMinMax all = lanes.result();
    return isFinite(all) ? all : CPTFineBlocks::finiteMinMax(y, kAllPoints);
}

}  // namespace

CPTFineBlocks::CPTFineBlocks(std::size_t elements)
    : count((elements + kElements - 1) / kElements),
      m_memory(plotix::unsetArray<float>(3 * count)),
      m_least(m_memory.get()),
      m_greatest(m_memory.get() + count),
      m_first(m_memory.get() + 2 * count)
{
}

void CPTFineBlocks::set(std::size_t block, const float* y, std::uint32_t points) const
{
    const CPTMinMax pair = points == kAllPoints ? minMaxOfWholeBlock(y) : finiteMinMax(y, points);
    m_least[block] = pair.min;
    m_greatest[block] = pair.max;
    const bool begins = (points & 1U) != 0 && std::isfinite(y[0]);
    m_first[block] = begins ? y[0] : std::numeric_limits<float>::quiet_NaN();
}

CPTMinMax CPTFineBlocks::finiteMinMax(const float* y, std::uint32_t points)
{
    CPTMinMax all = plotkit::emptyMinMax();
    for (; points != 0; points &= points - 1) {
        const float value = y[std::countr_zero(points)];
        if (std::isfinite(value))
            all = plotkit::joined(all, {value, value});
    }
    return all;
}

CPTMinMax CPTFineBlocks::finiteMinMaxOfRun(const float* y, std::size_t count)
{
    plotkit::MinMaxLanes lanes;
    std::size_t element = 0;
    for (; element + 8 <= count; element += 8)
        for (std::size_t lane = 0; lane < 8; ++lane)
            lanes.take(lane, y[element + lane], y[element + lane]);
    for (; element < count; ++element)
        lanes.take(element % 8, y[element], y[element]);
    const CPTMinMax all = lanes.result();
    return isFinite(all) ? all : finiteMinMax(y, count == 0 ? 0 : kAllPoints >> (kElements - count));
}
