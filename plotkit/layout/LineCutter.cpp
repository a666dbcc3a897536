#include "plotkit/layout/LineCutter.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace plotkit {

namespace {

/// So far that the direction of a line to there is the direction to infinity, yet safe to calculate with.
constexpr double kFarAway = 1e30;

using Piece = std::pair<double, double>;  // from and to, as fractions of a segment's length

/// Narrows `piece` to where start + fraction × delta lies in [low, high]; false when nothing is left.
bool narrow(Piece& piece, double start, double delta, double low, double high)
{
    if (delta == 0)
        return start >= low && start <= high;
    double enter = (low - start) / delta;
    double leave = (high - start) / delta;
    if (enter > leave)
        std::swap(enter, leave);
    piece.first = std::max(piece.first, enter);
    piece.second = std::min(piece.second, leave);
    return piece.first <= piece.second;
}

}  // namespace

LineCutter::LineCutter(ReducedPlot& plot, const QRectF& rectangle, OutsidePieces outside)
    : m_plot(plot),
      m_left(rectangle.left()),
      m_top(rectangle.top()),
      m_right(rectangle.right()),
      m_bottom(rectangle.bottom()),
      m_outside(outside),
      m_partStart(plot.points.size())
{
}

void LineCutter::endPart()
{
    if (m_plot.points.size() > m_partStart)
        m_plot.partEnds.push_back(m_plot.points.size());
    m_partStart = m_plot.points.size();
}

void LineCutter::addAtEdge(QPointF point)
{
    point.setX(std::clamp(point.x(), -kFarAway, kFarAway));
    point.setY(std::clamp(point.y(), -kFarAway, kFarAway));
    const bool inside = contains(point);
    const QPointF previous = std::exchange(m_previous, point);
    const bool previousInside = std::exchange(m_previousInside, inside);
    if (!std::exchange(m_hasPrevious, true)) {
        if (inside)
            append(point);
        return;
    }
    Piece piece{0, 1};
    const QPointF delta = point - previous;
    if (!narrow(piece, previous.x(), delta.x(), m_left, m_right) ||
        !narrow(piece, previous.y(), delta.y(), m_top, m_bottom))
        return;
    if (!previousInside) {
        if (m_outside == OutsidePieces::Break)
            endPart();
        append(previous + delta * piece.first);
    }
    append(inside ? point : previous + delta * piece.second);
}

void LineCutter::finish()
{
    endPart();
    m_hasPrevious = false;
    m_previousInside = false;
}

}  // namespace plotkit
