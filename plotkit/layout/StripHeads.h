#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/StripLayout.h"

/// Placing the heads of strips: a title, and a key for each plot that is shown. Pure; main thread only.
namespace plotkit {

/// The strips of the graph's spaces that have one. Texts keep to the head room; without room for its height a head has
/// none. Keys that would reach beyond the strip are counted instead.
std::vector<StripLayout> placedStrips(const GraphGeometry& geometry, const TextMeasure& measureText);

}  // namespace plotkit
