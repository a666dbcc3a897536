#pragma once

#include "plotkit/model/CPTClock.h"
#include "plugins/PlotixPlugIn/reading/comparing/EarlierTimes.h"

#include <QtCore/QString>

#include <optional>

/// With what the lines of a trend are compared: the same so long before, or a span of times laid over another. A value;
/// main thread only, for its name.
namespace plotix {

struct Comparison {
    TimeDistance distance;         ///< zero where a span is laid
    std::optional<TimeSpan> span;  ///< times that are laid where `at` is
    double at = 0;                 ///< where the span begins then

    friend bool operator==(const Comparison&, const Comparison&) = default;
};

/// "7d", or "2013-07-01T00:00:00Z/2013-07-08T00:00:00Z@2013-08-05T00:00:00Z". Stored, and typed: never change.
QString textOf(const Comparison& comparison);
/// Nothing for a text that is neither, for a span without length, and for one laid where it is.
std::optional<Comparison> comparisonFrom(const QString& text);

/// "a week earlier", "36 h earlier", "from Mon, 1 Jul 2013, 00:00".
QString nameOf(const Comparison& comparison, const CPTClock& clock = {});

/// Which times stand beside the present ones.
std::vector<EarlierStretch> stretchesOf(const Comparison& comparison, const TimeSpan& present, const QTimeZone& zone);

}  // namespace plotix
