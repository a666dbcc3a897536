#include "hostapp/demo/StationNoise.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

/// Spreads 64 bits over 64 bits (the finaliser known as SplitMix64).
std::uint64_t scatter(std::uint64_t bits)
{
    bits += 0x9E37'79B9'7F4A'7C15U;
    bits = (bits ^ (bits >> 30)) * 0xBF58'476D'1CE4'E5B9U;
    bits = (bits ^ (bits >> 27)) * 0x94D0'49BB'1331'11EBU;
    return bits ^ (bits >> 31);
}

std::uint64_t bitsAt(const NoiseSource& source, std::int64_t cell, std::uint32_t index)
{
    const std::uint64_t place = (std::uint64_t{source.channel} << 32) | index;
    return scatter(scatter(source.seed ^ scatter(place)) ^ static_cast<std::uint64_t>(cell));
}

}  // namespace

double NoiseSource::uniform(std::int64_t cell, std::uint32_t index) const
{
    return static_cast<double>(bitsAt(*this, cell, index) >> 11) * 0x1p-53;
}

/// The sum of four uniform numbers of 16 bits each.
double NoiseSource::normal(std::int64_t cell) const
{
    const std::uint64_t bits = bitsAt(*this, cell, 0);
    const auto part = [bits](int shift) { return static_cast<double>((bits >> shift) & 0xFFFFU) / 65'536.0; };
    return (part(0) + part(16) + part(32) + part(48) - 2.0) * std::sqrt(3.0);
}

double NoiseSource::smooth(double seconds, double period) const
{
    const double place = seconds / period;
    const double whole = std::floor(place);
    const double f = place - whole;
    const auto cell = static_cast<std::int64_t>(whole);
    const double a = normal(cell - 1), b = normal(cell), c = normal(cell + 1), d = normal(cell + 2);
    return b + 0.5 * f * (c - a + f * (2 * a - 5 * b + 4 * c - d + f * (3 * (b - c) + d - a)));  // Catmull-Rom
}

double smoothStep(double value, double low, double high)
{
    const double part = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return part * part * (3 - 2 * part);
}

}  // namespace plotix
