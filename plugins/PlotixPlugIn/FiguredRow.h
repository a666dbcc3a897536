#pragma once

#include "plugins/PlotixPlugIn/InfoTableRow.h"
#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"

/// A row of the statistics table as it is shown: with the numbers that the figures have for its own columns, where they
/// are not about everything fetched. Null figures: the row itself. Main thread only.
InfoTableRow figuredRow(const InfoTableRow& row, const plotix::TableFigures* figures);
