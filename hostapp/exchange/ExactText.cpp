#include "hostapp/exchange/ExactText.h"

#include <QtCore/QDateTime>

#include <array>
#include <cassert>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace plotix {

namespace {

constexpr double kYearZero = -62'167'219'200.0;  // 0000-01-01T00:00:00Z
constexpr double kYearTenThousand = 253'402'300'800.0;
constexpr double kReadableTimes = 2.5e11;    // seconds: some 8,000 years to both sides
constexpr std::size_t kLongestFixed = 1100;  // characters of the longest double written out

/// The digits behind the point of `1 - 0.digits`.
std::string complement(std::string_view digits)
{
    std::string result(digits);
    for (char& digit : result)
        digit = static_cast<char>('9' - digit + '0');
    ++result.back();  // the last digit of a shortest text is never 0
    return result;
}

}  // namespace

std::string exactNumber(double value)
{
    std::array<char, 32> text;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    assert(error == std::errc());
    return {text.data(), end};
}

bool hasCalendarText(double seconds)
{
    const bool isNegativeZero = seconds == 0 && std::signbit(seconds);
    return seconds >= kYearZero && seconds < kYearTenThousand && !isNegativeZero;
}

std::string exactTime(double seconds)
{
    assert(hasCalendarText(seconds));
    std::array<char, kLongestFixed> fixed;
    const auto [end, error] =
        std::to_chars(fixed.data(), fixed.data() + fixed.size(), std::abs(seconds), std::chars_format::fixed);
    assert(error == std::errc());
    const std::string_view digits(fixed.data(), static_cast<std::size_t>(end - fixed.data()));
    const std::size_t point = digits.find('.');
    std::string fraction(point == std::string_view::npos ? std::string_view() : digits.substr(point + 1));
    auto whole = static_cast<std::int64_t>(std::abs(seconds));
    if (seconds < 0) {
        whole = fraction.empty() ? -whole : -whole - 1;
        if (!fraction.empty())
            fraction = complement(fraction);
    }
    const std::chrono::sys_seconds moment{std::chrono::seconds(whole)};
    const auto midnight = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(moment - midnight);
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return std::string(text.data()) + (fraction.empty() ? "" : "." + fraction) + "Z";
}

QString readableTime(double seconds)
{
    if (!(std::abs(seconds) < kReadableTimes))
        return QString::number(seconds);
    const auto whole = static_cast<qint64>(std::floor(seconds));
    return QDateTime::fromSecsSinceEpoch(whole, Qt::UTC).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss 'UTC'"));
}

}  // namespace plotix
