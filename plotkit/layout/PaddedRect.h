#pragma once

#include "plotkit/model/CPTStyles.h"

#include <QtCore/QRectF>

/// A rectangle less a padding. Pure; any thread.
namespace plotkit {

/// The rectangle inside a padding: empty rather than of negative size, also for a padding that is not a number.
inline QRectF insideOf(const QRectF& rectangle, const CPTPadding& padding)
{
    const double width = rectangle.width() - padding.left - padding.right;
    const double height = rectangle.height() - padding.top - padding.bottom;
    const QPointF corner(rectangle.left() + padding.left, rectangle.top() + padding.top);
    return {corner, QSizeF(width > 0 ? width : 0, height > 0 ? height : 0)};
}

}  // namespace plotkit
