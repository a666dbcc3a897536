#include "plotkit/layout/CalendarTicks.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace plotkit {

namespace {

struct Step {
    double seconds = 0;  ///< local ones; or
    int months = 0;
};

struct Row {
    Step major, minor;  ///< no minor: both 0
};

constexpr double kDay = 86'400;
constexpr double kWeek = 7 * kDay;
constexpr double kFirstMonday = 4 * kDay;  // 1970-01-05

constexpr std::array<Row, 42> kRows{{
    {{0.001}, {}},
    {{0.002}, {0.001}},
    {{0.005}, {0.001}},
    {{0.01}, {0.002}},
    {{0.02}, {0.005}},
    {{0.05}, {0.01}},
    {{0.1}, {0.02}},
    {{0.2}, {0.05}},
    {{0.5}, {0.1}},
    {{1}, {0.2}},
    {{2}, {0.5}},
    {{5}, {1}},
    {{10}, {2}},
    {{15}, {5}},
    {{30}, {10}},
    {{60}, {15}},
    {{120}, {30}},
    {{300}, {60}},
    {{600}, {120}},
    {{900}, {300}},
    {{1'800}, {600}},
    {{3'600}, {900}},
    {{7'200}, {1'800}},
    {{10'800}, {3'600}},
    {{21'600}, {3'600}},
    {{43'200}, {10'800}},
    {{kDay}, {21'600}},
    {{2 * kDay}, {43'200}},
    {{kWeek}, {kDay}},
    {{.months = 1}, {kWeek}},
    {{.months = 2}, {.months = 1}},
    {{.months = 3}, {.months = 1}},
    {{.months = 6}, {.months = 1}},
    {{.months = 12}, {.months = 3}},
    {{.months = 24}, {.months = 6}},
    {{.months = 60}, {.months = 12}},
    {{.months = 120}, {.months = 24}},
    {{.months = 240}, {.months = 60}},
    {{.months = 600}, {.months = 120}},
    {{.months = 1'200}, {.months = 240}},
    {{.months = 2'400}, {.months = 600}},
    {{.months = 6'000}, {.months = 1'200}},
}};

constexpr double kCalendarLimit = 2.0e11;  // seconds; years of four digits
constexpr double kMostTicks = 4'000;
constexpr double kOneOffsetWithin = 20 * kDay;  // no zone changes its clocks twice in less
constexpr double kFewChangesWithin = 400 * kDay;
constexpr double kTolerance = 1e-6;
constexpr int kMonthsPerYear = 12;

double lengthOf(const Step& step)
{
    constexpr double kMonth = 30 * kDay;
    constexpr double kYear = 365 * kDay;
    if (step.months == 0)
        return step.seconds;
    return step.months < kMonthsPerYear ? step.months * kMonth : step.months / double(kMonthsPerYear) * kYear;
}

/// Local seconds, counted as though clocks were never changed, into seconds since 1970-01-01 UTC.
class LocalClock {
public:
    LocalClock(const QTimeZone& zone, double low, double high)
        : m_zone(zone), m_low(offsetAt(zone, low)), m_high(offsetAt(zone, high))
    {
        m_isSteady = m_low == m_high && (high - low < kOneOffsetWithin || !changesWithin(low, high));
    }

    double localLow(double low) const { return low + m_low; }
    double localHigh(double high) const { return high + m_high; }

    double moment(double local) const { return m_isSteady ? local - m_low : momentOfLocal(m_zone, local); }

private:
    bool changesWithin(double low, double high) const
    {
        const auto utc = [](double seconds) { return QDateTime::fromSecsSinceEpoch(qint64(seconds), Qt::UTC); };
        const bool isKnown = m_zone.isValid() && high - low < kFewChangesWithin;
        const QTimeZone::OffsetData next = isKnown ? m_zone.nextTransition(utc(low)) : QTimeZone::OffsetData();
        return !isKnown || (next.atUtc.isValid() && next.atUtc <= utc(high));
    }

    const QTimeZone m_zone;
    double m_low, m_high;
    bool m_isSteady = false;
};

double localMonth(double index)
{
    const auto month = static_cast<qint64>(index);
    const qint64 year = 1970 + (month >= 0 ? month : month - kMonthsPerYear + 1) / kMonthsPerYear;
    const qint64 inYear = month - (year - 1970) * kMonthsPerYear;
    return static_cast<double>(QDate(static_cast<int>(year), static_cast<int>(inYear) + 1, 1).toJulianDay() -
                               QDate(1970, 1, 1).toJulianDay()) *
           kDay;
}

double monthIndexOf(double local)
{
    const QDate date = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(local)), Qt::UTC).date();
    return (date.year() - 1970) * double(kMonthsPerYear) + date.month() - 1;
}

/// The first whole second at which clocks show what they show at `high`. Requires: not what they show at `low`.
double changeWithin(const QTimeZone& zone, double low, double high)
{
    const int after = offsetAt(zone, high);
    double before = std::floor(low), from = std::ceil(high);
    while (from - before > 1) {
        const double middle = std::floor((before + from) / 2);
        (offsetAt(zone, middle) == after ? from : before) = middle;
    }
    return from;
}

/// Times of day on both sides of a change of clocks. Where clocks are put back a range may show later times before
/// earlier ones; what was shown before the change has no second tick.
std::vector<MajorTick> ticksAcrossChange(double unit, double low, double high, const QTimeZone& zone)
{
    struct Part {
        double from, to, offset;
    };
    const double change = changeWithin(zone, low, high);
    const double tolerance = kTolerance * unit;
    std::set<double> known;
    std::vector<MajorTick> ticks;
    for (const Part& part : {Part{low - tolerance, change - tolerance, double(offsetAt(zone, low))},
                             Part{change - tolerance, high + tolerance, double(offsetAt(zone, high))}})
        for (double number = std::floor((part.from + part.offset) / unit);
             number <= std::ceil((part.to + part.offset) / unit); ++number) {
            const double value = number * unit - part.offset;
            if (value >= part.from && value < part.to && known.insert(number).second)
                ticks.push_back({number, value});
        }
    return ticks;
}

std::vector<MajorTick> ticksOf(const Step& step, const AxisMapping& mapping, const QTimeZone& zone)
{
    const double low = mapping.range.minLimit();
    const double high = mapping.range.maxLimit();
    if (step.months == 0 && step.seconds < kDay && offsetAt(zone, low) != offsetAt(zone, high))
        return ticksAcrossChange(step.seconds, low, high, zone);
    const LocalClock clock(zone, low, high);
    const double origin = step.seconds == kWeek ? kFirstMonday : 0;
    const bool isMonths = step.months > 0;
    const double unit = isMonths ? step.months : step.seconds;
    const double first = isMonths ? std::floor(monthIndexOf(clock.localLow(low)) / unit)
                                  : std::floor((clock.localLow(low) - origin) / unit);
    const double last = isMonths ? std::ceil(monthIndexOf(clock.localHigh(high)) / unit)
                                 : std::ceil((clock.localHigh(high) - origin) / unit);
    const double tolerance = kTolerance * lengthOf(step);
    std::vector<MajorTick> ticks;
    for (double number = first; number <= last; ++number) {
        const double value = clock.moment(isMonths ? localMonth(number * unit) : origin + number * unit);
        const bool isLater = ticks.empty() || value > ticks.back().value;
        if (isLater && value >= low - tolerance && value <= high + tolerance)
            ticks.push_back({number, value});
    }
    return ticks;
}

}  // namespace

std::optional<std::size_t> calendarRowFrom(double leastSeconds)
{
    for (std::size_t row = 0; row < kRows.size(); ++row)
        if (lengthOf(kRows[row].major) >= leastSeconds)
            return row;
    return std::nullopt;
}

std::optional<std::size_t> coarserCalendarRow(std::size_t row)
{
    return row + 1 < kRows.size() ? std::optional(row + 1) : std::nullopt;
}

double stepOfCalendarRow(std::size_t row)
{
    return lengthOf(kRows[row].major);
}

double minorStepOfCalendarRow(std::size_t row)
{
    return lengthOf(kRows[row].minor);
}

bool hasCalendar(std::size_t row, const AxisMapping& mapping)
{
    const double low = mapping.range.minLimit();
    const double high = mapping.range.maxLimit();
    return mapping.isProper() && std::abs(low) < kCalendarLimit && std::abs(high) < kCalendarLimit &&
           (high - low) / stepOfCalendarRow(row) < kMostTicks;
}

std::vector<MajorTick> calendarMajors(std::size_t row, const AxisMapping& mapping, const QTimeZone& zone)
{
    return ticksOf(kRows[row].major, mapping, zone);
}

std::vector<double> calendarMinors(std::size_t row, const AxisMapping& mapping, const QTimeZone& zone)
{
    std::vector<double> values;
    if (!(minorStepOfCalendarRow(row) > 0))
        return values;
    const std::vector<MajorTick> majors = ticksOf(kRows[row].major, mapping, zone);
    const double tolerance = kTolerance * stepOfCalendarRow(row);
    auto major = majors.begin();
    for (const MajorTick& tick : ticksOf(kRows[row].minor, mapping, zone)) {
        while (major != majors.end() && major->value < tick.value - tolerance)
            ++major;
        if (major == majors.end() || major->value > tick.value + tolerance)
            values.push_back(tick.value);
    }
    return values;
}

}  // namespace plotkit
