#pragma once

#include "plotkit/model/CPTStrip.h"

#include <QtCore/QRectF>

#include <algorithm>

/// Where a strip stands in the plot area. Pure; any thread. Points, y downward.
namespace plotkit {

/// The strip with its head room.
inline QRectF wholeStrip(const QRectF& plotArea, const CPTStrip& strip)
{
    if (strip.isWhole())
        return plotArea;
    const double top = plotArea.top() + std::clamp(strip.top, 0.0, 1.0) * plotArea.height();
    const double bottom = plotArea.top() + std::clamp(strip.bottom, 0.0, 1.0) * plotArea.height();
    return {plotArea.left(), top, plotArea.width(), std::max(0.0, bottom - top)};
}

/// What its ranges are spread over: the strip less its head room. Never of negative size.
inline QRectF stripArea(const QRectF& plotArea, const CPTStrip& strip)
{
    const QRectF whole = wholeStrip(plotArea, strip);
    const double head = std::clamp(strip.headRoom, 0.0, whole.height());
    return whole.adjusted(0, head, 0, 0);
}

}  // namespace plotkit
