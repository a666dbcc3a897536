#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QString>

#include <optional>

/// Reading a date and time as people type them.
///
/// Understood are the locale's own form, with or without a year, a time or seconds ("1.2.2024 14:30", "1.2.", "2/1"
/// where the month comes first, "2:30 pm"), months by name ("3 Feb 2024"), ISO 8601 with and without a zone, a time
/// alone, words for now and for the days around today, and days of the week, which are the latest ones before tomorrow
/// ("Tue 14:35"; "last Tuesday" is before today), and how long ago it was: "2 days ago" and "2 days ago 14:30" are of
/// that day, "3 hours ago" and "-2d" as long before now. What is missing comes from the date shown before: the year
/// of a day, the day of a time. A date without a time is the start of that day. Of a time that clocks show twice the
/// first one is meant, unless the second one was shown; one that they leave out is when they are changed. Pure; any
/// thread.
namespace plotix {

/// The words a language has for days, in lower case.
struct DayWords {
    QString now, today, yesterday, tomorrow;
    QString last = {};   ///< before a day of the week; a word that begins so counts
    QString ago = {};    ///< around how long: "%1 ago"
    QString units = {};  ///< the names of year, month, week, day, hour, minute, second: "year years; month months; …"
};

struct TypedDateSurroundings {
    QLocale locale;
    DayWords words;
    QDateTime shown;  ///< what the text replaces; its zone is that of the answer
    QDateTime now;    ///< in the same zone: its date is today
};

struct TypedDate {
    QDateTime moment;
    bool hasTime = false;  ///< a time was written, too

    friend bool operator==(const TypedDate&, const TypedDate&) = default;
};

/// Nothing when the text is not understood as a whole, or names a day or time that is not in the calendar.
std::optional<TypedDate> typedDate(const QString& text, const TypedDateSurroundings& surroundings);

/// The text reads as a date, but of a day that the calendar does not have, such as "31 Feb".
bool namesNoSuchDate(const QString& text, const TypedDateSurroundings& surroundings);

/// Which end of a span a text stands for.
enum class SpanEnd { From, To };

/// The end's own part of a span copied from elsewhere, two ISO dates with a slash between them
/// ("2013-02-06T00:00Z/2013-02-13"); any other text as it is.
QString endOfTypedSpan(const QString& text, SpanEnd end);

}  // namespace plotix
