#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/reading/ReadingOptions.h"

/// Lines that break where nothing was recorded. Free functions over a graph of the caller's; main thread only.
namespace plotix {

/// How many times the usual distance of a line's points is still joined, unless a distance was chosen: a few samples
/// may be missing, or a long weekend among daily readings, without tearing the line.
inline constexpr double kUsualDistancesJoined = 5;

/// Sets what each plot joins; without the option everything. To be called whenever there are other plots.
void breakLinesAtGaps(CPTXYGraph& graph, const ReadingOptions& options);

}  // namespace plotix
