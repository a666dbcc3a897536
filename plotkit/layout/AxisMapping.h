#pragma once

#include "plotkit/model/CPTPlotRange.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

/// All arithmetic between values on an axis and places on a picture, as free functions over one value.
///
/// A place is in whatever unit the rectangle came in (points or device pixels), counted from the picture's top left;
/// x grows to the right, y downward, so a y mapping has its first place at the rectangle's bottom. Pure; any thread.
namespace plotkit {

/// A range and the stretch of the picture it is spread over.
struct AxisMapping {
    CPTPlotRange range;
    double firstPlace = 0;  ///< where `range.location` stands
    double places = 0;      ///< the stretch's length, negative when places shrink while values grow

    double middlePlace() const { return firstPlace + places / 2; }

    /// Whether values can be told apart at all: length and limits finite, length and stretch not zero.
    bool isProper() const;
};

/// The mapping of an x range onto a rectangle's width, and of a y range onto its height, bottom to top.
AxisMapping xMapping(const CPTPlotRange& range, const QRectF& rectangle);
AxisMapping yMapping(const CPTPlotRange& range, const QRectF& rectangle);

/// Where a value stands; outside the stretch for values outside the range. An improper mapping answers the middle for
/// every value. Infinite values answer infinite places, NaN answers NaN.
double placeForValue(const AxisMapping& mapping, double value);

/// The value at a place. A mapping without a proper range or stretch answers the range's location.
double valueForPlace(const AxisMapping& mapping, double place);

/// How much value one place covers, never negative; 0 for an improper mapping.
double valuePerPlace(const AxisMapping& mapping);

/// The range that shows the same stretch moved by `placeDelta` (positive: the content moves to higher places).
/// An improper mapping answers its range unchanged.
CPTPlotRange rangePannedBy(const AxisMapping& mapping, double placeDelta);

/// The plot-space point (x value, y value) under a point of the picture, and back.
QPointF valueForPoint(const AxisMapping& x, const AxisMapping& y, const QPointF& point);
QPointF pointForValue(const AxisMapping& x, const AxisMapping& y, const QPointF& value);

}  // namespace plotkit
