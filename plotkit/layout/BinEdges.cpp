#include "plotkit/layout/BinEdges.h"

#include "plotkit/layout/BinKernels.h"
#include "plotkit/layout/FrameParts.h"
#include "plotkit/model/SortedSearch.h"
#include "plotkit/model/TimeCourse.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace plotkit {

namespace {

/// Beyond, the number of a bin would no longer be exact; the grid then begins at the view.
constexpr double kMostBinNumber = 1e14;
constexpr std::size_t kFine = CPTFineBlocks::kElements;
constexpr double kSnapFraction = BinEdges::kSnapFraction;
/// Elements of stretches whose pages are held together: many pages are filled by several threads, into huge pages of
/// the system.
constexpr std::size_t kHeldAtOnce = 128 * plotix::PagedMemory::kPage;
/// How many bins ahead memory is asked for: each reads from a few addresses far apart.
constexpr std::size_t kBinsAhead = 16;
constexpr std::int64_t kStretch = BinEdges::kStretch;
/// How far from where a bin begins a run may begin that is its edge, in pixels, where no gap is near.
constexpr double kFarthest = 0.5;
/// Groups of runs a bin from which on its edges are theirs: then one begins at most a quarter of a bin from where
/// the bin does.
constexpr std::size_t kGroupsABin = 2;

void prefetch(const void* memory)
{
    __builtin_prefetch(memory);
}

/// Asks for the times at `element`, and for those where the blocks around it begin.
void askForTimes(std::span<const double> x, std::size_t element)
{
    const std::size_t block = (element + kFine - 1) / kFine * kFine;
    if (block >= x.size())
        return;
    prefetch(x.data() + block);
    prefetch(x.data() + element);
    prefetch(x.data() + block - std::min(block, kFine));
}

}  // namespace

BinGrid BinGrid::covering(double low, double high, double width, int perPixel)
{
    BinGrid grid{0, width, 0, 0, perPixel};
    if (std::max(std::abs(low), std::abs(high)) > kMostBinNumber * width)
        grid.origin = low;
    grid.first = static_cast<std::int64_t>(std::floor((low - grid.origin) / width));
    const auto last = static_cast<std::int64_t>(std::floor((high - grid.origin) / width));
    grid.count = static_cast<std::size_t>(last - grid.first + 1);
    return grid;
}

KeptBins KeptBins::of(const BinGrid& old, const BinGrid& grid, bool known)
{
    const auto count = static_cast<std::int64_t>(grid.count);
    const KeptBins none{static_cast<std::ptrdiff_t>(old.count + grid.count), grid.count, grid.count};
    if (!known || old.origin != grid.origin || old.width != grid.width)
        return none;
    const std::int64_t first = std::clamp<std::int64_t>(old.first - grid.first, 0, count);
    const std::int64_t last =
        std::clamp<std::int64_t>(old.first + static_cast<std::int64_t>(old.count) - grid.first, first, count);
    if (first == last)
        return none;
    return {static_cast<std::ptrdiff_t>(grid.first - old.first), static_cast<std::size_t>(first),
            static_cast<std::size_t>(last)};
}

bool BinEdges::isOf(const CPTPointSeries& series) const
{
    const std::shared_ptr<const double> mine = m_x.lock();
    if (!mine || mine.get() != series.x().data() || series.elementCount() != m_elements)
        return false;
    return series.runs() ? series.runs()->times() == m_timeRuns.lock() : !m_isPaged;
}

KeptBins BinEdges::keptFor(const CPTPointSeries& series, const BinGrid& grid) const
{
    return KeptBins::of(m_grid, grid, isOf(series));
}

/// In crowded bins, the beginning of a block of the index near the first element whose x is not below `value`, so that
/// the samples need not be read; x.size() where there is none. `after` is where the block after that element begins.
std::size_t BinEdges::blockNear(std::span<const double> x, std::size_t from, std::size_t after, double value) const
{
    if (after >= x.size() || after < from + kFine)
        return x.size();
    const double above = x[after] - value;
    const double below = value - x[after - kFine];
    if (above < 0 || below <= 0 || std::min(above, below) > m_grid.width * kSnapFraction)
        return x.size();
    return above < below ? after : after - kFine;
}

/// The same block as blockNear() answers, found without reading the times; the number of elements where the course is
/// not exact enough, or no block is near.
std::size_t BinEdges::blockBy(const TimeCourse& course, std::size_t from, std::size_t guess, double value) const
{
    const std::optional<TimeCourse::Neighbours> found = course.around(value, guess);
    if (!found || found->after >= m_elements || found->after < from + kFine)
        return m_elements;
    const bool isBetween = found->above > found->off && found->below > found->off;
    const bool isNear = std::min(found->above, found->below) + found->off < m_grid.width * kSnapFraction;
    const bool isPlain = std::abs(found->above - found->below) > 2 * found->off;
    if (!isBetween || !isNear || !isPlain)
        return m_elements;
    return found->above < found->below ? found->after : found->after - kFine;
}

/// The first element at or after `from` whose x is not below `value`, or a block's beginning near it. What is found
/// does not depend on how good the guess was, or on whether the times were read.
BinEdges::Found BinEdges::search(std::span<const double> x, const TimeCourse* course, std::size_t from,
                                 double value) const
{
    const std::size_t size = x.size();
    const auto guess = std::min(static_cast<std::size_t>(static_cast<double>(from) + m_stride + 0.5), size);
    const bool crowded = m_stride >= static_cast<double>(BinKernels::kDense);
    if (crowded && course != nullptr)
        if (const std::size_t found = blockBy(*course, from, guess, value); found < size)
            return {found, false};
    if (crowded) {
        const std::size_t after = (guess + kFine - 1) / kFine * kFine;
        for (const std::size_t block : {after, after - std::min(after, kFine)})
            if (const std::size_t found = blockNear(x, from, block, value); found < size)
                return {found, true};
    }
    const std::size_t exact = firstElementAt(x, from, size, guess, value);
    const std::size_t block = crowded ? blockNear(x, from, (exact + kFine - 1) / kFine * kFine, value) : size;
    return {block < size ? block : exact, true};
}

/// Bins [from, to): the edge at `from` stands already, and at `to` unless it is to be found.
void BinEdges::findBins(std::span<const double> x, const TimeCourse* course, std::size_t from, std::size_t to,
                        bool findsEnd)
{
    std::size_t* edges = m_edges.data();
    const auto reach = static_cast<std::size_t>(m_stride * static_cast<double>(kBinsAhead));
    bool reads = true;
    for (std::size_t bin = from; bin < to; ++bin) {
        if (reads)
            askForTimes(x, edges[bin] + reach);
        if (bin + 1 < to || findsEnd) {
            const Found found = search(x, course, edges[bin], edgeOf(bin + 1));
            edges[bin + 1] = found.element;
            reads = found.wasRead;
        }
        const std::size_t count = edges[bin + 1] - edges[bin];
        const bool blocks = count >= BinKernels::kDense && edges[bin] % kFine == 0 && edges[bin + 1] % kFine == 0;
        m_enter.data()[bin] = blocks || count == 0 ? 0 : fractionOf(x[edges[bin]], edgeOf(bin), m_grid.width);
        m_leave.data()[bin] = blocks || count == 0 ? 1 : fractionOf(x[edges[bin + 1] - 1], edgeOf(bin), m_grid.width);
    }
}

/// Whether bins of the stretch begin where groups of runs do, so that no run need be looked at.
bool BinEdges::isCrowdedByGroups(const CPTSeriesRuns& runs, std::size_t bin) const
{
    const std::int64_t number = m_grid.first + static_cast<std::int64_t>(bin);
    const std::int64_t stretch = number - ((number % kStretch) + kStretch) % kStretch;
    const std::size_t inStretch =
        runs.runFromTime(m_grid.edge(stretch + kStretch)) - runs.runFromTime(m_grid.edge(stretch));
    return inStretch >= kGroupsABin * CPTSeriesRuns::kGroup * static_cast<std::size_t>(kStretch);
}

/// The beginning of a group of runs, not far from `value`, before which `run` is the first one that does not begin;
/// count() where there is none.
std::size_t BinEdges::groupNear(const CPTSeriesRuns& runs, std::size_t run, double value) const
{
    const std::size_t above = (run + CPTSeriesRuns::kGroup - 1) / CPTSeriesRuns::kGroup * CPTSeriesRuns::kGroup;
    if (above >= runs.count() || above == 0)
        return runs.count();
    const std::size_t below = above - CPTSeriesRuns::kGroup;
    const double toAbove = runs.firstTime(above) - value, toBelow = value - runs.firstTime(below);
    if (std::min(toAbove, toBelow) > m_grid.width * kSnapFraction)
        return runs.count();
    return toAbove < toBelow ? above : below;
}

/// Whether the elements of a run stand no farther apart than those in view do: then there is hardly a gap in it.
bool BinEdges::isEven(const CPTSeriesRuns& runs, std::size_t run) const
{
    const auto elements = static_cast<double>(runs.end(run) - runs.begin(run));
    return (runs.lastTime(run) - runs.firstTime(run)) * m_stride <= 2 * elements * m_grid.width;
}

/// The run's beginning nearest to a value, at most a quarter of a bin away or, where runs are longer, half a pixel;
/// else the first element at or after `from` whose x is not below it.
BinEdges::RunEdge BinEdges::edgeByRuns(const CPTPointSeries& series, std::size_t from, std::size_t fromRun,
                                       double value, bool byGroups) const
{
    const CPTSeriesRuns& runs = *series.runs();
    const double perRun = static_cast<double>(runs.count()) / static_cast<double>(runs.elements());
    const auto guess = fromRun + static_cast<std::size_t>(m_stride * perRun + 0.5);
    const std::size_t run = runs.runFromTime(value, fromRun, guess);
    const bool isExact = run == 0 || runs.lastTime(run - 1) < value;  // no element stands between
    if (byGroups)
        if (const std::size_t near = groupNear(runs, run, value); near < runs.count() && runs.begin(near) >= from)
            return {runs.begin(near), near};
    const bool mayBeFar = !isExact && isEven(runs, run - 1);
    const double reach =
        m_grid.width * (mayBeFar ? std::max(kFarthest * m_grid.perPixel, kSnapFraction) : kSnapFraction);
    const auto isNear = [reach](double distance) { return distance <= reach; };
    const double above = run < runs.count() ? runs.firstTime(run) - value : std::numeric_limits<double>::infinity();
    const double below = run > 0 ? value - runs.firstTime(run - 1) : std::numeric_limits<double>::infinity();
    const bool canGoBack = run > 0 && runs.begin(run - 1) >= from;
    if (canGoBack && below < above && isNear(below))
        return {runs.begin(run - 1), run - 1};
    if (runs.begin(run) >= from && (isExact || isNear(above)))
        return {runs.begin(run), run};
    const std::size_t element = std::max(from, series.elementFrom(value));
    return {element, kNoRun};
}

bool BinEdges::isCrowded(const CPTSeriesRuns& runs, std::size_t bin) const
{
    return isCrowdedByRuns(runs, m_grid, m_grid.first + static_cast<std::int64_t>(bin));
}

void BinEdges::findBinsByRuns(const CPTPointSeries& series, std::size_t from, std::size_t to, bool findsEnd)
{
    std::size_t* edges = m_edges.data();
    std::size_t run = series.runs()->runFrom(edges[from]);
    run = run > 0 ? run - 1 : 0;
    const bool byGroups = isCrowdedByGroups(*series.runs(), from);
    for (std::size_t bin = from; bin < to; ++bin) {
        m_byRuns.data()[bin] = 1;
        m_enter.data()[bin] = 0;
        m_leave.data()[bin] = 1;
        if (bin + 1 == to && !findsEnd)
            break;
        const RunEdge found = edgeByRuns(series, edges[bin], run, edgeOf(bin + 1), byGroups);
        edges[bin + 1] = found.element;
        m_runs.data()[bin + 1] = found.run;
        if (found.run != kNoRun)
            run = std::max(run, found.run > 0 ? found.run - 1 : 0);
    }
}

/// As in memory: what is found depends on no times beyond the block after the last edge.
void BinEdges::findHeldBins(const CPTPointSeries& series, std::size_t from, std::size_t to, bool findsEnd)
{
    const std::size_t begin = m_edges.data()[from];
    const std::size_t last = findsEnd ? std::max(begin, series.elementFrom(edgeOf(to))) : m_edges.data()[to];
    const std::size_t end = std::min(m_elements, last + 2 * kFine);
    const plotix::PagedMemory::Hold held = series.x().hold(begin, end);
    findBins(series.x().span().first(end), nullptr, from, to, findsEnd);
    for (std::size_t bin = from; bin < to; ++bin) {
        m_byRuns.data()[bin] = 0;
        if (bin + 1 < to || findsEnd)
            m_runs.data()[bin + 1] = kNoRun;
    }
}

/// The same, stretch by stretch.
void BinEdges::findPagedBins(const CPTPointSeries& series, std::size_t from, std::size_t to)
{
    const CPTSeriesRuns& runs = *series.runs();
    const bool findsEnd = to == m_grid.count;
    if (from == 0 && to > 0) {
        RunEdge first{0, kNoRun};
        if (isCrowded(runs, 0))
            first = edgeByRuns(series, 0, 0, edgeOf(0), isCrowdedByGroups(runs, 0));
        else
            first.element = series.elementFrom(edgeOf(0));
        m_edges.data()[0] = first.element;
        m_runs.data()[0] = first.run;
    }
    plotix::PagedMemory::Hold held;  // of stretches side by side, filled together
    std::size_t heldEnd = from;
    for (std::size_t bin = from; bin < to;) {
        const std::int64_t number = m_grid.first + static_cast<std::int64_t>(bin);
        const std::int64_t left = kStretch - ((number % kStretch) + kStretch) % kStretch;
        const std::size_t end = std::min(to, bin + static_cast<std::size_t>(left));
        const bool endIsFound = end < to || findsEnd;
        if (isCrowded(runs, bin)) {
            findBinsByRuns(series, bin, end, endIsFound);
        } else {
            if (bin >= heldEnd) {
                const auto elementsTo = [&](std::size_t stretchEnd) {
                    return runs.begin(runs.runFromTime(edgeOf(stretchEnd))) - std::min(m_elements, m_edges.data()[bin]);
                };
                for (heldEnd = end; heldEnd < to && !isCrowded(runs, heldEnd) && elementsTo(heldEnd) < kHeldAtOnce;)
                    heldEnd = std::min(to, heldEnd + static_cast<std::size_t>(kStretch));
                const std::size_t first = m_edges.data()[bin];
                held = series.x().hold(first, std::max(first, series.elementFrom(edgeOf(heldEnd))));
            }
            findHeldBins(series, bin, end, endIsFound);
        }
        bin = end;
    }
}

/// Edges that are not kept: each where the first run begins that does not begin before it.
void BinEdges::findRunsAlone(const CPTSeriesRuns& runs, const KeptBins& kept)
{
    const double perRun = static_cast<double>(runs.count()) / static_cast<double>(runs.elements());
    std::size_t run = 0;
    for (std::size_t edge = 0; edge <= m_grid.count; ++edge) {
        if (kept.keptFirst < kept.keptLast && edge >= kept.keptFirst && edge <= kept.keptLast) {
            run = m_runs.data()[edge];
            continue;
        }
        const auto guess = run + static_cast<std::size_t>(m_stride * perRun + 0.5);
        run = edge == 0 ? runs.runFromTime(edgeOf(0)) : runs.runFromTime(edgeOf(edge), run, guess);
        m_runs.data()[edge] = run;
        m_edges.data()[edge] = runs.begin(run);
    }
    std::fill_n(m_byRuns.data(), m_grid.count, static_cast<unsigned char>(1));
    std::fill_n(m_enter.data(), m_grid.count, 0.0F);
    std::fill_n(m_leave.data(), m_grid.count, 1.0F);
}

void BinEdges::cover(const CPTPointSeries& series, const BinGrid& grid)
{
    const bool isPaged = series.runs() != nullptr;
    const KeptBins kept = keptFor(series, grid);
    const bool isByRunsAlone = isPaged && m_reading == PlotReading::RunsAlone;
    const auto firstFrom = [&](std::size_t bin) {
        const double edge = grid.edge(grid.first + static_cast<std::int64_t>(bin));
        return isByRunsAlone ? series.runs()->begin(series.runs()->runFromTime(edge)) : series.elementFrom(edge);
    };
    m_grid = grid;
    m_x = series.x().weak();
    m_timeRuns.reset();
    if (isPaged)
        m_timeRuns = series.runs()->times();
    m_elements = series.elementCount();
    m_isPaged = isPaged;
    m_edges.slide(kept.moved, grid.count + 1);
    m_enter.slide(kept.moved, grid.count);
    m_leave.slide(kept.moved, grid.count);
    if (isPaged) {
        m_runs.slide(kept.moved, grid.count + 1);
        m_byRuns.slide(kept.moved, grid.count);
    }
    if (kept.keptFirst == grid.count)
        m_stride = static_cast<double>(firstFrom(grid.count) - firstFrom(0)) / static_cast<double>(grid.count);
    if (isByRunsAlone) {
        findRunsAlone(*series.runs(), kept);
        return;
    }
    if (isPaged) {
        findPagedBins(series, 0, kept.keptFirst);
        findPagedBins(series, kept.keptLast, grid.count);
        return;
    }
    const std::span<const double> x = series.x().span().first(m_elements);
    if (kept.keptFirst > 0)
        m_edges.data()[0] = firstFrom(0);
    findBins(x, series.xCourse(), 0, kept.keptFirst, kept.keptFirst == grid.count);
    findBins(x, series.xCourse(), kept.keptLast, grid.count, true);
}

}  // namespace plotkit
