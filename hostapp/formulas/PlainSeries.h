#pragma once

#include <cstddef>
#include <span>

namespace plotix {

/// Values in memory, as those who go through a series read them; SeriesReader is the other one. *Borrows* them; any
/// thread.
struct PlainSeries {
    std::span<const double> times;   ///< seconds since 1970-01-01 UTC, strictly ascending
    std::span<const double> values;  ///< as many, a NaN where there is none

    std::size_t size() const { return times.size(); }
    double time(std::size_t index) const { return times[index]; }
    double value(std::size_t index) const { return values[index]; }
};

}  // namespace plotix
