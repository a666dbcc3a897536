#include "plotkit/model/CPTSeriesRuns.h"

#include "base/LargeMemory.h"
#include "plotkit/model/RunOrder.h"
#include "plotkit/model/SortedSearch.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace {

/// Runs of shorter series are kept from the beginning: taking them twice would cost more than they do.
constexpr std::size_t kMostKeptAtOnce = 16384;

}  // namespace

CPTSeriesRuns::CPTSeriesRuns(std::shared_ptr<const plotix::TimeRuns> times, std::shared_ptr<const CPTRunSource> source,
                             std::size_t elements)
    : m_times(std::move(times)), m_source(std::move(source)), m_elements(elements)
{
    const std::vector<std::size_t>& begin = m_times->begin;
    const auto runsEnd = begin.begin() + static_cast<std::ptrdiff_t>(m_times->count());
    m_count = static_cast<std::size_t>(std::lower_bound(begin.begin(), runsEnd, elements) - begin.begin());
    assert(elements <= (begin.empty() ? 0 : begin.back()));
    m_blocks = std::vector<std::atomic<const Block*>>((m_count + kBlock - 1) / kBlock);
    for (std::vector<float>* each : {&m_groupLeast, &m_groupGreatest, &m_groupFirst})
        each->reserve(m_count / kGroup + 1);
    takeAll();
}

/// Requires: nobody else brings.
CPTSeriesRuns::Block& CPTSeriesRuns::placeInRoom(std::size_t number) const
{
    if (!m_room)
        m_room = plotix::unsetMemory(m_blocks.size() * sizeof(Block));
    return static_cast<Block*>(m_room.get())[number];
}

/// The coarser level of all runs, and the runs of a short series.
void CPTSeriesRuns::takeAll()
{
    const bool isKept = m_count <= kMostKeptAtOnce;
    const std::unique_ptr<Block> passing = isKept ? nullptr : std::make_unique_for_overwrite<Block>();
    std::size_t filled = 0;
    const auto finish = [&](const Block& block) {
        const std::size_t number = (filled - 1) / kBlock;
        addGroups(block, filled - number * kBlock);
        if (isKept)
            m_blocks[number].store(&block);
    };
    m_source->inPieces(0, m_count, [&](const CPTRunNumbers& piece) {
        assert(piece.firstRun == filled || filled == m_count);
        for (std::size_t taken = 0; taken < piece.count && filled < m_count;) {
            Block& block = isKept ? placeInRoom(filled / kBlock) : *passing;
            const std::size_t at = filled % kBlock;
            const std::size_t count = std::min({piece.count - taken, kBlock - at, m_count - filled});
            std::copy_n(piece.least + taken, count, block.least + at);
            std::copy_n(piece.greatest + taken, count, block.greatest + at);
            std::copy_n(piece.first + taken, count, block.first + at);
            taken += count;
            filled += count;
            if (filled % kBlock == 0 || filled == m_count)
                finish(block);
        }
    });
    assert(filled == m_count);
}

void CPTSeriesRuns::addGroups(const Block& block, std::size_t count)
{
    for (std::size_t run = 0; run < count; run += kGroup) {
        plotkit::MinMaxLanes lanes;
        static_assert(kGroup == lanes.low.size());
        for (std::size_t lane = 0; lane < std::min(kGroup, count - run); ++lane)
            lanes.take(lane, block.least[run + lane], block.greatest[run + lane]);
        const CPTMinMax pair = lanes.result();
        m_groupLeast.push_back(pair.min);
        m_groupGreatest.push_back(pair.max);
        m_groupFirst.push_back(block.first[run]);
    }
}

void CPTSeriesRuns::take(std::size_t number, Block& into) const
{
    const std::size_t first = number * kBlock, end = std::min(m_count, first + kBlock);
    m_source->inPieces(first, end, [&](const CPTRunNumbers& piece) {
        const std::size_t from = std::max(first, piece.firstRun), to = std::min(end, piece.firstRun + piece.count);
        if (from >= to)
            return;
        const std::size_t skipped = from - piece.firstRun, at = from - first, count = to - from;
        std::copy_n(piece.least + skipped, count, into.least + at);
        std::copy_n(piece.greatest + skipped, count, into.greatest + at);
        std::copy_n(piece.first + skipped, count, into.first + at);
    });
}

/// Without a lock of ours while it is unpacked: a frame does not wait for a thread that gives way to frames. At worst a
/// block is unpacked twice, to the same numbers.
const CPTSeriesRuns::Block& CPTSeriesRuns::taken(std::size_t number) const
{
    // Alone, as a huge page that few blocks stand in costs more than they do; and not cleared before it is filled.
    auto own = std::make_unique_for_overwrite<Block>();
    take(number, *own);
    const Block* known = nullptr;
    const std::lock_guard lock(m_takingAlone);
    m_alone.reserve(m_alone.size() + 1);
    if (!m_blocks[number].compare_exchange_strong(known, own.get(), std::memory_order_acq_rel))
        return *known;
    return *m_alone.emplace_back(std::move(own));
}

void CPTSeriesRuns::bring(std::size_t run) const
{
    const std::lock_guard lock(m_bringing);
    const std::size_t number = run / kBlock;
    const Block* known = nullptr;
    if (m_blocks[number].load(std::memory_order_acquire) != nullptr)
        return;
    Block& block = placeInRoom(number);
    take(number, block);
    m_blocks[number].compare_exchange_strong(known, &block, std::memory_order_acq_rel);
}

std::size_t CPTSeriesRuns::bytesOfRuns() const
{
    return sizeof(Block) *
           static_cast<std::size_t>(std::count_if(m_blocks.begin(), m_blocks.end(),
                                                  [](const auto& block) { return block.load() != nullptr; }));
}

/// Requires: the runs lie in one block.
CPTMinMax CPTSeriesRuns::minMaxWithinBlock(std::size_t first, std::size_t end) const
{
    if (first >= end)
        return plotkit::emptyMinMax();
    const Block& block = blockOf(first);
    const std::size_t from = first % kBlock;
    return plotkit::joinedPairs(block.least, block.greatest, from, from + (end - first));
}

CPTMinMax CPTSeriesRuns::minMax(std::size_t first, std::size_t end) const
{
    const std::size_t firstGroup = (first + kGroup - 1) / kGroup;
    const std::size_t endGroup = (end == m_count ? end + kGroup - 1 : end) / kGroup;
    if (firstGroup > endGroup || (firstGroup == endGroup && end <= firstGroup * kGroup))
        return minMaxWithinBlock(first, end);
    const CPTMinMax ends = plotkit::joined(minMaxWithinBlock(first, firstGroup * kGroup),
                                           minMaxWithinBlock(std::min(end, endGroup * kGroup), end));
    return plotkit::joined(ends,
                           plotkit::joinedPairs(m_groupLeast.data(), m_groupGreatest.data(), firstGroup, endGroup));
}

std::size_t CPTSeriesRuns::firstKnown(std::size_t first, std::size_t end) const
{
    while (first < end && std::isnan(firstValue(first)))
        ++first;
    return first;
}

std::size_t CPTSeriesRuns::runAt(std::size_t element) const
{
    assert(element < m_elements);
    const auto from = m_times->begin.begin();
    return static_cast<std::size_t>(std::upper_bound(from, from + static_cast<std::ptrdiff_t>(m_count), element) -
                                    from - 1);
}

std::size_t CPTSeriesRuns::runFrom(std::size_t element) const
{
    const auto from = m_times->begin.begin();
    return static_cast<std::size_t>(std::lower_bound(from, from + static_cast<std::ptrdiff_t>(m_count), element) -
                                    from);
}

std::size_t CPTSeriesRuns::runFromTime(double x) const
{
    const auto from = m_times->first.begin();
    return static_cast<std::size_t>(std::lower_bound(from, from + static_cast<std::ptrdiff_t>(m_count), x) - from);
}

std::size_t CPTSeriesRuns::runFromTime(double x, std::size_t run, std::size_t guess) const
{
    return plotkit::firstElementAt({m_times->first.data(), m_count}, run, m_count, guess, x);
}

std::size_t CPTSeriesRuns::filledFrom(std::size_t run) const
{
    while (run < m_count) {
        const bool beginsGroup = run % kGroup == 0;
        if (beginsGroup && !std::isnan(m_groupFirst[run / kGroup]))
            return run;
        if (beginsGroup && isGroupEmpty(run / kGroup))
            run += kGroup;
        else if (isEmpty(run))
            ++run;
        else
            return run;
    }
    return m_count;
}

std::size_t CPTSeriesRuns::filledBefore(std::size_t run) const
{
    run = std::min(run, m_count);
    while (run > 0) {
        const std::size_t group = (run - 1) / kGroup;
        if (isGroupEmpty(group))
            run = group * kGroup;
        else if (isEmpty(run - 1))
            --run;
        else
            return run - 1;
    }
    return m_count;
}

bool CPTSeriesRuns::areTimesSorted() const
{
    return plotkit::areTimesSorted(m_times, m_count);
}
