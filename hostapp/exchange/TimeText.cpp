#include "hostapp/exchange/TimeText.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace plotix {

namespace {

constexpr int kSecondsPerDay = 86'400;

/// Takes characters from the front of a text.
class Cursor {
public:
    explicit Cursor(std::string_view text) : m_text(text) {}

    bool atEnd() const { return m_text.empty(); }
    char peek() const { return m_text.empty() ? '\0' : m_text.front(); }

    bool take(char character)
    {
        if (peek() != character)
            return false;
        m_text.remove_prefix(1);
        return true;
    }

    void takeBlanks()
    {
        while (peek() == ' ')
            m_text.remove_prefix(1);
    }

    bool takeWord(std::string_view lowerCase)
    {
        if (m_text.size() < lowerCase.size() ||
            !std::equal(lowerCase.begin(), lowerCase.end(), m_text.begin(),
                        [](char lower, char character) { return (character | 0x20) == lower || character == lower; }))
            return false;
        m_text.remove_prefix(lowerCase.size());
        return true;
    }

    std::string_view takeDigits()
    {
        std::size_t count = 0;
        while (count < m_text.size() && m_text[count] >= '0' && m_text[count] <= '9')
            ++count;
        const std::string_view digits = m_text.substr(0, count);
        m_text.remove_prefix(count);
        return digits;
    }

    /// A number of `fewest` to `most` digits.
    std::optional<int> takeNumber(std::size_t fewest, std::size_t most)
    {
        const std::string_view digits = takeDigits();
        if (digits.size() < fewest || digits.size() > most)
            return {};
        int number = 0;
        for (const char digit : digits)
            number = number * 10 + (digit - '0');
        return number;
    }

private:
    std::string_view m_text;
};

int number(std::string_view digits)
{
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

int fullYear(int year, std::size_t digits)
{
    if (digits > 2)
        return year;
    return year < 70 ? year + 2000 : year + 1900;
}

bool readDate(Cursor& cursor, DateAndTime& result)
{
    const std::string_view first = cursor.takeDigits();
    if (first.size() == 8 && (cursor.peek() == 'T' || cursor.peek() == 't')) {
        result.date = {number(first.substr(0, 4)), number(first.substr(4, 2)), number(first.substr(6, 2))};
        result.yearFirst = true;
        result.separator = 'T';
        return true;
    }
    result.separator = cursor.peek();
    if (result.separator != '-' && result.separator != '/' && result.separator != '.')
        return false;
    cursor.take(result.separator);
    const std::optional<int> second = cursor.takeNumber(1, 2);
    if (!second || !cursor.take(result.separator))
        return false;
    const std::string_view third = cursor.takeDigits();
    result.yearFirst = first.size() == 4;
    const bool fits = result.yearFirst
                          ? third.size() == 1 || third.size() == 2
                          : (first.size() == 1 || first.size() == 2) && (third.size() == 2 || third.size() == 4);
    if (!fits)
        return false;
    result.date = {number(first), *second, number(third)};
    if (!result.yearFirst)
        result.date[2] = fullYear(result.date[2], third.size());
    return true;
}

/// "pm" turns 1 … 11 into 13 … 23; 12 am is midnight. False for an hour that no clock with am and pm shows.
bool readHalfOfDay(Cursor& cursor, int& hour, bool& found)
{
    cursor.takeBlanks();
    const bool isMorning = cursor.takeWord("am") || cursor.takeWord("a.m.");
    const bool isAfternoon = !isMorning && (cursor.takeWord("pm") || cursor.takeWord("p.m."));
    found = isMorning || isAfternoon;
    if (!found)
        return true;
    if (hour < 1 || hour > 12)
        return false;
    hour = hour % 12 + (isAfternoon ? 12 : 0);
    return true;
}

bool setTimeOfDay(DateAndTime& result, int hour, int minute, int second)
{
    const bool isNextMidnight = hour == 24 && minute == 0 && second == 0;
    if ((hour > 23 && !isNextMidnight) || minute > 59 || second > 60)
        return false;
    result.secondOfDay = hour * 3600 + minute * 60 + second;
    return true;
}

/// hhmm or hhmmss behind a compact date.
bool readCompactTime(Cursor& cursor, DateAndTime& result)
{
    const std::string_view digits = cursor.takeDigits();
    if (digits.size() != 4 && digits.size() != 6)
        return false;
    if (digits.size() == 6 && (cursor.take('.') || cursor.take(',')))
        result.fraction = cursor.takeDigits();
    return setTimeOfDay(result, number(digits.substr(0, 2)), number(digits.substr(2, 2)),
                        digits.size() == 6 ? number(digits.substr(4, 2)) : 0);
}

bool readTimeOfDay(Cursor& cursor, DateAndTime& result)
{
    std::optional<int> hour = cursor.takeNumber(1, 2);
    if (!hour)
        return false;
    int minute = 0, second = 0;
    const bool hasMinutes = cursor.take(':');
    if (hasMinutes) {
        const std::optional<int> minutes = cursor.takeNumber(2, 2);
        if (!minutes)
            return false;
        minute = *minutes;
        if (cursor.take(':')) {
            const std::optional<int> seconds = cursor.takeNumber(2, 2);
            if (!seconds)
                return false;
            second = *seconds;
            if (cursor.take('.') || cursor.take(',')) {
                result.fraction = cursor.takeDigits();
                if (result.fraction.empty())
                    return false;
            }
        }
    }
    bool hasHalf = false;
    if (!readHalfOfDay(cursor, *hour, hasHalf) || (!hasMinutes && !hasHalf))
        return false;
    return setTimeOfDay(result, *hour, minute, second);
}

bool readZone(Cursor& cursor, DateAndTime& result)
{
    cursor.takeBlanks();
    if (cursor.atEnd())
        return true;
    const bool isNamed = cursor.takeWord("z") || cursor.takeWord("utc") || cursor.takeWord("gmt");
    if (isNamed && cursor.atEnd()) {
        result.offset = 0;
        return true;
    }
    const bool isWest = cursor.take('-');
    if (!isWest && !cursor.take('+'))
        return false;
    const std::string_view digits = cursor.takeDigits();
    if (digits.empty() || digits.size() > 4 || digits.size() == 3)
        return false;
    const int hours = number(digits.substr(0, 2));
    int minutes = digits.size() == 4 ? number(digits.substr(2, 2)) : 0;
    if (digits.size() == 2 && cursor.take(':')) {
        const std::optional<int> given = cursor.takeNumber(2, 2);
        if (!given)
            return false;
        minutes = *given;
    }
    if (hours > 18 || minutes > 59 || !cursor.atEnd())
        return false;
    result.offset = (isWest ? -1 : 1) * (hours * 3600 + minutes * 60);
    return true;
}

}  // namespace

std::optional<DateAndTime> splitDateAndTime(std::string_view text)
{
    Cursor cursor(text);
    DateAndTime result;
    if (!readDate(cursor, result))
        return {};
    if (cursor.atEnd())
        return result;
    if (cursor.take('T') || cursor.take('t')) {
        const bool isTime = result.separator == 'T' ? readCompactTime(cursor, result) : readTimeOfDay(cursor, result);
        return isTime && readZone(cursor, result) ? std::optional(result) : std::nullopt;
    }
    if (!cursor.take(',') && cursor.peek() != ' ')
        return {};
    cursor.takeBlanks();
    return readTimeOfDay(cursor, result) && readZone(cursor, result) ? std::optional(result) : std::nullopt;
}

std::optional<std::int64_t> civilSeconds(int year, int month, int day)
{
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok())
        return {};
    return std::int64_t{std::chrono::sys_days(date).time_since_epoch().count()} * kSecondsPerDay;
}

void DateOrderEvidence::add(const DateAndTime& date)
{
    if (date.yearFirst)
        return;
    dots |= date.separator == '.';
    dayFirst |= date.date[0] > 12;
    monthFirst |= date.date[1] > 12;
    undecided |= date.date[0] <= 12 && date.date[1] <= 12 && date.date[0] != date.date[1];
}

}  // namespace plotix
