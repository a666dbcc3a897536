#include "plotkit/layout/PlotDots.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/BinKernels.h"
#include "plotkit/model/CPTSeriesIndex.h"
#include "plotkit/model/SeriesReading.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace plotkit {

namespace {

/// So many points for each unit of the picture's width are drawn one by one.
constexpr double kFewDots = 4;
constexpr double kMostColumns = 1 << 18;
constexpr double kMostRows = 1 << 16;
constexpr std::size_t kFine = CPTSeriesIndex::kFineBlock;
constexpr std::size_t kCoarse = CPTSeriesIndex::kCoarseBlock;

double marginOf(const PlotView& view)
{
    return std::isfinite(view.margin) ? std::ceil(std::max(1.0, view.margin)) : 1.0;
}

bool isPointAt(const CPTPointSeries& series, std::size_t element)
{
    return series.isPoint(element) && std::isfinite(series.y()[element]);
}

/// Marks the cells of one column.
class ColumnMarker {
public:
    ColumnMarker(const CPTPointSeries& series, const ValueScale& cellOf, std::size_t rows)
        : m_series(series), m_reading(series), m_cellOf(cellOf), m_rows(static_cast<std::int64_t>(rows))
    {
    }

    /// The elements [from, to) fall into `column`. Runs of a paged series that would mark nothing new are not looked
    /// into.
    void markAny(std::uint8_t* column, std::size_t from, std::size_t to)
    {
        const CPTSeriesRuns* runs = m_series.runs().get();
        if (!runs)
            return mark(column, from, to);
        m_column = column;
        for (std::size_t run = from < to ? runs->runAt(from) : 0; from < to; ++run) {
            const std::size_t end = std::min(to, runs->end(run));
            const bool isWhole = from == runs->begin(run) && end == runs->end(run);
            const CPTMinMax reach = runs->minMaxOf(run);
            if (!reach.isEmpty() && !(isWhole && isKnown(reach.min, reach.max))) {
                m_reading.hold(from, end);
                mark(column, from, end);
            }
            from = end;
        }
    }

    /// Requires: they are held.
    void mark(std::uint8_t* column, std::size_t from, std::size_t to)
    {
        m_column = column;
        while (from < to) {
            if (from % kCoarse == 0 && from + kCoarse <= to && isCoarseKnown(from / kCoarse)) {
                from += kCoarse;
            } else if (from % kFine == 0 && from + kFine <= to) {
                markFine(from / kFine);
                from += kFine;
            } else {
                markElement(from++);
            }
        }
    }
    void markElement(std::uint8_t* column, std::size_t element)
    {
        m_reading.hold(element, element + 1);
        m_column = column;
        markElement(element);
    }

private:
    std::int64_t rowOf(float y) const
    {
        return static_cast<std::int64_t>(std::floor(std::clamp(m_cellOf(y), -kMostRows, 2 * kMostRows)));
    }
    void set(std::int64_t row)
    {
        if (row >= 0 && row < m_rows)
            m_column[row / 8] = static_cast<std::uint8_t>(m_column[row / 8] | (1U << (row % 8)));
    }
    void markElement(std::size_t element)
    {
        if (isPointAt(m_series, element))
            set(rowOf(m_series.y()[element]));
    }

    /// Whether looking at points between two values would mark nothing new.
    bool isKnown(float least, float greatest)
    {
        const std::int64_t one = rowOf(least);
        const std::int64_t other = rowOf(greatest);
        set(one);
        set(other);
        const std::int64_t first = std::max<std::int64_t>(std::min(one, other), 0);
        const std::int64_t last = std::min(std::max(one, other), m_rows - 1);
        return first > last || areAllSet(first, last);
    }
    bool areAllSet(std::int64_t first, std::int64_t last) const
    {
        for (std::int64_t row = first; row <= last;) {
            std::uint64_t eight = 0;
            if (row % 8 == 0 && row + 63 <= last) {
                std::memcpy(&eight, m_column + row / 8, sizeof eight);
                if (eight != ~std::uint64_t{0})
                    return false;
                row += 64;
            } else if (row % 8 == 0 && row + 7 <= last) {
                if (m_column[row / 8] != 0xFF)
                    return false;
                row += 8;
            } else if ((m_column[row / 8] >> (row % 8) & 1U) == 0) {
                return false;
            } else {
                ++row;
            }
        }
        return true;
    }
    bool isCoarseKnown(std::size_t block)
    {
        const float least = m_series.index().coarseLeast()[block];
        const float greatest = m_series.index().coarseGreatest()[block];
        return !(least <= greatest) || isKnown(least, greatest);
    }
    void markFine(std::size_t block)
    {
        const CPTFineBlocks& fine = m_series.index().fine();
        if (fine.isEmpty(block) || isKnown(fine.least()[block], fine.greatest()[block]))
            return;
        for (std::size_t element = block * kFine; element < (block + 1) * kFine; ++element)
            markElement(element);
    }

    const CPTPointSeries& m_series;
    SeriesReading m_reading;
    ValueScale m_cellOf;
    std::int64_t m_rows;
    std::uint8_t* m_column = nullptr;
};

}  // namespace

/// The cells of one plot, and what they were worked out for.
struct PlotDots::Kept {
    std::uint64_t serial = 0;
    BinGrid grid;
    ValueScale cellOf;
    std::size_t bytes = 0;
    BinEdges edges;
    SlidingRow<std::uint8_t> cells;

    bool isFor(const ValueScale& scale, std::size_t columnBytes) const
    {
        return scale.location == cellOf.location && scale.placesPerValue == cellOf.placesPerValue &&
               scale.firstPlace == cellOf.firstPlace && columnBytes == bytes;
    }
    /// Clears columns [from, to) and answers the first of them.
    std::uint8_t* cleared(std::size_t from, std::size_t to)
    {
        std::uint8_t* first = cells.data() + from * bytes;
        std::fill(first, first + (to - from) * bytes, std::uint8_t{0});
        return first;
    }
    void markSorted(const CPTPointSeries& series, std::size_t from, std::size_t to)
    {
        ColumnMarker marker(series, cellOf, bytes * DotCells::kRowsPerByte);
        std::uint8_t* column = cleared(from, to);
        for (std::size_t bin = from; bin < to; ++bin, column += bytes)
            marker.markAny(column, edges.edges()[bin], edges.edges()[bin + 1]);
    }
    void markUnsorted(const CPTPointSeries& series)
    {
        ColumnMarker marker(series, cellOf, bytes * DotCells::kRowsPerByte);
        std::uint8_t* columns = cleared(0, grid.count);
        SeriesReading reading(series);
        for (std::size_t element = 0; element < series.elementCount(); ++element) {
            reading.hold(element, element + 1);
            const double bin = std::floor((series.x()[element] - grid.edge(grid.first)) / grid.width);
            if (bin >= 0 && bin < static_cast<double>(grid.count))
                marker.markElement(columns + static_cast<std::size_t>(bin) * bytes, element);
        }
    }
};

PlotDots::PlotDots() = default;
PlotDots::~PlotDots() = default;

bool PlotDots::placesInto(std::vector<QPointF>& places, const CPTPointSeries& series, const PlotView& view)
{
    places.clear();
    const AxisMapping x = xMapping(view.xRange, view.area);
    const AxisMapping y = yMapping(view.yRange, view.area);
    const double margin = marginOf(view);
    const QRectF grown = view.area.adjusted(-margin, -margin, margin, margin);
    std::size_t from = 0;
    std::size_t to = series.elementCount();
    if (series.isXSorted() && x.isProper()) {
        const double reach = margin * valuePerUnit(x);
        from = series.elementFrom(view.xRange.minLimit() - reach);
        to = std::max(from, series.elementAfter(view.xRange.maxLimit() + reach));
    }
    if (static_cast<double>(to - from) > kFewDots * grown.width())
        return false;
    const CPTPointSeries::Hold held = series.hold(from, to);
    for (std::size_t element = from; element < to; ++element) {
        if (!isPointAt(series, element))
            continue;
        const QPointF place(coordinateForValue(x, series.x()[element]), coordinateForValue(y, series.y()[element]));
        const bool repeats = !places.empty() && places.back() == place;
        if (grown.contains(place) && !repeats)
            places.push_back(place);
    }
    return true;
}

DotCells PlotDots::cells(const CPTPointSeries& series, const PlotView& view, std::size_t slot)
{
    const AxisMapping x = xMapping(view.xRange, view.area);
    const AxisMapping y = yMapping(view.yRange, view.area);
    const double margin = marginOf(view);
    const double perUnit = valuePerUnit(x);
    const double width = perUnit / DotCells::kColumnsPerUnit;
    const double low = view.xRange.minLimit() - margin * perUnit;
    const double high = view.xRange.maxLimit() + margin * perUnit;
    const double top = std::floor(view.area.top() - margin);
    const double bytes = std::ceil(view.area.bottom() + margin) - top;
    const double columns = (view.area.width() + 2 * margin) * DotCells::kColumnsPerUnit;
    if (!x.isProper() || !y.isProper() || !(width > 0) || !std::isfinite((high - low) / width) ||
        columns > kMostColumns || bytes * DotCells::kRowsPerByte > kMostRows)
        return {};
    const BinGrid grid = BinGrid::covering(low, high, width, DotCells::kColumnsPerUnit);
    if (static_cast<double>(grid.count) > columns + 16)
        return {};

    while (m_kept.size() <= slot)
        m_kept.push_back(std::make_unique<Kept>());
    Kept& kept = *m_kept[slot];
    const double perValue = y.extent / y.range.length * DotCells::kRowsPerByte;
    const ValueScale cellOf{y.range.location, perValue, (y.start - top) * DotCells::kRowsPerByte, kMostRows};
    const auto columnBytes = static_cast<std::size_t>(bytes);
    const bool isKnown = kept.isFor(cellOf, columnBytes) && kept.serial == series.serial() && series.isXSorted();
    const KeptBins stays = KeptBins::of(kept.grid, grid, isKnown);
    kept.cells.slide(stays.moved * static_cast<std::ptrdiff_t>(columnBytes), grid.count * columnBytes);
    kept.serial = series.serial();
    kept.grid = grid;
    kept.cellOf = cellOf;
    kept.bytes = columnBytes;
    if (series.isXSorted()) {
        kept.edges.cover(series, grid);
        kept.markSorted(series, 0, stays.keptFirst);
        kept.markSorted(series, stays.keptLast, grid.count);
    } else {
        kept.markUnsorted(series);
    }

    const bool mirrored = view.xRange.length < 0;
    const auto stride = static_cast<std::ptrdiff_t>(columnBytes);
    const std::uint8_t* last = kept.cells.data() + (grid.count - 1) * columnBytes;
    const std::int64_t leftmost = mirrored ? grid.first + static_cast<std::int64_t>(grid.count) : grid.first;
    return {coordinateForValue(x, grid.edge(leftmost)), static_cast<int>(top),      grid.count, columnBytes,
            mirrored ? last : kept.cells.data(),        mirrored ? -stride : stride};
}

}  // namespace plotkit
