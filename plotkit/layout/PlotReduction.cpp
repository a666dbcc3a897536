#include "plotkit/layout/PlotReduction.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/LineCutter.h"
#include "plotkit/layout/SeriesBins.h"
#include "plotkit/layout/SortedSearch.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

// The view, a margin on both sides included, is cut into bins a fraction of a pixel wide. A crowded bin gives its first
// point, its extremes where they lie beyond first and last, and its last point: entering and leaving are exact, and
// what happens between cannot be told apart from a vertical stroke.

namespace plotkit {

namespace {

/// A bin with no more elements than this gives them all, which is exact and as cheap.
constexpr std::size_t kFewElements = 4;
/// Bounds the work for areas far wider than any screen or page.
constexpr double kMostBins = 1 << 20;
/// Points that follow each other within the same quarter of a pixel count as one.
constexpr double kCellsPerPixel = 4;

class Reduction {
public:
    Reduction(ReducedPlot& plot, const CPTPointSeries& series, const PlotView& view)
        : m_series(series),
          m_x(series.x().span().first(series.elementCount())),
          m_view(view),
          m_gap(series.isXSorted() ? view.gap : std::numeric_limits<double>::infinity()),
          m_holds(series.isXSorted() && view.holdsValues),
          m_xMapping(xMapping(view.xRange, view.area)),
          m_yMapping(yMapping(view.yRange, view.area)),
          m_cutter(plot, grownArea(view), series.isXSorted() ? OutsidePieces::Bridge : OutsidePieces::Break)
    {
    }

    void run()
    {
        if (!m_xMapping.isProper())
            standAllInTheMiddle();
        else if (m_series.isXSorted())
            reduceSorted();
        else
            walkAll();
        m_cutter.finish();
    }

private:
    static QRectF grownArea(const PlotView& view)
    {
        const double margin = std::isfinite(view.margin) ? std::max(0.0, view.margin) : 0.0;
        return view.area.adjusted(-margin, -margin, margin, margin);
    }

    bool isDrawable(std::size_t element) const
    {
        return m_series.isPoint(element) && std::isfinite(m_series.y()[element]);
    }
    double xOf(std::size_t element) const { return coordinateForValue(m_xMapping, m_x[element]); }
    double yOf(float y) const { return coordinateForValue(m_yMapping, y); }
    void add(double x, double y) { m_cutter.add({x, y}); }
    /// `isNext`: whether the element follows the one added last, so that its value is held up to here.
    void addElement(std::size_t element, bool isNext = true)
    {
        const double y = yOf(m_series.y()[element]);
        if (m_x[element] - m_lastX > m_gap)
            m_cutter.breakLine();
        else if (m_holds && isNext && !std::isnan(m_lastX))
            add(xOf(element), m_lastY);
        m_lastX = m_x[element];
        m_lastY = y;
        add(xOf(element), y);
    }
    void addElements(std::size_t first, std::size_t last)
    {
        for (std::size_t element = first; element < last; ++element)
            if (isDrawable(element))
                addElement(element);
    }

    void standAllInTheMiddle()
    {
        const CPTSeriesIndex::MinMax extremes = m_series.index().minMax(0, m_x.size());
        if (extremes.isEmpty())
            return;
        add(m_xMapping.middle(), yOf(extremes.max));
        add(m_xMapping.middle(), yOf(extremes.min));
    }

    void walkAll()
    {
        double column = std::nan("");
        double row = std::nan("");
        std::size_t skipped = m_x.size();
        for (std::size_t element = 0; element < m_x.size(); ++element) {
            if (!isDrawable(element) || !std::isfinite(m_x[element]))
                continue;
            const double nextColumn = std::floor(xOf(element) * kCellsPerPixel);
            const double nextRow = std::floor(yOf(m_series.y()[element]) * kCellsPerPixel);
            if (nextColumn == column && nextRow == row) {
                skipped = element;
                continue;
            }
            if (skipped < m_x.size())
                addElement(skipped);
            skipped = m_x.size();
            column = nextColumn;
            row = nextRow;
            addElement(element);
        }
        if (skipped < m_x.size())
            addElement(skipped);
    }

    void reduceSorted()
    {
        const double perUnit = valuePerUnit(m_xMapping);
        const QRectF grown = grownArea(m_view);
        const double margin = (grown.width() - m_view.area.width()) / 2;
        const double low = m_view.xRange.minLimit() - margin * perUnit;
        const double high = m_view.xRange.maxLimit() + margin * perUnit;
        const std::size_t elements = m_x.size();
        const std::size_t first = firstElementAt(m_x, 0, elements, elements / 2, low);
        const std::size_t last = static_cast<std::size_t>(
            std::upper_bound(m_x.begin() + static_cast<std::ptrdiff_t>(first), m_x.end(), high) - m_x.begin());
        const int columnsPerPixel = std::clamp(m_view.columnsPerPixel, 1, 64);
        const double wanted = std::ceil(grown.width() * columnsPerPixel);
        const auto bins = static_cast<std::size_t>(std::min(wanted, kMostBins));
        const double binWidth = perUnit * grown.width() / static_cast<double>(bins);

        const std::size_t before = m_series.index().lastPointBefore(first);
        if (before < elements)
            addElement(before);
        if (last - first <= 2 * bins)
            addElements(first, last);
        else
            addBins({low, binWidth, 0, bins}, last);
        const std::size_t after = m_series.index().firstPointFrom(last);
        if (after < elements)
            addElement(after);
    }

    void addBins(const BinGrid& grid, std::size_t last)
    {
        BinEdges edges;
        edges.cover(m_series, grid);
        // The last bin takes what rounding left over.
        for (std::size_t bin = 0; bin < grid.count; ++bin)
            addBin(edges.edges()[bin], bin + 1 == grid.count ? last : std::min(edges.edges()[bin + 1], last));
    }

    void addBin(std::size_t from, std::size_t to)
    {
        if (from >= to)
            return;
        if (to - from <= kFewElements) {
            addElements(from, to);
            return;
        }
        const std::size_t first = m_series.index().firstPointFrom(from);
        if (first >= to)
            return;
        const std::size_t last = m_series.index().lastPointBefore(to);
        const CPTSeriesIndex::MinMax extremes = m_series.index().minMax(from, to);
        addElement(first);
        addExtremes((xOf(first) + xOf(last)) / 2, extremes, m_series.y()[first], m_series.y()[last]);
        if (last != first)
            addElement(last, false);
    }

    /// Those extremes that lie beyond both ends, in the order that makes the line shorter.
    void addExtremes(double x, const CPTSeriesIndex::MinMax& extremes, float yFirst, float yLast)
    {
        const bool below = extremes.min < std::min(yFirst, yLast);
        const bool above = extremes.max > std::max(yFirst, yLast);
        const bool rising = yFirst <= yLast;
        if (below && rising)
            add(x, yOf(extremes.min));
        if (above)
            add(x, yOf(extremes.max));
        if (below && !rising)
            add(x, yOf(extremes.min));
    }

    const CPTPointSeries& m_series;
    std::span<const double> m_x;
    const PlotView& m_view;
    double m_gap;
    bool m_holds;
    double m_lastX = std::nan("");  // of the element added last
    double m_lastY = 0;             // the same, its coordinate
    AxisMapping m_xMapping;
    AxisMapping m_yMapping;
    LineCutter m_cutter;
};

}  // namespace

void ReducedPlot::clear()
{
    points.clear();
    partEnds.clear();
}

ReducedPlot reducePlot(const CPTPointSeries& series, const PlotView& view)
{
    ReducedPlot plot;
    reducePlotInto(plot, series, view);
    return plot;
}

void reducePlotInto(ReducedPlot& plot, const CPTPointSeries& series, const PlotView& view)
{
    plot.clear();
    const QRectF& area = view.area;
    const bool drawable = std::isfinite(area.x()) && std::isfinite(area.y()) && std::isfinite(area.width()) &&
                          std::isfinite(area.height()) && area.width() > 0 && area.height() > 0;
    if (drawable && series.elementCount() > 0)
        Reduction(plot, series, view).run();
}

}  // namespace plotkit
