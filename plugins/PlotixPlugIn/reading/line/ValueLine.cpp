#include "plugins/PlotixPlugIn/reading/line/ValueLine.h"

#include "plotkit/render/GraphCanvas.h"
#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtGui/QPainter>

namespace plotix {

namespace {

constexpr double kDot = 4;            // points
constexpr double kUnderPointer = 18;  // points
constexpr double kFromEdge = 6;

void drawDots(QPainter& painter, const std::vector<ReadDot>& dots, const QColor& ring)
{
    painter.setRenderHint(QPainter::Antialiasing);
    for (const ReadDot& dot : dots) {
        painter.setPen(QPen(ring, 1.5));
        painter.setBrush(dot.color);
        painter.drawEllipse(dot.place, kDot, kDot);
    }
}

}  // namespace

void ValueLine::show(const std::optional<Place>& place)
{
    if (!place && !m_place)
        return;
    m_place = place;
    setNeedsDisplay();
}

void ValueLine::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry)
{
    const bool onScreen = isOnScreen(painter);
    if (!m_place || !m_read || (!onScreen && !m_place->isHeld) || geometry.plotArea.isEmpty())
        return;
    const QRectF& area = geometry.plotArea;
    const double x = geometry.pointForValue(geometry.graph.plotSpace(), {m_place->time, 0}).x();
    if (!(x >= area.left() && x <= area.right()))
        return;
    const ReadoutLook look = readoutLookFor(geometry.graph);
    ReadAt read = m_read(m_place->time, geometry);
    plotkit::GraphCanvas(painter).drawLine({x, area.top(), x, area.bottom()},
                                           CPTLineStyle{.width = 1, .color = look.line});
    drawDots(painter, read.dots, look.line);

    if (m_place->isHeld)
        read.readout.state = localizedText(QT_TRANSLATE_NOOP("Plotix", "held"));
    // The box is laid out in lengths of the usual text size, and drawn as large as the graph's texts.
    const double scale = textScale(geometry.graph);
    const auto inBox = [scale](const QRectF& rectangle) {
        return QRectF(rectangle.topLeft() / scale, rectangle.size() / scale);
    };
    const QRectF bounds = inBox(geometry.rectangle).adjusted(kFromEdge, kFromEdge, -kFromEdge, -kFromEdge);
    const Readout readout = shortened(folded(std::move(read.readout)), rowsWithin(bounds.height()),
                                      localizedText(QT_TRANSLATE_NOOP("Plotix", "… and %1 more")));
    const std::optional<QPointF> pointer =
        onScreen && m_place->pointer ? std::optional(*m_place->pointer / scale) : std::nullopt;
    const double y = pointer && !m_place->isHeld ? pointer->y() + kUnderPointer : inBox(area).top() + kFromEdge;
    painter.scale(scale, scale);
    paintReadout(painter, readout, placeBeside(sizeOfReadout(readout), x / scale, y, bounds, pointer), look);
    painter.scale(1 / scale, 1 / scale);
}

}  // namespace plotix
