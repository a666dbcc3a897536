#pragma once

#include "plotkit/model/CPTScatterPlot.h"

#include <QtCore/QRectF>

class QPainter;

/// A short piece of a plot as legends, tables and menus show it: its line with dashes and width, its points, its fill.
///
/// Free function; main thread only.
namespace plotkit {

/// Paints it into `rect` (points), level through the middle, no wider than half the rectangle's height.
void paintLineSample(QPainter& painter, const QRectF& rect, const CPTScatterPlot& plot);

}  // namespace plotkit
