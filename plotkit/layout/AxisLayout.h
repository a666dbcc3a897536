#pragma once

#include "plotkit/model/CPTStyles.h"

#include <QtCore/QLineF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtCore/QString>

#include <functional>
#include <optional>
#include <vector>

/// What laying out an axis answers: lines, labels and title as plain geometry. Values; any thread.
///
/// Coordinates are points, y downward, in the picture's own coordinates.
namespace plotkit {

/// The size in points of a text, which may have several lines, in a style. Must answer the same for the same input.
using TextMeasure = std::function<QSizeF(const QString& text, const CPTTextStyle& style)>;

/// A text and the box it fills. Lines are centred in the box, or set flush towards the axis for labels of a y axis.
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
    std::optional<QLineF> line;       ///< absent where the axis stands outside the plot area
    std::vector<double> majorValues;  ///< ascending along the axis
    std::vector<double> minorValues;
    std::vector<QLineF> majorTicks;  ///< as many as majorValues
    std::vector<QLineF> minorTicks;  ///< as many as minorValues
    std::vector<QLineF> majorGridLines;
    std::vector<QLineF> minorGridLines;
    std::vector<AxisLabel> labels;    ///< overlap neither each other nor the rectangle's edges
    std::optional<PlacedText> title;  ///< absent when empty or without room
};

}  // namespace plotkit
