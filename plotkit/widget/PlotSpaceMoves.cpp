#include "plotkit/widget/PlotSpaceMoves.h"

#include "plotkit/layout/AxisMapping.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace plotkit {

namespace {

constexpr double kEighthsOfDegreePerNotch = 120.0;

QPointF nearestInside(const QRectF& area, QPointF place)
{
    return {std::clamp(place.x(), area.left(), area.right()), std::clamp(place.y(), area.top(), area.bottom())};
}

}  // namespace

double zoomFactorForWheel(double eighthsOfDegree)
{
    return std::pow(kZoomStep, eighthsOfDegree / kEighthsOfDegreePerNotch);
}

void zoomAboutPlace(CPTXYPlotSpace& space, const QRectF& plotArea, double factor, QPointF place)
{
    if (plotArea.isEmpty())
        return;
    const AxisMapping x = xMapping(space.xRange(), plotArea);
    const AxisMapping y = yMapping(space.yRange(), plotArea);
    space.scaleBy(factor, valueForPoint(x, y, nearestInside(plotArea, place)));
}

void panXByPlaces(CPTXYPlotSpace& space, const QRectF& plotArea, double places)
{
    if (!plotArea.isEmpty())
        space.setXRange(rangePannedBy(xMapping(space.xRange(), plotArea), places));
}

void panByShare(CPTXYPlotSpace& space, CPTCoordinate coordinate, double share)
{
    CPTPlotRange range = coordinate == CPTCoordinate::X ? space.xRange() : space.yRange();
    range.location += share * range.length;
    if (coordinate == CPTCoordinate::X)
        space.setXRange(range);
    else
        space.setYRange(range);
}

PlotSpaceDrag::PlotSpaceDrag(CPTXYPlotSpacePtr space, const QRectF& plotArea, QPointF place)
    : m_space(std::move(space)), m_plotArea(plotArea)
{
    beginAt(place);
}

void PlotSpaceDrag::beginAt(QPointF place)
{
    m_startPlace = m_lastPlace = place;
    m_startX = m_lastX = m_space->xRange();
    m_startY = m_lastY = m_space->yRange();
}

void PlotSpaceDrag::moveTo(QPointF place)
{
    if (place == m_lastPlace)
        return;
    if (!(m_space->xRange() == m_lastX && m_space->yRange() == m_lastY))
        beginAt(m_lastPlace);
    const QPointF delta = place - m_startPlace;
    m_lastPlace = place;
    m_space->setXRange(rangePannedBy(xMapping(m_startX, m_plotArea), delta.x()));
    m_space->setYRange(rangePannedBy(yMapping(m_startY, m_plotArea), delta.y()));
    m_lastX = m_space->xRange();
    m_lastY = m_space->yRange();
}

}  // namespace plotkit
