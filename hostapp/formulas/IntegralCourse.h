#pragma once

#include "hostapp/core/PropertyFormula.h"
#include "hostapp/formulas/ExactSum.h"

#include <cmath>
#include <cstddef>
#include <optional>

/// The integral of values over time, from the first one to any time: under steps or straight lines, nothing under gaps
/// that are too long. Seconds are the unit of time. Goes through the values once, as far as it is asked; a copy goes on
/// from the same place. A value; one thread.
namespace plotix {

class IntegralCourse {
public:
    /// How values go on between two of them.
    struct Rules {
        PropertyFormula::Join join{};
        double longestGap = 0;
    };

    /// 0 before the first value; behind the last one it stays. `Series` has size(), time(i) and value(i), which is not
    /// finite where there is none. Requires: the same series in every call; time is not earlier than asked before.
    template <class Series>
    double at(double time, const Series& series, const Rules& rules)
    {
        for (; m_next < series.size() && series.time(m_next) <= time; ++m_next) {
            const Point point{series.time(m_next), series.value(m_next)};
            if (!std::isfinite(point.value))
                continue;
            if (m_last)
                m_area.add(areaUpTo(point.time, point, rules));
            m_last = point;
            m_isNextKnown = false;
        }
        if (!m_last)
            return 0;
        if (!m_isNextKnown)
            findNextValue(series, rules.longestGap);
        return m_area.value() + (m_nextValue ? areaUpTo(time, *m_nextValue, rules) : 0.0);
    }

private:
    struct Point {
        double time = 0, value = 0;
    };

    /// From the last value on, towards the next one.
    double areaUpTo(double time, const Point& next, const Rules& rules) const
    {
        const double length = next.time - m_last->time, part = time - m_last->time;
        if (length > rules.longestGap)
            return 0;
        const double slope = rules.join == PropertyFormula::Join::Straight ? (next.value - m_last->value) / length : 0;
        return part * (m_last->value + slope * part / 2);
    }

    /// Nothing is bridged to one that is too far away, so that it is not looked for there.
    template <class Series>
    void findNextValue(const Series& series, double longestGap)
    {
        m_nextValue.reset();
        m_isNextKnown = true;
        for (std::size_t i = m_next; i < series.size() && !(series.time(i) - m_last->time > longestGap); ++i)
            if (std::isfinite(series.value(i))) {
                m_nextValue = {series.time(i), series.value(i)};
                return;
            }
    }

    ExactSum m_area;  // up to the last value
    std::size_t m_next = 0;
    std::optional<Point> m_last, m_nextValue;
    bool m_isNextKnown = false;
};

}  // namespace plotix
