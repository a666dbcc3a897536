#include "plotkit/render/ClippedPaths.h"

#include <QtCore/QLineF>

#include <algorithm>
#include <optional>

namespace plotkit {

namespace {

/// Narrows `from` … `to`, shares of a line's length, to where `at` + share × `step` is between the bounds.
bool narrow(double at, double step, double low, double high, double& from, double& to)
{
    if (step == 0)
        return at >= low && at <= high;
    const double first = (low - at) / step;
    const double last = (high - at) / step;
    from = std::max(from, std::min(first, last));
    to = std::min(to, std::max(first, last));
    return from <= to;
}

std::optional<QLineF> lineWithin(const QLineF& line, const QRectF& rect)
{
    double from = 0, to = 1;
    if (!narrow(line.x1(), line.dx(), rect.left(), rect.right(), from, to) ||
        !narrow(line.y1(), line.dy(), rect.top(), rect.bottom(), from, to))
        return std::nullopt;
    return QLineF(from > 0 ? line.pointAt(from) : line.p1(), to < 1 ? line.pointAt(to) : line.p2());
}

}  // namespace

QPainterPath linesWithin(const QPainterPath& lines, const QRectF& rect)
{
    QPainterPath within;
    QPointF last;
    bool goesOn = false;
    for (int index = 0; index < lines.elementCount(); ++index) {
        const QPainterPath::Element& element = lines.elementAt(index);
        const QPointF point = element;
        if (element.isMoveTo()) {
            goesOn = false;
        } else if (const std::optional<QLineF> seen = lineWithin({last, point}, rect)) {
            if (!goesOn || within.currentPosition() != seen->p1())
                within.moveTo(seen->p1());
            within.lineTo(seen->p2());
            goesOn = seen->p2() == point;
        } else {
            goesOn = false;
        }
        last = point;
    }
    return within;
}

QPainterPath areaWithin(const QPainterPath& area, const QRectF& rect)
{
    if (rect.contains(area.controlPointRect()))
        return area;
    QPainterPath bounds;
    bounds.addRect(rect);
    return area.intersected(bounds);
}

}  // namespace plotkit
