#include "plotkit/render/PlotPainting.h"

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/LineDashes.h"
#include "plotkit/layout/LonePoints.h"
#include "plotkit/layout/PlotReduction.h"
#include "plotkit/layout/StripArea.h"
#include "plotkit/render/ClippedPaths.h"
#include "plotkit/render/FreshImage.h"
#include "plotkit/render/PlotPaths.h"

#include <QtGui/QPaintEngine>

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

/// Steps a point on a page of vectors: a quarter of a point is far below what a 3 point line shows, and keeps two years
/// of minutes in a few hundred kilobytes.
constexpr double kPageStepsPerPoint = 4.0;

/// Units a point in which areas are laid out on a page: columns of them are as wide as a step.
constexpr double kPageAreaUnits = kPageStepsPerPoint / PlotEnvelope::kColumnsPerPixel;

/// Wider pens than this are no lines any more; bounds how far the reduction stays exact beyond the plot area.
constexpr double kLeastMargin = 32.0;

double widestLine(const CPTXYGraph& graph)
{
    double width = 0;
    for (const CPTScatterPlotPtr& plot : graph.allPlots())
        if (!plot->isHidden() && std::isfinite(plot->dataLineStyle().width))
            width = std::max({width, plot->dataLineStyle().width, plot->drawnPointSize()});
    return width;
}

/// Half a line beyond the plot area, so that a peak at the edge of a fitted range keeps its full width.
QRectF clipFor(const QRectF& plotArea, double lineWidth)
{
    const double half = lineWidth / 2;
    return plotArea.adjusted(-half, -half, half, half);
}

/// `pixel`: how wide a gap must be to be seen, in the area's units.
PlotView viewFor(const CPTXYGraph& graph, const CPTScatterPlot& plot, const QRectF& area, double lineWidth,
                 double pixel)
{
    const CPTXYPlotSpace& space = graph.plotSpaceOf(plot);
    PlotView view;
    view.holdsValues = plot.interpolation() == CPTScatterPlotInterpolation::HoldLast;
    view.gap = std::max(plot.gapThreshold(), std::abs(space.xRange().length) / area.width() * pixel);
    view.xRange = space.xRange();
    view.yRange = space.yRange();
    view.area = area;
    view.margin = std::max(kLeastMargin, 2 * lineWidth);
    return view;
}

/// A dashed line with more points than these a column is dashed by columns: along the line that is seen, not up and
/// down every swing within a pixel.
constexpr double kFewDashedPoints = 1.0 / PlotEnvelope::kColumnsPerPixel;

DashOrigin dashOriginOf(const PlotView& view)
{
    return {view.area.left() - view.margin, coordinateForValue(xMapping(view.xRange, view.area), 0)};
}

using Plots = std::vector<CPTScatterPlotPtr>;

/// The plots of each strip, first to last: they are clipped to it.
std::vector<std::pair<CPTStrip, Plots>> plotsByStrip(const CPTXYGraph& graph)
{
    std::vector<std::pair<CPTStrip, Plots>> groups;
    const auto stands = [](const CPTStrip& one, const CPTStrip& other) {
        return one.top == other.top && one.bottom == other.bottom && one.headRoom == other.headRoom;
    };
    for (const CPTScatterPlotPtr& plot : graph.allPlots()) {
        const CPTStrip& strip = graph.plotSpaceOf(*plot).strip();
        auto found =
            std::find_if(groups.begin(), groups.end(), [&](const auto& group) { return stands(group.first, strip); });
        if (found == groups.end())
            found = groups.insert(groups.end(), {strip, {}});
        found->second.push_back(plot);
    }
    return groups;
}

/// The diameter of a point that a broken line joins to no other; 0 where the line does not break, or its own dots are
/// as large.
double lonePointSize(const CPTScatterPlot& plot)
{
    constexpr double kWidths = 2, kMore = 1;  // points: seen beside lines of any width
    const double size = kWidths * plot.dataLineStyle().width + kMore;
    return std::isfinite(plot.gapThreshold()) && std::isfinite(size) && size > plot.drawnPointSize() ? size : 0;
}

/// Whether what its runs tell can stand in for a plot: a line in columns, not points each by itself.
bool canBeProvisional(const CPTScatterPlot& plot, double density)
{
    return !plot.isHidden() && plot.series() && plot.series()->runs() &&
           plot.interpolation() != CPTScatterPlotInterpolation::PointsOnly && !(plot.drawnPointSize() > 0) &&
           PolylineRasteriser::canStrokeColumns(plot.dataLineStyle().width * density);
}

/// The parts of a broken line are several strokes, which may overlap where their colour is opaque.
bool canStroke(const PlotEnvelope& envelope, const QColor& color)
{
    return envelope.partEnds.size() < 2 || color.alpha() == 255;
}

PixelBuffer bufferOf(QImage& image)
{
    return {reinterpret_cast<quint32*>(image.bits()), image.width(), image.height(),
            image.bytesPerLine() / qsizetype(sizeof(quint32))};
}

}  // namespace

void PlotPainting::drawPlots(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea, FrameParts* parts)
{
    m_byRunsAlone.clear();
    if (plotArea.isEmpty())
        return;
    if (canvas.isAligned())
        drawPixels(canvas, graph, plotArea, parts);
    else
        drawPaths(canvas, graph, plotArea);
}

bool PlotPainting::reduce(const CPTScatterPlot& plot, const PlotView& view)
{
    const CPTPointSeriesPtr series = plot.isHidden() ? nullptr : plot.series();
    if (!series)
        return false;
    reducePlotInto(m_reduced, *series, view);
    lonePointsInto(m_lone, m_reduced);
    return !m_reduced.isEmpty();
}

void PlotPainting::prepareLayer(const QSize& size)
{
    if (m_layer.size() != size)
        m_layer = freshImage(size, QImage::Format_ARGB32_Premultiplied);
    m_layer.fill(0);
}

/// Which plots are drawn from runs alone: all that lack pages, where these are too many to wait for.
void PlotPainting::findLacking(const GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea,
                               FrameParts& parts)
{
    const double lineWidth = widestLine(graph) * canvas.density();
    std::size_t slot = 0, absent = 0;
    std::vector<const double*> counted;  // times that plots share
    SeriesParts held;                    // of one plot
    std::vector<Moving> moving;
    for (const auto& [strip, plots] : plotsByStrip(graph)) {
        const QRectF area = canvas.toPainter(stripArea(plotArea, strip));
        for (const CPTScatterPlotPtr& plot : plots) {
            const std::size_t own = slot++;
            held.clear();
            if (area.isEmpty() || !canBeProvisional(*plot, canvas.density()))
                continue;
            const PlotView view = viewFor(graph, *plot, area, lineWidth, 1);
            if (!m_enveloping.addPartsHeld(held, plot->series(), view, own))
                continue;
            if (const std::optional<CPTPlotRange> next = m_movement.next(own, view.xRange))
                moving.push_back({plot->series(), view, own, *next});
            const double* times = plot->series()->x().data();
            const bool isFirst = std::find(counted.begin(), counted.end(), times) == counted.end();
            if (isFirst)
                counted.push_back(times);
            AbsentPages all;
            for (const SeriesPart& part : held) {
                const AbsentPages some = absentPages(part, parts.held);
                all.times += some.times;
                all.points += some.points;
            }
            absent += all.points + (isFirst ? all.times : 0);
            if (all.points + all.times == 0)
                continue;
            m_byRunsAlone.resize(own + 1);
            m_byRunsAlone[own] = true;
            parts.lacking.insert(parts.lacking.end(), held.begin(), held.end());
        }
    }
    if (absent > FrameParts::kPagesAtOnce)
        return;
    m_byRunsAlone.clear();
    parts.lacking.clear();
    parts.ahead = partsAhead(moving);
}

/// As much of what comes next as may be brought at once.
SeriesParts PlotPainting::partsAhead(const std::vector<Moving>& moving) const
{
    SeriesParts ahead = partsAhead(moving, 1);
    std::size_t elements = 0;
    for (const SeriesPart& part : ahead)
        elements += part.end - part.first;
    constexpr double kMost = FrameParts::kPagesAhead * static_cast<double>(plotix::PagedMemory::kPage);
    const double share = kMost / static_cast<double>(std::max<std::size_t>(elements, 1));
    return share >= 1 ? ahead : partsAhead(moving, share);
}

SeriesParts PlotPainting::partsAhead(const std::vector<Moving>& moving, double share) const
{
    SeriesParts ahead;
    for (const Moving& each : moving) {
        PlotView view = each.view;
        const double bins = std::ceil(share * view.area.width());
        view.xRange = PlotMovement::nearest(each.next, each.view.xRange, bins / view.area.width());
        view.area.setWidth(bins);
        m_enveloping.addPartsHeld(ahead, each.series, view, each.slot);
    }
    return ahead;
}

/// Straight into the picture where that is an image; else into an image of their own, which is then drawn over it.
void PlotPainting::drawPixels(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea, FrameParts* parts)
{
    m_slot = 0;
    if (parts)
        findLacking(canvas, graph, plotArea, *parts);
    const double lineWidth = widestLine(graph);
    for (const auto& [strip, plots] : plotsByStrip(graph)) {
        const QRectF points = stripArea(plotArea, strip);
        const QRectF wholeClip = canvas.alignedRect(clipFor(points, lineWidth));
        const QRect clip = wholeClip.intersected(canvas.visiblePixels()).toAlignedRect();
        if (clip.isEmpty() || points.isEmpty()) {
            m_slot += plots.size();
            continue;
        }
        const QRectF area = canvas.toPainter(points);
        if (QImage* image = canvas.directImage()) {
            strokePlots(bufferOf(*image), clip, graph, plots, area, canvas.density());
            continue;
        }
        prepareLayer(clip.size());
        if (m_layer.isNull())
            return;
        strokePlots(bufferOf(m_layer), m_layer.rect(), graph, plots, area.translated(-clip.topLeft()),
                    canvas.density());
        canvas.painter().drawImage(clip.topLeft(), m_layer);
    }
}

void PlotPainting::strokePlots(const PixelBuffer& buffer, const QRect& clip, const CPTXYGraph& graph,
                               const std::vector<CPTScatterPlotPtr>& plots, const QRectF& area, double density)
{
    const double lineWidth = widestLine(graph) * density;
    const auto viewOf = [&](const CPTScatterPlot& plot) { return viewFor(graph, plot, area, lineWidth, 1); };
    const auto envelopingAt = [this](std::size_t slot) -> PlotEnveloping& { return envelopingOf(slot); };
    prepareLines(plots, viewOf, density);
    m_rasteriser.begin(buffer, clip);
    for (std::size_t index = 0; index < plots.size(); ++index)
        if (const FilledArea* filled = m_fills.areaOf(graph, {plots, index, m_slot}, envelopingAt, viewOf))
            m_rasteriser.add(AreaColumns{filled->left, filled->top, filled->bottom}, plots[index]->areaFill().color);
    for (const CPTScatterPlotPtr& plot : plots)
        strokePlot(*plot, viewOf(*plot), density, m_slot++);
    m_rasteriser.finish();
}

void PlotPainting::prepareLines(const std::vector<CPTScatterPlotPtr>& plots, const PlotFills::ViewOf& viewOf,
                                double density)
{
    std::vector<PlotEnveloping::Plot> exact, provisional;
    for (std::size_t index = 0; index < plots.size(); ++index) {
        const CPTScatterPlot& plot = *plots[index];
        const std::size_t slot = m_slot + index;
        if (PlotFills::isLine(plot) && PolylineRasteriser::canStrokeColumns(plot.dataLineStyle().width * density))
            (isByRunsAlone(slot) ? provisional : exact).push_back({plot.series().get(), viewOf(plot), slot});
    }
    m_enveloping.prepare(exact);
    m_provisional.prepare(provisional);
}

void PlotPainting::strokePlot(const CPTScatterPlot& plot, const PlotView& view, double density, std::size_t slot)
{
    const CPTPointSeriesPtr series = plot.isHidden() ? nullptr : plot.series();
    if (!series)
        return;
    if (plot.interpolation() != CPTScatterPlotInterpolation::PointsOnly)
        strokeLine(plot, view, density, slot);
    const double diameter = plot.drawnPointSize() * density;
    if (!(diameter > 0))
        return;
    if (PlotDots::placesInto(m_places, *series, view)) {
        m_rasteriser.addDots(m_places, diameter, plot.dataLineStyle().color);
        return;
    }
    static_assert(DotCells::kColumnsPerUnit == DotColumns::kPerPixel);
    static_assert(DotCells::kRowsPerByte == DotColumns::kRowsPerPixel);
    const DotCells cells = m_dots.cells(*series, view, slot);
    m_rasteriser.addDots(DotColumns{cells.left, cells.top, cells.columns, cells.bytes, cells.first, cells.stride},
                         diameter, plot.dataLineStyle().color);
}

/// Crowded lines as columns, all others as points.
void PlotPainting::strokeLine(const CPTScatterPlot& plot, const PlotView& view, double density, std::size_t slot)
{
    static_assert(PlotEnvelope::kColumnsPerPixel == LineColumns::kPerPixel);
    m_lone.clear();
    const CPTLineStyle& style = plot.dataLineStyle();
    const std::optional<DashPattern> dashes = DashPattern::of(style, density);
    const double few = dashes ? kFewDashedPoints : PlotEnveloping::kFewPoints;
    if (PolylineRasteriser::canStrokeColumns(style.width * density) &&
        envelopingOf(slot).envelopeInto(m_envelope, *plot.series(), view, slot, few) &&
        (dashes || isByRunsAlone(slot) || canStroke(m_envelope, style.color))) {
        lonePointsInto(m_lone, m_envelope);
        if (dashes)
            dashColumns(m_envelope, *dashes, dashOriginOf(view));
        const LineColumns columns{m_envelope.left, m_envelope.atLeft, m_envelope.atRight,
                                  m_envelope.low,  m_envelope.high,   m_envelope.partEnds};
        m_rasteriser.add(columns, style.width * density, style.color);
    } else if (reduce(plot, view)) {
        const ReducedPlot& line = dashed(dashes, view);
        m_rasteriser.add({line.points, line.partEnds}, style.width * density, style.color);
    }
    strokeLonePoints(plot, density);
}

void PlotPainting::strokeLonePoints(const CPTScatterPlot& plot, double density)
{
    const double diameter = lonePointSize(plot) * density;
    if (!m_lone.empty() && diameter > 0)
        m_rasteriser.addDots(m_lone, diameter, plot.dataLineStyle().color);
}

/// What reduce() left, cut into its dashes.
const ReducedPlot& PlotPainting::dashed(const std::optional<DashPattern>& dashes, const PlotView& view)
{
    if (!dashes)
        return m_reduced;
    dashPoints(m_dashed, m_reduced, *dashes, dashOriginOf(view));
    return m_dashed;
}

void PlotPainting::drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea)
{
    m_slot = 0;
    for (const auto& [strip, plots] : plotsByStrip(graph))
        drawPaths(canvas, graph, plots, stripArea(plotArea, strip));
}

void PlotPainting::drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const std::vector<CPTScatterPlotPtr>& plots,
                             const QRectF& plotArea)
{
    if (plotArea.isEmpty()) {
        m_slot += plots.size();
        return;
    }
    QPainter& painter = canvas.painter();
    const double lineWidth = widestLine(graph);
    const auto viewOf = [&](const CPTScatterPlot& plot, double steps) {
        const QRectF area(plotArea.topLeft() * steps, plotArea.size() * steps);
        PlotView view = viewFor(graph, plot, area, lineWidth * steps, steps);
        view.columnsPerPixel = 1;
        return view;
    };
    painter.save();
    painter.setClipRect(clipFor(plotArea, lineWidth), Qt::IntersectClip);
    painter.scale(1 / kPageStepsPerPoint, 1 / kPageStepsPerPoint);
    const PageClip within{painter.paintEngine()->type() == QPaintEngine::SVG,
                          QRectF(plotArea.topLeft() * kPageStepsPerPoint, plotArea.size() * kPageStepsPerPoint)};
    const auto envelopingAt = [this](std::size_t) -> PlotEnveloping& { return m_enveloping; };
    const auto areaView = [&](const CPTScatterPlot& plot) { return viewOf(plot, kPageAreaUnits); };
    for (std::size_t index = 0; index < plots.size(); ++index)
        if (const FilledArea* filled = m_fills.areaOf(graph, {plots, index, m_slot}, envelopingAt, areaView))
            painter.fillPath(within.area(pathOf(*filled, kPageStepsPerPoint / kPageAreaUnits)),
                             plots[index]->areaFill().color);
    painter.setBrush(Qt::NoBrush);
    for (const CPTScatterPlotPtr& plot : plots) {
        const std::size_t slot = m_slot++;
        if (plot->dataLineStyle().color.isValid())
            drawPath(painter, *plot, {slot, within}, [&](double steps) { return viewOf(*plot, steps); });
    }
    painter.restore();
}

QPainterPath PlotPainting::PageClip::lines(const QPainterPath& path) const
{
    return isNeeded ? linesWithin(path, rect) : path;
}

QPainterPath PlotPainting::PageClip::area(const QPainterPath& path) const
{
    return isNeeded ? areaWithin(path, rect) : path;
}

/// `viewAt` answers the view in so many units a point.
void PlotPainting::drawPath(QPainter& painter, const CPTScatterPlot& plot, const PagePlace& place,
                            const std::function<PlotView(double)>& viewAt)
{
    const std::size_t slot = place.slot;
    const PageClip& within = place.clip;
    const CPTPointSeriesPtr series = plot.isHidden() ? nullptr : plot.series();
    const CPTLineStyle& style = plot.dataLineStyle();
    const auto usePen = [&](double width) {
        painter.setPen(QPen(style.color, width * kPageStepsPerPoint, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    };
    if (!series)
        return;
    const bool hasLine = style.width > 0 && plot.interpolation() != CPTScatterPlotInterpolation::PointsOnly;
    if (hasLine && reduceForPage(plot, slot, viewAt)) {
        usePen(style.width);
        painter.drawPath(within.lines(pathOf(m_reduced)));
        if (const double diameter = lonePointSize(plot); diameter > 0 && !m_lone.empty()) {
            usePen(diameter);
            painter.drawPath(within.lines(pathOfDots(m_lone)));
        }
    }
    if (!(plot.drawnPointSize() > 0))
        return;
    usePen(plot.drawnPointSize());
    if (PlotDots::placesInto(m_places, *series, viewAt(kPageStepsPerPoint)))
        painter.drawPath(within.lines(pathOfDots(m_places)));
    else
        painter.drawPath(within.lines(pathOfDots(m_dots.cells(*series, viewAt(1), slot), kPageStepsPerPoint)));
}

bool PlotPainting::reduceForPage(const CPTScatterPlot& plot, std::size_t slot,
                                 const std::function<PlotView(double)>& viewAt)
{
    const PlotView view = viewAt(kPageStepsPerPoint);
    if (!DashPattern::of(plot.dataLineStyle(), 1))
        return reduce(plot, view);
    const PlotView coarse = viewAt(1);
    if (m_enveloping.envelopeInto(m_envelope, *plot.series(), coarse, slot, kFewDashedPoints)) {
        lonePointsInto(m_lone, m_envelope);
        for (QPointF& place : m_lone)
            place *= kPageStepsPerPoint;
        dashColumns(m_envelope, *DashPattern::of(plot.dataLineStyle(), 1), dashOriginOf(coarse));
        pointsOfColumns(m_reduced, m_envelope, kPageStepsPerPoint);
        return !m_reduced.isEmpty();
    }
    if (!reduce(plot, view))
        return false;
    dashed(DashPattern::of(plot.dataLineStyle(), kPageStepsPerPoint), view);
    std::swap(m_reduced, m_dashed);
    return true;
}

}  // namespace plotkit
