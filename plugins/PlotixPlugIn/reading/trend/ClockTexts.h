#pragma once

#include "base/Date.h"
#include "plotkit/model/CPTClock.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <vector>

/// Times by a trend's clock, in words. Free functions; main thread only.
namespace plotix {

/// A moment, seconds since 1970-01-01 UTC, as the clock has it; to the millisecond.
QDateTime momentBy(const CPTClock& clock, double seconds);

QDateTime nowBy(const CPTClock& clock);

/// A format of the toolkit's with the hours of the clock: "h:mm AP" is "HH:mm" by twenty-four hours.
QString formatBy(const CPTClock& clock, QString format);

/// As the host describes dates; where a clock was chosen, the same in its zone, with the zone's short name.
QString momentDescription(const CPTClock& clock, const Date& date);

/// The zone with distances from UTC, seconds east: "Europe/Berlin, UTC+1", "Europe/Berlin, UTC+1 / UTC+2", "UTC".
QString zoneDescription(const QTimeZone& zone, const std::vector<int>& offsets);

}  // namespace plotix
