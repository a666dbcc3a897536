#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/line/ReadoutBox.h"
#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"

#include <vector>

/// Which of the values that are read are the greatest or the least of their lines. Free functions; main thread only.
namespace plotix {

/// Says so behind them: of all records shown, else of those at the times that the graph shows. `readout` is what the
/// lines read at the time, a row for each. A line that is the same everywhere has neither, and a record that stands
/// elsewhere is none of the time.
void noteExtremes(Readout& readout, const std::vector<TrendLine>& lines, double time,
                  const plotkit::GraphGeometry& geometry);

}  // namespace plotix
