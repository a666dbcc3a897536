#pragma once

#include "plotkit/raster/RasterKernels.h"

#include <algorithm>
#include <cstring>
#include <limits>

/// Loops over vectors of the compiler's own, to be taken into functions compiled for one processor each. Internal to
/// the kernels.

#define PLOTKIT_BODY inline __attribute__((always_inline))

namespace plotkit::loops {

using Float8 = float __attribute__((vector_size(32)));
using Float16 = float __attribute__((vector_size(64)));
using Int8 = qint32 __attribute__((vector_size(32)));
using Int16 = qint32 __attribute__((vector_size(64)));
using Pixels8 = quint32 __attribute__((vector_size(32)));
using Halves16 = quint16 __attribute__((vector_size(32)));

template <class Vector>
inline constexpr int kNumbers = sizeof(Vector) / sizeof(qint32);

template <class Vector, class Number>
PLOTKIT_BODY void load(Vector& vector, const Number* numbers)
{
    std::memcpy(&vector, numbers, sizeof vector);
}

template <class Vector, class Number>
PLOTKIT_BODY void store(Number* numbers, const Vector& vector)
{
    std::memcpy(numbers, &vector, sizeof vector);
}

template <class Vector>
PLOTKIT_BODY void lower(Vector& least, const Vector& other)
{
    least = other < least ? other : least;
}

template <class Vector>
PLOTKIT_BODY void raise(Vector& greatest, const Vector& other)
{
    greatest = other > greatest ? other : greatest;
}

/// One vector of columns: see RasterKernels::shrink.
PLOTKIT_BODY void shrinkEight(const float* enter, const float* leave, const float* low, const float* high,
                              float* shrunkLow, float* shrunkHigh, SlopeSpread spread)
{
    const Float8 zero{};
    Float8 in, out, lowest, highest;
    load(in, enter);
    load(out, leave);
    load(lowest, low);
    load(highest, high);
    Float8 top = in, bottom = in;
    lower(top, out);
    raise(bottom, out);
    const Float8 rise = bottom - top;
    Float8 above = top - lowest;
    Float8 below = highest - bottom;
    const auto passes = rise > zero && lowest <= highest && (above + above < rise || below + below < rise);
    raise(above, zero);
    raise(below, zero);
    Float8 steepness = 1.0F - spread.gentle / rise;
    raise(steepness, zero);
    const Float8 shift = rise * 0.5F * (1.0F - spread.most * (steepness * steepness));
    Float8 innerLow = top + shift - (above + above);
    Float8 innerHigh = bottom - shift + (below + below);
    raise(innerLow, lowest);
    lower(innerHigh, highest);
    const Float8 middle = (innerLow + innerHigh) * 0.5F;
    const auto crossed = innerLow > innerHigh;
    innerLow = crossed ? middle : innerLow;
    innerHigh = crossed ? middle : innerHigh;
    store(shrunkLow, passes ? innerLow : lowest);
    store(shrunkHigh, passes ? innerHigh : highest);
}

PLOTKIT_BODY void shrink(const float* enter, const float* leave, const float* low, const float* high, float* shrunkLow,
                         float* shrunkHigh, std::ptrdiff_t count, SlopeSpread spread)
{
    constexpr std::ptrdiff_t kAtOnce = kNumbers<Float8>;
    std::ptrdiff_t column = 0;
    for (; column + kAtOnce <= count; column += kAtOnce)
        shrinkEight(enter + column, leave + column, low + column, high + column, shrunkLow + column,
                    shrunkHigh + column, spread);
    if (column == count)
        return;
    float rest[6][kAtOnce] = {};
    const float* from[4] = {enter, leave, low, high};
    for (int row = 0; row < 4; ++row)
        std::copy_n(from[row] + column, count - column, rest[row]);
    shrinkEight(rest[0], rest[1], rest[2], rest[3], rest[4], rest[5], spread);
    std::copy_n(rest[4], count - column, shrunkLow + column);
    std::copy_n(rest[5], count - column, shrunkHigh + column);
}

/// In steps below the first row. Multiplying by a power of two is exact, so that no processor's way of adding to a
/// product makes a difference.
template <class Floats, class Ints>
PLOTKIT_BODY void storeRows(qint32* steps, Floats& rows, int firstRow, int lastRow)
{
    raise(rows, Floats{} + static_cast<float>(firstRow));
    lower(rows, Floats{} + static_cast<float>(lastRow));
    rows = rows * static_cast<float>(RasterKernels::kRowSteps) + 0.5F;
    store(steps, __builtin_convertvector(rows, Ints) - firstRow * RasterKernels::kRowSteps);
}

template <class Floats, class Ints>
PLOTKIT_BODY void dilate(const float* low, const float* high, qint32* top, qint32* bottom, int count,
                         const DiscChords& chords, int firstRow, int lastRow)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr int kWidth = kNumbers<Floats>;
    constexpr int kParts = RasterKernels::kLanes / kWidth;
    for (int base = 0; base < count; base += RasterKernels::kLanes) {
        Floats lowest[kParts], highest[kParts];
        for (int part = 0; part < kParts; ++part) {
            lowest[part] = Floats{} + kInfinity;
            highest[part] = Floats{} - kInfinity;
        }
        for (int tap = 0; tap < chords.taps; ++tap) {
            for (int part = 0; part < kParts; ++part) {
                const std::ptrdiff_t before = base + part * kWidth - tap;
                const std::ptrdiff_t after = base + part * kWidth + 1 + tap;
                Floats one, other;
                load(one, low + before);
                load(other, low + after);
                lower(one, other);
                lower(lowest[part], one - chords.heights[tap]);
                load(one, high + before);
                load(other, high + after);
                raise(one, other);
                raise(highest[part], one + chords.heights[tap]);
            }
        }
        for (int part = 0; part < kParts; ++part) {
            storeRows<Floats, Ints>(top + base + part * kWidth, lowest[part], firstRow, lastRow);
            storeRows<Floats, Ints>(bottom + base + part * kWidth, highest[part], firstRow, lastRow);
        }
    }
}

/// Every channel times its share / 255, rounded; `shares` holds each pixel's share in both halves. Channels are
/// multiplied two by two in the halves of 32 bits, which no product of two bytes overflows.
PLOTKIT_BODY void scale(Pixels8& pixels, const Pixels8& shares)
{
    const Pixels8 mask = Pixels8{} + 0xff00ffU;
    Halves16 redBlue = (Halves16)(pixels & mask) * (Halves16)shares;
    Halves16 alphaGreen = (Halves16)((pixels >> 8) & mask) * (Halves16)shares;
    redBlue = (redBlue + (redBlue >> 8) + 0x80) >> 8;
    alphaGreen = alphaGreen + (alphaGreen >> 8) + 0x80;
    pixels = (Pixels8)redBlue | ((Pixels8)alphaGreen & ~mask);
}

/// Source over with the colour at that share of its strength, 0…255.
PLOTKIT_BODY void blend(Pixels8& pixels, quint32 color, const Pixels8& shares)
{
    Pixels8 ink = Pixels8{} + color;
    scale(ink, shares | (shares << 16));
    const Pixels8 rest = 255U - (ink >> 24);
    scale(pixels, rest | (rest << 16));
    pixels += ink;
}

PLOTKIT_BODY void blendMask(quint32* pixels, const quint8* mask, int count, quint32 color)
{
    constexpr int kAtOnce = kNumbers<Pixels8>;
    for (int column = 0; column < count; column += kAtOnce) {
        const int some = std::min(kAtOnce, count - column);
        const auto bytes = static_cast<std::size_t>(some) * sizeof(quint32);
        Pixels8 there{}, shares{};
        for (int lane = 0; lane < some; ++lane)
            shares[lane] = mask[column + lane];
        std::memcpy(&there, pixels + column, bytes);
        blend(there, color, shares);
        std::memcpy(pixels + column, &there, bytes);
    }
}

}  // namespace plotkit::loops
