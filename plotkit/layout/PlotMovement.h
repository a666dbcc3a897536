#pragma once

#include "plotkit/model/CPTPlotRange.h"

#include <cstddef>
#include <optional>
#include <vector>

/// Which way the plots of a view go from frame to frame, and so what is likely to be shown next.
namespace plotkit {

/// A value; one thread at a time.
class PlotMovement {
public:
    /// To be told of the x range of each frame's `slot`-th plot. Answers the range beside it that comes into view if
    /// the plot goes on as it went, as long as the one shown; nothing before it has moved, and after a zoom.
    std::optional<CPTPlotRange> next(std::size_t slot, const CPTPlotRange& shown);

    /// The nearest part of a range that comes next.
    static CPTPlotRange nearest(const CPTPlotRange& next, const CPTPlotRange& shown, double share);

private:
    struct Course {
        CPTPlotRange shown;
        double direction = 0;  // −1, 0 or 1
    };
    std::vector<Course> m_courses;  // by slot
};

}  // namespace plotkit
