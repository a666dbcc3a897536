#pragma once

#include "plotkit/model/CPTPlotLooks.h"
#include "plugins/PlotixPlugIn/reading/looks/LineDash.h"

#include <QtCore/QVariant>
#include <QtGui/QColor>

#include <optional>

/// How one line of a trend was chosen to look. What was not chosen is absent and stays as the trend has it. A value;
/// any thread. Lengths are in points.
namespace plotix {

struct LineFill {
    enum class Kind { None, ToZero, ToLine };
    Kind kind = Kind::None;
    QString line{};  ///< the property's key, for ToLine

    friend bool operator==(const LineFill&, const LineFill&) = default;
};

struct LineLook {
    std::optional<CPTScatterPlotInterpolation> interpolation{};
    std::optional<double> width{};
    std::optional<LineDash> dash{};
    std::optional<QColor> color{};
    std::optional<double> pointSize{};
    std::optional<LineFill> fill{};
    std::optional<QColor> fillColor{};  ///< else the line's, faint

    bool isEmpty() const { return *this == LineLook(); }
    friend bool operator==(const LineLook&, const LineLook&) = default;
};

constexpr double kThinnestLine = 0.25, kWidestLine = 20, kLargestPoint = 20;

/// Only what was chosen, by the names it is archived by. Stored: never change.
QVariantMap dictionaryFromLineLook(const LineLook& look);

/// Unknown names, values of another kind, and lengths that no line has are passed over.
LineLook lineLookFromDictionary(const QVariantMap& dictionary);

}  // namespace plotix
