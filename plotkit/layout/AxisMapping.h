#pragma once

#include "plotkit/model/CPTPlotRange.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

/// All arithmetic between values on an axis and coordinates on a picture, as free functions over one value.
///
/// A coordinate is in whatever unit the rectangle came in (points or device pixels), counted from the picture's top
/// left; x grows to the right, y downward, so a y mapping starts at the rectangle's bottom. Pure; any thread.
namespace plotkit {

/// A range and the stretch of the picture it is spread over.
struct AxisMapping {
    CPTPlotRange range;
    double start = 0;   ///< where `range.location` stands
    double extent = 0;  ///< the stretch's length, negative when coordinates shrink while values grow

    double middle() const { return start + extent / 2; }

    /// Whether values can be told apart at all: length and limits finite, length and stretch not zero.
    bool isProper() const;
};

/// The mapping of an x range onto a rectangle's width, and of a y range onto its height, bottom to top.
AxisMapping xMapping(const CPTPlotRange& range, const QRectF& rectangle);
AxisMapping yMapping(const CPTPlotRange& range, const QRectF& rectangle);

/// Where a value stands; outside the stretch for values outside the range. An improper mapping answers the middle for
/// every value. Infinite values answer infinite coordinates, NaN answers NaN.
double coordinateForValue(const AxisMapping& mapping, double value);

/// The same for very many values. Requires: the mapping is proper.
inline double coordinateWhereProper(const AxisMapping& mapping, double value)
{
    return mapping.start + (value - mapping.range.location) / mapping.range.length * mapping.extent;
}

/// The value at a coordinate. A mapping without a proper range or stretch answers the range's location.
double valueForCoordinate(const AxisMapping& mapping, double coordinate);

/// How much value one unit covers, never negative; 0 for an improper mapping.
double valuePerUnit(const AxisMapping& mapping);

/// The range that shows the same stretch moved by `delta` (positive: the content moves to higher coordinates).
/// An improper mapping answers its range unchanged.
CPTPlotRange rangePannedBy(const AxisMapping& mapping, double delta);

/// The plot-space point (x value, y value) under a point of the picture, and back.
QPointF valueForPoint(const AxisMapping& x, const AxisMapping& y, const QPointF& point);
QPointF pointForValue(const AxisMapping& x, const AxisMapping& y, const QPointF& value);

}  // namespace plotkit
