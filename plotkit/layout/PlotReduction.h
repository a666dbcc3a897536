#pragma once

#include "plotkit/layout/PlotView.h"
#include "plotkit/layout/ReducedPlot.h"
#include "plotkit/model/CPTPointSeries.h"

/// The few points of a series that make the same picture as all of them.
///
/// Pure; any thread. For x that never decreases, the cost of a frame depends on the pixels and not on the points: edges
/// of pixel columns are searched in x, extremes come from the series' index. Unsorted x falls back to a walk over every
/// point.
namespace plotkit {

/// Reduces a series. Points whose x or y is not finite, and dropped elements, are skipped: the line goes straight to
/// the next point. Ranges of length zero, or not finite, place everything in the middle of their direction; reversed
/// ranges mirror. An empty area, or a series without points in or across the view, answers an empty plot.
ReducedPlot reducePlot(const CPTPointSeries& series, const PlotView& view);

/// The same into a plot that keeps its memory from frame to frame.
void reducePlotInto(ReducedPlot& plot, const CPTPointSeries& series, const PlotView& view);

}  // namespace plotkit
