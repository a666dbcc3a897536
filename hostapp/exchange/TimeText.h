#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// Reads times as text files have them. Any thread.
///
///   2015-02-03T14:19:00Z   2015-02-03 14:19:00.25+01:00   20150203T141900Z   2015/2/3      year first
///   3.2.2015 14:19         3/2/2015 2:19:00 pm            03-02-15, 14:19                  day or month first
///   1422973140             1422973140250                                                   seconds, milliseconds
/// Without Z or an offset a time is local. Two-digit years lie in 1970 … 2069. 24:00 is the next midnight, and a leap
/// second the next minute. Fractions are read exactly: the double nearest to the digits. Free functions are pure.
namespace plotix {

enum class TimeLayout { YearFirst, DayFirst, MonthFirst, EpochSeconds, EpochMilliseconds };

/// A date's three numbers before it is decided which is the day, and the time of day after them.
struct DateAndTime {
    std::array<int, 3> date{};  ///< in the order of the text
    bool yearFirst = false;     ///< else the year comes last
    char separator = '-';       ///< between the numbers of the date; 'T' for the compact form
    int secondOfDay = 0;        ///< 0 … 86,400
    std::string_view fraction;  ///< digits after the decimal mark of the seconds
    std::optional<int> offset;  ///< seconds east of UTC; absent: local
};

/// Nothing when the text is no date.
std::optional<DateAndTime> splitDateAndTime(std::string_view text);

/// Seconds from 1970-01-01 to that midnight; nothing for a date that does not exist.
std::optional<std::int64_t> civilSeconds(int year, int month, int day);

/// What the dates of a whole file say about the order of day and month.
struct DateOrderEvidence {
    bool dayFirst = false;    ///< some first number is more than 12
    bool monthFirst = false;  ///< some second number is more than 12
    bool undecided = false;   ///< some date can be read both ways
    bool dots = false;        ///< dates have dots, which nobody writes with the month first

    void add(const DateAndTime& date);
};

}  // namespace plotix
