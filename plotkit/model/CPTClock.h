#pragma once

#include <QtCore/QString>
#include <QtCore/QTimeZone>

/// How the hours of a day are written. Usual: as whoever labels has it; Locale: as the user's locale has it.
enum class CPTHourForm { Usual, TwentyFour, Locale };

/// The clock by which times are said: a zone, and how hours are written. A value; any thread.
struct CPTClock {
    QTimeZone zone = {};  ///< invalid: the system's, which may change while we run
    CPTHourForm hours = CPTHourForm::Usual;

    /// The zone, the system's where none is chosen. Never invalid.
    QTimeZone zoneInUse() const { return zone.isValid() ? zone : QTimeZone::systemTimeZone(); }

    friend bool operator==(const CPTClock&, const CPTClock&) = default;
};

namespace plotkit {

/// Seconds east of UTC at a moment, in seconds since 1970-01-01 UTC; of an invalid zone the system's. A moment beyond
/// all calendars, or not a number, answers that of 1970.
int offsetAt(const QTimeZone& zone, double moment);

/// What the zone's clocks show, as seconds since 1970-01-01 counted without changes of clocks, as the moment when they
/// do: of a time shown twice the first one, of one left out that of the change.
double momentOfLocal(const QTimeZone& zone, double local);

/// Whether the clocks show the moment's time of day a second time within a day, or have shown it.
bool isShownTwice(const QTimeZone& zone, double moment);

/// "UTC", "UTC+1", "UTC−3:30".
QString offsetText(int seconds);

}  // namespace plotkit
