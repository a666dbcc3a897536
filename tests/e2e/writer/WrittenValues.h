#pragma once

#include <bit>
#include <cstdint>

/// The values that archive_writer stores at a whole time: readers can tell what they must be.
namespace plotix {

/// Packs well.
inline double evenValue(double time)
{
    return static_cast<double>(static_cast<std::int64_t>(time) % 2000) / 4;
}

/// Any bits, NaNs and -0.0 among them.
inline double oddValue(double time)
{
    std::uint64_t bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(time)) * 0x9E3779B97F4A7C15;
    bits ^= bits >> 31;
    return std::bit_cast<double>(bits % 64 == 0 ? 0x8000000000000000 : bits);
}

}  // namespace plotix
