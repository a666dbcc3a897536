#pragma once

#include "plotkit/model/CPTPlotRange.h"

#include <QtCore/QRectF>

#include <limits>

/// Which part of a plot is drawn, and how finely. A value; any thread.
namespace plotkit {

/// What is shown, where, and how finely.
struct PlotView {
    CPTPlotRange xRange;
    CPTPlotRange yRange;
    QRectF area;         ///< the plot area in device pixels, y downward
    double margin = 32;  ///< pixels beyond the area that stay exact; at least the pen's width
    /// Points farther apart in x than this are not joined; at least what a pixel shows. Only for x that never
    /// decreases.
    double gap = std::numeric_limits<double>::infinity();
    /// Whether a value is held until the next point; else the line is straight. Only for x that never decreases.
    bool holdsValues = false;
    int columnsPerPixel = 6;  ///< how finely extremes are placed along x: 6 for pixels, 1 for a vector page
};

}  // namespace plotkit
