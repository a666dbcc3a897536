#include "hostapp/formulas/FormulaWindows.h"

#include "hostapp/formulas/ExactSum.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

using windows::kNone;

constexpr double kDay = 86400;
constexpr std::size_t kDaysKept = 4;
constexpr std::size_t kFewCandidates = 256;

bool isValue(double value)
{
    return std::isfinite(value);
}

/// One pass on its way. It goes on with copies of what changes at each element, which then need not be in memory.
template <class Series>
struct Pass {
    const FormulaStep& step;
    const WindowRules& rules;
    const Series& now;
    const Series& around;
    std::size_t first;
    std::span<double> to;
    const WindowState* later;

    std::size_t end() const { return first + to.size(); }
    double& at(std::size_t element) const { return to[element - first]; }

    void operator()(std::monostate&) const {}
    void operator()(windows::Last& last) const
    {
        if (step.operation == FormulaOperation::Hold)
            hold(last);
        else
            derivative(last);
    }

    void hold(windows::Last& state) const
    {
        windows::Last last = state;
        for (std::size_t i = first; i < end(); ++i) {
            const double value = now.value(i), time = now.time(i);
            if (isValue(value))
                last = {value, time};
            at(i) = time - last.time <= step.number ? last.value : kNone;
        }
        state = last;
    }

    void derivative(windows::Last& state) const
    {
        windows::Last last = state;
        for (std::size_t i = first; i < end(); ++i) {
            const double value = now.value(i), time = now.time(i);
            at(i) = kNone;
            if (!isValue(value))
                continue;
            const double length = time - last.time;
            if (isValue(last.value) && length <= rules.longestGap)
                at(i) = (value - last.value) / length;
            last = {value, time};
        }
        state = last;
    }

    /// From the first value on.
    void operator()(windows::RunningIntegral& state) const
    {
        const double gap = rules.longestGap;
        const bool isStraight = rules.join == PropertyFormula::Join::Straight;
        ExactSum area = state.area;
        windows::Last last = state.last;
        for (std::size_t i = first; i < end(); ++i) {
            const double value = now.value(i), time = now.time(i), length = time - last.time;
            at(i) = kNone;
            if (!isValue(value))
                continue;
            if (isValue(last.value) && length <= gap)
                area.add(length * (isStraight ? (last.value + value) / 2 : last.value));
            at(i) = area.value();
            last = {value, time};
        }
        state = {area, last};
    }

    void operator()(windows::TrailingSum& state) const
    {
        const double span = step.number;
        const bool isMean = step.aggregate == WindowAggregate::Mean;
        ExactSum sum = state.sum;
        std::size_t oldest = state.first, count = state.count;
        for (std::size_t i = first; i < end(); ++i) {
            const double value = now.value(i), time = now.time(i);
            if (isValue(value)) {
                sum.add(value);
                ++count;
            }
            for (; around.time(oldest) <= time - span; ++oldest) {
                const double gone = around.value(oldest);
                if (!isValue(gone))
                    continue;
                sum.add(-gone);
                if (--count == 0)
                    sum = {};
            }
            const double divisor = isMean ? static_cast<double>(count) : 1;
            at(i) = isValue(value) ? sum.value() / divisor : kNone;
        }
        state = {sum, oldest, count};
    }

    void operator()(windows::TrailingExtreme& state) const
    {
        if (state.since)
            for (std::size_t i = *std::exchange(state.since, std::nullopt); i < first; ++i)
                take(state, i, around.time(i), around.value(i));
        for (std::size_t i = first; i < end(); ++i) {
            const double value = now.value(i);
            take(state, i, now.time(i), value);
            at(i) = isValue(value) ? state.candidates[state.head].value : kNone;
        }
    }

    void take(windows::TrailingExtreme& state, std::size_t element, double time, double value) const
    {
        if (!isValue(value))
            return;
        auto& [candidates, head, since] = state;
        const double sign = step.aggregate == WindowAggregate::Maximum ? -1 : 1;
        while (candidates.size() > head && sign * candidates.back().value >= sign * value)
            candidates.pop_back();
        candidates.push_back({time, value, element});
        while (candidates[head].time <= time - step.number)
            ++head;
        // What has left the window is dropped once it is most of the list.
        if (head > candidates.size() / 2) {
            candidates.erase(candidates.begin(), candidates.begin() + static_cast<std::ptrdiff_t>(head));
            head = 0;
        }
    }

    /// Of the span that ends at each record.
    void operator()(windows::TrailingIntegral& state) const
    {
        const IntegralCourse::Rules joining{rules.join, rules.longestGap};
        for (std::size_t i = first; i < end(); ++i) {
            const double time = now.time(i), since = state.before.at(time - step.number, around, joining);
            at(i) = isValue(now.value(i)) ? state.now.at(time, now, joining) - since : kNone;
        }
    }

    void operator()(windows::Stretches& state) const
    {
        const auto* known = later ? std::get_if<windows::Stretches>(later) : nullptr;
        for (std::size_t i = first; i < end();) {
            if (i == state.last && known && known->first == i && known->last > i) {
                state.first = i;
                state.last = known->last;
                state.value = known->value;
            } else if (i == state.last) {
                begin(state);
            }
            for (const std::size_t stop = std::min(end(), state.last); i < stop; ++i)
                at(i) = isValue(now.value(i)) ? state.value : kNone;
        }
    }

    /// Successive records of one day or part of a day.
    struct Stretch {
        double day = 0, slot = 0, offset = 0;
        friend bool operator==(const Stretch&, const Stretch&) = default;
    };

    Stretch stretchOf(double time, LocalClock& clock) const
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

    /// The next stretch, with what its values come to.
    void begin(windows::Stretches& state) const
    {
        state.first = state.last;
        const Stretch stretch = stretchOf(around.time(state.first), state.clock);
        const bool isIntegral = step.aggregate == WindowAggregate::Integral;
        ExactSum sum;
        std::size_t count = 0;
        double least = kNone, greatest = kNone;
        for (; state.last < around.size() && stretchOf(around.time(state.last), state.clock) == stretch; ++state.last) {
            const double value = isIntegral ? kNone : around.value(state.last);
            if (!isValue(value))
                continue;
            sum.add(value);
            least = count == 0 ? value : std::min(least, value);
            greatest = count == 0 ? value : std::max(greatest, value);
            ++count;
        }
        switch (step.aggregate) {
        case WindowAggregate::Minimum: state.value = least; break;
        case WindowAggregate::Maximum: state.value = greatest; break;
        case WindowAggregate::Sum: state.value = sum.value(); break;
        case WindowAggregate::Mean: state.value = sum.value() / static_cast<double>(count); break;
        case WindowAggregate::Integral: {
            const double since = integralUpTo(stretch.day, state);
            state.value = integralUpTo(stretch.day + 1, state) - since;
            break;
        }
        }
    }

    /// Up to where the day begins. Where a clock is put back over midnight, a day comes twice.
    double integralUpTo(double day, windows::Stretches& state) const
    {
        for (const auto& [known, area] : state.days)
            if (known == day)
                return area;
        const IntegralCourse::Rules joining{rules.join, rules.longestGap};
        const double time = state.clock.beginOf(day);
        if (time < state.integratedTo)
            return IntegralCourse().at(time, around, joining);
        state.integratedTo = time;
        const double area = state.integral.at(time, around, joining);
        if (state.days.size() == kDaysKept)
            state.days.erase(state.days.begin());
        state.days.emplace_back(day, area);
        return area;
    }

    void operator()(windows::Earlier& state) const
    {
        const double days = step.number / kDay;
        const bool isWhole = days == std::round(days);
        for (std::size_t i = first; i < end(); ++i) {
            const double time = now.time(i);
            at(i) = valueAt(isWhole ? state.clock.daysEarlier(time, days) : time - step.number, state.next);
        }
    }

    /// The value at a time, by how the property goes on between two values. Times must not go far back from call to
    /// call.
    double valueAt(double time, std::size_t& next) const
    {
        const double gap = rules.longestGap;
        while (next > 0 && around.time(next - 1) > time)
            --next;
        while (next < around.size() && around.time(next) <= time)
            ++next;
        std::size_t last = next;
        while (last > 0 && !isValue(around.value(last - 1)) && time - around.time(last - 1) <= gap)
            --last;
        if (last == 0 || !isValue(around.value(last - 1)) || time - around.time(last - 1) > gap)
            return kNone;
        const double value = around.value(last - 1), since = around.time(last - 1);
        if (since == time || rules.join == PropertyFormula::Join::HoldLast)
            return value;
        std::size_t after = next;
        while (after < around.size() && !isValue(around.value(after)) && around.time(after) - since <= gap)
            ++after;
        if (after == around.size() || around.time(after) - since > gap)
            return kNone;
        return value + (around.value(after) - value) * ((time - since) / (around.time(after) - since));
    }
};

}  // namespace

WindowState begunState(const FormulaStep& step, const WindowRules& rules)
{
    switch (step.operation) {
    case FormulaOperation::Hold:
    case FormulaOperation::Derivative: return windows::Last();
    case FormulaOperation::Earlier: return windows::Earlier{LocalClock(rules.zone)};
    default: break;
    }
    if (step.span == WindowSpan::Day || step.span == WindowSpan::Slot)
        return windows::Stretches{.clock = LocalClock(rules.zone)};
    if (step.span == WindowSpan::Everything)
        return windows::RunningIntegral();
    if (step.aggregate == WindowAggregate::Integral)
        return windows::TrailingIntegral();
    if (step.aggregate == WindowAggregate::Mean || step.aggregate == WindowAggregate::Sum)
        return windows::TrailingSum();
    return windows::TrailingExtreme();
}

void makeSmall(WindowState& state)
{
    auto* extreme = std::get_if<windows::TrailingExtreme>(&state);
    if (!extreme || extreme->since || extreme->candidates.size() - extreme->head <= kFewCandidates)
        return;
    const std::size_t since = extreme->candidates[extreme->head].element;
    *extreme = {{}, 0, since};
}

template <class Series>
void runOverTime(const FormulaStep& step, const WindowRules& rules, const WindowInput<Series>& input,
                 WindowState& state, std::size_t first, std::span<double> to, const WindowState* later)
{
    std::visit(Pass<Series>{step, rules, input.now, input.around, first, to, later}, state);
}

template void runOverTime(const FormulaStep&, const WindowRules&, const WindowInput<PlainSeries>&, WindowState&,
                          std::size_t, std::span<double>, const WindowState*);
template void runOverTime(const FormulaStep&, const WindowRules&, const WindowInput<SeriesReader>&, WindowState&,
                          std::size_t, std::span<double>, const WindowState*);

}  // namespace plotix
