#include "plotkit/raster/RasterKernels.h"

#include <array>
#include <cstring>
#include <limits>

// Each loop is written once, over vectors of the compiler's own, and compiled for each processor. Channels are
// multiplied two by two in the halves of 32 bits, which no product of two bytes overflows.

#define PLOTKIT_BODY inline __attribute__((always_inline))

namespace plotkit {

namespace {

using Float8 = float __attribute__((vector_size(32)));
using Int8 = qint32 __attribute__((vector_size(32)));
using Pixels8 = quint32 __attribute__((vector_size(32)));
using Halves16 = quint16 __attribute__((vector_size(32)));

constexpr int kLanes = RasterKernels::kLanes;
constexpr int kVector = 8;

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

/// Every channel times its share / 255, rounded; `shares` holds each pixel's share in both halves.
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

PLOTKIT_BODY void blendAt(quint32* at, quint32 color, const Pixels8& shares)
{
    Pixels8 pixels;
    load(pixels, at);
    blend(pixels, color, shares);
    store(at, pixels);
}

PLOTKIT_BODY void dilateBody(const float* low, const float* high, float* top, float* bottom, int count,
                             const float* left, const float* right, int taps)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (int base = 0; base < count; base += kVector) {
        Float8 lowest = Float8{} + kInfinity;
        Float8 highest = Float8{} - kInfinity;
        for (int tap = 0; tap < taps; ++tap) {
            Float8 one;
            Float8 other;
            load(one, low + base - tap);
            load(other, low + base + 1 + tap);
            one -= left[tap];
            other -= right[tap];
            lowest = one < lowest ? one : lowest;
            lowest = other < lowest ? other : lowest;
            load(one, high + base - tap);
            load(other, high + base + 1 + tap);
            one += left[tap];
            other += right[tap];
            highest = one > highest ? one : highest;
            highest = other > highest ? other : highest;
        }
        store(top + base, lowest);
        store(bottom + base, highest);
    }
}

PLOTKIT_BODY bool anyChange(const qint32* changes)
{
    std::array<quint64, kLanes / 2> words;
    std::memcpy(words.data(), changes, sizeof words);
    quint64 any = 0;
    for (const quint64 word : words)
        any |= word;
    return any != 0;
}

PLOTKIT_BODY void blendRowsBody(quint32* pixels, std::ptrdiff_t stride, int rows, qint32* changes, qint32* coverage,
                                int fullBits, quint32 color)
{
    const qint32 half = 1 << (fullBits - 1);
    Int8 summed[2];
    Pixels8 shares[2];
    load(summed[0], coverage);
    load(summed[1], coverage + kVector);
    const Pixels8 ink = Pixels8{} + color;
    bool isNothing = false;
    bool isAll = false;
    bool isFresh = true;
    for (int row = 0; row < rows; ++row, changes += kLanes, pixels += stride) {
        if (isFresh || anyChange(changes)) {
            for (int part = 0; part < 2; ++part) {
                Int8 change;
                load(change, changes + part * kVector);
                store(changes + part * kVector, Int8{});
                summed[part] += change;
                shares[part] = (Pixels8)(((summed[part] << 8) - summed[part] + half) >> fullBits);
            }
            std::array<quint32, kLanes> each;
            std::memcpy(each.data(), shares, sizeof each);
            quint32 any = 0;
            quint32 all = 255U;
            for (const quint32 share : each) {
                any |= share;
                all &= share;
            }
            isNothing = any == 0;
            isAll = all == 255U && color >> 24 == 255U;
            isFresh = false;
        }
        if (isNothing)
            continue;
        if (isAll) {
            store(pixels, ink);
            store(pixels + kVector, ink);
            continue;
        }
        blendAt(pixels, color, shares[0]);
        blendAt(pixels + kVector, color, shares[1]);
    }
    store(coverage, summed[0]);
    store(coverage + kVector, summed[1]);
}

PLOTKIT_BODY void fillRowsBody(quint32* pixels, std::ptrdiff_t stride, int rows, quint32 color)
{
    const bool opaque = (color >> 24) == 255U;
    const Pixels8 ink = Pixels8{} + color;
    const Pixels8 whole = Pixels8{} + 255U;
    for (int row = 0; row < rows; ++row, pixels += stride) {
        for (int lane = 0; lane < kLanes; lane += kVector) {
            if (opaque)
                store(pixels + lane, ink);
            else
                blendAt(pixels + lane, color, whole);
        }
    }
}

PLOTKIT_BODY void blendMaskBody(quint32* pixels, const quint8* mask, int count, quint32 color)
{
    int column = 0;
    for (; column + kVector <= count; column += kVector) {
        Pixels8 shares;
        for (int lane = 0; lane < kVector; ++lane)
            shares[lane] = mask[column + lane];
        blendAt(pixels + column, color, shares);
    }
    if (column == count)
        return;
    Pixels8 rest{};
    Pixels8 shares{};
    for (int lane = 0; column + lane < count; ++lane) {
        rest[lane] = pixels[column + lane];
        shares[lane] = mask[column + lane];
    }
    blend(rest, color, shares);
    for (int lane = 0; column + lane < count; ++lane)
        pixels[column + lane] = rest[lane];
}

// One set of functions a processor; the bodies are taken in and compiled for it.
#define PLOTKIT_KERNELS(name, attributes)                                                                              \
    struct name {                                                                                                      \
        attributes static void dilate(const float* low, const float* high, float* top, float* bottom, int count,       \
                                      const float* left, const float* right, int taps)                                 \
        {                                                                                                              \
            dilateBody(low, high, top, bottom, count, left, right, taps);                                              \
        }                                                                                                              \
        attributes static void blendRows(quint32* pixels, std::ptrdiff_t stride, int rows, qint32* changes,            \
                                         qint32* coverage, int fullBits, quint32 color)                                \
        {                                                                                                              \
            blendRowsBody(pixels, stride, rows, changes, coverage, fullBits, color);                                   \
        }                                                                                                              \
        attributes static void fillRows(quint32* pixels, std::ptrdiff_t stride, int rows, quint32 color)               \
        {                                                                                                              \
            fillRowsBody(pixels, stride, rows, color);                                                                 \
        }                                                                                                              \
        attributes static void blendMask(quint32* pixels, const quint8* mask, int count, quint32 color)                \
        {                                                                                                              \
            blendMaskBody(pixels, mask, count, color);                                                                 \
        }                                                                                                              \
        static constexpr RasterKernels table{dilate, blendRows, fillRows, blendMask};                                  \
    };

PLOTKIT_KERNELS(ForEveryProcessor, )
#if defined(__x86_64__)
PLOTKIT_KERNELS(ForAvx2, __attribute__((target("avx2"))))
#endif

}  // namespace

const RasterKernels& RasterKernels::plain()
{
    return ForEveryProcessor::table;
}

const RasterKernels& RasterKernels::best()
{
#if defined(__x86_64__)
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    if (hasAvx2)
        return ForAvx2::table;
#endif
    return plain();
}

}  // namespace plotkit
