#include "plugins/PlotixPlugIn/reading/moves/GraphGestures.h"

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/widget/CPTGraphHostingView.h"
#include "plotkit/widget/PlotSpaceMoves.h"
#include "plugins/PlotixPlugIn/reading/moves/ShownValues.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kLeastBox = 6;          // points: a shorter side zooms nothing
constexpr double kFlatBox = 14;          // points: a lower box means its times alone
constexpr double kPointsToDouble = 120;  // of a drag along an axis

}  // namespace

GraphGestures::GraphGestures(ReadTrend& trend) : m_trend(trend) {}

void GraphGestures::setOn(bool on)
{
    m_isOn = on;
}

void GraphGestures::zoomByNextDrag()
{
    m_isNextDragABox = true;
    if (m_trend.graphView())
        view().setCursor(Qt::CrossCursor);
}

bool GraphGestures::pointerActed(QEvent& event)
{
    if (!m_isOn && !m_isNextDragABox)
        return false;
    switch (event.type()) {
    case QEvent::MouseButtonPress: return press(static_cast<const QMouseEvent&>(event));
    case QEvent::MouseMove: return move(static_cast<const QMouseEvent&>(event));
    case QEvent::MouseButtonRelease: return release(static_cast<const QMouseEvent&>(event));
    case QEvent::MouseButtonDblClick: return doubleClick(static_cast<const QMouseEvent&>(event));
    case QEvent::Wheel: return wheel(static_cast<const QWheelEvent&>(event));
    default: return false;
    }
}

plotkit::GraphGeometry GraphGestures::geometry() const
{
    return view().geometryShown(*m_trend.graph());
}

CPTXYPlotSpacePtr GraphGestures::spaceAt(const QPointF& point) const
{
    const plotkit::GraphGeometry shown = geometry();
    CPTXYPlotSpacePtr found;
    for (const CPTXYPlotSpacePtr& space : m_trend.graph()->allPlotSpaces()) {
        const QRectF strip = plotkit::wholeStrip(shown.plotArea, space->strip());
        const bool isThere = point.y() >= strip.top() && point.y() < strip.bottom();
        if (isThere && space->allowsUserInteraction() && plotkit::movesY(*space))
            found = space;
    }
    return found;
}

std::optional<GraphGestures::Axis> GraphGestures::axisAt(const QPointF& point) const
{
    const plotkit::GraphGeometry shown = geometry();
    if (!shown.inside.contains(point) || shown.plotArea.isEmpty())
        return std::nullopt;
    const bool isBelow = point.y() > shown.plotArea.bottom();
    if (isBelow && point.x() >= shown.plotArea.left() && point.x() <= shown.plotArea.right())
        return Axis{CPTCoordinate::X, m_trend.graph()->allPlotSpaces().front()};
    if (point.x() >= shown.plotArea.left() || isBelow || point.y() < shown.plotArea.top())
        return std::nullopt;
    const CPTXYPlotSpacePtr space = spaceAt(point);
    return space ? std::optional(Axis{CPTCoordinate::Y, space}) : std::nullopt;
}

bool GraphGestures::press(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    const QPointF point = event.position();
    if ((m_isNextDragABox || event.modifiers() == Qt::ControlModifier) && geometry().plotArea.contains(point)) {
        m_boxStart = point;
        m_trend.graph()->addLayer(m_box);
        return true;
    }
    const std::optional<Axis> axis = m_isOn ? axisAt(point) : std::nullopt;
    if (!axis)
        return false;
    const plotkit::GraphGeometry shown = geometry();
    const bool isX = axis->coordinate == CPTCoordinate::X;
    const QPointF value = shown.valueForPoint(*axis->space, point);
    m_axisDrag =
        AxisDrag{*axis, point, isX ? axis->space->xRange() : axis->space->yRange(), isX ? value.x() : value.y()};
    return true;
}

QRectF GraphGestures::boxTo(const QPointF& point) const
{
    return QRectF(*m_boxStart, point).normalized().intersected(geometry().plotArea);
}

bool GraphGestures::move(const QMouseEvent& event)
{
    if (m_boxStart) {
        m_box->show(boxTo(event.position()));
        return true;
    }
    if (m_axisDrag) {
        const QPointF way = event.position() - m_axisDrag->start;
        const bool isX = m_axisDrag->axis.coordinate == CPTCoordinate::X;
        zoomAxis(m_axisDrag->axis, m_axisDrag->range, m_axisDrag->fixedValue,
                 std::exp2((isX ? way.x() : -way.y()) / kPointsToDouble));
        return true;
    }
    if (event.buttons() == Qt::NoButton)
        showCursorFor(event.position());
    return false;
}

bool GraphGestures::release(const QMouseEvent& event)
{
    if (m_axisDrag) {
        m_axisDrag.reset();
        emit moved();
        return true;
    }
    if (!m_boxStart)
        return false;
    const QRectF box = boxTo(event.position());
    m_boxStart.reset();
    m_box->show(std::nullopt);
    m_trend.graph()->removeLayer(m_box);
    m_isNextDragABox = false;
    view().unsetCursor();
    zoomTo(box);
    emit moved();
    return true;
}

bool GraphGestures::doubleClick(const QMouseEvent& event)
{
    if (!m_isOn || event.button() != Qt::LeftButton || event.modifiers() != Qt::NoModifier)
        return false;
    const std::optional<Axis> axis = axisAt(event.position());
    if (axis && axis->coordinate == CPTCoordinate::Y)
        fitValuesToShownTimes(*m_trend.graph(), *axis->space);
    else if (axis || geometry().plotArea.contains(event.position()))
        m_trend.fit();
    else
        return false;
    emit moved();
    return true;
}

bool GraphGestures::wheel(const QWheelEvent& event)
{
    const std::optional<Axis> axis = m_isOn ? axisAt(event.position()) : std::nullopt;
    if (!axis || event.angleDelta().y() == 0)
        return false;
    const bool isX = axis->coordinate == CPTCoordinate::X;
    const QPointF value = geometry().valueForPoint(*axis->space, event.position());
    zoomAxis(*axis, isX ? axis->space->xRange() : axis->space->yRange(), isX ? value.x() : value.y(),
             plotkit::zoomFactorForWheel(event.angleDelta().y()));
    emit moved();
    return true;
}

void GraphGestures::zoomAxis(const Axis& axis, const CPTPlotRange& from, double fixedValue, double factor)
{
    const CPTPlotRange range{fixedValue - (fixedValue - from.location) / factor, from.length / factor};
    if (!std::isfinite(range.location) || !std::isfinite(range.length))
        return;
    if (axis.coordinate == CPTCoordinate::X)
        m_trend.showTimes({range.minLimit(), range.maxLimit()});
    else
        axis.space->setYRange(range);
}

/// The times of the box, and the values of the space it was begun in unless it is flat.
void GraphGestures::zoomTo(const QRectF& box)
{
    if (box.width() < kLeastBox)
        return;
    const plotkit::GraphGeometry shown = geometry();
    const CPTXYPlotSpacePtr space = spaceAt(box.center());
    const CPTXYPlotSpacePtr times = m_trend.graph()->allPlotSpaces().front();
    const QPointF first = shown.valueForPoint(space ? *space : *times, box.bottomLeft());
    const QPointF last = shown.valueForPoint(space ? *space : *times, box.topRight());
    if (space && box.height() >= kFlatBox)
        space->setYRange({first.y(), last.y() - first.y()});
    m_trend.showTimes({std::min(first.x(), last.x()), std::max(first.x(), last.x())});
}

void GraphGestures::showCursorFor(const QPointF& point)
{
    if (m_isNextDragABox)
        return;
    const std::optional<Axis> axis = axisAt(point);
    if (axis)
        view().setCursor(axis->coordinate == CPTCoordinate::X ? Qt::SizeHorCursor : Qt::SizeVerCursor);
    else if (m_hasCursor)
        view().unsetCursor();
    m_hasCursor = axis.has_value();
}

}  // namespace plotix
