#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QLineF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>

#include <functional>
#include <optional>
#include <vector>

/// Where everything of a graph stands, as plain geometry: the first of two steps, painting being the second.
///
/// Pure: a graph, a rectangle and a way to measure text go in, places come out. Places are points, y downward, in the
/// rectangle's own coordinates. Main thread only, since label formatters are.
namespace plotkit {

/// The size in points of a text, which may have several lines, in a style. Must answer the same for the same input.
using TextMeasure = std::function<QSizeF(const QString& text, const CPTTextStyle& style)>;

/// A text and the box it fills. Lines are centred in the box, or set flush right for labels of the y axis.
struct PlacedText {
    QString text;
    QRectF box;                ///< on the picture, after turning
    bool readsUpward = false;  ///< turned by a quarter counter-clockwise: box is as high as the text is long
    Qt::Alignment alignment = Qt::AlignCenter;
};

struct AxisLabel : PlacedText {
    double value = 0;  ///< the tick's number
};

/// One axis, laid out. Lines are ready to stroke with the axis's styles; grid lines span the plot area.
struct AxisLayout {
    QLineF line;
    std::vector<double> majorValues;  ///< ascending along the axis
    std::vector<double> minorValues;
    std::vector<QLineF> majorTicks;  ///< as many as majorValues
    std::vector<QLineF> minorTicks;  ///< as many as minorValues
    std::vector<QLineF> majorGridLines;
    std::vector<QLineF> minorGridLines;
    std::vector<AxisLabel> labels;    ///< overlap neither each other nor the rectangle's edges
    std::optional<PlacedText> title;  ///< absent when empty or without room
};

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
