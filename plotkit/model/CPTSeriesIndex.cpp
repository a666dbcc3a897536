#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

// Elements that are no points, and points whose value is not finite, never reach a pair.

namespace {

using MinMax = CPTMinMax;

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

CPTSeriesIndex::CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points)
    : CPTSeriesIndex(y, points, filledBlocks(y, points))
{
}

CPTSeriesIndex::CPTSeriesIndex(std::span<const float> y, const plotix::ValidityBitmap& points, CPTFineBlocks fine)
    : m_y(y), m_points(points), m_fine(std::move(fine))
{
    assert(m_fine.count == (y.size() + kFineBlock - 1) / kFineBlock);
    const std::size_t blocks = (m_fine.count + kFinePerCoarse - 1) / kFinePerCoarse;
    m_coarse.resize(2 * blocks);
    for (std::size_t block = 0; block < blocks; ++block) {
        const std::size_t first = block * kFinePerCoarse;
        const MinMax pair = m_fine.minMax(first, std::min(m_fine.count, first + kFinePerCoarse));
        m_coarse[block] = pair.min;
        m_coarse[blocks + block] = pair.max;
    }
    m_coarseLeast = {m_coarse.data(), blocks};
    m_coarseGreatest = {m_coarse.data() + blocks, blocks};
}

CPTSeriesIndex::CPTSeriesIndex(std::shared_ptr<const CPTPagedPoints> points, std::shared_ptr<const CPTSeriesRuns> runs)
    : m_y(points->y().span()),
      m_points(points->points()),
      m_fine(points->fine()),
      m_pages(points),
      m_runs(std::move(runs))
{
    assert(m_runs && m_runs->elements() == m_y.size());
    const std::size_t blocks = (m_fine.count + kFinePerCoarse - 1) / kFinePerCoarse;
    m_coarseLeast = {points->coarseLeast(), blocks};
    m_coarseGreatest = {points->coarseGreatest(), blocks};
}

CPTSeriesIndex::MinMax CPTSeriesIndex::joinedCoarse(std::size_t first, std::size_t last) const
{
    return plotkit::joinedPairs(m_coarseLeast.data(), m_coarseGreatest.data(), first, last);
}

/// Of elements inside one block.
CPTSeriesIndex::MinMax CPTSeriesIndex::minMaxOfPart(std::size_t from, std::size_t to) const
{
    const std::size_t block = from / kFineBlock;
    const std::size_t start = block * kFineBlock;
    const std::uint32_t wanted = rangeMask(from - start, to - start);
    const std::uint32_t mask = pointMask(m_points, block) & wanted;
    return mask == wanted ? CPTFineBlocks::finiteMinMaxOfRun(m_y.data() + from, to - from)
                          : CPTFineBlocks::finiteMinMax(m_y.data() + start, mask);
}

CPTSeriesIndex::MinMax CPTSeriesIndex::minMax(std::size_t first, std::size_t last) const
{
    return m_pages ? minMaxByRuns(first, last) : minMaxHeld(first, last);
}

CPTSeriesIndex::MinMax CPTSeriesIndex::minMaxHeld(std::size_t first, std::size_t last) const
{
    assert(first <= last && last <= size());
    if (first >= last)
        return plotkit::emptyMinMax();
    const std::size_t firstFine = (first + kFineBlock - 1) / kFineBlock;
    const std::size_t lastFine = last / kFineBlock;
    if (firstFine > lastFine)
        return minMaxOfPart(first, last);

    MinMax all = plotkit::emptyMinMax();
    if (first < firstFine * kFineBlock)
        all = minMaxOfPart(first, firstFine * kFineBlock);
    if (last > lastFine * kFineBlock)
        all = plotkit::joined(all, minMaxOfPart(lastFine * kFineBlock, last));
    const std::size_t firstCoarse = (firstFine + kFinePerCoarse - 1) / kFinePerCoarse;
    const std::size_t lastCoarse = lastFine / kFinePerCoarse;
    if (firstCoarse >= lastCoarse)
        return plotkit::joined(all, m_fine.minMax(firstFine, lastFine));
    all = plotkit::joined(all, m_fine.minMax(firstFine, firstCoarse * kFinePerCoarse));
    all = plotkit::joined(all, m_fine.minMax(lastCoarse * kFinePerCoarse, lastFine));
    return plotkit::joined(all, joinedCoarse(firstCoarse, lastCoarse));
}

CPTSeriesIndex::MinMax CPTSeriesIndex::minMaxByRuns(std::size_t first, std::size_t last) const
{
    const auto ofPart = [this](std::size_t from, std::size_t to) {
        const plotix::PagedMemory::Hold held = m_pages->hold(from, to);
        return minMaxHeld(from, to);
    };
    const std::size_t firstRun = m_runs->runFrom(first);
    const std::size_t endRun = last < size() ? m_runs->runAt(last) : m_runs->count();
    if (first >= last || firstRun >= endRun)
        return ofPart(first, last);
    const MinMax ends = plotkit::joined(ofPart(first, m_runs->begin(firstRun)), ofPart(m_runs->begin(endRun), last));
    return plotkit::joined(ends, m_runs->minMax(firstRun, endRun));
}

bool CPTSeriesIndex::isPointAt(std::size_t element) const
{
    return m_points.isValid(element) && std::isfinite(m_y[element]);
}

std::size_t CPTSeriesIndex::firstPointFrom(std::size_t element) const
{
    if (m_pages)
        return firstPointByRuns(element);
    return element < size() ? firstPointIn(element, size()) : size();
}

std::size_t CPTSeriesIndex::lastPointBefore(std::size_t element) const
{
    element = std::min(element, size());
    if (m_pages)
        return lastPointByRuns(element);
    const std::size_t found = lastPointIn(0, element);
    return found < element ? found : size();
}

std::size_t CPTSeriesIndex::firstPointIn(std::size_t element, std::size_t last) const
{
    assert(element <= last && last <= size());
    if (element < last && isPointAt(element))
        return element;
    while (element < last) {
        const std::size_t fine = element / kFineBlock;
        if (isCoarseEmpty(fine / kFinePerCoarse)) {
            element = (fine / kFinePerCoarse + 1) * kCoarseBlock;
        } else if (m_fine.isEmpty(fine)) {
            element = (fine + 1) * kFineBlock;
        } else {
            const std::size_t end = std::min(last, (fine + 1) * kFineBlock);
            for (; element < end; ++element)
                if (isPointAt(element))
                    return element;
        }
    }
    return last;
}

std::size_t CPTSeriesIndex::lastPointIn(std::size_t first, std::size_t last) const
{
    assert(first <= last && last <= size());
    std::size_t element = last;
    if (element > first && isPointAt(element - 1))
        return element - 1;
    while (element > first) {
        const std::size_t fine = (element - 1) / kFineBlock;
        if (isCoarseEmpty(fine / kFinePerCoarse)) {
            element = fine / kFinePerCoarse * kCoarseBlock;
        } else if (m_fine.isEmpty(fine)) {
            element = fine * kFineBlock;
        } else {
            const std::size_t end = std::max(first, fine * kFineBlock);
            for (; element > end; --element)
                if (isPointAt(element - 1))
                    return element - 1;
        }
    }
    return last;
}

std::size_t CPTSeriesIndex::firstPointByRuns(std::size_t element) const
{
    if (element >= size())
        return size();
    for (std::size_t run = m_runs->filledFrom(m_runs->runAt(element)); run < m_runs->count();
         run = m_runs->filledFrom(run + 1)) {
        const std::size_t from = std::max(element, m_runs->begin(run));
        const std::size_t end = m_runs->end(run);
        if (from == m_runs->begin(run) && !std::isnan(m_runs->firstValue(run)))
            return from;
        const plotix::PagedMemory::Hold held = m_pages->hold(from, end);
        const std::size_t found = firstPointIn(from, end);
        if (found < end)
            return found;
    }
    return size();
}

std::size_t CPTSeriesIndex::lastPointByRuns(std::size_t element) const
{
    if (element == 0)
        return size();
    for (std::size_t run = m_runs->filledBefore(m_runs->runAt(element - 1) + 1); run < m_runs->count();
         run = m_runs->filledBefore(run)) {
        const std::size_t first = m_runs->begin(run);
        const std::size_t end = std::min(element, m_runs->end(run));
        const plotix::PagedMemory::Hold held = m_pages->hold(first, end);
        const std::size_t found = lastPointIn(first, end);
        if (found < end)
            return found;
        if (!std::isnan(m_runs->firstValue(run)))
            return first;  // a run that can no longer be read: the same point that firstPointByRuns goes by
    }
    return size();
}
