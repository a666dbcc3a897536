#pragma once

#include "plotkit/model/CPTStyles.h"

#include <memory>

/// How a scatter plot is drawn beyond the style of its line. Values; any thread. Lengths are in points.

class CPTScatterPlot;

/// What is drawn between points that follow each other: a straight line, the value of the earlier one up to the time of
/// the later one, or nothing.
enum class CPTScatterPlotInterpolation { Linear, HoldLast, PointsOnly };

/// What lies between a plot's line and zero, or another plot's line.
struct CPTAreaFill {
    CPTColor color = CPTColor();  ///< an invalid one fills nothing
    bool isToPlot = false;        ///< up to `plot`, else up to zero
    /// Held *weakly*. Nothing is filled when it is gone, hidden, the plot itself, or in another plot space.
    std::weak_ptr<const CPTScatterPlot> plot = {};

    static CPTAreaFill none() { return {}; }
    static CPTAreaFill toZero(const CPTColor& color) { return {color, false, {}}; }
    static CPTAreaFill toPlot(const std::shared_ptr<const CPTScatterPlot>& plot, const CPTColor& color)
    {
        return {color, true, plot};
    }

    bool isVisible() const { return color.isValid() && color.alpha() > 0; }
};
