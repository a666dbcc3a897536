#pragma once

#include "hostapp/core/PropertyFormula.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <span>

/// A series at other times, in a pass that may end anywhere and go on later from a copy of its state. `Series` has
/// size(), time(i) and value(i), which is a NaN where there is none; `Times` has time(i). Values; one thread.
namespace plotix {

/// The series at other times: its value there, its last one, or the one on the straight line between its neighbours.
/// What is bridged is never longer than `longestGap` seconds.
class JoiningCourse {
public:
    /// At times [first, first + to.size()). Requires: the course has gone through those before.
    template <class Series, class Times>
    void run(const Series& series, const Times& times, PropertyFormula::Join join, double longestGap, std::size_t first,
             std::span<double> to)
    {
        for (std::size_t i = 0; i < to.size(); ++i) {
            const double time = times.time(first + i);
            for (; m_next < series.size() && series.time(m_next) <= time; ++m_next)
                if (const double value = series.value(m_next); std::isfinite(value))
                    m_last = {series.time(m_next), value};
            to[i] = m_last ? valueAt(time, series, join, longestGap) : kNone;
        }
    }

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    struct Point {
        double time = 0, value = 0;
    };

    template <class Series>
    double valueAt(double time, const Series& series, PropertyFormula::Join join, double longestGap) const
    {
        if (m_last->time == time)
            return m_last->value;
        if (join == PropertyFormula::Join::HoldLast)
            return time - m_last->time <= longestGap ? m_last->value : kNone;
        std::size_t after = m_next;
        while (after < series.size() && !std::isfinite(series.value(after)) && series.time(after) - time <= longestGap)
            ++after;
        const double length = after < series.size() ? series.time(after) - m_last->time : longestGap + 1;
        if (!(length <= longestGap))
            return kNone;
        return m_last->value + (series.value(after) - m_last->value) * ((time - m_last->time) / length);
    }

    std::size_t m_next = 0;       // the element that is not past
    std::optional<Point> m_last;  // value that is
};

/// The series at other times where it has a value at exactly them, and none elsewhere.
class PlacingCourse {
public:
    template <class Series, class Times>
    void run(const Series& series, const Times& times, std::size_t first, std::span<double> to)
    {
        for (std::size_t i = 0; i < to.size(); ++i) {
            const double time = times.time(first + i);
            while (m_next < series.size() && series.time(m_next) < time)
                ++m_next;
            const bool isThere = m_next < series.size() && series.time(m_next) == time;
            to[i] = isThere ? series.value(m_next) : std::numeric_limits<double>::quiet_NaN();
        }
    }

private:
    std::size_t m_next = 0;
};

}  // namespace plotix
