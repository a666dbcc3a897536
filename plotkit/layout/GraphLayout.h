#pragma once

#include "plotkit/layout/AxisLayout.h"
#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QRectF>

#include <optional>

/// Where everything of a graph stands, as plain geometry: the first of two steps, painting being the second.
///
/// Pure: a graph, a rectangle and a way to measure text go in, places come out. Places are points, y downward, in the
/// rectangle's own coordinates. Main thread only, since label formatters are.
namespace plotkit {

struct GraphLayout {
    QRectF frame;     ///< the plot area frame: the rectangle less the graph's padding
    QRectF plotArea;  ///< the frame less its own padding; what the ranges are spread over
    AxisLayout xAxis;
    AxisLayout yAxis;
    std::optional<PlacedText> title;  ///< never wider than the rectangle: elide what does not fit

    bool isEmpty() const { return plotArea.isEmpty(); }
};

/// Lays a graph out in a rectangle. Where the paddings leave no plot area the axes are empty. Work and memory are
/// bounded by the rectangle's size, whatever ranges and intervals are.
GraphLayout layOutGraph(const CPTXYGraph& graph, const QRectF& rectangle, const TextMeasure& measureText);

/// The plot area alone: what pointer events need. May be empty, never of negative size.
QRectF plotAreaOfGraph(const CPTXYGraph& graph, const QRectF& rectangle);

}  // namespace plotkit
