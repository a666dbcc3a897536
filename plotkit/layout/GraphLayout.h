#pragma once

#include "plotkit/layout/AxisLayout.h"
#include "plotkit/layout/LegendLayout.h"
#include "plotkit/layout/StripLayout.h"
#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QRectF>

#include <optional>
#include <vector>

/// Where everything of a graph stands, as plain geometry: the first of two steps, painting being the second.
///
/// Pure: a graph, a rectangle and a way to measure text go in, geometry comes out. Coordinates are points, y downward,
/// in the rectangle's own coordinates. Main thread only, since label formatters are.
namespace plotkit {

struct GraphLayout {
    QRectF frame;     ///< the plot area frame: the rectangle less the graph's padding
    QRectF plotArea;  ///< the frame less legend and its own padding, or the room its labels need; what the ranges are
                      ///< spread over
    std::vector<AxisLayout> axes;     ///< as many as the graph's axis set has, in its order
    std::vector<StripLayout> strips;  ///< of the spaces that have one, in the graph's order
    LegendLayout legend;              ///< inside the frame
    std::optional<PlacedText> title;  ///< never wider than the rectangle: elide what does not fit

    bool isEmpty() const { return plotArea.isEmpty(); }
    const AxisLayout& xAxis() const { return axes[0]; }
    const AxisLayout& yAxis() const { return axes[1]; }
};

/// Lays a graph out in a rectangle. Where the paddings leave no plot area the axes are empty. Work and memory are
/// bounded by the rectangle's size, whatever ranges and intervals are. Labels of an axis give way to those of the axes
/// before it.
GraphLayout layOutGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText);

}  // namespace plotkit
