#pragma once

#include "plotkit/layout/AxisMapping.h"
#include "plotkit/layout/MajorTick.h"
#include "plotkit/model/CPTClock.h"

#include <optional>
#include <vector>

/// Ticks at round local times: a table of steps from milliseconds to centuries, and where they stand.
///
/// Values are seconds since 1970-01-01 UTC. Steps below a month are multiples of local seconds, so that a tick stands
/// at midnight on every day of the year; weeks begin on Monday. Where clocks are put forward or back ticks keep their
/// times of day, and none stands twice. An invalid zone is the local one, the only outside input; any thread.
namespace plotkit {

/// The finest row whose ticks stand at least this far apart; nothing: there is none.
std::optional<std::size_t> calendarRowFrom(double leastSeconds);

/// The next coarser row; nothing after the last.
std::optional<std::size_t> coarserCalendarRow(std::size_t row);

/// About how far apart a row's ticks stand, in seconds: a month as 30 days, a year as 365.
double stepOfCalendarRow(std::size_t row);

/// Whether the range lies where calendars are known, and has few enough ticks of the row to count.
bool hasCalendar(std::size_t row, const AxisMapping& mapping);

/// The ticks within the mapping's range, ascending; minors only between the majors. Requires: hasCalendar().
std::vector<MajorTick> calendarMajors(std::size_t row, const AxisMapping& mapping, const QTimeZone& zone = {});
std::vector<double> calendarMinors(std::size_t row, const AxisMapping& mapping, const QTimeZone& zone = {});

/// About how far apart the minors stand, in seconds; 0 for a row without.
double minorStepOfCalendarRow(std::size_t row);

}  // namespace plotkit
