#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/reading/ReadingOptions.h"

/// Lines that break where nothing was recorded. Free functions over a graph of the caller's; main thread only.
namespace plotix {

/// Sets what each plot joins; without the option everything. To be called whenever there are other plots.
void breakLinesAtGaps(CPTXYGraph& graph, const ReadingOptions& options);

}  // namespace plotix
