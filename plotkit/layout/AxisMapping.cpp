#include "plotkit/layout/AxisMapping.h"

#include <cmath>

namespace plotkit {

bool AxisMapping::isProper() const
{
    return std::isfinite(range.location) && std::isfinite(range.length) && std::isfinite(range.end()) &&
           range.length != 0 && places != 0 && std::isfinite(places) && std::isfinite(firstPlace);
}

AxisMapping xMapping(const CPTPlotRange& range, const QRectF& rectangle)
{
    return {range, rectangle.left(), rectangle.width()};
}

AxisMapping yMapping(const CPTPlotRange& range, const QRectF& rectangle)
{
    return {range, rectangle.bottom(), -rectangle.height()};
}

double placeForValue(const AxisMapping& mapping, double value)
{
    if (!mapping.isProper())
        return mapping.middlePlace();
    return mapping.firstPlace + (value - mapping.range.location) / mapping.range.length * mapping.places;
}

double valueForPlace(const AxisMapping& mapping, double place)
{
    if (!mapping.isProper())
        return mapping.range.location;
    return mapping.range.location + (place - mapping.firstPlace) / mapping.places * mapping.range.length;
}

double valuePerPlace(const AxisMapping& mapping)
{
    return mapping.isProper() ? std::abs(mapping.range.length / mapping.places) : 0;
}

CPTPlotRange rangePannedBy(const AxisMapping& mapping, double placeDelta)
{
    if (!mapping.isProper() || !std::isfinite(placeDelta))
        return mapping.range;
    return {mapping.range.location - placeDelta / mapping.places * mapping.range.length, mapping.range.length};
}

QPointF valueForPoint(const AxisMapping& x, const AxisMapping& y, const QPointF& point)
{
    return {valueForPlace(x, point.x()), valueForPlace(y, point.y())};
}

QPointF pointForValue(const AxisMapping& x, const AxisMapping& y, const QPointF& value)
{
    return {placeForValue(x, value.x()), placeForValue(y, value.y())};
}

}  // namespace plotkit
