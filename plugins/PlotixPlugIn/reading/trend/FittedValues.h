#pragma once

#include "plotkit/model/CPTPlotRange.h"

/// How much room a fit leaves beside values. Free functions; any thread.
namespace plotix {

/// Of a fitted range, above the greatest value and below the least.
inline constexpr double kFitMargin = 0.05;

/// The range in which these values are seen, with that margin. Equal ones get a range about a tenth of the value on
/// either side, in which it can be read.
CPTPlotRange fittedValues(double lowest, double highest);

}  // namespace plotix
