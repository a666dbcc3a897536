#include "hostapp/formulas/FormulaWindows.h"

#include "hostapp/formulas/CumulativeIntegral.h"
#include "hostapp/formulas/ExactSum.h"
#include "hostapp/formulas/LocalClock.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kDay = 86400;

bool isValue(double value)
{
    return std::isfinite(value);
}

/// Of the values [first, last): the aggregate, which is no integral.
double aggregated(WindowAggregate aggregate, std::span<const double> values)
{
    ExactSum sum;
    std::size_t count = 0;
    double least = kNone, greatest = kNone;
    for (const double value : values)
        if (isValue(value)) {
            sum.add(value);
            least = count == 0 ? value : std::min(least, value);
            greatest = count == 0 ? value : std::max(greatest, value);
            ++count;
        }
    switch (aggregate) {
    case WindowAggregate::Minimum: return least;
    case WindowAggregate::Maximum: return greatest;
    case WindowAggregate::Sum: return sum.value();
    default: return sum.value() / static_cast<double>(count);
    }
}

void trailingSums(const FormulaStep& step, const WindowInput& input, std::span<double> to)
{
    ExactSum sum;
    std::size_t first = 0, count = 0;
    for (std::size_t i = 0; i < to.size(); ++i) {
        if (isValue(input.values[i])) {
            sum.add(input.values[i]);
            ++count;
        }
        for (; input.times[first] <= input.times[i] - step.number; ++first)
            if (isValue(input.values[first])) {
                sum.add(-input.values[first]);
                if (--count == 0)
                    sum = {};
            }
        const double divisor = step.aggregate == WindowAggregate::Mean ? static_cast<double>(count) : 1;
        to[i] = isValue(input.values[i]) ? sum.value() / divisor : kNone;
    }
}

/// The values that may still become the extreme, the present one first.
void trailingExtremes(const FormulaStep& step, const WindowInput& input, std::span<double> to)
{
    const double sign = step.aggregate == WindowAggregate::Maximum ? -1 : 1;
    std::vector<std::size_t> candidates;
    std::size_t head = 0;
    for (std::size_t i = 0; i < to.size(); ++i) {
        to[i] = kNone;
        if (!isValue(input.values[i]))
            continue;
        while (candidates.size() > head && sign * input.values[candidates.back()] >= sign * input.values[i])
            candidates.pop_back();
        candidates.push_back(i);
        while (input.times[candidates[head]] <= input.times[i] - step.number)
            ++head;
        to[i] = input.values[candidates[head]];
        // What has left the window is dropped once it is most of the list.
        if (head > candidates.size() / 2) {
            candidates.erase(candidates.begin(), candidates.begin() + static_cast<std::ptrdiff_t>(head));
            head = 0;
        }
    }
}

/// From the first value on; what CumulativeIntegral answers, without keeping it.
void runningIntegral(const WindowInput& input, std::span<double> to)
{
    ExactSum area;
    double before = kNone, at = 0;
    for (std::size_t i = 0; i < to.size(); ++i) {
        const double value = input.values[i], length = input.times[i] - at;
        to[i] = kNone;
        if (!isValue(value))
            continue;
        if (isValue(before) && length <= input.longestGap)
            area.add(length * (input.join == PropertyFormula::Join::Straight ? (before + value) / 2 : before));
        to[i] = area.value();
        before = value;
        at = input.times[i];
    }
}

/// Of the span that ends at each record.
void integrals(const FormulaStep& step, const WindowInput& input, std::span<double> to)
{
    CumulativeIntegral whole(input.times, input.values, input.join, input.longestGap);
    CumulativeIntegral::Cursor now, before;
    for (std::size_t i = 0; i < to.size(); ++i) {
        const double since = whole.at(input.times[i] - step.number, before);
        to[i] = isValue(input.values[i]) ? whole.at(input.times[i], now) - since : kNone;
    }
}

/// Successive records of one day or part of a day.
struct Stretch {
    double day = 0, slot = 0, offset = 0;
    friend bool operator==(const Stretch&, const Stretch&) = default;
};

Stretch stretchOf(const FormulaStep& step, double time, LocalClock& clock)
{
    Stretch stretch{clock.dayOf(time)};
    if (step.span == WindowSpan::Day)
        return stretch;
    constexpr double kHour = 3600;
    const double offset = clock.offsetAt(time);
    stretch.slot = std::floor((time + offset - stretch.day * kDay) / step.number);
    // An hour that the clock shows twice is two.
    stretch.offset = step.number <= kHour ? offset : 0;
    return stretch;
}

void byStretches(const FormulaStep& step, const WindowInput& input, std::span<double> to)
{
    LocalClock clock(input.zone);
    std::optional<CumulativeIntegral> whole;
    CumulativeIntegral::Cursor cursor;
    if (step.aggregate == WindowAggregate::Integral)
        whole.emplace(input.times, input.values, input.join, input.longestGap);
    for (std::size_t first = 0, last = 0; first < to.size(); first = last) {
        const Stretch stretch = stretchOf(step, input.times[first], clock);
        while (last < to.size() && stretchOf(step, input.times[last], clock) == stretch)
            ++last;
        double value = 0;
        if (whole) {
            const double begin = whole->at(clock.beginOf(stretch.day), cursor);
            value = whole->at(clock.beginOf(stretch.day + 1), cursor) - begin;
        } else {
            value = aggregated(step.aggregate, input.values.subspan(first, last - first));
        }
        for (std::size_t i = first; i < last; ++i)
            to[i] = isValue(input.values[i]) ? value : kNone;
    }
}

void hold(const FormulaStep& step, const WindowInput& input, std::span<double> to)
{
    double value = kNone, since = 0;
    for (std::size_t i = 0; i < to.size(); ++i) {
        if (isValue(input.values[i])) {
            value = input.values[i];
            since = input.times[i];
        }
        to[i] = input.times[i] - since <= step.number ? value : kNone;
    }
}

void derivative(const WindowInput& input, std::span<double> to)
{
    double before = kNone, at = 0;
    for (std::size_t i = 0; i < to.size(); ++i) {
        to[i] = kNone;
        if (!isValue(input.values[i]))
            continue;
        const double length = input.times[i] - at;
        if (isValue(before) && length <= input.longestGap)
            to[i] = (input.values[i] - before) / length;
        before = input.values[i];
        at = input.times[i];
    }
}

/// The value at a time, by how the property goes on between two values. Times must not go far back from call to call.
class ValueAt {
public:
    explicit ValueAt(const WindowInput& input) : m_input(input) {}

    double operator()(double time)
    {
        const auto times = m_input.times;
        while (m_next > 0 && times[m_next - 1] > time)
            --m_next;
        while (m_next < times.size() && times[m_next] <= time)
            ++m_next;
        std::size_t last = m_next;
        while (last > 0 && !isValue(m_input.values[last - 1]) && time - times[last - 1] <= m_input.longestGap)
            --last;
        if (last == 0 || !isValue(m_input.values[last - 1]) || time - times[last - 1] > m_input.longestGap)
            return kNone;
        const double value = m_input.values[last - 1], since = times[last - 1];
        if (since == time || m_input.join == PropertyFormula::Join::HoldLast)
            return value;
        std::size_t after = m_next;
        while (after < times.size() && !isValue(m_input.values[after]) && times[after] - since <= m_input.longestGap)
            ++after;
        if (after == times.size() || times[after] - since > m_input.longestGap)
            return kNone;
        return value + (m_input.values[after] - value) * ((time - since) / (times[after] - since));
    }

private:
    const WindowInput& m_input;
    std::size_t m_next = 0;  // the first element behind the time asked for last
};

void earlier(const FormulaStep& step, const WindowInput& input, std::span<double> to)
{
    LocalClock clock(input.zone);
    ValueAt valueAt(input);
    const double days = step.number / kDay;
    const bool isWhole = days == std::round(days);
    for (std::size_t i = 0; i < to.size(); ++i)
        to[i] = valueAt(isWhole ? clock.daysEarlier(input.times[i], days) : input.times[i] - step.number);
}

}  // namespace

void runOverTime(const FormulaStep& step, const WindowInput& input, std::span<double> to)
{
    if (to.empty())
        return;
    switch (step.operation) {
    case FormulaOperation::Hold: hold(step, input, to); return;
    case FormulaOperation::Derivative: derivative(input, to); return;
    case FormulaOperation::Earlier: earlier(step, input, to); return;
    default: break;
    }
    if (step.span == WindowSpan::Day || step.span == WindowSpan::Slot)
        byStretches(step, input, to);
    else if (step.span == WindowSpan::Everything)
        runningIntegral(input, to);
    else if (step.aggregate == WindowAggregate::Integral)
        integrals(step, input, to);
    else if (step.aggregate == WindowAggregate::Mean || step.aggregate == WindowAggregate::Sum)
        trailingSums(step, input, to);
    else
        trailingExtremes(step, input, to);
}

}  // namespace plotix
