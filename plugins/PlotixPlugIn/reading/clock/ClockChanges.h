#pragma once

#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QTimeZone>

#include <vector>

/// When the clocks of a zone are changed. Values; any thread.
namespace plotix {

struct ClockChange {
    double time = 0;  ///< seconds since 1970-01-01 UTC
    int seconds = 0;  ///< by which clocks are put forward; negative: back

    friend bool operator==(const ClockChange&, const ClockChange&) = default;
};

/// From here on changes are no longer told: they would be a pattern of the calendar, and not what somebody looks for.
inline constexpr double kLongestSpanWithChanges = 400 * 86'400.0;  // seconds

/// The changes of the zone that was asked about last. They are looked up for more than the span asked for, and kept: a
/// graph that is moved asks at every frame.
class KnownClockChanges {
public:
    /// Those within a span, bounds included, in order; changes of a zone's name alone are none. None for longer spans,
    /// and for spans that are not finite.
    std::vector<ClockChange> within(const QTimeZone& zone, const TimeSpan& span);

    /// The distances from UTC that clocks have in a span, seconds east, each once, in order of time; of a long span,
    /// those at its beginning and along its end. Never empty.
    std::vector<int> offsets(const QTimeZone& zone, const TimeSpan& span);

private:
    QTimeZone m_zone;
    TimeSpan m_known{0, 0};  // of the changes below; without length: nothing is known
    std::vector<ClockChange> m_changes;
};

}  // namespace plotix
