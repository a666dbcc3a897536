#pragma once

#include "hostapp/core/PropertyFormula.h"

#include <cstddef>
#include <span>
#include <vector>

/// The integral of values over time, from the first one to any time: under steps or straight lines, nothing under gaps
/// that are too long. Seconds are the unit of time. *Borrows* nothing once it is made; one thread per cursor.
namespace plotix {

class CumulativeIntegral {
public:
    /// A place to go on searching from; a new one for each course of times.
    struct Cursor {
        std::size_t next = 0;
    };

    CumulativeIntegral(std::span<const double> times, std::span<const double> values, PropertyFormula::Join join,
                       double longestGap);

    /// 0 before the first value; behind the last one it stays. Quick for times near those asked before.
    double at(double time, Cursor& cursor) const;

private:
    double areaUpTo(std::size_t first, double time) const;  // from that value on, within its stretch

    PropertyFormula::Join m_join;
    double m_longestGap;
    std::vector<double> m_times, m_values, m_areas;  // of values alone; areas up to each
};

}  // namespace plotix
