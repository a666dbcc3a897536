#include "base/png/PngRows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "base/png/PngRows.cpp"
#include "base/vectors/Kernels.h"

HWY_BEFORE_NAMESPACE();
namespace plotix {
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <int kBytes>
constexpr quint32 kKept = kBytes == 3 ? 0x00ffffffU : 0xffffffffU;

/// Four differences of bytes at once: the highest bits separately, so that no byte borrows from its neighbour.
quint32 difference(quint32 left, quint32 right)
{
    constexpr quint32 kHighest = 0x80808080U;
    return ((left | kHighest) - (right & ~kHighest)) ^ ((left ^ ~right) & kHighest);
}

/// The columns from `first` on, a multiple of 64 unless it is the row's end.
template <int kBytes>
void differencesFrom(const PngRow& row, int first)
{
    quint8* bytes = row.bytes + first * kBytes;
    quint64 word = 0;
    for (int column = first; column < row.width; ++column, bytes += kBytes) {
        const quint32 now = difference(row.pixels[column], row.above[column]) & kKept<kBytes>;
        row.differences[column] = now;
        bytes[0] = static_cast<quint8>(now >> 16);
        bytes[1] = static_cast<quint8>(now >> 8);
        bytes[2] = static_cast<quint8>(now);
        if constexpr (kBytes == 4)
            bytes[3] = static_cast<quint8>(now >> 24);
        const bool repeats = column > 0 && now == row.differences[column - 1];
        word |= quint64{repeats} << (column & 63);
        if ((column & 63) == 63 || column == row.width - 1) {
            row.repeats[column >> 6] = word;
            word = 0;
        }
    }
}

#if HWY_TARGET == HWY_SCALAR

template <int kBytes>
void differences(const PngRow& row)
{
    differencesFrom<kBytes>(row, 0);
}

#else

constexpr hn::CappedTag<quint32, 8> kPixels;
constexpr hn::Repartition<quint8, decltype(kPixels)> kChannels;
constexpr int kAtOnce = static_cast<int>(hn::MaxLanes(kPixels));
using Pixels = hn::Vec<decltype(kPixels)>;

constexpr quint8 kNone = 0x80;  // of a table: answers 0

/// Stores the bytes of differences in file order. Three bytes a pixel: four bytes behind them, which the next ones
/// cover, are written too.
template <int kBytes>
HWY_INLINE void storeInFileOrder(Pixels differences, quint8* to)
{
    alignas(16) static constexpr quint8 kFour[16] = {2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15};
    alignas(16) static constexpr quint8 kThree[16] = {2, 1,  0,  6,  5,     4,     10,    9,
                                                      8, 14, 13, 12, kNone, kNone, kNone, kNone};
    const auto table = hn::LoadDup128(kChannels, kBytes == 4 ? kFour : kThree);
    const auto ordered = hn::TableLookupBytesOr0(hn::BitCast(kChannels, differences), table);
#if HWY_MAX_BYTES >= 32
    if constexpr (kBytes == 3) {
        constexpr hn::Half<decltype(kChannels)> kHalf;
        hn::StoreU(hn::LowerHalf(kHalf, ordered), kHalf, to);
        hn::StoreU(hn::UpperHalf(kHalf, ordered), kHalf, to + 12);
        return;
    }
#endif
    hn::StoreU(ordered, kChannels, to);
}

/// The pixels before each of these; `before` ends with the one before the first.
HWY_INLINE Pixels neighbours(Pixels before, Pixels now)
{
#if HWY_MAX_BYTES >= 32
    before = hn::ConcatLowerUpper(kPixels, now, before);
#endif
    return hn::BitCast(kPixels, hn::CombineShiftRightBytes<12>(kChannels, hn::BitCast(kChannels, now),
                                                               hn::BitCast(kChannels, before)));
}

template <int kBytes>
void differences(const PngRow& row)
{
    const Pixels kept = hn::Set(kPixels, kKept<kBytes>);
    const int wholeWords = row.width & ~63;
    // Nothing precedes the first difference: the value before it is made different from it.
    Pixels before = hn::Set(kPixels, ~difference(row.pixels[0], row.above[0]));
    for (int start = 0; start < wholeWords; start += 64) {
        quint64 word = 0;
        for (int column = start; column < start + 64; column += kAtOnce) {
            const auto pixels = hn::BitCast(kChannels, hn::LoadU(kPixels, row.pixels + column));
            const auto above = hn::BitCast(kChannels, hn::LoadU(kPixels, row.above + column));
            const Pixels now = hn::And(hn::BitCast(kPixels, hn::Sub(pixels, above)), kept);
            hn::StoreU(now, kPixels, row.differences + column);
            storeInFileOrder<kBytes>(now, row.bytes + column * kBytes);
            quint8 repeats[8] = {};
            hn::StoreMaskBits(kPixels, hn::Eq(now, neighbours(before, now)), repeats);
            word |= quint64{repeats[0]} << (column & 63);
            before = now;
        }
        row.repeats[start >> 6] = word;
    }
    differencesFrom<kBytes>(row, wholeWords);
}

#endif

const PngRowKernels& kernels()
{
    static constexpr PngRowKernels kTable{differences<3>, differences<4>};
    return kTable;
}

}  // namespace HWY_NAMESPACE
}  // namespace
}  // namespace plotix
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace plotix {

namespace {
HWY_EXPORT(kernels);
}  // namespace

const PngRowKernels& PngRowKernels::best()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

}  // namespace plotix
#endif
