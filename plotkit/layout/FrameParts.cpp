#include "plotkit/layout/FrameParts.h"

#include <algorithm>
#include <utility>

namespace plotkit {

namespace {

constexpr std::int64_t kStretch = BinEdges::kStretch;
/// So many runs a pixel are drawn as they are: the longest reaches no farther than one would see.
constexpr std::int64_t kRunsAPixel = 2;
/// Elements a pixel from which on they are drawn as they are even if they are longer: a frame must not unpack more.
constexpr std::int64_t kCrowdedPixel = 12 * 1024;
/// Elements a pixel up to which pages are held however many runs there are.
constexpr std::int64_t kSparsePixel = 1024;

std::int64_t stretchOf(std::int64_t number)
{
    return number - ((number % kStretch) + kStretch) % kStretch;
}

bool isHeld(const CPTPointSeries& series, std::size_t first, std::size_t end, const SeriesParts& held)
{
    return std::any_of(held.begin(), held.end(), [&](const SeriesPart& part) {
        return part.series.get() == &series && part.first <= first && part.end >= end;
    });
}

std::size_t absentOf(const plotix::PagedMemory* memory, const SeriesPart& part, const SeriesParts& held)
{
    constexpr std::size_t kPage = plotix::PagedMemory::kPage;
    std::size_t absent = 0;
    for (std::size_t first = part.first; memory && first < part.end;) {
        const std::size_t end = std::min(part.end, (first / kPage + 1) * kPage);
        plotix::PagedMemory::Hold hold;
        absent += memory->holdIfThere(first, end, hold) || isHeld(*part.series, first, end, held) ? 0 : 1;
        first = end;
    }
    return absent;
}

}  // namespace

bool isCrowdedByRuns(const CPTSeriesRuns& runs, const BinGrid& grid, std::int64_t number)
{
    const std::int64_t stretch = stretchOf(number);
    const std::size_t firstRun = runs.runFromTime(grid.edge(stretch));
    const std::size_t endRun = runs.runFromTime(grid.edge(stretch + kStretch));
    const auto aPixel = [&](std::size_t inStretch) {
        return static_cast<std::int64_t>(inStretch) * grid.perPixel / kStretch;
    };
    const std::int64_t elements = aPixel(runs.begin(endRun) - runs.begin(firstRun));
    return elements >= kCrowdedPixel || (elements >= kSparsePixel && aPixel(endRun - firstRun) >= kRunsAPixel);
}

void addPartsHeld(SeriesParts& parts, const CPTPointSeriesPtr& series, const BinGrid& grid, const KeptBins& kept)
{
    const CPTSeriesRuns& runs = *series->runs();
    const auto add = [&](std::size_t fromBin, std::size_t toBin) {
        for (std::size_t bin = fromBin; bin < toBin;) {
            const std::int64_t number = grid.first + static_cast<std::int64_t>(bin);
            const auto next = static_cast<std::size_t>(stretchOf(number) + kStretch - grid.first);
            const std::size_t end = std::min(toBin, next);
            if (!isCrowdedByRuns(runs, grid, number)) {
                const std::size_t firstRun = runs.runFromTime(grid.edge(number));
                const std::size_t endRun = runs.runFromTime(grid.edge(grid.first + static_cast<std::int64_t>(end)));
                const std::size_t first = runs.begin(firstRun > 0 ? firstRun - 1 : 0);
                const std::size_t last = runs.end(std::min(endRun, runs.count() - 1));
                if (!parts.empty() && parts.back().series == series && parts.back().end >= first)
                    parts.back().end = std::max(parts.back().end, last);
                else
                    parts.push_back({series, first, last});
            }
            bin = end;
        }
    };
    if (runs.count() == 0)
        return;
    add(0, kept.keptFirst);
    add(kept.keptLast, grid.count);
}

AbsentPages absentPages(const SeriesPart& part, const SeriesParts& held)
{
    return {absentOf(part.series->x().memory().get(), part, held),
            absentOf(part.series->y().memory().get(), part, held)};
}

}  // namespace plotkit
