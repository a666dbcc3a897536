#pragma once

#include "plotkit/model/CPTPointSeries.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

/// Going through the points of a series, past blocks that cannot hold what is looked for. Free functions; any thread.
///
/// `skip(least, greatest, first, last)` is asked of whole blocks of the series' index, elements [first, last), and
/// answers whether to go past; `take(element, y)` is given the points of the others, one by one, and answers whether to
/// end there. Both may keep a state of their own, as everything comes in the order of the walk. Points whose value is
/// not finite are none. Of a paged series whole runs are asked about first, and pages are held where points are looked
/// at.
namespace plotix {

namespace walk {

inline bool isPoint(const CPTPointSeries& series, std::size_t element)
{
    return series.isPoint(element) && std::isfinite(series.y()[element]);
}

/// Whether the block of `size` elements at `first` holds nothing that counts; empty ones never do.
template <class Skip>
bool isPassed(float least, float greatest, std::size_t first, std::size_t last, Skip& skip)
{
    return !(least <= greatest) || skip(least, greatest, first, last);
}

template <class Skip>
bool isCoarsePassed(const CPTSeriesIndex& index, std::size_t first, std::size_t last, Skip& skip)
{
    const std::size_t block = first / CPTSeriesIndex::kCoarseBlock;
    return isPassed(index.coarseLeast()[block], index.coarseGreatest()[block], first, last, skip);
}

template <class Skip>
bool isFinePassed(const CPTSeriesIndex& index, std::size_t first, std::size_t last, Skip& skip)
{
    const std::size_t block = first / CPTSeriesIndex::kFineBlock;
    return isPassed(index.fine().least()[block], index.fine().greatest()[block], first, last, skip);
}

/// Elements that are held.
template <class Skip, class Take>
std::optional<std::size_t> forwardHeld(const CPTPointSeries& series, std::size_t first, std::size_t last, Skip& skip,
                                       Take& take)
{
    constexpr std::size_t kFine = CPTSeriesIndex::kFineBlock;
    constexpr std::size_t kCoarse = CPTSeriesIndex::kCoarseBlock;
    const CPTSeriesIndex& index = series.index();
    const std::size_t all = series.elementCount();
    const auto endOf = [&](std::size_t begin, std::size_t size) { return std::min(all, begin + size); };
    while (first < last) {
        if (first % kCoarse == 0 && endOf(first, kCoarse) <= last &&
            isCoarsePassed(index, first, endOf(first, kCoarse), skip)) {
            first = endOf(first, kCoarse);
            continue;
        }
        if (first % kFine == 0 && endOf(first, kFine) <= last &&
            isFinePassed(index, first, endOf(first, kFine), skip)) {
            first = endOf(first, kFine);
            continue;
        }
        const std::size_t end = std::min(last, (first / kFine + 1) * kFine);
        for (; first < end; ++first)
            if (isPoint(series, first) && take(first, series.y()[first]))
                return first;
    }
    return std::nullopt;
}

template <class Skip, class Take>
std::optional<std::size_t> backwardHeld(const CPTPointSeries& series, std::size_t first, std::size_t last, Skip& skip,
                                        Take& take)
{
    constexpr std::size_t kFine = CPTSeriesIndex::kFineBlock;
    constexpr std::size_t kCoarse = CPTSeriesIndex::kCoarseBlock;
    const CPTSeriesIndex& index = series.index();
    const std::size_t all = series.elementCount();
    const auto isEnd = [&](std::size_t end, std::size_t size) { return end % size == 0 || end == all; };
    while (last > first) {
        const std::size_t coarse = (last - 1) / kCoarse * kCoarse;
        if (isEnd(last, kCoarse) && coarse >= first && isCoarsePassed(index, coarse, last, skip)) {
            last = coarse;
            continue;
        }
        const std::size_t fine = (last - 1) / kFine * kFine;
        if (isEnd(last, kFine) && fine >= first && isFinePassed(index, fine, last, skip)) {
            last = fine;
            continue;
        }
        for (const std::size_t begin = std::max(first, fine); last > begin; --last)
            if (isPoint(series, last - 1) && take(last - 1, series.y()[last - 1]))
                return last - 1;
    }
    return std::nullopt;
}

template <class Skip>
bool isRunPassed(const CPTSeriesRuns& runs, std::size_t run, std::size_t first, std::size_t last, Skip& skip)
{
    const CPTMinMax pair = runs.minMaxOf(run);
    return first == runs.begin(run) && last == runs.end(run) && isPassed(pair.min, pair.max, first, last, skip);
}

}  // namespace walk

/// The element of [first, last) at which the walk was ended; nothing: it came to the end.
/// Requires: first ≤ last ≤ elements of the series.
template <class Skip, class Take>
std::optional<std::size_t> walkForward(const CPTPointSeries& series, std::size_t first, std::size_t last, Skip skip,
                                       Take take)
{
    const CPTSeriesRuns* runs = series.runs().get();
    if (!runs)
        return walk::forwardHeld(series, first, last, skip, take);
    CPTPointSeries::Hold held;  // until the next one is: mostly the same page
    for (std::size_t run = first < last ? runs->runAt(first) : 0; first < last; ++run) {
        const std::size_t end = std::min(last, runs->end(run));
        if (!walk::isRunPassed(*runs, run, first, end, skip)) {
            held = series.hold(first, end);
            if (const auto found = walk::forwardHeld(series, first, end, skip, take))
                return found;
        }
        first = end;
    }
    return std::nullopt;
}

/// The same from the last element to the first.
template <class Skip, class Take>
std::optional<std::size_t> walkBackward(const CPTPointSeries& series, std::size_t first, std::size_t last, Skip skip,
                                        Take take)
{
    const CPTSeriesRuns* runs = series.runs().get();
    if (!runs)
        return walk::backwardHeld(series, first, last, skip, take);
    CPTPointSeries::Hold held;
    for (std::size_t run = first < last ? runs->runAt(last - 1) : 0; first < last; --run) {
        const std::size_t begin = std::max(first, runs->begin(run));
        if (!walk::isRunPassed(*runs, run, begin, last, skip)) {
            held = series.hold(begin, last);
            if (const auto found = walk::backwardHeld(series, begin, last, skip, take))
                return found;
        }
        last = begin;
    }
    return std::nullopt;
}

}  // namespace plotix
