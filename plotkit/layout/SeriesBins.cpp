#include "plotkit/layout/SeriesBins.h"

#include "plotkit/layout/BinKernels.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace plotkit {

namespace {

constexpr std::size_t kFine = CPTFineBlocks::kElements;
/// How many bins ahead memory is asked for: each reads from a few addresses far apart.
constexpr std::size_t kBinsAhead = 16;
/// Elements of bins that are not much: many pages are filled by several threads, into huge pages of the system.
constexpr std::size_t kHeldAtOnce = 128 * plotix::PagedMemory::kPage;

constexpr BinSummary kNothing{0, std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(), 0, 0,
                              1};

/// Where a bin lies.
struct BinPlace {
    double edge, width;
};

/// Of elements that are held.
BinSummary summaryOf(const CPTPointSeries& series, std::size_t from, std::size_t to, const BinPlace& place)
{
    const CPTSeriesIndex& index = series.index();
    const std::size_t first = index.firstPointIn(from, to);
    if (first >= to)
        return kNothing;
    const std::size_t last = index.lastPointIn(from, to);
    const CPTSeriesIndex::MinMax extremes = index.minMaxHeld(from, to);
    return {series.y()[first],
            extremes.min,
            extremes.max,
            series.y()[last],
            fractionOf(series.x()[first], place.edge, place.width),
            fractionOf(series.x()[last], place.edge, place.width)};
}

/// Of more elements than are to be held at once.
BinSummary summaryOfMany(const CPTPointSeries& series, std::size_t from, std::size_t to, const BinPlace& place)
{
    if (from >= to)
        return kNothing;
    const CPTPointSeries::Hold begin = series.hold(from, from + 1);
    const CPTPointSeries::Hold end = series.hold(to - 1, to);
    const CPTSeriesIndex& index = series.index();
    const std::size_t first = index.firstPointFrom(from);
    if (first >= to)
        return kNothing;
    const std::size_t last = index.lastPointBefore(to);
    const CPTSeriesIndex::MinMax extremes = index.minMax(from, to);
    return {series.y().valueAt(first),
            extremes.min,
            extremes.max,
            series.y().valueAt(last),
            fractionOf(series.x().valueAt(first), place.edge, place.width),
            fractionOf(series.x().valueAt(last), place.edge, place.width)};
}

/// Of whole runs [first, end). Where it is not known which value the line comes in or goes out with, it is one that the
/// bin has.
BinSummary summaryOfRuns(const CPTSeriesRuns& runs, std::size_t first, std::size_t end, const BinPlace& place)
{
    const CPTMinMax extremes = runs.minMax(first, end);
    if (extremes.isEmpty())
        return kNothing;
    const std::size_t known = runs.firstKnown(first, end);
    const float enter = known < end ? runs.firstValue(known) : extremes.min;
    // The line goes on to the next run: that is as near as can be told to where it leaves the bin.
    if (end < runs.count() && !std::isnan(runs.firstValue(end)) &&
        runs.firstTime(end) <= place.edge + place.width * (1 + BinEdges::kSnapFraction))
        return {enter, extremes.min, extremes.max, runs.firstValue(end), 0, 1};
    std::size_t lastKnown = end;
    while (lastKnown > known + 1 && std::isnan(runs.firstValue(lastKnown - 1)))
        --lastKnown;
    return {enter, extremes.min, extremes.max, known < end ? runs.firstValue(lastKnown - 1) : extremes.min, 0, 1};
}

/// The runs [first, second) that reach into a bin that none begins in: a run as long as several bins is in all of them.
std::pair<std::size_t, std::size_t> runsAround(const CPTSeriesRuns& runs, std::size_t edge, const BinPlace& place)
{
    const auto reachesIn = [&](std::size_t run) {
        return run < runs.count() && runs.firstTime(run) < place.edge + place.width && runs.lastTime(run) > place.edge;
    };
    const std::size_t first = edge > 0 && reachesIn(edge - 1) ? edge - 1 : edge;
    return {first, reachesIn(edge) ? edge + 1 : edge};
}

/// Says which points are going to be read, stretch by stretch.
void expectPoints(const CPTPointSeries& series, const BinEdges& edges, std::size_t from, std::size_t to)
{
    for (std::size_t bin = from; bin < to;) {
        std::size_t end = bin;
        while (end < to && !edges.isByRuns(end))
            ++end;
        if (end > bin)
            series.y().expect(edges.edges()[bin], edges.edges()[end]);
        bin = end + 1;
    }
}

void prefetch(const void* memory)
{
    __builtin_prefetch(memory);
}

/// Asks for what summing up the bins will read, where that lies too far apart for the processor to guess.
void askForSamples(const float* y, const std::size_t* edges, std::size_t bin, std::size_t count)
{
    const std::size_t ahead = edges[std::min(bin + kBinsAhead, count)];
    if (ahead == 0)
        return;
    prefetch(y + ahead - 1);
    prefetch(y + ahead - std::min(ahead, kFine));
}

}  // namespace

BinRows SeriesBins::rows()
{
    return {m_first.data(), m_min.data(), m_max.data(), m_last.data(), m_enter.data(), m_leave.data()};
}

KeptBins SeriesBins::keptFor(const CPTPointSeries& series, const BinGrid& grid) const
{
    return KeptBins::of(m_grid, grid, series.serial() == m_serial);
}

BinRows SeriesBins::summaries(const CPTPointSeries& series, const BinGrid& grid, const BinEdges& edges)
{
    const KeptBins kept = keptFor(series, grid);
    for (SlidingRow<float>* row : {&m_first, &m_min, &m_max, &m_last, &m_enter, &m_leave})
        row->slide(kept.moved, grid.count);
    m_serial = series.serial();
    m_grid = grid;

    for (const auto& [from, to] : {std::pair(std::size_t{0}, kept.keptFirst), std::pair(kept.keptLast, grid.count)}) {
        if (series.runs())
            sumUpPaged(series, edges, from, to);
        else
            sumUp(series, edges, from, to);
    }
    return rows();
}

/// Requires: the points of the bins are held, and the one after them.
void SeriesBins::sumUp(const CPTPointSeries& series, const BinEdges& edges, std::size_t from, std::size_t to)
{
    const BinSource source{
        series.y().data(), series.points().words().data(), series.index(), edges.edges(), edges.enter(), edges.leave()};
    const BinRows all = rows();
    BinKernels::best().summarise(source, all, from, to);
    plotix::PagedMemory::Hold times;
    bool areHeld = series.x().isResident();
    for (std::size_t bin = from; bin < to; ++bin) {
        if (!std::isnan(all.first[bin]))
            continue;
        if (!std::exchange(areHeld, true))
            times = series.x().hold(source.edges[from], source.edges[to]);
        askForSamples(source.y, source.edges, bin, m_grid.count);
        all.set(bin, summaryOf(series, source.edges[bin], source.edges[bin + 1], {edgeOf(bin), m_grid.width}));
    }
}

void SeriesBins::sumUpPaged(const CPTPointSeries& series, const BinEdges& edges, std::size_t from, std::size_t to)
{
    expectPoints(series, edges, from, to);
    const BinRows all = rows();
    for (std::size_t bin = from; bin < to;) {
        const BinPlace place{edgeOf(bin), m_grid.width};
        if (edges.isByRuns(bin)) {
            const CPTSeriesRuns& runs = *series.runs();
            std::pair of(edges.runs()[bin], edges.runs()[bin + 1]);
            if (edges.areRunsAlone() && of.first > 0 && runs.lastTime(of.first - 1) >= place.edge)
                --of.first;
            else if (of.first == of.second)
                of = runsAround(runs, of.first, place);
            all.set(bin, summaryOfRuns(runs, of.first, of.second, place));
            ++bin;
        } else if (edges.isMuch(bin)) {
            all.set(bin, summaryOfMany(series, edges.edges()[bin], edges.edges()[bin + 1], place));
            ++bin;
        } else {
            std::size_t end = bin + 1;
            while (end < to && edges.edges()[end] - edges.edges()[bin] < kHeldAtOnce && !edges.isMuch(end))
                ++end;
            const std::size_t after = std::min(series.elementCount(), edges.edges()[end] + 1);
            const plotix::PagedMemory::Hold held = series.y().hold(edges.edges()[bin], after);
            sumUp(series, edges, bin, end);
            bin = end;
        }
    }
}

}  // namespace plotkit
