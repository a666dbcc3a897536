#pragma once

#include <QtCore/QTimeZone>

#include <array>

/// How far apart the ticks of the time axis stand and how they are labelled.
///
/// Pure functions and one table; the only outside input is the local zone. Spans and intervals are seconds. Any thread.
namespace plotix {

struct TimeTickRow {
    double spanBelow;          ///< the row serves spans strictly below this; the last row has no bound
    int majorInterval;         ///< seconds
    int minorTicks;            ///< between two majors
    const char* labelPattern;  ///< Unicode date pattern; a line break makes two-line labels
};

inline constexpr int kTimeTickRowCount = 12;

/// The rows, by rising bound.
const std::array<TimeTickRow, kTimeTickRowCount>& timeTickTable();

/// Cuts a span down to whole minutes. A negative span stays negative: −90 becomes −60. A NaN or infinity answers NaN.
double wholeMinutes(double span);

/// The row for a span, which is cut down to whole minutes first. Negative spans take the first row, a NaN the last.
const TimeTickRow& timeTicksForSpan(double span);

/// Where ticks count from, so that multiples of the interval fall on local midnight: seconds since 1970-01-01 UTC of
/// local midnight of 1970-01-01, with the zone's offset at `moment`; an invalid zone is the local one. A NaN or a
/// moment beyond all calendars answers the offset at the epoch.
double labelingOriginForLocalMidnight(double moment, const QTimeZone& zone = {});

/// A quarter of an hour up to an hour, three hours up to a day, a seventh up to a week, else a quarter of the span.
double majorIntervalForTimeSpan(double span);

/// Minor ticks per interval for a span. Falls and rises again with the span.
double minorIntervalForTimeSpan(double span);

}  // namespace plotix
