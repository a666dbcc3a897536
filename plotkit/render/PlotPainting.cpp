#include "plotkit/render/PlotPainting.h"

#include "plotkit/layout/PlotReduction.h"
#include "plotkit/layout/StripArea.h"

#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

/// Steps a point on a page of vectors: a quarter of a point is far below what a 3 point line shows, and keeps two years
/// of minutes in a few hundred kilobytes.
constexpr double kPageStepsPerPoint = 4.0;

/// Wider pens than this are no lines any more; bounds how far the reduction stays exact beyond the plot area.
constexpr double kLeastMargin = 32.0;

double widestLine(const CPTXYGraph& graph)
{
    double width = 0;
    for (const CPTScatterPlotPtr& plot : graph.allPlots())
        if (!plot->isHidden() && std::isfinite(plot->dataLineStyle().width))
            width = std::max(width, plot->dataLineStyle().width);
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
    view.gap = std::max(plot.gapThreshold(), std::abs(space.xRange().length) / area.width() * pixel);
    view.xRange = space.xRange();
    view.yRange = space.yRange();
    view.area = area;
    view.margin = std::max(kLeastMargin, 2 * lineWidth);
    return view;
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

QPainterPath pathOf(const ReducedPlot& reduced)
{
    // Whole steps make short numbers on the page.
    const auto step = [](const QPointF& point) { return QPointF(std::round(point.x()), std::round(point.y())); };
    QPainterPath path;
    path.reserve(int(reduced.points.size() + reduced.partEnds.size()));
    std::size_t first = 0;
    for (const std::size_t end : reduced.partEnds) {
        QPointF last = step(reduced.points[first]);
        path.moveTo(last);
        for (std::size_t index = first + 1; index < end; ++index) {
            const QPointF point = step(reduced.points[index]);
            if (point != last)
                path.lineTo(point);
            last = point;
        }
        if (path.currentPosition() == last && end == first + 1)
            path.lineTo(last + QPointF(0.01, 0));  // a stroke without length leaves no dot
        first = end;
    }
    return path;
}

}  // namespace

void PlotPainting::drawPlots(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea)
{
    if (plotArea.isEmpty())
        return;
    if (canvas.isAligned())
        drawPixels(canvas, graph, plotArea);
    else
        drawPaths(canvas, graph, plotArea);
}

bool PlotPainting::reduce(const CPTScatterPlot& plot, const PlotView& view)
{
    const CPTPointSeriesPtr series = plot.isHidden() ? nullptr : plot.series();
    if (!series)
        return false;
    reducePlotInto(m_reduced, *series, view);
    return !m_reduced.isEmpty();
}

void PlotPainting::prepareLayer(const QSize& size)
{
    if (m_layer.size() != size)
        m_layer = QImage(size, QImage::Format_ARGB32_Premultiplied);
    m_layer.fill(0);
}

/// Straight into the picture where that is an image; else into an image of their own, which is then drawn over it.
void PlotPainting::drawPixels(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea)
{
    m_slot = 0;
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
    m_rasteriser.begin(buffer, clip);
    for (const CPTScatterPlotPtr& plot : plots)
        strokePlot(*plot, viewFor(graph, *plot, area, lineWidth, 1), density, m_slot++);
    m_rasteriser.finish();
}

/// Crowded lines as columns, all others as points.
void PlotPainting::strokePlot(const CPTScatterPlot& plot, const PlotView& view, double density, std::size_t slot)
{
    static_assert(PlotEnvelope::kColumnsPerPixel == LineColumns::kPerPixel);
    const CPTLineStyle& style = plot.dataLineStyle();
    const CPTPointSeriesPtr series = plot.isHidden() ? nullptr : plot.series();
    if (series && PolylineRasteriser::canStrokeColumns(style.width * density) &&
        m_enveloping.envelopeInto(m_envelope, *series, view, slot) && canStroke(m_envelope, style.color)) {
        const LineColumns columns{m_envelope.left, m_envelope.atLeft, m_envelope.atRight,
                                  m_envelope.low,  m_envelope.high,   m_envelope.partEnds};
        m_rasteriser.add(columns, style.width * density, style.color);
    } else if (reduce(plot, view)) {
        m_rasteriser.add({m_reduced.points, m_reduced.partEnds}, style.width * density, style.color);
    }
}

void PlotPainting::drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea)
{
    for (const auto& [strip, plots] : plotsByStrip(graph))
        drawPaths(canvas, graph, plots, stripArea(plotArea, strip));
}

void PlotPainting::drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const std::vector<CPTScatterPlotPtr>& plots,
                             const QRectF& plotArea)
{
    if (plotArea.isEmpty())
        return;
    QPainter& painter = canvas.painter();
    const double lineWidth = widestLine(graph);
    const QRectF area(plotArea.topLeft() * kPageStepsPerPoint, plotArea.size() * kPageStepsPerPoint);
    painter.save();
    painter.setClipRect(clipFor(plotArea, lineWidth), Qt::IntersectClip);
    painter.scale(1 / kPageStepsPerPoint, 1 / kPageStepsPerPoint);
    painter.setBrush(Qt::NoBrush);
    for (const CPTScatterPlotPtr& plot : plots) {
        const CPTLineStyle& style = plot->dataLineStyle();
        PlotView view = viewFor(graph, *plot, area, lineWidth * kPageStepsPerPoint, kPageStepsPerPoint);
        view.columnsPerPixel = 1;
        if (!style.color.isValid() || !(style.width > 0) || !reduce(*plot, view))
            continue;
        painter.setPen(QPen(style.color, style.width * kPageStepsPerPoint, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(pathOf(m_reduced));
    }
    painter.restore();
}

}  // namespace plotkit
