#include "plotkit/render/LineSample.h"

#include "plotkit/layout/LineDashes.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace plotkit {

namespace {

constexpr double kPointsApart = 12;  // points

void paintLine(QPainter& painter, const QLineF& line, const CPTLineStyle& style)
{
    painter.setPen(QPen(style.color, style.width, Qt::SolidLine, Qt::FlatCap));
    if (!DashPattern::of(style, 1)) {
        painter.drawLine(line);
        return;
    }
    const double length = line.length();
    double from = 0;
    for (std::size_t index = 0; from < length; index = (index + 2) % style.dashPattern.size()) {
        const double to = std::min(from + style.dashPattern[index], length);
        painter.drawLine(line.pointAt(from / length), line.pointAt(to / length));
        from += style.dashPattern[index] + style.dashPattern[index + 1];
    }
}

}  // namespace

void paintLineSample(QPainter& painter, const QRectF& rect, const CPTScatterPlot& plot)
{
    CPTLineStyle style = plot.dataLineStyle();
    if (rect.isEmpty() || !style.color.isValid())
        return;
    const double widest = rect.height() / 2;
    const double shrunk = std::min(1.0, widest / std::max(style.width, 1e-3));
    style.width *= shrunk;
    for (double& length : style.dashPattern)
        length *= shrunk;
    const double y = rect.center().y();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (plot.areaFill().isVisible())
        painter.fillRect(QRectF(rect.left(), y, rect.width(), rect.bottom() - y), plot.areaFill().color);
    if (plot.interpolation() != CPTScatterPlotInterpolation::PointsOnly)
        paintLine(painter, QLineF(rect.left(), y, rect.right(), y), style);
    painter.setPen(Qt::NoPen);
    painter.setBrush(style.color);
    const double radius = std::min(plot.drawnPointSize(), 2 * widest) / 2;
    const int dots = radius > 0 ? std::max(1, static_cast<int>(rect.width() / kPointsApart)) : 0;
    for (int dot = 0; dot < dots; ++dot)
        painter.drawEllipse(QPointF(rect.left() + (dot + 0.5) * rect.width() / dots, y), radius, radius);
    painter.restore();
}

}  // namespace plotkit
