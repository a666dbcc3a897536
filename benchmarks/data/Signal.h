#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

/// What every drawing program is given to draw, ours and those we compare with: signals sampled once a second, and the
/// ranges a pan shows.
///
/// The same seeds give the same values in every program. Standard C++17 alone, because a program over another version
/// of the toolkit includes it too. Pure; any thread.
namespace plotix_bench {

inline constexpr double kStart = 1.4e9;  ///< of every signal, seconds since 1970-01-01 UTC

/// Room around the plot area for labels, pixels.
inline constexpr int kMarginLeft = 60;
inline constexpr int kMarginTop = 20;
inline constexpr int kMarginRight = 20;
inline constexpr int kMarginBottom = 60;
inline constexpr double kPenWidth = 3;

/// Xorshift: a hundred million numbers in a fraction of a second.
class Noise {
public:
    explicit Noise(unsigned seed) : m_state(0x9e3779b97f4a7c15U * (seed + 1U)) {}

    /// Within −1…1.
    double next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return static_cast<double>(m_state >> 11) * 0x1p-52 - 1.0;
    }

private:
    std::uint64_t m_state;
};

enum class SignalKind {
    Walk,   ///< a random walk with a slight pull to 0
    Noisy,  ///< a slow swing under noise a quarter of its size: most of every pixel column is filled
};

class Signal {
public:
    Signal(SignalKind kind, unsigned seed) : m_kind(kind), m_noise(seed), m_seed(seed) {}

    double next()
    {
        if (m_kind == SignalKind::Walk)
            return m_value = m_value * 0.99999 + m_noise.next();
        m_value += 2e-6 * (m_seed + 1);
        return std::sin(m_value) + 0.25 * m_noise.next();
    }

private:
    SignalKind m_kind;
    Noise m_noise;
    unsigned m_seed;
    double m_value = 0;
};

/// A range of times, seconds.
struct TimeRange {
    double start = 0;
    double length = 0;
};

/// The fraction `share` of all times of signals of `points` values, moved by `step` pixels of a picture `width` pixels
/// wide.
inline TimeRange pannedRange(std::size_t points, double share, int step, int width)
{
    const double all = static_cast<double>(points);
    const double length = all * share;
    const double start = share < 1 ? kStart + all * 0.4 : kStart;
    return {start + step * length / (width - kMarginLeft - kMarginRight), length};
}

/// A hue a plot, 0…359.
inline int hueOf(int plot, int plots)
{
    return plot * 360 / plots;
}

}  // namespace plotix_bench
