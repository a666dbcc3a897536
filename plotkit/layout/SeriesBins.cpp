#include "plotkit/layout/SeriesBins.h"

#include "plotkit/layout/SortedSearch.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace plotkit {

namespace {

/// Beyond, the number of a bin would no longer be exact; the grid then begins at the view.
constexpr double kMostBinNumber = 1e14;
/// In a bin of this many elements one block of the index is a sixteenth of the bin at most, if times are even.
constexpr std::size_t kDenseElements = 16 * CPTSeriesIndex::kFineBlock;
constexpr double kSnapShare = 1.0 / 8;
/// How many bins ahead memory is asked for: each reads a few places far apart.
constexpr std::size_t kBinsAhead = 8;

/// The part of the old bins that the new ones take over, as bin numbers [first, last).
std::pair<std::int64_t, std::int64_t> keptBins(const BinGrid& old, const BinGrid& grid)
{
    if (old.origin != grid.origin || old.width != grid.width)
        return {grid.first, grid.first};
    const std::int64_t first = std::max(old.first, grid.first);
    const std::int64_t last =
        std::min(old.first + static_cast<std::int64_t>(old.count), grid.first + static_cast<std::int64_t>(grid.count));
    return first < last ? std::pair(first, last) : std::pair(grid.first, grid.first);
}

float shareOf(double x, double edge, double width)
{
    return static_cast<float>(std::clamp((x - edge) / width, 0.0, 1.0));
}

BinSummary summaryOf(const CPTPointSeries& series, std::size_t from, std::size_t to, double edge, double width)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    BinSummary summary{0, kInfinity, -kInfinity, 0, 0, 1};
    if (from == to)
        return summary;
    const CPTSeriesIndex& index = series.index();
    const std::size_t first = index.firstPointFrom(from);
    if (first >= to)
        return summary;
    const std::size_t last = index.lastPointBefore(to);
    const CPTSeriesIndex::MinMax extremes = index.minMax(from, to);
    summary = {series.y()[first], extremes.min, extremes.max, series.y()[last], 0, 1};
    // In a bin so dense an end that is a point stands at the bin's own, as near as can be told.
    const bool dense = to - from >= kDenseElements;
    if (!dense || first != from)
        summary.enter = shareOf(series.x()[first], edge, width);
    if (!dense || last + 1 != to)
        summary.leave = shareOf(series.x()[last], edge, width);
    return summary;
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

bool BinEdges::isOf(const plotix::SharedArray<double>& x, std::size_t elements) const
{
    const std::shared_ptr<const double> mine = m_x.lock();
    return mine && mine.get() == x.data() && elements == m_elements;
}

/// The first element at or after `from` whose x is not below `value`; near from + stride where times are even.
std::size_t BinEdges::search(std::span<const double> x, std::size_t from, double value) const
{
    const std::size_t size = x.size();
    if (m_dense) {
        // Moved back to where a block of the index begins, the samples themselves need not be read.
        std::size_t block = std::min(from + m_stride + CPTSeriesIndex::kFineBlock / 2, size - 1);
        block -= block % CPTSeriesIndex::kFineBlock;
        for (int tries = 0; tries < 2 && block > from; ++tries, block -= CPTSeriesIndex::kFineBlock)
            if (x[block] < value && x[block] >= value - m_grid.width * kSnapShare)
                return block;
    }
    return firstElementAt(x, from, size, std::min(from + m_stride, size), value);
}

std::span<const std::size_t> BinEdges::edges(const CPTPointSeries& series, const BinGrid& grid)
{
    const std::span<const double> x = series.x().span().first(series.elementCount());
    const bool known = isOf(series.x(), x.size()) && m_edges.size() == m_grid.count + 1;
    const auto [keepFirst, keepLast] = known ? keptBins(m_grid, grid) : std::pair(grid.first, grid.first);
    const auto end = grid.first + static_cast<std::int64_t>(grid.count);
    const auto begin = x.begin();
    const auto firstFrom = [&](double value) {
        return static_cast<std::size_t>(std::lower_bound(begin, x.end(), value) - begin);
    };
    const BinGrid old = std::exchange(m_grid, grid);
    m_next.resize(grid.count + 1);
    m_next[0] = firstFrom(grid.edge(grid.first));
    if (keepFirst == keepLast) {
        m_stride = (firstFrom(grid.edge(end)) - m_next[0]) / grid.count;
        m_dense = m_stride >= kDenseElements;
    }
    for (std::int64_t bin = grid.first; bin < end; ++bin) {
        const auto at = static_cast<std::size_t>(bin - grid.first);
        if (bin + 1 >= keepFirst && bin + 1 <= keepLast && keepFirst < keepLast) {
            // Edges keepFirst … keepLast stand already.
            const auto count = static_cast<std::size_t>(keepLast - bin);
            std::copy_n(m_edges.begin() + (bin + 1 - old.first), count,
                        m_next.begin() + static_cast<std::ptrdiff_t>(at) + 1);
            bin = keepLast - 1;
            continue;
        }
        const std::size_t ahead = m_next[at] + kBinsAhead * m_stride;
        if (ahead < x.size())
            __builtin_prefetch(x.data() + ahead);
        m_next[at + 1] = search(x, m_next[at], grid.edge(bin + 1));
    }
    if (keepFirst == grid.first && keepFirst < keepLast)
        m_next[0] = m_edges[static_cast<std::size_t>(keepFirst - old.first)];
    m_edges.swap(m_next);
    m_x = series.x().weak();
    m_elements = x.size();
    return m_edges;
}

std::span<const BinSummary> SeriesBins::summaries(const CPTPointSeries& series, const BinGrid& grid,
                                                  std::span<const std::size_t> edges)
{
    const auto [keepFirst, keepLast] =
        series.serial() == m_serial ? keptBins(m_grid, grid) : std::pair(grid.first, grid.first);
    m_next.resize(grid.count);
    const float* y = series.y().data();
    for (std::size_t at = 0; at < grid.count; ++at) {
        const std::int64_t bin = grid.first + static_cast<std::int64_t>(at);
        if (bin == keepFirst && keepFirst < keepLast) {
            const auto count = static_cast<std::size_t>(keepLast - keepFirst);
            std::copy_n(m_summaries.begin() + (keepFirst - m_grid.first), count,
                        m_next.begin() + static_cast<std::ptrdiff_t>(at));
            at += count - 1;
            continue;
        }
        const std::size_t ahead = edges[std::min(at + kBinsAhead, grid.count)];
        if (ahead < series.elementCount())
            __builtin_prefetch(y + ahead);
        if (ahead > 0)
            __builtin_prefetch(y + ahead - 1);
        m_next[at] = summaryOf(series, edges[at], edges[at + 1], grid.edge(bin), grid.width);
    }
    m_summaries.swap(m_next);
    m_serial = series.serial();
    m_grid = grid;
    return m_summaries;
}

}  // namespace plotkit
