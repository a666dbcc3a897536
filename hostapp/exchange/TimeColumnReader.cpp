#include "hostapp/exchange/TimeColumnReader.h"

#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/PlainNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace plotix {

namespace {

constexpr std::size_t kMostExactDecimals = 6;  // behind seconds of any year they fit 63 bits
constexpr std::size_t kClockEnd = 19;          // of "2015-02-03T14:19:00" and all forms as long

/// whole + fraction / 10^decimals as the nearest double. False when a plain division does not suffice.
/// Requires: at most kMostExactDecimals decimals.
bool addFraction(std::int64_t whole, std::int64_t fraction, std::size_t decimals, double& seconds)
{
    std::int64_t digits = whole;
    for (std::size_t count = 0; count < decimals; ++count)
        digits *= 10;
    return divideExactly(digits + fraction, decimals, seconds);
}

/// whole + 0.fraction as the nearest double: the digits are put together first, so that nothing is rounded twice.
double exactSeconds(std::int64_t whole, std::string_view fraction)
{
    if (fraction.find_first_not_of('0') == std::string_view::npos)
        return static_cast<double>(whole);
    std::string text;
    if (whole >= 0) {
        text = std::to_string(whole) + '.';
        text += fraction;
    } else {  // -5 + 0.25 = -4.75: the digits' complement behind one less
        text = '-' + std::to_string(-(whole + 1)) + '.';
        const std::size_t last = fraction.find_last_not_of('0');
        for (std::size_t index = 0; index < last; ++index)
            text += static_cast<char>('9' - fraction[index] + '0');
        text += static_cast<char>('9' + 1 - fraction[last] + '0');
    }
    double seconds = 0;
    std::from_chars(text.data(), text.data() + text.size(), seconds);
    return seconds;
}

/// The number of two digits; 100 and more for anything else.
unsigned twoDigits(const char* at)
{
    const unsigned tens = static_cast<unsigned char>(at[0]) - unsigned{'0'};
    const unsigned ones = static_cast<unsigned char>(at[1]) - unsigned{'0'};
    return tens > 9 || ones > 9 ? 100 : tens * 10 + ones;
}

/// The second of the day where `hh:mm:ss` stands; -1 for any other form, and for the hour 24 and leap seconds.
int plainClock(const char* at)
{
    const unsigned hour = twoDigits(at);
    const unsigned minute = twoDigits(at + 3);
    const unsigned second = twoDigits(at + 6);
    if (at[2] != ':' || at[5] != ':' || hour > 23 || minute > 59 || second > 59)
        return -1;
    return static_cast<int>(hour * 3600 + minute * 60 + second);
}

/// How many of the layout's numbers a second has.
double partsOfSecond(TimeLayout layout)
{
    switch (layout) {
    case TimeLayout::EpochMilliseconds: return 1e3;
    case TimeLayout::EpochMicroseconds: return 1e6;
    case TimeLayout::EpochNanoseconds: return 1e9;
    default: return 1;
    }
}

/// Whether a zone, or none, stands right behind the seconds: words such as "pm" would change their meaning.
bool isPlainZone(std::string_view text)
{
    constexpr std::string_view kFirst = "Zz+-";
    return text.empty() || kFirst.find(text.front()) != std::string_view::npos;
}

}  // namespace

TimeColumnReader::TimeColumnReader(TimeLayout layout, LocalTime local) : m_layout(layout), m_local(std::move(local)) {}

void TimeColumnReader::limitNumbers(double earliest, double latest)
{
    m_earliest = earliest;
    m_latest = latest;
}

std::optional<double> TimeColumnReader::read(std::string_view text)
{
    if (isEpoch(m_layout))
        return readEpoch(text);
    if (m_layout == TimeLayout::SpreadsheetDays)
        return readDays(text);
    const std::optional<DateAndTime> time =
        m_layout == TimeLayout::CompactDigits ? splitCompactDigits(text) : splitDateAndTime(text);
    const std::optional<std::int64_t> midnight = time ? midnightOf(*time, m_layout) : std::nullopt;
    if (!midnight)
        return {};
    const Day day{*midnight, time->offset};
    remember(text, day);
    m_previous = exactSeconds(utcOf(day, time->secondOfDay), time->fraction);
    return m_previous;
}

std::optional<double> TimeColumnReader::read(const DateAndTime& time)
{
    const std::optional<std::int64_t> midnight = midnightOf(time, m_layout);
    if (!midnight)
        return {};
    m_previous = exactSeconds(utcOf({*midnight, time.offset}, time.secondOfDay), time.fraction);
    return m_previous;
}

/// Days since 1899-12-30, by the local clock, to the nearest millisecond: a double has no finer part of a day, and
/// mostly fewer digits are written.
std::optional<double> TimeColumnReader::readDays(std::string_view text)
{
    constexpr std::int64_t kDaysTo1970 = 25'569;
    constexpr std::int64_t kMillisecondsOfDay = 86'400'000;
    double days = 0;
    DecimalMark mark = text.find(',') == std::string_view::npos ? DecimalMark::Point : DecimalMark::Comma;
    const bool isNumber = readNumber(text, mark, days) == FieldKind::Number;
    if (!isNumber || !(days >= 0) || days > 3e6)
        return {};
    const std::int64_t all = std::llround(days * kMillisecondsOfDay) - kDaysTo1970 * kMillisecondsOfDay;
    const std::int64_t parts = ((all % 1000) + 1000) % 1000;
    const std::int64_t utc = utcOf({(all - parts) / 1000, {}}, 0);
    m_previous = static_cast<double>(utc * 1000 + parts) / 1000;
    return m_previous;
}

std::int64_t TimeColumnReader::utcOf(const Day& day, int secondOfDay)
{
    const std::int64_t wall = day.midnight + secondOfDay;
    m_isSkipped = false;
    if (day.offset)
        return wall - *day.offset;
    const std::int64_t utc = m_local.utcFromLocal(wall, m_previous);
    m_isSkipped = m_local.wasSkipped();
    return utc;
}

const char* TimeColumnReader::takePlain(const char* cursor, char delimiter, double& seconds)
{
    return isEpoch(m_layout) ? takePlainEpoch(cursor, seconds) : takeAsBefore(cursor, delimiter, seconds);
}

const char* TimeColumnReader::takePlainEpoch(const char* cursor, double& seconds) const
{
    if (m_layout == TimeLayout::EpochNanoseconds)
        return nullptr;  // more digits than this way can take
    bool hasPoint = false;
    double number = 0;
    cursor = takePlainNumber(cursor, '.', number, hasPoint);
    if (cursor == nullptr)
        return nullptr;
    seconds = number / partsOfSecond(m_layout);
    return isWithinLimits(seconds) ? cursor : nullptr;
}

const char* TimeColumnReader::takeAsBefore(const char* cursor, char delimiter, double& seconds)
{
    if (!m_hasDate || std::memcmp(cursor, m_date.data(), kDateEnd) != 0)
        return nullptr;
    const int clock = plainClock(cursor + kDateEnd);
    if (clock < 0)
        return nullptr;
    cursor += kClockEnd;
    std::uint64_t fraction = 0;
    std::size_t decimals = 0;
    if (*cursor == '.' || (*cursor == ',' && delimiter != ',')) {
        cursor = takeDigits(cursor + 1, fraction, decimals);
        if (decimals == 0 || decimals > kMostExactDecimals)
            return nullptr;
    }
    if (std::memcmp(cursor, m_zone.data(), m_zone.size()) != 0)
        return nullptr;
    const std::int64_t whole = utcOf(m_day, clock);
    if (m_isSkipped)
        return nullptr;
    const bool isExact = addFraction(whole, static_cast<std::int64_t>(fraction), decimals, seconds);
    return isExact ? cursor + m_zone.size() : nullptr;
}

void TimeColumnReader::remember(std::string_view text, const Day& day)
{
    m_hasDate = false;
    if (text.size() < kClockEnd || plainClock(text.data() + kDateEnd) < 0)
        return;
    std::string_view zone = text.substr(kClockEnd);
    if (!zone.empty() && (zone.front() == '.' || zone.front() == ','))
        zone = zone.substr(std::min(zone.find_first_not_of("0123456789", 1), zone.size()));
    const std::string_view date = text.substr(0, kDateEnd);
    if (!isPlainZone(zone) || date.find(',') != std::string_view::npos)
        return;
    m_hasDate = true;
    std::copy(date.begin(), date.end(), m_date.begin());
    m_zone = zone;
    m_day = day;
}

/// The decimal mark is moved by putting an exponent behind the digits, so that nothing is rounded twice.
std::optional<double> TimeColumnReader::readEpoch(std::string_view text) const
{
    constexpr std::size_t kLongest = 40;
    const double parts = partsOfSecond(m_layout);
    const bool isPlain = text.size() <= kLongest && text.find_first_of("eE") == std::string_view::npos;
    std::string shifted(text);
    if (std::count(text.begin(), text.end(), ',') == 1 && text.find('.') == std::string_view::npos)
        shifted[text.find(',')] = '.';
    if (isPlain && parts > 1)
        shifted += parts > 1e6 ? "e-9" : parts > 1e3 ? "e-6" : "e-3";
    double number = 0;
    const auto [stopped, error] = std::from_chars(shifted.data(), shifted.data() + shifted.size(), number);
    if (error != std::errc() || stopped != shifted.data() + shifted.size() || !std::isfinite(number))
        return {};
    const double seconds = isPlain ? number : number / parts;
    return isWithinLimits(seconds) ? std::optional(seconds) : std::nullopt;
}

}  // namespace plotix
