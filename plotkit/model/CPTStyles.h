#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>

#include <optional>
#include <vector>

/// Styles as plain values: what a line, a text, a fill looks like. Any thread. Lengths are in points.

using CPTColor = QColor;  ///< an invalid colour draws nothing

enum class CPTLineCap { Butt, Round, Square };
enum class CPTLineJoin { Miter, Round, Bevel };

struct CPTLineStyle {
    double width = 1.0;
    CPTColor color = CPTColor(Qt::black);
    CPTLineCap cap = CPTLineCap::Butt;
    CPTLineJoin join = CPTLineJoin::Miter;
    /// Lengths along the line that are drawn and left out in turn, as they are seen: caps lie within what is drawn.
    /// A solid line where there are none, an odd number, or one that is negative or no number, or where all are zero.
    std::vector<double> dashPattern = {};

    friend bool operator==(const CPTLineStyle&, const CPTLineStyle&) = default;
};

struct CPTTextStyle {
    QString fontName = QStringLiteral("Helvetica");
    double fontSize = 12.0;
    CPTColor color = CPTColor(Qt::black);

    friend bool operator==(const CPTTextStyle&, const CPTTextStyle&) = default;
};

/// Nothing, one colour, or a vertical gradient from bottom (position 0) to top (1).
struct CPTFill {
    struct Stop {
        double position;
        CPTColor color;
        friend bool operator==(const Stop&, const Stop&) = default;
    };
    std::vector<Stop> stops;  ///< none: no fill; one: plain colour; more: gradient

    static CPTFill none() { return {}; }
    static CPTFill withColor(const CPTColor& color) { return {{{0.0, color}}}; }

    friend bool operator==(const CPTFill&, const CPTFill&) = default;
};

/// Holds an axis at a fixed distance from an edge of the plot area: its low one, or its high one where an upper offset
/// is given. At the high edge the axis is mirrored: its labels and title stand on that side.
struct CPTConstraints {
    double lowerOffset = 0.0;             ///< inward from the left or lower edge
    std::optional<double> upperOffset{};  ///< inward from the right or upper edge
    friend bool operator==(const CPTConstraints&, const CPTConstraints&) = default;
};

struct CPTPadding {
    double top = 0, left = 0, bottom = 0, right = 0;
    friend bool operator==(const CPTPadding&, const CPTPadding&) = default;
};
