#include "plotkit/layout/AxisTicks.h"

#include "plotkit/layout/CalendarTicks.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace plotkit {

namespace {

/// Steps under a day that a clock's face knows, in seconds.
constexpr std::array<double, 21> kClockSteps{1,   2,    5,    10,   15,   20,    30,    60,    120,   300,  600,
                                             900, 1200, 1800, 3600, 7200, 10800, 14400, 21600, 28800, 43200};
constexpr double kDay = 86400;  // a fixed length is meant: ticks stand at multiples of seconds

/// A tick a millionth of a step outside the range, for rounding's sake, still belongs to it.
constexpr double kTolerance = 1e-6;
/// Beyond this doubles no longer count by ones.
constexpr double kLargestNumber = 9007199254740992.0;

bool isMultiple(double value, double unit)
{
    return std::fmod(value, unit) == 0;
}

/// The least of 1, 2 or 5 × 10ⁿ that is not below `wanted`.
double roundNumberFrom(double wanted)
{
    const double decade = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double mantissa : {1.0, 2.0, 5.0})
        if (mantissa * decade >= wanted * (1 - kTolerance))
            return mantissa * decade;
    return 10 * decade;
}

int minorsForMantissa(int mantissa)
{
    return mantissa == 2 ? 3 : 4;
}

struct Numbers {
    double first, last;  // first > last: none
};

Numbers numbersInRange(const TickPlan& plan, const AxisMapping& mapping)
{
    const double first = std::ceil((mapping.range.minLimit() - plan.origin) / plan.step - kTolerance);
    const double last = std::floor((mapping.range.maxLimit() - plan.origin) / plan.step + kTolerance);
    const bool countable = std::abs(first) < kLargestNumber && std::abs(last) < kLargestNumber;
    return countable ? Numbers{first, last} : Numbers{1, 0};
}

TickPlan fixedPlan(const CPTXYAxis& axis)
{
    TickPlan plan;
    plan.origin = std::isfinite(axis.labelingOrigin()) ? axis.labelingOrigin() : 0;
    plan.step = std::abs(axis.majorIntervalLength());
    plan.minors = std::max(0, axis.minorTicksPerInterval());
    plan.isTime = axis.tickThinning() == CPTTickThinning::ClockTimes;
    return plan;
}

TickPlan calendarPlan(std::size_t row, const QTimeZone& zone)
{
    return {0, stepOfCalendarRow(row), minorStepOfCalendarRow(row) > 0 ? 1 : 0, false, row, zone};
}

/// Nothing where the calendar has no answer: such a range gets automatic ticks.
std::optional<TickPlan> plannedByCalendar(const CPTXYAxis& axis, const AxisMapping& mapping)
{
    if (axis.labelingPolicy() != CPTAxisLabelingPolicy::Calendar)
        return std::nullopt;
    const double perUnit = valuePerUnit(mapping);
    const std::optional<std::size_t> row = calendarRowFrom(kLeastCalendarSpacing * perUnit);
    if (!row || !hasCalendar(*row, mapping))
        return std::nullopt;
    TickPlan plan = calendarPlan(*row, axis.timeZone());
    if (minorStepOfCalendarRow(*row) < kLeastMinorSpacing * perUnit)
        plan.minors = 0;
    return plan;
}

/// Powers themselves where two of them are seen, else round values between them.
TickPlan logarithmicPlan(const AxisMapping& mapping)
{
    constexpr double kFewestDecades = 1.5;
    const double length = std::abs(mapping.range.length);
    if (length >= kFewestDecades) {
        TickPlan plan = automaticPlan(length);
        plan.step = std::max(1.0, std::round(plan.step));
        plan.logarithm = TickPlan::Logarithm::Decades;
        plan.minors = plan.step == 1 ? 8 : 0;
        return plan;
    }
    const double low = std::pow(10.0, mapping.range.minLimit());
    const double high = std::pow(10.0, mapping.range.maxLimit());
    TickPlan plan = automaticPlan(high - low);
    if (plan.isEmpty() || !(low > 0))
        return {};
    plan.logarithm = TickPlan::Logarithm::Values;
    plan.minors = 0;
    plan.nearest = std::log10(high) - std::log10(std::max(high - plan.step, low));
    return plan;
}

std::vector<MajorTick> roundValues(const TickPlan& plan, const AxisMapping& mapping)
{
    const double low = std::pow(10.0, mapping.range.minLimit());
    const double high = std::pow(10.0, mapping.range.maxLimit());
    std::vector<MajorTick> ticks;
    for (double number = std::ceil(low / plan.step - kTolerance); number * plan.step <= high * (1 + kTolerance);
         ++number)
        if (number > 0)
            ticks.push_back({number, std::log10(number * plan.step)});
    return ticks;
}

/// The twos to nines between the powers.
std::vector<double> digitsBetween(const AxisMapping& mapping)
{
    std::vector<double> ticks;
    const double low = mapping.range.minLimit();
    const double high = mapping.range.maxLimit();
    for (double power = std::floor(low); power <= high; ++power)
        for (int digit = 2; digit <= 9; ++digit)
            if (const double value = power + std::log10(digit); value >= low && value <= high)
                ticks.push_back(value);
    return ticks;
}

}  // namespace

double readableMultiple(const TickPlan& plan, double wanted)
{
    if (!(wanted > 1))
        return 1;
    const double least = std::ceil(wanted);
    if (!std::isfinite(least))
        return least;
    if (plan.isTime) {
        if (isMultiple(plan.step, kDay))
            return least;
        for (const double seconds : kClockSteps)
            if (seconds >= least * plan.step && isMultiple(seconds, plan.step))
                return seconds / plan.step;
        if (isMultiple(kDay, plan.step))
            return std::ceil(least * plan.step / kDay) * (kDay / plan.step);
    }
    return roundNumberFrom(least);
}

TickPlan automaticPlan(double length)
{
    constexpr double kMajors = 5;
    const double wanted = std::abs(length) / kMajors;
    if (!(wanted > 0) || !std::isfinite(wanted))
        return {};
    const double decade = std::pow(10.0, std::floor(std::log10(wanted)));
    const double mantissa = wanted / decade;
    const int nearest = mantissa < 1.5 ? 1 : mantissa < 3.5 ? 2 : mantissa < 7.5 ? 5 : 10;
    return {0, nearest * decade, minorsForMantissa(nearest), false};
}

TickPlan coarserPlan(const TickPlan& plan)
{
    if (plan.calendarRow)
        if (const std::optional<std::size_t> row = coarserCalendarRow(*plan.calendarRow))
            return calendarPlan(*row, plan.zone);
    TickPlan coarser = plan;
    coarser.calendarRow.reset();
    coarser.step = roundNumberFrom(plan.step * 1.5);
    coarser.nearest = plan.nearest * coarser.step / plan.step;
    if (plan.logarithm != TickPlan::Logarithm::None) {
        coarser.minors = 0;
        return coarser;
    }
    const double decade = std::pow(10.0, std::floor(std::log10(coarser.step) + kTolerance));
    coarser.minors = minorsForMantissa(static_cast<int>(std::lround(coarser.step / decade)));
    return coarser;
}

TickPlan planTicks(const CPTXYAxis& axis, const AxisMapping& mapping)
{
    if (!mapping.isProper())
        return {};
    if (const std::optional<TickPlan> plan = plannedByCalendar(axis, mapping))
        return *plan;
    if (axis.labelingPolicy() == CPTAxisLabelingPolicy::Logarithmic) {
        TickPlan plan = logarithmicPlan(mapping);
        if (plan.minors > 0 && kLeastMinorSpacing * valuePerUnit(mapping) > 1 - std::log10(9.0))
            plan.minors = 0;
        return plan;
    }
    const double interval = axis.majorIntervalLength();
    const bool fixed =
        axis.labelingPolicy() == CPTAxisLabelingPolicy::FixedInterval && std::isfinite(interval) && interval != 0;
    TickPlan plan = fixed ? fixedPlan(axis) : automaticPlan(mapping.range.length);
    if (plan.isEmpty())
        return {};
    const double perUnit = valuePerUnit(mapping);
    const double leastSpacing = std::max(kLeastMajorSpacing, std::abs(mapping.extent) / kMostMajors);
    plan.step *= readableMultiple(plan, leastSpacing * perUnit / plan.step);
    if (!std::isfinite(plan.step))
        return {};
    if (plan.step / (plan.minors + 1.0) < kLeastMinorSpacing * perUnit)
        plan.minors = 0;
    return plan;
}

std::vector<MajorTick> majorTicks(const TickPlan& plan, const AxisMapping& mapping)
{
    std::vector<MajorTick> ticks;
    if (plan.isEmpty() || !mapping.isProper())
        return ticks;
    if (plan.calendarRow)
        return calendarMajors(*plan.calendarRow, mapping, plan.zone);
    if (plan.logarithm == TickPlan::Logarithm::Values)
        return roundValues(plan, mapping);
    const Numbers numbers = numbersInRange(plan, mapping);
    for (double number = numbers.first; number <= numbers.last; ++number)
        ticks.push_back({number, plan.origin + number * plan.step});
    return ticks;
}

std::vector<double> minorTicks(const TickPlan& plan, const AxisMapping& mapping)
{
    std::vector<double> ticks;
    if (plan.isEmpty() || plan.minors <= 0 || !mapping.isProper())
        return ticks;
    if (plan.calendarRow)
        return calendarMinors(*plan.calendarRow, mapping, plan.zone);
    if (plan.logarithm == TickPlan::Logarithm::Decades)
        return digitsBetween(mapping);
    const Numbers numbers = numbersInRange(plan, mapping);
    const double low = mapping.range.minLimit();
    const double high = mapping.range.maxLimit();
    if (!(numbers.first <= numbers.last + 1))
        return ticks;
    for (double number = numbers.first - 1; number <= numbers.last; ++number) {
        for (int minor = 1; minor <= plan.minors; ++minor) {
            const double value = plan.origin + (number + minor / (plan.minors + 1.0)) * plan.step;
            if (value >= low && value <= high)
                ticks.push_back(value);
        }
    }
    return ticks;
}

}  // namespace plotkit
