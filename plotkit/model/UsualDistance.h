#pragma once

#include "plotkit/model/CPTPointSeries.h"

/// How far apart the points of a series usually are. Pure; any thread.
namespace plotkit {

/// The median of the distances in x between one point and the next. Of long series some thousand distances are taken,
/// spread evenly over the elements, and of very long ones in stretches at sixteen places, so that the cost does not
/// depend on the length. 0 with fewer than two points, and
/// where x is not sorted.
double usualDistance(const CPTPointSeries& series);

}  // namespace plotkit
