#pragma once

#include "plotkit/layout/AxisLayout.h"
#include "plotkit/layout/AxisMapping.h"
#include "plotkit/model/CPTAxis.h"

#include <QtCore/QRectF>

/// Placing one axis in a picture: line, ticks, grid, labels and title. Internal to the graph's layout. Pure; main
/// thread only, since label formatters are.
namespace plotkit {

/// What an axis is placed into. Borrows everything.
struct AxisSurroundings {
    const QRectF& rectangle;    ///< the whole picture; no text reaches beyond
    const QRectF& frameInside;  ///< the plot area frame less its border; titles stay inside
    const QRectF& plotArea;     ///< not empty
    const AxisMapping& along;   ///< the axis's own direction
    const AxisMapping& across;  ///< the other axis's direction
    const TextMeasure& measureText;
};

/// Places an axis. One that stands outside the plot area has grid lines only.
AxisLayout placeAxis(const CPTXYAxis& axis, const AxisSurroundings& surroundings);

}  // namespace plotkit
