#pragma once

#include <array>
#include <cstddef>
#include <limits>

/// The least and the greatest of some values. Values and pure functions; any thread.
struct CPTMinMax {
    float min;
    float max;
    bool isEmpty() const { return !(min <= max); }
};

namespace plotkit {

/// Least > greatest: of no values.
CPTMinMax emptyMinMax();
CPTMinMax joined(const CPTMinMax& a, const CPTMinMax& b);

/// Of the pairs [first, last) of two rows of numbers. Requires: no NaN.
CPTMinMax joinedPairs(const float* least, const float* greatest, std::size_t first, std::size_t last);

inline constexpr float kBeyondAll = std::numeric_limits<float>::infinity();

/// Eight running pairs side by side, which compilers turn into vector instructions. A NaN drops out by itself: every
/// comparison with it is false.
struct MinMaxLanes {
    std::array<float, 8> low;
    std::array<float, 8> high;

    MinMaxLanes()
    {
        low.fill(kBeyondAll);
        high.fill(-kBeyondAll);
    }
    void take(std::size_t lane, float lowest, float highest)
    {
        low[lane] = lowest < low[lane] ? lowest : low[lane];
        high[lane] = highest > high[lane] ? highest : high[lane];
    }
    CPTMinMax result()
    {
        for (std::size_t half = low.size() / 2; half > 0; half /= 2)
            for (std::size_t lane = 0; lane < half; ++lane)
                take(lane, low[lane + half], high[lane + half]);
        return {low[0], high[0]};
    }
};

}  // namespace plotkit
