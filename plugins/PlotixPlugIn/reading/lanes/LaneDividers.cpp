#include "plugins/PlotixPlugIn/reading/lanes/LaneDividers.h"

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/lanes/Arrangement.h"

#include <QtGui/QMouseEvent>

#include <cmath>

namespace plotix {

namespace {

constexpr double kReach = 5;  // points to either side of an edge

}  // namespace

std::optional<std::size_t> LaneDividers::edgeAt(const QPointF& point) const
{
    const auto where = m_arrangement.lanes().size() < 2 ? std::nullopt : shownGeometry(m_trend);
    if (!where)
        return std::nullopt;
    const QRectF area = where->plotArea;
    if (point.x() < area.left() || point.x() > area.right())
        return std::nullopt;
    for (std::size_t lane = 1; lane < m_arrangement.lanes().size(); ++lane) {
        const double edge = area.top() + m_arrangement.lanes()[lane]->space()->strip().top * area.height();
        if (std::abs(point.y() - edge) <= kReach)
            return lane;
    }
    return std::nullopt;
}

void LaneDividers::dragTo(const QPointF& point)
{
    const auto where = shownGeometry(m_trend);
    const QRectF area = where ? where->plotArea : QRectF();
    if (area.height() > 0)
        m_arrangement.moveUpperEdgeOf(*m_dragged, (point.y() - area.top()) / area.height());
}

void LaneDividers::showCursorFor(const QPointF& point)
{
    const bool isWanted = m_dragged || edgeAt(point);
    if (isWanted)
        m_trend.graphView()->setCursor(Qt::SplitVCursor);
    else if (m_hasCursor)
        m_trend.graphView()->unsetCursor();
    m_hasCursor = isWanted;
}

bool LaneDividers::pointerActed(QEvent& event)
{
    const auto mouse = [&event]() -> const QMouseEvent& { return static_cast<const QMouseEvent&>(event); };
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        m_dragged = mouse().button() == Qt::LeftButton ? edgeAt(mouse().position()) : std::nullopt;
        return m_dragged.has_value();
    case QEvent::MouseMove:
        if (m_dragged)
            dragTo(mouse().position());
        else if (mouse().buttons() == Qt::NoButton)
            showCursorFor(mouse().position());
        return m_dragged.has_value();
    case QEvent::MouseButtonRelease: {
        const bool wasDragged = m_dragged.has_value();
        m_dragged.reset();
        return wasDragged;
    }
    default: return false;
    }
}

}  // namespace plotix
