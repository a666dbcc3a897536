#include "plugins/PlotixPlugIn/reading/moves/ZoomBox.h"

#include "plotkit/layout/GraphGeometry.h"

#include <QtGui/QPainter>

namespace plotix {

namespace {

constexpr QColor kInside(90, 160, 255, 50);
constexpr QColor kEdge(150, 195, 255, 220);

}  // namespace

void ZoomBox::show(const std::optional<QRectF>& box)
{
    if (box == m_box)
        return;
    m_box = box;
    setNeedsDisplay();
}

void ZoomBox::drawInGraph(QPainter& painter, const plotkit::GraphGeometry& /*geometry*/)
{
    if (!m_box)
        return;
    painter.fillRect(*m_box, kInside);
    painter.setPen(QPen(kEdge, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(*m_box);
}

}  // namespace plotix
