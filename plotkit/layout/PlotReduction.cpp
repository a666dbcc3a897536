#include "plotkit/layout/PlotReduction.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/LineCutter.h"
#include "plotkit/layout/SeriesBins.h"
#include "plotkit/model/CPTSeriesIndex.h"
#include "plotkit/model/SeriesReading.h"

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
          m_reading(series),
          m_x(series.x().span().first(series.elementCount())),
          m_view(view),
          m_gap(series.isXSorted() ? view.gap : std::numeric_limits<double>::infinity()),
          m_holds(series.isXSorted() && view.holdsValues),
          m_xMapping(xMapping(view.xRange, view.area)),
          m_yMapping(yMapping(view.yRange, view.area)),
          m_isProper(m_xMapping.isProper() && m_yMapping.isProper()),
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

    /// Requires: it is held.
    bool isDrawable(std::size_t element) const
    {
        return m_series.isPoint(element) && std::isfinite(m_series.y()[element]);
    }
    double xOf(double x) const { return of(m_xMapping, x); }
    double yOf(float y) const { return of(m_yMapping, y); }
    double of(const AxisMapping& mapping, double value) const
    {
        return m_isProper ? coordinateWhereProper(mapping, value) : coordinateForValue(mapping, value);
    }
    void add(double x, double y) { m_cutter.add({x, y}); }
    /// `isNext`: whether the element follows the one added last, so that its value is held up to here.
    void addElement(std::size_t element, bool isNext = true)
    {
        m_reading.hold(element, element + 1);
        const double y = yOf(m_series.y()[element]);
        if (m_x[element] - m_lastX > m_gap)
            m_cutter.breakLine();
        else if (m_holds && isNext && !std::isnan(m_lastX))
            add(xOf(m_x[element]), m_lastY);
        m_lastX = m_x[element];
        m_lastY = y;
        add(xOf(m_x[element]), y);
    }
    void addElements(std::size_t first, std::size_t last)
    {
        m_reading.hold(first, last);
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
            m_reading.hold(element, element + 1);
            if (!isDrawable(element) || !std::isfinite(m_x[element]))
                continue;
            const double nextColumn = std::floor(xOf(m_x[element]) * kCellsPerPixel);
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
        const std::size_t first = m_series.elementFrom(low);
        const std::size_t last = std::max(first, m_series.elementAfter(high));
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
            addBins({low, binWidth, 0, bins, columnsPerPixel}, last);
        const std::size_t after = m_series.index().firstPointFrom(last);
        if (after < elements)
            addElement(after);
    }

    void addBins(const BinGrid& grid, std::size_t last)
    {
        BinEdges edges;
        edges.cover(m_series, grid);
        // The last bin takes what rounding left over.
        for (std::size_t bin = 0; bin < grid.count; ++bin) {
            const bool isLast = bin + 1 == grid.count;
            const bool goesOn = !isLast && edges.isByRuns(bin) && edges.edges()[bin + 2] > edges.edges()[bin + 1];
            if (goesOn && addRuns(edges.runs()[bin], edges.runs()[bin + 1]))
                continue;
            addBin(edges.edges()[bin], isLast ? last : std::min(edges.edges()[bin + 1], last));
        }
    }

    /// A bin of whole runs with others after it: the line goes on to their first point. False where too little is known
    /// of the runs.
    bool addRuns(std::size_t from, std::size_t to)
    {
        const CPTSeriesRuns& runs = *m_series.runs();
        const std::size_t first = runs.filledFrom(from);
        if (first >= to)
            return true;
        const std::size_t known = runs.firstKnown(from, to);
        if (known >= to)
            return false;
        const float value = runs.firstValue(known);
        const double left = xOf(runs.firstTime(first));
        if (runs.firstTime(first) - m_lastX > m_gap)
            m_cutter.breakLine();
        else if (m_holds && !std::isnan(m_lastX))
            add(left, m_lastY);
        add(left, yOf(value));
        const std::size_t last = runs.filledBefore(to);
        addExtremes((left + xOf(runs.lastTime(last))) / 2, runs.minMax(from, to), value, value);
        m_lastX = runs.lastTime(last);
        m_lastY = yOf(value);
        return true;
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
        const float yLast = m_series.y().valueAt(last);
        const double xLast = xOf(m_series.x().valueAt(last));
        addElement(first);
        addExtremes((xOf(m_x[first]) + xLast) / 2, extremes, m_series.y()[first], yLast);
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
    SeriesReading m_reading;
    std::span<const double> m_x;
    const PlotView& m_view;
    double m_gap;
    bool m_holds;
    double m_lastX = std::nan("");  // of the element added last
    double m_lastY = 0;             // the same, its coordinate
    AxisMapping m_xMapping;
    AxisMapping m_yMapping;
    bool m_isProper;  // both are
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
