#pragma once

#include "plotkit/model/CPTScatterPlot.h"

/// How far apart the points of a line may be and still belong together. Free functions; main thread only.
namespace plotix {

/// How many times the usual distance of a line's points is still joined, unless a distance was chosen: a few samples
/// may be missing, or a long weekend among daily readings, without tearing the line.
inline constexpr double kUsualDistancesJoined = 5;

double usualJoin(const CPTPointSeries& series);

/// The distance beyond which the plot's line breaks; of one that joins everything, the usual join: beyond it nothing
/// was recorded all the same. 0 without points.
double longestJoinOf(const CPTScatterPlot& plot);

}  // namespace plotix
