#include "plotkit/layout/SeriesBins.h"

#include "plotkit/layout/BinKernels.h"
#include "plotkit/layout/SortedSearch.h"
#include "plotkit/model/TimeCourse.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace plotkit {

namespace {

/// Beyond, the number of a bin would no longer be exact; the grid then begins at the view.
constexpr double kMostBinNumber = 1e14;
constexpr std::size_t kFine = CPTFineBlocks::kElements;
constexpr double kSnapFraction = 1.0 / 4;
/// How many bins ahead memory is asked for: each reads from a few addresses far apart.
constexpr std::size_t kBinsAhead = 16;

float fractionOf(double x, double edge, double width)
{
    return static_cast<float>(std::clamp((x - edge) / width, 0.0, 1.0));
}

BinSummary summaryOf(const CPTPointSeries& series, std::size_t from, std::size_t to, double edge, double width)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const CPTSeriesIndex& index = series.index();
    const std::size_t first = index.firstPointFrom(from);
    if (first >= to)
        return {0, kInfinity, -kInfinity, 0, 0, 1};
    const std::size_t last = index.lastPointBefore(to);
    const CPTSeriesIndex::MinMax extremes = index.minMax(from, to);
    return {series.y()[first],
            extremes.min,
            extremes.max,
            series.y()[last],
            fractionOf(series.x()[first], edge, width),
            fractionOf(series.x()[last], edge, width)};
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

BinGrid BinGrid::covering(double low, double high, double width)
{
    BinGrid grid{0, width, 0, 0};
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

bool BinEdges::isOf(const plotix::SharedArray<double>& x, std::size_t elements) const
{
    const std::shared_ptr<const double> mine = m_x.lock();
    return mine && mine.get() == x.data() && elements == m_elements;
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

/// Bins [from, to): the edge at `from` stands already, and at `to` if there are bins beyond.
void BinEdges::findBins(std::span<const double> x, const TimeCourse* course, std::size_t from, std::size_t to)
{
    std::size_t* edges = m_edges.data();
    const auto edgeOf = [this](std::size_t bin) { return m_grid.edge(m_grid.first + static_cast<std::int64_t>(bin)); };
    const auto reach = static_cast<std::size_t>(m_stride * static_cast<double>(kBinsAhead));
    bool reads = true;
    for (std::size_t bin = from; bin < to; ++bin) {
        if (reads)
            askForTimes(x, edges[bin] + reach);
        if (bin + 1 < to || to == m_grid.count) {
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

void BinEdges::cover(const CPTPointSeries& series, const BinGrid& grid)
{
    const std::span<const double> x = series.x().span().first(series.elementCount());
    const KeptBins kept = KeptBins::of(m_grid, grid, isOf(series.x(), x.size()));
    const auto firstFrom = [&](std::size_t bin) {
        const double value = grid.edge(grid.first + static_cast<std::int64_t>(bin));
        return static_cast<std::size_t>(std::lower_bound(x.begin(), x.end(), value) - x.begin());
    };
    m_grid = grid;
    m_x = series.x().weak();
    m_elements = x.size();
    m_edges.slide(kept.moved, grid.count + 1);
    m_enter.slide(kept.moved, grid.count);
    m_leave.slide(kept.moved, grid.count);
    if (kept.keptFirst > 0) {
        const std::size_t first = firstFrom(0);
        if (kept.keptFirst == grid.count)
            m_stride = static_cast<double>(firstFrom(grid.count) - first) / static_cast<double>(grid.count);
        m_edges.data()[0] = first;
        findBins(x, series.xCourse(), 0, kept.keptFirst);
    }
    findBins(x, series.xCourse(), kept.keptLast, grid.count);
}

BinRows SeriesBins::rows()
{
    return {m_first.data(), m_min.data(), m_max.data(), m_last.data(), m_enter.data(), m_leave.data()};
}

BinRows SeriesBins::summaries(const CPTPointSeries& series, const BinGrid& grid, const BinEdges& edges)
{
    const KeptBins kept = KeptBins::of(m_grid, grid, series.serial() == m_serial);
    for (SlidingRow<float>* row : {&m_first, &m_min, &m_max, &m_last, &m_enter, &m_leave})
        row->slide(kept.moved, grid.count);
    m_serial = series.serial();
    m_grid = grid;

    const BinSource source{
        series.y().data(), series.points().words().data(), series.index(), edges.edges(), edges.enter(), edges.leave()};
    const BinRows all = rows();
    for (const auto& [from, to] : {std::pair(std::size_t{0}, kept.keptFirst), std::pair(kept.keptLast, grid.count)}) {
        BinKernels::best().summarise(source, all, from, to);
        for (std::size_t bin = from; bin < to; ++bin) {
            if (!std::isnan(all.first[bin]))
                continue;
            askForSamples(source.y, source.edges, bin, grid.count);
            all.set(bin, summaryOf(series, source.edges[bin], source.edges[bin + 1],
                                   grid.edge(grid.first + static_cast<std::int64_t>(bin)), grid.width));
        }
    }
    return all;
}

}  // namespace plotkit
