#pragma once

#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/layout/ReducedPlot.h"
#include "plotkit/model/CPTStyles.h"

#include <optional>
#include <vector>

/// Dashes along a line, whether it is given by points or, where it is crowded, by columns.
///
/// Each part begins with a dash. Where a part comes in from outside the picture, the pattern is counted from the x
/// axis' zero instead, so that the dashes of a level line stay on it while the picture is panned. Pure; any thread.
namespace plotkit {

/// Lengths along the middle of the line, in the picture's units: a round cap lies beyond either end of a dash.
struct DashPattern {
    std::vector<double> lengths;  ///< drawn and left out in turn; an even number
    double period = 0;            ///< their sum, positive
    double shortestGap = 0;       ///< as it is seen

    /// Nothing for a solid line. `scale`: the picture's units a point.
    static std::optional<DashPattern> of(const CPTLineStyle& style, double scale);
};

/// Where a line is dashed: the picture's left edge, beyond which a part comes from outside, and where x = 0 would
/// stand.
struct DashOrigin {
    double left = 0;
    double zero = 0;
};

/// Cuts a line of points into its dashes. Lines that run far outside the picture cost no more than their points.
void dashPoints(ReducedPlot& dashed, const ReducedPlot& plot, const DashPattern& pattern, const DashOrigin& origin);

/// Leaves out the columns between the dashes. Where the line moves so far within a pixel that the shortest gap would
/// not show, it stays whole.
void dashColumns(PlotEnvelope& envelope, const DashPattern& pattern, const DashOrigin& origin);

/// The columns' line as points, each `scale` times as far from the picture's origin; a part for each run of columns.
void pointsOfColumns(ReducedPlot& plot, const PlotEnvelope& envelope, double scale);

}  // namespace plotkit
