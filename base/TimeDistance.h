#pragma once

#include <QtCore/QString>

#include <optional>

/// How far one time lies from another, by the calendar, the wall clock, or the seconds between them.
///
/// Months and days are those of a calendar: a day earlier is the same time on the wall clock, however long that day
/// was. Hours, minutes and seconds are seconds that pass. A value; any thread.
namespace plotix {

struct TimeDistance {
    int months = 0;      ///< years are twelve each
    int days = 0;        ///< weeks are seven each
    double seconds = 0;  ///< never negative, as the others

    bool isZero() const { return months == 0 && days == 0 && seconds == 0; }
    bool isBySecondsAlone() const { return months == 0 && days == 0; }

    friend bool operator==(const TimeDistance&, const TimeDistance&) = default;
};

/// Reads "7d", "2w", "36h", "1y", "3mo", "90min", "45s", and several of them, "1mo 3d"; the units also as English
/// words, "2 weeks". Nothing for anything else, for a distance of nothing, and for more than a thousand years.
std::optional<TimeDistance> timeDistanceFrom(const QString& text);

/// The shortest text that reads back the same: "7d", "1y", "1mo 3d", "36h". Stored: never change.
QString textOf(const TimeDistance& distance);

}  // namespace plotix
