#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// Reads times as text files have them. Any thread.
///
///   2015-02-03T14:19:00Z   2015-02-03 14:19:00.25+01:00   20150203T141900Z   2015/2/3      year first
///   3.2.2015 14:19         3/2/2015 2:19:00 pm            03-02-15, 14:19                  day or month first
///   3. Februar 2015 14:19  Feb 3, 2015 2:19 PM            03-FEB-15          3 févr. 2015  months by name
///   Tue, 3 Feb 2015 14:19:00 +0100                        Tue Feb  3 14:19:00 CET 2015
///   1422973140             1422973140250                  …ms, …µs, …ns                    since 1970
///   201502031419           20150203   2015020314          42038.59653                      digits; days since 1900
/// Without Z, an offset or a zone's name a time is local. Two-digit years lie in 1970 … 2069. 24:00 is the next
/// midnight, and a leap second the next minute. Fractions are read exactly: the double nearest to the digits. Of
/// "14:00 - 14:15" the beginning counts. Free functions are pure.
namespace plotix {

enum class TimeLayout {
    YearFirst,  ///< or a month by name
    DayFirst,
    MonthFirst,
    ShortYearFirst,  ///< 15-02-03
    EpochSeconds,
    EpochMilliseconds,
    EpochMicroseconds,
    EpochNanoseconds,
    CompactDigits,   ///< yyyymm, yyyymmdd, and then hh, hhmm, hhmmss
    SpreadsheetDays  ///< since 1899-12-30, as spreadsheets count
};

/// Whether the layout is a number with a decimal point.
bool isEpoch(TimeLayout layout);

/// A date's three numbers before it is decided which is the day, and the time of day after them.
struct DateAndTime {
    std::array<int, 3> date{};  ///< in the order of the text; year, month, day where `yearFirst`
    bool yearFirst = false;     ///< the order is known; else the year comes last
    bool isShort = false;       ///< three numbers of two digits at most: the year may also come first
    bool hasClock = false;      ///< a time of day is there
    char separator = '-';       ///< between the numbers of the date; 'T' for the compact form, 'M' for month names
    int secondOfDay = 0;        ///< 0 … 86,400
    std::string_view fraction;  ///< digits after the decimal mark of the seconds
    std::optional<int> offset;  ///< seconds east of UTC; absent: local
};

/// Nothing when the text is no date.
std::optional<DateAndTime> splitDateAndTime(std::string_view text);

/// The time of day alone, with its zone if it has one: "14:19:00.25", "2:19 pm", "14h19", "14:00 - 14:15".
std::optional<DateAndTime> splitClock(std::string_view text);

/// What a column of numbers beside a date says, all of it the same: without leading zeros 15 is an hour, 00:15 or
/// 00:00:15.
enum class ClockDigits { Hours, HoursMinutes, HoursMinutesSeconds };

/// The same of such a number; hours are 0 … 24.
std::optional<DateAndTime> splitClockDigits(std::string_view text, ClockDigits digits);

/// The layout CompactDigits. Nothing for a date outside 1900 … 2100, or one that does not exist.
std::optional<DateAndTime> splitCompactDigits(std::string_view text);

/// Seconds from 1970-01-01 to that midnight; nothing for a date that does not exist.
std::optional<std::int64_t> civilSeconds(int year, int month, int day);

/// Midnight of a date read in this layout; nothing where the date does not go with it.
std::optional<std::int64_t> midnightOf(const DateAndTime& date, TimeLayout layout);

}  // namespace plotix
