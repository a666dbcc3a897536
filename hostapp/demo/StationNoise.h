#pragma once

#include <cstdint>

/// Random numbers that depend only on a seed, a channel and a time.
///
/// A given time always gets the same number, whatever was asked before, so the station can be continued seamlessly at
/// any time. Pure; any thread.
namespace plotix {

/// A channel is one source of random numbers; the sources of one seed are independent of each other.
struct NoiseSource {
    std::uint64_t seed = 0;
    std::uint32_t channel = 0;

    /// Uniform in [0, 1), one number for each cell and index.
    double uniform(std::int64_t cell, std::uint32_t index = 0) const;

    /// About normally distributed, mean 0, deviation 1, within ±3.5.
    double normal(std::int64_t cell) const;

    /// A smooth curve through normal numbers `period` seconds apart. Deviation about 0.8.
    /// Requires: period > 0.
    double smooth(double seconds, double period) const;
};

/// 0 below `low`, 1 above `high`, smooth between. Requires: low < high.
double smoothStep(double value, double low, double high);

}  // namespace plotix
