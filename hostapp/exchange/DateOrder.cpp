#include "hostapp/exchange/DateOrder.h"

#include "hostapp/exchange/ImportFinding.h"

#include <algorithm>
#include <cstdlib>

namespace plotix {

namespace {

using What = ImportFinding::What;

/// How the times would run in the order: without a jump of weeks, or with one.
bool runsOn(const DateOrderEvidence::Course& course)
{
    constexpr std::int64_t kTwoDays = 2 * 86'400;
    return !course.isImpossible && course.largestStep < kTwoDays;
}

bool jumps(const DateOrderEvidence::Course& course)
{
    constexpr std::int64_t kTwentyDays = 20 * 86'400;
    return course.isImpossible || course.largestStep > kTwentyDays;
}

/// The one order in which the times run on from day to day while all others jump by weeks; only of rows within days,
/// for of single days the other order may be the months.
std::optional<TimeLayout> layoutByCourse(const DateOrderEvidence& evidence)
{
    if (evidence.sameDay * 2 < evidence.dates || evidence.sameDay + 1 == evidence.dates)
        return {};
    for (const DateOrderEvidence::Course& course : evidence.courses) {
        const bool othersJump =
            std::all_of(evidence.courses.begin(), evidence.courses.end(),
                        [&course](const auto& other) { return other.layout == course.layout || jumps(other); });
        if (runsOn(course) && othersJump)
            return course.layout;
    }
    return {};
}

}  // namespace

void DateOrderEvidence::add(const DateAndTime& date)
{
    if (date.yearFirst)
        return;
    dots |= date.separator == '.';
    isShort = date.isShort && (dates == 0 || isShort);
    sameDay += dates > 0 && date.date == last ? 1 : 0;
    last = date.date;
    ++dates;
    courses[0].isImpossible |= date.date[1] > 12 || date.date[0] > 31;
    courses[1].isImpossible |= date.date[0] > 12 || date.date[1] > 31;
    courses[2].isImpossible |= !date.isShort || date.date[1] > 12 || date.date[2] % 100 > 31;
    for (Course& course : courses) {
        const std::optional<std::int64_t> midnight = midnightOf(date, course.layout);
        if (!midnight)
            continue;  // a day that its month lacks tells nothing: it is a slip
        const std::int64_t now = *midnight + date.secondOfDay;
        const bool hasPrevious = course.previous != std::numeric_limits<std::int64_t>::min();
        if (hasPrevious)
            course.largestStep = std::max(course.largestStep, std::abs(now - course.previous));
        course.previous = now;
    }
}

TimeLayout decidedLayout(const DateOrderEvidence& evidence)
{
    const auto& [day, month, year] = evidence.courses;
    if (day.isImpossible && month.isImpossible) {
        if (evidence.isShort && !year.isImpossible)
            return TimeLayout::ShortYearFirst;
        throw ImportFailure({.what = What::DateOrderContradicts});
    }
    if (const std::optional<TimeLayout> layout = layoutByCourse(evidence))
        return *layout;
    if (evidence.dots && !day.isImpossible)
        return TimeLayout::DayFirst;
    const bool mayBeYear = evidence.isShort && !year.isImpossible;
    if (month.isImpossible && !mayBeYear)
        return TimeLayout::DayFirst;
    if (day.isImpossible && !mayBeYear)
        return TimeLayout::MonthFirst;
    throw ImportFailure({.what = What::DateOrderUnknown});
}

}  // namespace plotix
