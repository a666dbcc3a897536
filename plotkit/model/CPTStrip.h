#pragma once

#include "plotkit/model/CPTStyles.h"

#include <QtCore/QString>

#include <optional>

/// A strip of the plot area, from its left edge to its right one: what a plot space is spread over. Strips one below
/// the other make lanes that share their time axis. A value; any thread.
struct CPTStrip {
    double top = 0, bottom = 1;  ///< shares of the plot area's height, counted from its upper edge
    double headRoom = 0;         ///< points at the upper end that hold the head and no plots
    CPTFill fill{};              ///< beneath grid and plots, without the head room
    std::optional<CPTLineStyle> borderLineStyle{};

    /// In the head room: a title, then, if asked for, a sample and the title of each plot that is shown.
    QString title{};
    bool hasKeys = false;
    CPTTextStyle titleTextStyle{};
    CPTTextStyle keyTextStyle{};

    bool isWhole() const { return top <= 0 && bottom >= 1 && headRoom <= 0; }

    friend bool operator==(const CPTStrip&, const CPTStrip&) = default;
};
