#include "hostapp/exchange/TimeColumnReader.h"

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

/// Whether a zone, or none, stands right behind the seconds: words such as "pm" would change their meaning.
bool isPlainZone(std::string_view text)
{
    constexpr std::string_view kFirst = "Zz+-";
    return text.empty() || kFirst.find(text.front()) != std::string_view::npos;
}

}  // namespace

TimeColumnReader::TimeColumnReader(TimeLayout layout, LocalTime local) : m_layout(layout), m_local(std::move(local)) {}

std::optional<double> TimeColumnReader::read(std::string_view text)
{
    if (m_layout == TimeLayout::EpochSeconds || m_layout == TimeLayout::EpochMilliseconds)
        return readEpoch(text);
    const std::optional<DateAndTime> time = splitDateAndTime(text);
    if (!time || time->yearFirst != (m_layout == TimeLayout::YearFirst))
        return {};
    const auto& [one, two, three] = time->date;
    const std::optional<std::int64_t> midnight = m_layout == TimeLayout::YearFirst  ? civilSeconds(one, two, three)
                                                 : m_layout == TimeLayout::DayFirst ? civilSeconds(three, two, one)
                                                                                    : civilSeconds(three, one, two);
    if (!midnight)
        return {};
    const Day day{*midnight, time->offset};
    remember(text, day);
    m_previous = exactSeconds(utcOf(day, time->secondOfDay), time->fraction);
    return m_previous;
}

std::int64_t TimeColumnReader::utcOf(const Day& day, int secondOfDay)
{
    const std::int64_t wall = day.midnight + secondOfDay;
    return day.offset ? wall - *day.offset : m_local.utcFromLocal(wall, m_previous);
}

const char* TimeColumnReader::takePlain(const char* cursor, char delimiter, double& seconds)
{
    const bool isEpoch = m_layout == TimeLayout::EpochSeconds || m_layout == TimeLayout::EpochMilliseconds;
    return isEpoch ? takePlainEpoch(cursor, seconds) : takeAsBefore(cursor, delimiter, seconds);
}

const char* TimeColumnReader::takePlainEpoch(const char* cursor, double& seconds) const
{
    bool hasPoint = false;
    double number = 0;
    cursor = takePlainNumber(cursor, '.', number, hasPoint);
    if (cursor != nullptr)
        seconds = m_layout == TimeLayout::EpochSeconds ? number : number / 1000;
    return cursor;
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

std::optional<double> TimeColumnReader::readEpoch(std::string_view text) const
{
    double number = 0;
    const auto [stopped, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || stopped != text.data() + text.size() || !std::isfinite(number))
        return {};
    return m_layout == TimeLayout::EpochSeconds ? number : number / 1000;
}

}  // namespace plotix
