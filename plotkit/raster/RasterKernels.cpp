#include "plotkit/raster/RasterKernels.h"

#include "plotkit/raster/RasterLoops.h"

#include <algorithm>
#include <array>

namespace plotkit {

namespace {

constexpr int kLanes = RasterKernels::kLanes;

/// Shares are 15 bits after the point, and so are products with them, rounded: what the wider processors' 16-bit
/// multiplication gives.
constexpr int scaled(int value, int share)
{
    return (value * share + 0x4000) >> 15;
}

/// A share is coverage × 32768 / kWhole: a third more.
constexpr int kThird = 10923;
static_assert(RasterKernels::kWhole + scaled(RasterKernels::kWhole, kThird) == 32768);

constexpr int kWholeShare = 32767;  // of values up to 255 each is left as it is

quint32 blended(quint32 pixel, quint32 color, int share)
{
    const int alpha = static_cast<int>(color >> 24);
    const int hidden = scaled(share, (alpha * 32768 + 127) / 255);
    quint32 result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int there = static_cast<int>(pixel >> shift & 255U);
        const int ink = static_cast<int>(color >> shift & 255U);
        const int channel = alpha == 255 ? there + scaled(ink - there, share)
                                         : std::min(there - scaled(there, hidden) + scaled(ink, share), 255);
        result |= static_cast<quint32>(channel) << shift;
    }
    return result;
}

struct Plain {
    static void blendRows(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes, quint32 color)
    {
        std::array<int, kLanes> coverage{};
        for (int row = 0; row < rows; ++row, changes += kLanes, pixels += stride) {
            for (int lane = 0; lane < kLanes; ++lane) {
                int& covered = coverage[static_cast<std::size_t>(lane)];
                covered += changes[lane];
                changes[lane] = 0;
                if (covered != 0)
                    pixels[lane] =
                        blended(pixels[lane], color, std::min(covered + scaled(covered, kThird), kWholeShare));
            }
        }
    }

    static void shrink(const float* enter, const float* leave, const float* low, const float* high, float* shrunkLow,
                       float* shrunkHigh, std::ptrdiff_t count, SlopeSpread spread)
    {
        loops::shrink(enter, leave, low, high, shrunkLow, shrunkHigh, count, spread);
    }

    static void dilate(const float* low, const float* high, qint32* top, qint32* bottom, int count,
                       const DiscChords& chords, int firstRow, int lastRow)
    {
        loops::dilate<loops::Float8, loops::Int8>(low, high, top, bottom, count, chords, firstRow, lastRow);
    }

    static void blendMask(quint32* pixels, const quint8* mask, int count, quint32 color)
    {
        loops::blendMask(pixels, mask, count, color);
    }
};

}  // namespace

const RasterKernels& RasterKernels::plain()
{
    static constexpr RasterKernels kernels{Plain::shrink, Plain::dilate, Plain::blendRows, Plain::blendMask};
    return kernels;
}

const RasterKernels& RasterKernels::best()
{
    if (const RasterKernels* kernels = avx512())
        return *kernels;
    if (const RasterKernels* kernels = avx2())
        return *kernels;
    return plain();
}

}  // namespace plotkit
