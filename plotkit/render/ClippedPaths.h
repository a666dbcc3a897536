#pragma once

#include <QtCore/QRectF>
#include <QtGui/QPainterPath>

/// Paths cut off at a rectangle, for devices that leave a painter's clip out of account. Pure; any thread.
namespace plotkit {

/// What of straight lines lies within the rectangle, its edges included. A line that leaves and comes back is broken.
/// Requires: no curves.
QPainterPath linesWithin(const QPainterPath& lines, const QRectF& rect);

/// What of an area to be filled lies within the rectangle.
QPainterPath areaWithin(const QPainterPath& area, const QRectF& rect);

}  // namespace plotkit
