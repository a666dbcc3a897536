#pragma once

#include "plotkit/layout/AxisLayout.h"

#include <QtCore/QLineF>
#include <QtCore/QRectF>

#include <optional>
#include <vector>

class CPTScatterPlot;
class CPTXYPlotSpace;

/// What laying out a strip answers. Values that borrow from the graph; main thread only. Points, y downward.
namespace plotkit {

/// A sample of a plot's line beside its name, which may be empty.
struct PlacedKey {
    const CPTScatterPlot* plot = nullptr;
    QLineF sample;
    PlacedText name;
};

struct StripLayout {
    const CPTXYPlotSpace* space = nullptr;
    QRectF area;  ///< without the head room
    std::optional<PlacedText> title;
    std::vector<PlacedKey> keys;
    std::optional<PlacedText> more;  ///< "+3": keys for which there is no room
};

}  // namespace plotkit
