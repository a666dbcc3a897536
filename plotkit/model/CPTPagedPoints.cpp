#include "plotkit/model/CPTPagedPoints.h"

#include <algorithm>
#include <utility>

CPTPagedPoints::CPTPagedPoints(std::shared_ptr<plotix::PageCache> cache, std::size_t elements)
    : PagedMemory(std::move(cache), elements)
{
    constexpr std::size_t kFine = CPTFineBlocks::kElements;
    m_arrays.y = reserve<float>();
    m_arrays.points = reserve<std::uint64_t>(64);
    float* least = reserve<float>(kFine);
    float* greatest = reserve<float>(kFine);
    float* first = reserve<float>(kFine);
    m_arrays.fine = CPTFineBlocks((elements + kFine - 1) / kFine, least, greatest, first);
    m_coarseLeast = reserve<float>(kCoarse);
    m_coarseGreatest = reserve<float>(kCoarse);
}

plotix::ValidityBitmap CPTPagedPoints::points() const
{
    return plotix::ValidityBitmap(
        plotix::PagedArray<std::uint64_t>(shared_from_this(), m_arrays.points, (elements() + 63) / 64, 64));
}

bool CPTPagedPoints::fill(std::size_t first, std::size_t end) const noexcept
{
    CPTPointWriter writer(m_arrays, first, end);
    const bool isRead = writePoints(writer);
    writer.finish();
    constexpr std::size_t kFinePerCoarse = kCoarse / CPTFineBlocks::kElements;
    const CPTFineBlocks& fine = m_arrays.fine;
    for (std::size_t block = first / kCoarse; block * kCoarse < end; ++block) {
        const CPTMinMax pair = fine.minMax(block * kFinePerCoarse, std::min(fine.count, (block + 1) * kFinePerCoarse));
        m_coarseLeast[block] = pair.min;
        m_coarseGreatest[block] = pair.max;
    }
    return isRead;
}
