#pragma once

#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/layout/ReducedPlot.h"

#include <QtCore/QPointF>

#include <vector>

/// Where a line that breaks at gaps is a single point, which no pen shows as more than a speck. Free functions; any
/// thread.
namespace plotkit {

/// Of the parts that are one point. What was in `places` is gone.
void lonePointsInto(std::vector<QPointF>& places, const ReducedPlot& plot);

/// Of the parts that stand within a pixel, in both directions.
void lonePointsInto(std::vector<QPointF>& places, const PlotEnvelope& envelope);

}  // namespace plotkit
