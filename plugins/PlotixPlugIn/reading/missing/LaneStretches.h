#pragma once

#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include <vector>

/// What is missing of several lines at once. Pure; any thread.
namespace plotix {

/// The stretches in which all of the lines have none: not valid where any of them is. Requires: each line's stretches
/// in order and apart. Without lines: nothing.
std::vector<MissingStretch> missingInAll(const std::vector<std::vector<MissingStretch>>& lines);

}  // namespace plotix
