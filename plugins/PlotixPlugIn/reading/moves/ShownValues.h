#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <optional>

/// What the lines of a plot space reach within the times that are shown. Free functions; main thread only.
namespace plotix {

struct ShownReach {
    double lowest = 0, highest = 0;
};

/// The least and the greatest value of the plots that are shown, over the times shown; nothing without values. By the
/// series' index: the work does not grow with the number of points.
std::optional<ShownReach> shownReach(const CPTXYGraph& graph, const CPTXYPlotSpace& space);

/// Fits the values of each space that is drawn to what is shown of them, with a margin of a twentieth, and leaves the
/// times.
void fitValuesToShownTimes(CPTXYGraph& graph);
void fitValuesToShownTimes(CPTXYGraph& graph, CPTXYPlotSpace& space);

}  // namespace plotix
