#pragma once

#include <cmath>
#include <limits>

/// Narrowing to single precision, as values are plotted and tabled. A pure function; any thread.
namespace plotix {

/// The float nearest to `value`. Beyond the range of a float the infinity of its sign; a NaN stays one.
inline float singlePrecision(double value)
{
    if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        return value < 0 ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
}

}  // namespace plotix
