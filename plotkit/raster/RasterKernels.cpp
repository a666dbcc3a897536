#include "plotkit/raster/RasterKernels.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "plotkit/raster/RasterKernels.cpp"
#include "base/vectors/Kernels.h"

#include <hwy/cache_control.h>

HWY_BEFORE_NAMESPACE();
namespace plotkit {
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using namespace plotix::vectors::HWY_NAMESPACE;

constexpr int kColumns = RasterKernels::kLanes;

#include "plotkit/raster/RasterExtentsBody.h"

// A share is the coverage of a pixel as a fraction, with 15 bits after the point; so are products with it, rounded.
constexpr int kThird = 10923;       ///< a share is coverage × 32768 / kWhole: a third more
constexpr int kWholeShare = 32767;  ///< of values up to 255 each is left as it is

/// What is left of a pixel under a colour at full strength.
HWY_INLINE int hidingOf(quint32 color)
{
    return (static_cast<int>(color >> 24) * 32768 + 127) / 255;
}

/// Every channel times share / 255, rounded: two channels at once, which no product of two bytes carries into the
/// other.
HWY_INLINE quint32 faded(quint32 pixel, quint32 share)
{
    constexpr quint32 kBytes = 0xff00ffU;
    quint32 redBlue = (pixel & kBytes) * share;
    quint32 alphaGreen = (pixel >> 8 & kBytes) * share;
    redBlue = (redBlue + (redBlue >> 8 & kBytes) + 0x800080U) >> 8 & kBytes;
    alphaGreen = (alphaGreen + (alphaGreen >> 8 & kBytes) + 0x800080U) & ~kBytes;
    return redBlue | alphaGreen;
}

/// Source over with the colour at each share of its strength, 0…255.
HWY_INLINE void blendOneByOne(quint32* pixels, const quint8* mask, std::ptrdiff_t count, quint32 color)
{
    for (std::ptrdiff_t column = 0; column < count; ++column) {
        const quint32 ink = faded(color, mask[column]);
        pixels[column] = faded(pixels[column], 255U - (ink >> 24)) + ink;
    }
}

#if HWY_TARGET == HWY_SCALAR

constexpr int scaled(int value, int share)
{
    return (value * share + 0x4000) >> 15;
}

static_assert(RasterKernels::kWhole + scaled(RasterKernels::kWhole, kThird) == 32768);

quint32 blended(quint32 pixel, quint32 color, int share)
{
    const int hidden = scaled(share, hidingOf(color));
    quint32 result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int there = static_cast<int>(pixel >> shift & 255U);
        const int ink = static_cast<int>(color >> shift & 255U);
        const int channel = color >> 24 == 255U ? there + scaled(ink - there, share)
                                                : std::min(there - scaled(there, hidden) + scaled(ink, share), 255);
        result |= static_cast<quint32>(channel) << shift;
    }
    return result;
}

void blendRows(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes, quint32 color)
{
    std::array<int, kColumns> coverage{};
    for (int row = 0; row < rows; ++row, changes += kColumns, pixels += stride) {
        for (int lane = 0; lane < kColumns; ++lane) {
            int& covered = coverage[static_cast<std::size_t>(lane)];
            covered += changes[lane];
            changes[lane] = 0;
            if (covered != 0)
                pixels[lane] = blended(pixels[lane], color, std::min(covered + scaled(covered, kThird), kWholeShare));
        }
    }
}

void blendMask(quint32* pixels, const quint8* mask, int count, quint32 color)
{
    blendOneByOne(pixels, mask, count, color);
}

#else

// Pixels: their channels are worked on two by two, in the halves of each pixel's 32 bits.
using PixelTag = hn::CappedTag<quint32, kColumns>;
using HalfTag = hn::Repartition<qint16, PixelTag>;
using Pixels = hn::Vec<PixelTag>;
using Halves = hn::Vec<HalfTag>;
constexpr PixelTag kPixels;
constexpr HalfTag kHalves;
constexpr std::size_t kPixelsAtOnce = hn::MaxLanes(kPixels);
constexpr std::size_t kPixelParts = kColumns / kPixelsAtOnce;

/// Rows are too far apart for the processor to prefetch them by itself. Past the last row nothing is touched.
constexpr std::ptrdiff_t kRowsAhead = 16;

/// Red and blue, or alpha and green, of each pixel.
HWY_INLINE Halves redBlue(Pixels pixels)
{
    return hn::BitCast(kHalves, hn::And(pixels, hn::Set(kPixels, 0xff00ffU)));
}

HWY_INLINE Halves alphaGreen(Pixels pixels)
{
    return hn::BitCast(kHalves, hn::ShiftRight<8>(hn::BitCast(hn::RebindToUnsigned<HalfTag>(), pixels)));
}

/// Numbers of 16 bits in both halves of a pixel each.
HWY_INLINE Halves inBothHalves(Pixels numbers)
{
    return hn::BitCast(kHalves, hn::Or(numbers, hn::ShiftLeft<16>(numbers)));
}

/// A colour at full strength.
struct Ink {
    explicit HWY_INLINE Ink(quint32 color)
        : whole(hn::Set(kPixels, color)),
          redBlue(HWY_NAMESPACE::redBlue(whole)),
          alphaGreen(HWY_NAMESPACE::alphaGreen(whole)),
          hiding(hn::Set(kHalves, static_cast<qint16>(std::min(hidingOf(color), kWholeShare))))
    {
    }

    Pixels whole;
    Halves redBlue, alphaGreen;
    Halves hiding;
};

/// Red and blue, and alpha and green, as pixels again.
HWY_INLINE Pixels joined(Halves redBlues, Halves alphaGreens)
{
    return hn::BitCast(kPixels, hn::Or(redBlues, hn::ShiftLeft<8>(alphaGreens)));
}

/// Blends a colour into pixels; what depends on their coverage alone is worked out once, in setShares().
template <bool kOpaque>
struct Blend;

template <>
struct Blend<true> {
    HWY_INLINE Blend() {}  // a defaulted one would not be compiled for this target
    HWY_INLINE void setShares(const Ink& /*ink*/, Halves to) { shares = to; }
    HWY_INLINE Pixels over(const Ink& ink, Pixels there) const
    {
        // No channel leaves its byte, so that sums of 16 bits carry nothing from one into the other.
        const Halves alphaGreens = changed(alphaGreen(there), ink.alphaGreen);
        const Halves redBlues = hn::Add(hn::BitCast(kHalves, there), changed(redBlue(there), ink.redBlue));
        return hn::BitCast(kPixels, hn::Add(redBlues, hn::ShiftLeft<8>(alphaGreens)));
    }
    HWY_INLINE Halves changed(Halves there, Halves ink) const
    {
        return hn::MulFixedPoint15(hn::Sub(ink, there), shares);
    }

    Halves shares;
};

template <>
struct Blend<false> {
    HWY_INLINE Blend() {}
    HWY_INLINE void setShares(const Ink& ink, Halves shares)
    {
        hidden = hn::MulFixedPoint15(shares, ink.hiding);
        added = joined(hn::MulFixedPoint15(ink.redBlue, shares), hn::MulFixedPoint15(ink.alphaGreen, shares));
    }
    HWY_INLINE Pixels over(const Ink& /*ink*/, Pixels there) const
    {
        constexpr hn::Repartition<quint8, PixelTag> kBytes;
        const Pixels lost =
            joined(hn::MulFixedPoint15(redBlue(there), hidden), hn::MulFixedPoint15(alphaGreen(there), hidden));
        const auto left = hn::Sub(hn::BitCast(kBytes, there), hn::BitCast(kBytes, lost));
        return hn::BitCast(kPixels, hn::SaturatedAdd(left, hn::BitCast(kBytes, added)));
    }

    Halves hidden;
    Pixels added;
};

/// The coverage of sixteen pixel columns, carried from row to row.
class Coverage {
public:
    HWY_INLINE Coverage()
    {
        unrolled<kCoverParts>([&](auto part) HWY_ATTR { m_covered[part] = hn::Zero(kCovers); });
    }
    /// Adds a row's changes and sets them to zero; false where there are none.
    HWY_INLINE bool take(qint16* changes)
    {
        bool isSame = true;
        unrolled<kCoverParts>([&](auto part) HWY_ATTR {
            const auto change = hn::LoadU(kCovers, changes + part * kCoversAtOnce);
            isSame &= hn::AllTrue(kCovers, hn::Eq(change, hn::Zero(kCovers)));
        });
        if (isSame)
            return false;
        unrolled<kCoverParts>([&](auto part) HWY_ATTR {
            qint16* at = changes + part * kCoversAtOnce;
            m_covered[part] = hn::Add(m_covered[part], hn::LoadU(kCovers, at));
            hn::StoreU(hn::Zero(kCovers), kCovers, at);
        });
        return true;
    }
    HWY_INLINE bool isAll(int coverage) const
    {
        bool is = hn::GetLane(m_covered[0]) == coverage;  // which mostly answers it
        if (!is)
            return false;
        unrolled<kCoverParts>([&](auto part) HWY_ATTR {
            is &= hn::AllTrue(kCovers, hn::Eq(m_covered[part], hn::Set(kCovers, static_cast<qint16>(coverage))));
        });
        return is;
    }
    /// Each pixel's share in both of its halves.
    HWY_INLINE void shares(Halves* into) const
    {
        unrolled<kCoverParts>([&](auto part) HWY_ATTR {
            const auto third = hn::MulFixedPoint15(m_covered[part], hn::Set(kCovers, static_cast<qint16>(kThird)));
            const auto share = hn::SaturatedAdd(m_covered[part], third);
            if constexpr (kPixelParts == kCoverParts) {
                const auto numbers = hn::PromoteTo(kPixels, hn::BitCast(hn::RebindToUnsigned<CoverTag>(), share));
                into[part] = inBothHalves(numbers);
            } else {
                // Of each block of eight the lower four and the upper four.
                const auto lower = hn::InterleaveLower(kCovers, share, share);
                const auto upper = hn::InterleaveUpper(kCovers, share, share);
#if HWY_MAX_BYTES == 32
                into[2 * part] = hn::ConcatLowerLower(kHalves, upper, lower);
                into[2 * part + 1] = hn::ConcatUpperUpper(kHalves, upper, lower);
#else
                into[2 * part] = lower;
                into[2 * part + 1] = upper;
#endif
            }
        });
    }

private:
    using CoverTag = hn::CappedTag<qint16, kColumns>;
    static constexpr CoverTag kCovers{};
    static constexpr std::size_t kCoversAtOnce = hn::MaxLanes(kCovers);
    static constexpr std::size_t kCoverParts = kColumns / kCoversAtOnce;

    hn::Vec<CoverTag> m_covered[kCoverParts];
};

template <bool kOpaque>
HWY_INLINE void blendRowsOf(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes, const Ink& ink)
{
    Coverage coverage;
    Halves shares[kPixelParts];
    Blend<kOpaque> blends[kPixelParts];
    bool isNothing = true;
    bool isAll = false;
    for (int row = 0; row < rows; ++row, changes += kColumns, pixels += stride) {
        hwy::Prefetch(pixels + kRowsAhead * stride);
        if (coverage.take(changes)) {
            coverage.shares(shares);
            unrolled<kPixelParts>([&](auto part) HWY_ATTR { blends[part].setShares(ink, shares[part]); });
            isNothing = coverage.isAll(0);
            isAll = kOpaque && coverage.isAll(RasterKernels::kWhole);
        }
        if (isNothing)
            continue;
        unrolled<kPixelParts>([&](auto part) HWY_ATTR {
            quint32* at = pixels + part * kPixelsAtOnce;
            if (isAll) {
                hn::StoreU(ink.whole, kPixels, at);
                return;
            }
            hn::StoreU(blends[part].over(ink, hn::LoadU(kPixels, at)), kPixels, at);
        });
    }
}

void blendRows(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes, quint32 color)
{
    const Ink ink(color);
    if (color >> 24 == 255U)
        blendRowsOf<true>(pixels, stride, rows, changes, ink);
    else
        blendRowsOf<false>(pixels, stride, rows, changes, ink);
}

/// Every channel times its share / 255, rounded; `shares` holds each pixel's share in both halves, which no product of
/// two bytes overflows.
HWY_INLINE Pixels faded(Pixels pixels, Halves shares)
{
    constexpr hn::RebindToUnsigned<HalfTag> kProducts;
    const auto half = hn::Set(kProducts, 0x80);
    const auto times = hn::BitCast(kProducts, shares);
    auto redBlues = hn::Mul(hn::BitCast(kProducts, redBlue(pixels)), times);
    auto alphaGreens = hn::Mul(hn::BitCast(kProducts, alphaGreen(pixels)), times);
    redBlues = hn::ShiftRight<8>(hn::Add(hn::Add(redBlues, hn::ShiftRight<8>(redBlues)), half));
    alphaGreens = hn::Add(hn::Add(alphaGreens, hn::ShiftRight<8>(alphaGreens)), half);
    const Pixels alphaGreen = hn::And(hn::BitCast(kPixels, alphaGreens), hn::Set(kPixels, 0xff00ff00U));
    return hn::Or(hn::BitCast(kPixels, redBlues), alphaGreen);
}

HWY_INLINE void blendSome(quint32* pixels, const quint8* mask, Pixels color)
{
    const Pixels shares = hn::PromoteTo(kPixels, hn::LoadU(hn::Rebind<quint8, PixelTag>(), mask));
    const Pixels ink = faded(color, inBothHalves(shares));
    const Pixels rest = hn::Sub(hn::Set(kPixels, 255), hn::ShiftRight<24>(ink));
    hn::StoreU(hn::Add(faded(hn::LoadU(kPixels, pixels), inBothHalves(rest)), ink), kPixels, pixels);
}

void blendMask(quint32* pixels, const quint8* mask, int count, quint32 color)
{
    const Pixels ink = hn::Set(kPixels, color);
    const std::ptrdiff_t whole = count - count % static_cast<int>(kPixelsAtOnce);
    for (std::ptrdiff_t column = 0; column < whole; column += kPixelsAtOnce)
        blendSome(pixels + column, mask + column, ink);
    blendOneByOne(pixels + whole, mask + whole, count - whole, color);
}

#endif

const RasterKernels& kernels()
{
    static constexpr RasterKernels kTable{shrink, dilate, blendRows, blendMask};
    return kTable;
}

}  // namespace HWY_NAMESPACE
}  // namespace
}  // namespace plotkit
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace plotkit {

namespace {
HWY_EXPORT(kernels);
}  // namespace

const RasterKernels& RasterKernels::best()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

}  // namespace plotkit
#endif
