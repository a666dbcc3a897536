#include "plotkit/render/GraphFrames.h"

#include "plotkit/render/GraphCanvas.h"

#include <QtGui/QPainter>

namespace plotkit {

bool GraphFrames::paint(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, GraphChange change)
{
    if (graph.layers().empty()) {
        m_picture = QImage();
        m_painter.paint(painter, graph, rect);
        return true;
    }
    bool isPainted = change == GraphChange::Anything || m_picture.isNull();
    {
        GraphCanvas canvas(painter);
        if (!canvas.isAligned()) {
            m_painter.paint(painter, graph, rect);
            return true;
        }
        const QRect target = canvas.alignedRect(rect).toRect();
        const Look look{target.size(), canvas.toPainter(rect).topLeft() - QPointF(target.topLeft()), canvas.density()};
        isPainted = isPainted || !(look == m_look);
        if (isPainted)
            keep(graph, rect, look);
        if (m_picture.isNull())  // no memory for one of its own
            m_painter.paintBelowLayers(painter, graph, rect);
        else
            canvas.painter().drawImage(target.topLeft(), m_picture);
    }
    paintLayers(painter, graph, rect);
    return isPainted;
}

void GraphFrames::keep(const CPTXYGraph& graph, const QRectF& rect, const Look& look)
{
    if (m_picture.size() != look.pixels)
        m_picture = QImage(look.pixels, QImage::Format_ARGB32_Premultiplied);
    m_look = look;
    if (m_picture.isNull())
        return;
    QPainter painter(&m_picture);
    painter.translate(look.origin - rect.topLeft() * look.density);
    painter.scale(look.density, look.density);
    m_painter.paintBelowLayers(painter, graph, rect, Beneath::Nothing);
}

}  // namespace plotkit
