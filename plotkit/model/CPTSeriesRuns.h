#pragma once

#include "base/ColumnRuns.h"
#include "plotkit/model/LeastAndGreatest.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// Numbers of successive runs, one a run. A run without points has least > greatest; `first` is NaN where the run's
/// first element is no finite point.
struct CPTRunNumbers {
    const float* least = nullptr;
    const float* greatest = nullptr;
    const float* first = nullptr;
    std::size_t firstRun = 0;
    std::size_t count = 0;
};

/// Tells the numbers of runs, as often as it is asked, and always the same. *Shared* by whoever asks; any thread.
class CPTRunSource {
public:
    using Take = std::function<void(const CPTRunNumbers& piece)>;

    virtual ~CPTRunSource() = default;
    /// In pieces, one after the other, that cover runs [first, end) and may reach farther.
    virtual void inPieces(std::size_t first, std::size_t end, const Take& take) const = 0;
};

/// What is known of a paged series without a look at its pages: runs of some hundred elements with their times, the
/// least and greatest of their finite points and the value of their first element, and a coarser level over them.
///
/// The coarser level is always in memory, which is all that a frame of very many runs looks at. Those of a long series
/// are taken from their source where somebody first looks at them, and then stay. Never changes otherwise; the times
/// are *shared* by all series that share them. Runs differ in length and begin anywhere. Any thread may read.
class CPTSeriesRuns {
public:
    static constexpr std::size_t kGroup = 8;     ///< runs that the coarser level takes together
    static constexpr std::size_t kBlock = 2048;  ///< and those that are taken from their source together

    /// Runs of the first `elements` elements. Requires: no run is empty, and inside a run x never decreases; `source`
    /// has as many runs as begin before `elements`, or more.
    CPTSeriesRuns(std::shared_ptr<const plotix::TimeRuns> times, std::shared_ptr<const CPTRunSource> source,
                  std::size_t elements);
    ~CPTSeriesRuns() = default;
    CPTSeriesRuns(const CPTSeriesRuns&) = delete;
    CPTSeriesRuns& operator=(const CPTSeriesRuns&) = delete;

    const std::shared_ptr<const plotix::TimeRuns>& times() const { return m_times; }
    std::size_t elements() const { return m_elements; }
    std::size_t count() const { return m_count; }

    /// Elements [begin, end). `begin(count())` is the number of elements.
    std::size_t begin(std::size_t run) const { return run < m_count ? m_times->begin[run] : m_elements; }
    std::size_t end(std::size_t run) const { return begin(run + 1); }
    double firstTime(std::size_t run) const { return m_times->first[run]; }
    /// Of the run's last element; where the series ends inside the run, no element is later.
    double lastTime(std::size_t run) const { return m_times->last[run]; }
    float firstValue(std::size_t run) const
    {
        return run % kGroup == 0 ? m_groupFirst[run / kGroup] : blockOf(run).first[run % kBlock];
    }
    CPTMinMax minMaxOf(std::size_t run) const
    {
        const Block& block = blockOf(run);
        return {block.least[run % kBlock], block.greatest[run % kBlock]};
    }
    bool isEmpty(std::size_t run) const { return minMaxOf(run).isEmpty(); }
    /// Takes the run and those beside it from their source, for whoever is going to do so with all. Nobody else waits
    /// for it.
    void bring(std::size_t run) const;

    /// Of runs [first, end).
    CPTMinMax minMax(std::size_t first, std::size_t end) const;
    /// The first of runs [first, end) whose first element is a finite point; `end` where there is none.
    std::size_t firstKnown(std::size_t first, std::size_t end) const;

    /// The run that element lies in. Requires: element < elements().
    std::size_t runAt(std::size_t element) const;
    /// The first run that begins at `element` or later; count() where there is none.
    std::size_t runFrom(std::size_t element) const;
    /// The first run whose first time is not below x; count() where there is none. Requires: sorted times.
    std::size_t runFromTime(double x) const;
    /// The first one from `run` on, found with few looks where it is near `guess`.
    std::size_t runFromTime(double x, std::size_t run, std::size_t guess) const;

    /// The first run that holds points, at or after `run`; count() where there is none.
    std::size_t filledFrom(std::size_t run) const;
    /// The last one before `run`; count() where there is none.
    std::size_t filledBefore(std::size_t run) const;

    /// Whether the times are finite and never decrease from run to run.
    bool areTimesSorted() const;

    /// How many bytes the numbers take that were looked at, beside those that are always there.
    std::size_t bytesOfRuns() const;

private:
    struct Block {
        float least[kBlock], greatest[kBlock], first[kBlock];
    };

    const Block& blockOf(std::size_t run) const
    {
        const Block* block = m_blocks[run / kBlock].load(std::memory_order_acquire);
        return block ? *block : taken(run / kBlock);
    }
    const Block& taken(std::size_t block) const;
    void take(std::size_t block, Block& into) const;
    Block& placeInRoom(std::size_t block) const;
    void takeAll();
    void addGroups(const Block& block, std::size_t count);
    CPTMinMax minMaxWithinBlock(std::size_t first, std::size_t end) const;
    bool isGroupEmpty(std::size_t group) const { return !(m_groupLeast[group] <= m_groupGreatest[group]); }

    std::shared_ptr<const plotix::TimeRuns> m_times;
    std::shared_ptr<const CPTRunSource> m_source;
    std::size_t m_elements;
    std::size_t m_count;
    std::vector<float> m_groupLeast, m_groupGreatest, m_groupFirst;
    mutable std::vector<std::atomic<const Block*>> m_blocks;  // null: not looked at yet
    mutable std::mutex m_bringing;
    mutable std::shared_ptr<void> m_room;  // for all blocks, in huge pages; null: none was brought
    mutable std::mutex m_takingAlone;
    mutable std::vector<std::unique_ptr<Block>> m_alone;  // those that were looked at before they were brought
};
