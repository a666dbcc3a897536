#include "plotkit/render/GraphGround.h"

#include <algorithm>
#include <cmath>

namespace plotkit {

namespace {

bool isOpaque(const CPTFill& fill)
{
    return !fill.stops.empty() && std::all_of(fill.stops.begin(), fill.stops.end(), [](const CPTFill::Stop& stop) {
        return stop.color.isValid() && stop.color.alpha() == 255;
    });
}

void paintGround(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& rect, const QRectF& frame)
{
    const CPTPlotAreaFrame& style = graph.plotAreaFrame();
    canvas.fillRect(rect, graph.fill());
    canvas.drawRoundedFrame(frame, style.fill, style.borderLineStyle, style.cornerRadius);
}

}  // namespace

void GraphGround::draw(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& rect, const QRectF& frame)
{
    // Only an opaque ground can be copied as it is: every other is blended with what is there, and gives the same
    // pixels only when drawn there.
    if (!canvas.isAligned() || !isOpaque(graph.fill())) {
        paintGround(canvas, graph, rect, frame);
        return;
    }
    const QRectF place = canvas.alignedRect(rect);
    const QPointF origin = canvas.toPainter(rect).topLeft() - place.topLeft();
    const CPTPlotAreaFrame& style = graph.plotAreaFrame();
    Look look{origin,     canvas.density(),      place.size().toSize(), rect, frame, graph.fill(),
              style.fill, style.borderLineStyle, style.cornerRadius};
    if (m_image.isNull() || !(look == m_look)) {
        m_image = QImage(look.pixels, QImage::Format_RGB32);
        if (m_image.isNull()) {
            paintGround(canvas, graph, rect, frame);
            return;
        }
        QPainter painter(&m_image);
        painter.translate(origin - rect.topLeft() * canvas.density());
        painter.scale(canvas.density(), canvas.density());
        GraphCanvas ground(painter);
        paintGround(ground, graph, rect, frame);
        m_look = std::move(look);
    }
    canvas.painter().drawImage(place.topLeft(), m_image);
}

}  // namespace plotkit
