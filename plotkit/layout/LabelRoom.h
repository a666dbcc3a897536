#pragma once

#include "plotkit/layout/AxisLayout.h"
#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QRectF>

/// The padding between frame and plot area that a graph's labels and titles need. Pure; main thread only, since label
/// formatters are.
namespace plotkit {

/// The frame's own padding, or where room grows with the labels the larger one they need, with a few points in reserve
/// so that a moving range seldom changes it. Axes that are held at no edge need none. Only the outermost ticks' labels
/// are measured.
CPTPadding paddingForLabels(const CPTXYGraph& graph, const QRectF& frame, const TextMeasure& measureText);

/// How wide the frame's border is, in points.
double borderWidth(const CPTPlotAreaFrame& frame);

}  // namespace plotkit
