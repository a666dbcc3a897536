#include "hostapp/exchange/ClockText.h"

#include "hostapp/exchange/TimeWords.h"

namespace plotix {

namespace {

/// "pm" turns 1 … 11 into 13 … 23; 12 am is midnight. False for an hour that no clock with am and pm shows.
bool readHalfOfDay(TextCursor& cursor, int& hour, bool& found)
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

/// The seconds and their fraction, behind the mark after the minutes.
bool readSeconds(TextCursor& cursor, char mark, int& second, std::string_view& fraction)
{
    const std::optional<int> seconds = cursor.takeNumber(2, 2);
    if (!seconds)
        return false;
    second = *seconds;
    if (cursor.take('.') || cursor.take(',') || (mark == ':' && cursor.take(':'))) {
        fraction = cursor.takeDigits();
        return !fraction.empty();
    }
    return true;
}

/// "+01:00", "-5", "+0530" at the front.
std::optional<int> takeOffset(TextCursor& cursor)
{
    const bool isWest = cursor.take('-');
    if (!isWest && !cursor.take('+'))
        return {};
    const std::string_view digits = cursor.takeDigits();
    if (digits.empty() || digits.size() > 4 || digits.size() == 3)
        return {};
    const int hours = numberOf(digits.substr(0, 2));
    int minutes = digits.size() == 4 ? numberOf(digits.substr(2, 2)) : 0;
    if (digits.size() <= 2 && cursor.take(':')) {
        const std::optional<int> given = cursor.takeNumber(2, 2);
        if (!given)
            return {};
        minutes = *given;
    }
    if (hours > 18 || minutes > 59)
        return {};
    return (isWest ? -1 : 1) * (hours * 3600 + minutes * 60);
}

/// Words behind a time that add nothing: "Uhr", a zone's long name in parentheses or brackets.
void passOverRemarks(TextCursor& cursor)
{
    cursor.takeBlanks();
    if (cursor.takeWord("uhr"))
        cursor.takeBlanks();
    const std::string_view rest = cursor.rest();
    const bool isInBrackets =
        rest.size() > 1 && ((rest.front() == '(' && rest.back() == ')') || (rest.front() == '[' && rest.back() == ']'));
    if (isInBrackets)
        cursor.skip(rest.size());
}

}  // namespace

bool setTimeOfDay(DateAndTime& result, int hour, int minute, int second)
{
    const bool isNextMidnight = hour == 24 && minute == 0 && second == 0;
    if ((hour > 23 && !isNextMidnight) || minute > 59 || second > 60)
        return false;
    result.secondOfDay = hour * 3600 + minute * 60 + second;
    result.hasClock = true;
    return true;
}

bool readCompactTime(TextCursor& cursor, DateAndTime& result)
{
    const std::string_view digits = cursor.takeDigits();
    if (digits.size() != 4 && digits.size() != 6)
        return false;
    if (digits.size() == 6 && (cursor.take('.') || cursor.take(',')))
        result.fraction = cursor.takeDigits();
    return setTimeOfDay(result, numberOf(digits.substr(0, 2)), numberOf(digits.substr(2, 2)),
                        digits.size() == 6 ? numberOf(digits.substr(4, 2)) : 0);
}

bool readTimeOfDay(TextCursor& cursor, DateAndTime& result)
{
    std::optional<int> hour = cursor.takeNumber(1, 2);
    if (!hour)
        return false;
    int minute = 0, second = 0;
    char mark = '\0';
    for (const char possible : {':', '.', 'h', 'H'})
        if (mark == '\0' && cursor.take(possible))
            mark = possible;
    if (mark != '\0') {
        const std::optional<int> minutes = cursor.takeNumber(2, 2);
        if (!minutes && mark != 'h' && mark != 'H')
            return false;
        minute = minutes.value_or(0);
        if ((mark == ':' || mark == '.') && cursor.take(mark) && !readSeconds(cursor, mark, second, result.fraction))
            return false;
    }
    bool hasHalf = false;
    if (!readHalfOfDay(cursor, *hour, hasHalf) || (mark == '\0' && !hasHalf))
        return false;
    return setTimeOfDay(result, *hour, minute, second);
}

bool isEndOfSpan(std::string_view rest)
{
    TextCursor cursor(rest);
    const bool isApart = cursor.take('-') || cursor.takeWord("\xE2\x80\x93") || cursor.takeWord("bis ") ||
                         cursor.takeWord("to ") || cursor.take('/');
    cursor.takeBlanks();
    return isApart && (splitClock(cursor.rest()) || splitDateAndTime(cursor.rest()));
}

bool readZone(TextCursor& cursor, DateAndTime& result)
{
    cursor.takeBlanks();
    if (cursor.takeWord("uhr"))
        cursor.takeBlanks();
    if (cursor.atEnd())
        return true;
    if (const std::optional<LeadingWord> zone = zoneAt(cursor.rest())) {
        cursor.skip(zone->length);
        const bool mayHaveOffset = zone->value == 0;  // UTC+1
        const TextCursor before = cursor;
        const std::optional<int> more = mayHaveOffset ? takeOffset(cursor) : std::nullopt;
        if (!more)
            cursor = before;
        result.offset = zone->value + more.value_or(0);
        passOverRemarks(cursor);
        return cursor.atEnd() || isEndOfSpan(cursor.rest());
    }
    const TextCursor before = cursor;
    if (const std::optional<int> offset = takeOffset(cursor)) {
        passOverRemarks(cursor);
        if (cursor.atEnd()) {
            result.offset = offset;
            return true;
        }
    }
    return isEndOfSpan(before.rest());
}

std::optional<DateAndTime> splitClock(std::string_view text)
{
    TextCursor cursor(text);
    DateAndTime result;
    return readTimeOfDay(cursor, result) && readZone(cursor, result) ? std::optional(result) : std::nullopt;
}

std::optional<DateAndTime> splitClockDigits(std::string_view text, ClockDigits digits)
{
    const std::size_t longest = digits == ClockDigits::Hours ? 2 : digits == ClockDigits::HoursMinutes ? 4 : 6;
    const bool isDigits = !text.empty() && text.size() <= longest &&
                          std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!isDigits)
        return {};
    const int value = numberOf(text);
    DateAndTime result;
    const bool isSet = digits == ClockDigits::Hours ? setTimeOfDay(result, value, 0, 0)
                       : digits == ClockDigits::HoursMinutes
                           ? setTimeOfDay(result, value / 100, value % 100, 0)
                           : setTimeOfDay(result, value / 10'000, value / 100 % 100, value % 100);
    return isSet ? std::optional(result) : std::nullopt;
}

}  // namespace plotix
