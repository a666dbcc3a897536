#include "plotkit/model/CPTSeriesRuns.h"

#include "plotkit/model/RunOrder.h"

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

CPTSeriesRuns::~CPTSeriesRuns()
{
    for (const std::atomic<const Block*>& block : m_blocks)
        delete block.load();
}

/// The coarser level of all runs, and the runs of a short series.
void CPTSeriesRuns::takeAll()
{
    const bool isKept = m_count <= kMostKeptAtOnce;
    std::unique_ptr<Block> block;
    std::size_t filled = 0;
    const auto finish = [&] {
        const std::size_t number = (filled - 1) / kBlock;
        addGroups(*block, filled - number * kBlock);
        if (isKept)
            m_blocks[number].store(block.release());
    };
    m_source->inPieces(0, m_count, [&](const CPTRunNumbers& piece) {
        assert(piece.firstRun == filled || filled == m_count);
        for (std::size_t taken = 0; taken < piece.count && filled < m_count;) {
            if (!block)
                block = std::make_unique<Block>();
            const std::size_t at = filled % kBlock;
            const std::size_t count = std::min({piece.count - taken, kBlock - at, m_count - filled});
            std::copy_n(piece.least + taken, count, block->least + at);
            std::copy_n(piece.greatest + taken, count, block->greatest + at);
            std::copy_n(piece.first + taken, count, block->first + at);
            taken += count;
            filled += count;
            if (filled % kBlock == 0 || filled == m_count)
                finish();
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

const CPTSeriesRuns::Block& CPTSeriesRuns::taken(std::size_t number) const
{
    const std::lock_guard lock(m_mutex);
    if (const Block* block = m_blocks[number].load(std::memory_order_relaxed))
        return *block;
    const std::size_t first = number * kBlock, end = std::min(m_count, first + kBlock);
    auto block = std::make_unique<Block>();
    m_source->inPieces(first, end, [&](const CPTRunNumbers& piece) {
        const std::size_t from = std::max(first, piece.firstRun), to = std::min(end, piece.firstRun + piece.count);
        if (from >= to)
            return;
        std::copy(piece.least + (from - piece.firstRun), piece.least + (to - piece.firstRun),
                  block->least + (from - first));
        std::copy(piece.greatest + (from - piece.firstRun), piece.greatest + (to - piece.firstRun),
                  block->greatest + (from - first));
        std::copy(piece.first + (from - piece.firstRun), piece.first + (to - piece.firstRun),
                  block->first + (from - first));
    });
    m_blocks[number].store(block.get(), std::memory_order_release);
    return *block.release();
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
