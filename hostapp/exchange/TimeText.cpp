#include "hostapp/exchange/TimeText.h"

#include "hostapp/exchange/ClockText.h"
#include "hostapp/exchange/TimeWords.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace plotix {

namespace {

constexpr int kSecondsPerDay = 86'400;

int fullYear(int year, std::size_t digits)
{
    if (digits > 2)
        return year;
    return year < 70 ? year + 2000 : year + 1900;
}

bool isYear(int year)
{
    return year >= 1900 && year <= 2100;
}

/// The three numbers behind a date's first one and its separator.
bool readNumericDate(TextCursor& cursor, std::string_view first, DateAndTime& result)
{
    const std::optional<int> second = cursor.takeNumber(1, 2);
    if (!second)
        return false;
    if (first.size() == 4 && cursor.atEnd() && result.separator == '-') {  // 2015-02
        result.yearFirst = true;
        result.date = {numberOf(first), *second, 1};
        return isYear(result.date[0]);
    }
    if (!cursor.take(result.separator))
        return false;
    const std::string_view third = cursor.takeDigits();
    result.yearFirst = first.size() == 4;
    const bool fits = result.yearFirst
                          ? third.size() == 1 || third.size() == 2
                          : (first.size() == 1 || first.size() == 2) && (third.size() == 2 || third.size() == 4);
    if (!fits)
        return false;
    result.date = {numberOf(first), *second, numberOf(third)};
    result.isShort = !result.yearFirst && third.size() == 2;
    if (!result.yearFirst)
        result.date[2] = fullYear(result.date[2], third.size());
    return true;
}

/// What parts a day from the name of a month, and that from the year.
void passOverSeparators(TextCursor& cursor)
{
    while (cursor.peek() == ' ' || cursor.peek() == '-' || cursor.peek() == '/' || cursor.peek() == '.' ||
           cursor.peek() == ',')
        cursor.skip(1);
}

/// "Feb", the month of a date, and the separators around it.
std::optional<int> takeMonth(TextCursor& cursor)
{
    const std::optional<LeadingWord> month = monthAt(cursor.rest());
    if (!month)
        return {};
    cursor.skip(month->length);
    passOverSeparators(cursor);
    return month->value;
}

bool setNamedDate(DateAndTime& result, std::string_view year, int month, int day)
{
    if (year.size() != 4 && year.size() != 2)
        return false;
    result.yearFirst = true;
    result.separator = 'M';
    result.date = {fullYear(numberOf(year), year.size()), month, day};
    return true;
}

/// "3. Februar 2015", "03-FEB-15", "2015-Feb-03", from behind the first number.
bool readDayAndMonth(TextCursor& cursor, std::string_view first, DateAndTime& result)
{
    cursor.takeWord("er ") || cursor.takeWord("st ") || cursor.takeWord("nd ") || cursor.takeWord("rd ") ||
        cursor.takeWord("th ");
    passOverSeparators(cursor);
    const std::optional<int> month = takeMonth(cursor);
    if (!month)
        return false;
    const std::string_view last = cursor.takeDigits();
    if (first.size() == 4)
        return last.size() <= 2 && !last.empty() && setNamedDate(result, first, *month, numberOf(last));
    return first.size() <= 2 && setNamedDate(result, last, *month, numberOf(first));
}

/// "Feb 3, 2015", "February 2015", "Feb 3 14:19:00 CET 2015"; the latter brings its time of day.
bool readMonthAndDay(TextCursor& cursor, DateAndTime& result)
{
    const std::optional<int> month = takeMonth(cursor);
    if (!month)
        return false;
    const std::string_view day = cursor.takeDigits();
    if (day.size() == 4)
        return setNamedDate(result, day, *month, 1) && isYear(numberOf(day));
    if (day.empty() || day.size() > 2)
        return false;
    passOverSeparators(cursor);
    TextCursor ahead = cursor;
    const std::string_view year = ahead.takeDigits();
    if (year.size() == 4) {
        cursor = ahead;
        return setNamedDate(result, year, *month, numberOf(day));
    }
    if (!readTimeOfDay(cursor, result))
        return false;
    cursor.takeBlanks();
    if (const std::optional<LeadingWord> zone = zoneAt(cursor.rest())) {
        result.offset = zone->value;
        cursor.skip(zone->length);
        cursor.takeBlanks();
    }
    const std::string_view last = cursor.takeDigits();
    return last.size() == 4 && cursor.atEnd() && setNamedDate(result, last, *month, numberOf(day));
}

bool readDate(TextCursor& cursor, DateAndTime& result)
{
    const std::string_view first = cursor.takeDigits();
    if (first.empty())
        return readMonthAndDay(cursor, result);
    const bool isCompact = first.size() == 8 && !cursor.atEnd() && cursor.peek() != '.' && cursor.peek() != ',';
    if (isCompact) {
        result.date = {numberOf(first.substr(0, 4)), numberOf(first.substr(4, 2)), numberOf(first.substr(6, 2))};
        result.yearFirst = true;
        result.separator = 'T';
        return isYear(result.date[0]);
    }
    TextCursor behindFirst = cursor;
    result.separator = cursor.peek();
    const bool isNumeric = result.separator == '-' || result.separator == '/' || result.separator == '.';
    if (isNumeric && cursor.take(result.separator) && cursor.peek() >= '0' && cursor.peek() <= '9')
        return readNumericDate(cursor, first, result);
    cursor = behindFirst;
    return readDayAndMonth(cursor, first, result);
}

/// Takes what stands between a date and its time of day.
bool takeBetween(TextCursor& cursor, char separator)
{
    if (cursor.take('T') || cursor.take('t') || cursor.take('_') || (separator != '-' && cursor.take('-')) ||
        ((separator == '/' || separator == 'M') && cursor.take(':')))
        return true;
    if (!cursor.take(',') && cursor.peek() != ' ')
        return false;
    cursor.takeBlanks();
    if (cursor.takeWord("um ") || cursor.take('@') || cursor.takeWord("at ") || cursor.take('-'))
        cursor.takeBlanks();
    return true;
}

std::optional<DateAndTime> splitFromDate(std::string_view text)
{
    TextCursor cursor(text);
    DateAndTime result;
    if (!readDate(cursor, result))
        return {};
    const bool isWhole = result.hasClock || cursor.atEnd();
    if (isWhole)
        return result;
    if (isEndOfSpan(TextCursor(cursor).rest().substr(cursor.peek() == ' ' ? 1 : 0)) && result.separator != 'T')
        return result;
    if (!takeBetween(cursor, result.separator))
        return {};
    const TextCursor clock = cursor;
    bool isTime = readTimeOfDay(cursor, result);
    if (!isTime && result.separator == 'T') {
        cursor = clock;
        isTime = readCompactTime(cursor, result);
    }
    return isTime && readZone(cursor, result) ? std::optional(result) : std::nullopt;
}

}  // namespace

bool isEpoch(TimeLayout layout)
{
    return layout == TimeLayout::EpochSeconds || layout == TimeLayout::EpochMilliseconds ||
           layout == TimeLayout::EpochMicroseconds || layout == TimeLayout::EpochNanoseconds;
}

std::optional<DateAndTime> splitDateAndTime(std::string_view text)
{
    if (text.size() < 6 || text.size() > 80)
        return {};
    if (const std::optional<DateAndTime> result = splitFromDate(text))
        return result;
    const std::optional<LeadingWord> weekday = weekdayAt(text);
    if (!weekday)
        return {};
    TextCursor cursor(text.substr(weekday->length));
    passOverSeparators(cursor);
    return splitFromDate(cursor.rest());
}

std::optional<DateAndTime> splitCompactDigits(std::string_view text)
{
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view digits = text.substr(0, point);
    const bool isLong =
        digits.size() == 6 || digits.size() == 8 || digits.size() == 10 || digits.size() == 12 || digits.size() == 14;
    if (!isLong || !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return {};
    const auto part = [&digits](std::size_t at) { return at < digits.size() ? numberOf(digits.substr(at, 2)) : 0; };
    DateAndTime result;
    result.yearFirst = true;
    result.date = {numberOf(digits.substr(0, 4)), part(4), digits.size() > 6 ? part(6) : 1};
    const bool isDate = isYear(result.date[0]) && civilSeconds(result.date[0], result.date[1], result.date[2]);
    if (!isDate || !setTimeOfDay(result, part(8), part(10), part(12)))
        return {};
    result.hasClock = digits.size() > 8;
    if (point < text.size()) {
        const std::string_view fraction = text.substr(point + 1);
        const bool isFraction = digits.size() == 14 && !fraction.empty() &&
                                fraction.find_first_not_of("0123456789") == std::string_view::npos;
        const bool isNothing = fraction.find_first_not_of('0') == std::string_view::npos;  // 20240102.0
        if (!isFraction && !isNothing)
            return {};
        if (isFraction)
            result.fraction = fraction;
    }
    return result;
}

std::optional<std::int64_t> civilSeconds(int year, int month, int day)
{
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok())
        return {};
    return std::int64_t{std::chrono::sys_days(date).time_since_epoch().count()} * kSecondsPerDay;
}

std::optional<std::int64_t> midnightOf(const DateAndTime& time, TimeLayout layout)
{
    const auto& [one, two, three] = time.date;
    if (time.yearFirst != (layout == TimeLayout::YearFirst || layout == TimeLayout::CompactDigits))
        return {};
    if (time.yearFirst)
        return civilSeconds(one, two, three);
    if (layout == TimeLayout::ShortYearFirst)
        return time.isShort ? civilSeconds(fullYear(one, 2), two, three % 100) : std::nullopt;
    return layout == TimeLayout::DayFirst ? civilSeconds(three, two, one) : civilSeconds(three, one, two);
}

}  // namespace plotix
