#pragma once

#include "hostapp/exchange/LocalTime.h"
#include "hostapp/exchange/TimeText.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace plotix {

/// Reads the times of one column, row by row. Owned by one import; one thread.
class TimeColumnReader {
public:
    TimeColumnReader(TimeLayout layout, LocalTime local);

    /// Seconds since 1970-01-01 UTC; nothing when the text is no time in this layout.
    std::optional<double> read(std::string_view text);

    /// The same of a date whose time of day stands in another column;
    std::optional<double> read(const DateAndTime& time);

    /// The zone where none of its clocks showed the time read last; else null.
    const LocalTime* skippedBy() const { return m_isSkipped ? &m_local : nullptr; }

    /// From now on numbers since 1970 are times between these two alone, in seconds.
    void limitNumbers(double earliest, double latest);

    /// The fast path: takes a number of seconds or milliseconds, or a time whose date and zone are those of the time
    /// read last. Answers what follows it, or null for anything else, which is left to `read`. Its results are those of
    /// `read`. A comma is no decimal mark where it is the delimiter.
    /// Requires: 128 readable bytes from there on, whatever they hold; a delimiter that is no part of any time but
    /// the comma.
    const char* takePlain(const char* cursor, char delimiter, double& seconds);
    /// Tells that the row with this time, as `takePlain` set it, is used.
    void took(double seconds) { m_previous = seconds; }

private:
    struct Day {
        std::int64_t midnight = 0;  ///< seconds from 1970-01-01, by the local clock
        std::optional<int> offset;  ///< see DateAndTime
    };

    static constexpr std::size_t kDateEnd = 11;  // of "2015-02-03T", and of other dates whose time of day begins there

    bool isWithinLimits(double seconds) const { return seconds >= m_earliest && seconds <= m_latest; }
    std::optional<double> readEpoch(std::string_view text) const;
    std::optional<double> readDays(std::string_view text);
    const char* takePlainEpoch(const char* cursor, double& seconds) const;
    const char* takeAsBefore(const char* cursor, char delimiter, double& seconds);
    void remember(std::string_view text, const Day& day);
    std::int64_t utcOf(const Day& day, int secondOfDay);

    TimeLayout m_layout;
    LocalTime m_local;
    std::optional<double> m_previous;
    bool m_isSkipped = false;
    double m_earliest = -std::numeric_limits<double>::infinity();
    double m_latest = std::numeric_limits<double>::infinity();
    // Successive rows mostly differ in the time of day alone. The text around it in the row before, and its meaning:
    bool m_hasDate = false;  // else the row before had another form
    std::array<char, kDateEnd> m_date{};
    std::string m_zone;  // after the seconds and their fraction
    Day m_day;
};

}  // namespace plotix
