#include "plotkit/widget/PlotSpaceMoves.h"

#include "plotkit/layout/AxisMapping.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace plotkit {

namespace {

constexpr double kEighthsOfDegreePerNotch = 120.0;

QPointF nearestInside(const QRectF& area, QPointF point)
{
    return {std::clamp(point.x(), area.left(), area.right()), std::clamp(point.y(), area.top(), area.bottom())};
}

}  // namespace

double zoomFactorForWheel(double eighthsOfDegree)
{
    return std::pow(kZoomStep, eighthsOfDegree / kEighthsOfDegreePerNotch);
}

void zoomAboutPoint(CPTXYPlotSpace& space, const QRectF& plotArea, double factor, QPointF point)
{
    if (plotArea.isEmpty())
        return;
    const AxisMapping x = xMapping(space.xRange(), plotArea);
    const AxisMapping y = yMapping(space.yRange(), plotArea);
    space.scaleBy(factor, valueForPoint(x, y, nearestInside(plotArea, point)));
}

bool movesX(const CPTXYPlotSpace& space)
{
    return space.movableRanges() != CPTMovableRanges::OnlyY;
}

bool movesY(const CPTXYPlotSpace& space)
{
    return space.movableRanges() != CPTMovableRanges::OnlyX;
}

void panXBy(CPTXYPlotSpace& space, const QRectF& plotArea, double points)
{
    if (!plotArea.isEmpty() && movesX(space))
        space.setXRange(rangePannedBy(xMapping(space.xRange(), plotArea), points));
}

void panByFraction(CPTXYPlotSpace& space, CPTCoordinate coordinate, double fraction)
{
    if (!(coordinate == CPTCoordinate::X ? movesX(space) : movesY(space)))
        return;
    CPTPlotRange range = coordinate == CPTCoordinate::X ? space.xRange() : space.yRange();
    range.location += fraction * range.length;
    if (coordinate == CPTCoordinate::X)
        space.setXRange(range);
    else
        space.setYRange(range);
}

PlotSpaceDrag::PlotSpaceDrag(CPTXYPlotSpacePtr space, const QRectF& plotArea, QPointF point)
    : m_space(std::move(space)), m_plotArea(plotArea)
{
    beginAt(point);
}

void PlotSpaceDrag::beginAt(QPointF point)
{
    m_startPoint = m_lastPoint = point;
    m_startX = m_lastX = m_space->xRange();
    m_startY = m_lastY = m_space->yRange();
}

void PlotSpaceDrag::moveTo(QPointF point)
{
    if (point == m_lastPoint)
        return;
    if (!(m_space->xRange() == m_lastX && m_space->yRange() == m_lastY))
        beginAt(m_lastPoint);
    const QPointF delta = point - m_startPoint;
    m_lastPoint = point;
    if (movesX(*m_space))
        m_space->setXRange(rangePannedBy(xMapping(m_startX, m_plotArea), delta.x()));
    if (movesY(*m_space))
        m_space->setYRange(rangePannedBy(yMapping(m_startY, m_plotArea), delta.y()));
    m_lastX = m_space->xRange();
    m_lastY = m_space->yRange();
}

}  // namespace plotkit
