#pragma once

#include "plotkit/model/CPTXYGraph.h"

/// Axes whose labels can be read: round local times, as many digits as it takes, whole labels, titles beside the plots.
///
/// Free functions over a graph of the caller's. Main thread only.
namespace plotix {

struct AxisTexts {
    QString time, value;  ///< titles
    CPTClock clock;
};

/// Styles the graph's first two axes, x in seconds since 1970-01-01 UTC, and lets their labels take the room they need.
void makeAxesReadable(CPTXYGraph& graph, const AxisTexts& texts);

/// Labels and ticks of the time axis alone: to be called where somebody else may have set them. Cheap when they stand.
void makeTimeAxisReadable(CPTXYAxis& axis, const CPTClock& clock);

}  // namespace plotix
