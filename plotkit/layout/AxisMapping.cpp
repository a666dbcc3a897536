#include "plotkit/layout/AxisMapping.h"

#include <cmath>

namespace plotkit {

bool AxisMapping::isProper() const
{
    return std::isfinite(range.location) && std::isfinite(range.length) && std::isfinite(range.end()) &&
           range.length != 0 && extent != 0 && std::isfinite(extent) && std::isfinite(start);
}

AxisMapping xMapping(const CPTPlotRange& range, const QRectF& rectangle)
{
    return {range, rectangle.left(), rectangle.width()};
}

AxisMapping yMapping(const CPTPlotRange& range, const QRectF& rectangle)
{
    return {range, rectangle.bottom(), -rectangle.height()};
}

double coordinateForValue(const AxisMapping& mapping, double value)
{
    if (!mapping.isProper())
        return mapping.middle();
    return coordinateWhereProper(mapping, value);
}

double valueForCoordinate(const AxisMapping& mapping, double coordinate)
{
    if (!mapping.isProper())
        return mapping.range.location;
    return mapping.range.location + (coordinate - mapping.start) / mapping.extent * mapping.range.length;
}

double valuePerUnit(const AxisMapping& mapping)
{
    return mapping.isProper() ? std::abs(mapping.range.length / mapping.extent) : 0;
}

CPTPlotRange rangePannedBy(const AxisMapping& mapping, double delta)
{
    if (!mapping.isProper() || !std::isfinite(delta))
        return mapping.range;
    return {mapping.range.location - delta / mapping.extent * mapping.range.length, mapping.range.length};
}

QPointF valueForPoint(const AxisMapping& x, const AxisMapping& y, const QPointF& point)
{
    return {valueForCoordinate(x, point.x()), valueForCoordinate(y, point.y())};
}

QPointF pointForValue(const AxisMapping& x, const AxisMapping& y, const QPointF& value)
{
    return {coordinateForValue(x, value.x()), coordinateForValue(y, value.y())};
}

}  // namespace plotkit
