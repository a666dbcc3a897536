#pragma once

#include "plotkit/model/CPTPlotRange.h"
#include "plotkit/model/CPTPointSeries.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <cstddef>
#include <vector>

/// The few points of a series that make the same picture as all of them.
///
/// Pure; any thread. For x that never decreases, a frame costs by the pixels and not by the points: edges of pixel
/// columns are searched in x, extremes come from the series' index. Unsorted x falls back to a walk over every point.
namespace plotkit {

/// What is shown, where, and how finely.
struct PlotView {
    CPTPlotRange xRange;
    CPTPlotRange yRange;
    QRectF area;              ///< the plot area in device pixels, y downward
    double margin = 32;       ///< pixels beyond the area that stay exact; at least the pen's width
    int columnsPerPixel = 6;  ///< how finely extremes are placed along x: 6 for pixels, 1 for a vector page
};

/// Polylines in device pixels, one after the other.
///
/// Within a part consecutive points are joined; a part of one point is a dot. The line leaves and enters the picture at
/// the right slope: segments to points outside are cut at the area grown by the margin. Every coordinate is finite.
struct ReducedPlot {
    std::vector<QPointF> points;
    std::vector<std::size_t> partEnds;  ///< one past each part's last point, ascending

    bool isEmpty() const { return points.empty(); }
    void clear();
};

/// Reduces a series. Points whose x or y is not finite, and dropped elements, are passed over: the line runs on.
/// Ranges of length zero, or not finite, place everything in the middle of their direction; reversed ranges mirror.
/// An empty area, or a series without points in or across the view, answers an empty plot.
ReducedPlot reducePlot(const CPTPointSeries& series, const PlotView& view);

/// The same into a plot that keeps its memory from frame to frame.
void reducePlotInto(ReducedPlot& plot, const CPTPointSeries& series, const PlotView& view);

}  // namespace plotkit
