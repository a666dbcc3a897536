#pragma once

#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QTimeZone>

#include <vector>

/// When the clocks of a zone are changed. Values and a free function; any thread.
namespace plotix {

struct ClockChange {
    double time = 0;  ///< seconds since 1970-01-01 UTC
    int seconds = 0;  ///< by which clocks are put forward; negative: back

    friend bool operator==(const ClockChange&, const ClockChange&) = default;
};

/// From here on changes are no longer told: they would be a pattern of the calendar, and not what somebody looks for.
inline constexpr double kLongestSpanWithChanges = 400 * 86'400.0;  // seconds

/// Those within a span, bounds included, in order; changes of a zone's name alone are none. None for longer spans, and
/// for spans that are not finite.
std::vector<ClockChange> clockChanges(const QTimeZone& zone, const TimeSpan& span);

}  // namespace plotix
