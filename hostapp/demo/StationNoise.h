#pragma once

#include <cstdint>

/// Random numbers that depend on nothing but a seed, a channel and a place on the time axis.
///
/// Whoever asks for a moment gets the same answer, whatever was asked before: that is what lets the station be
/// continued at any time without a seam. Pure; any thread.
namespace plotix {

/// A channel is one source of chance; sources of one seed know nothing of each other.
struct NoiseSource {
    std::uint64_t seed = 0;
    std::uint32_t channel = 0;

    /// Evenly spread in [0, 1), one for each cell and index.
    double uniform(std::int64_t cell, std::uint32_t index = 0) const;

    /// About normally spread, mean 0, deviation 1, within ±3.5.
    double normal(std::int64_t cell) const;

    /// A smooth curve through normal numbers `period` seconds apart. Deviation about 0.8.
    /// Requires: period > 0.
    double smooth(double seconds, double period) const;
};

/// 0 below `low`, 1 above `high`, smooth between. Requires: low < high.
double smoothStep(double value, double low, double high);

}  // namespace plotix
