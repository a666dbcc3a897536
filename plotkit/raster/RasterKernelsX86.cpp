#include "plotkit/raster/RasterKernels.h"

#include "plotkit/raster/RasterLoops.h"

#if defined(__x86_64__)

#include <immintrin.h>

// Sixteen bits a channel and a lane of coverage. Shares are 15 bits after the point, so that one multiplication scales
// and rounds.

#define PLOTKIT_AVX2 __attribute__((target("avx2")))
#define PLOTKIT_AVX512 __attribute__((target("avx2,avx512f,avx512bw,avx512vl,avx512dq")))

namespace plotkit {

namespace {

/// Rows are too far apart for the processor to see them coming. Past the last row nothing is touched.
constexpr std::ptrdiff_t kRowsAhead = 16;

/// What is left of a pixel, and what the colour adds, at full strength: 15 bits after the point, and a byte.
struct Ink {
    explicit Ink(quint32 color)
        : pixel(static_cast<int>(color)),
          isOpaque(color >> 24 == 255U),
          hiding(static_cast<short>(isOpaque ? 32767 : (static_cast<int>(color >> 24) * 32768 + 127) / 255))
    {
    }

    int pixel;
    bool isOpaque;
    short hiding;
};

/// Coverage × 32768 / kWhole, a third more, at most 32767.
PLOTKIT_AVX2 inline __m256i shareOf(__m256i coverage)
{
    return _mm256_adds_epi16(coverage, _mm256_mulhrs_epi16(coverage, _mm256_set1_epi16(10923)));
}

struct Avx2 {
    struct Shares {
        __m256i each[4];  // of pixels 0 1 4 5, 2 3 6 7 and the same of the second
                          // eight, one for every channel
    };

    PLOTKIT_AVX2 static inline Shares sharesOf(__m256i coverage)
    {
        const __m256i shares = shareOf(coverage);
        const __m256i first =
            _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 1, 0, 1, 0, 1, 0, 1, 2, 3, 2, 3, 2, 3, 2, 3));
        const __m256i second = _mm256_add_epi8(first, _mm256_set1_epi8(4));
        const __m256i low = _mm256_permute4x64_epi64(shares, 0x50);
        const __m256i high = _mm256_permute4x64_epi64(shares, 0xfa);
        return {{_mm256_shuffle_epi8(low, first), _mm256_shuffle_epi8(low, second), _mm256_shuffle_epi8(high, first),
                 _mm256_shuffle_epi8(high, second)}};
    }

    template <bool kOpaque>
    PLOTKIT_AVX2 static inline __m256i mixed(__m256i there, __m256i ink, __m256i hiding, __m256i share)
    {
        if constexpr (kOpaque)
            return _mm256_add_epi16(there, _mm256_mulhrs_epi16(_mm256_sub_epi16(ink, there), share));
        const __m256i hidden = _mm256_mulhrs_epi16(there, _mm256_mulhrs_epi16(share, hiding));
        return _mm256_add_epi16(_mm256_sub_epi16(there, hidden), _mm256_mulhrs_epi16(ink, share));
    }

    template <bool kOpaque>
    PLOTKIT_AVX2 static inline void blendEight(quint32* pixels, __m256i ink, __m256i hiding, __m256i share,
                                               __m256i nextShare)
    {
        const __m256i zero = _mm256_setzero_si256();
        const __m256i there = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels));
        const __m256i low = mixed<kOpaque>(_mm256_unpacklo_epi8(there, zero), ink, hiding, share);
        const __m256i high = mixed<kOpaque>(_mm256_unpackhi_epi8(there, zero), ink, hiding, nextShare);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(pixels), _mm256_packus_epi16(low, high));
    }

    template <bool kOpaque>
    PLOTKIT_AVX2 static void blendRows(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes,
                                       const Ink& color)
    {
        const __m256i zero = _mm256_setzero_si256();
        const __m256i whole = _mm256_set1_epi16(RasterKernels::kWhole);
        const __m256i ink = _mm256_set1_epi32(color.pixel);
        const __m256i channels = _mm256_unpacklo_epi8(ink, zero);
        const __m256i hiding = _mm256_set1_epi16(color.hiding);
        __m256i coverage = zero;
        Shares shares = sharesOf(zero);
        bool isNothing = true;
        bool isAll = false;
        for (int row = 0; row < rows; ++row, changes += RasterKernels::kLanes, pixels += stride) {
            _mm_prefetch(pixels + kRowsAhead * stride, _MM_HINT_T0);
            const __m256i change = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(changes));
            if (!_mm256_testz_si256(change, change)) {
                _mm256_storeu_si256(reinterpret_cast<__m256i*>(changes), zero);
                coverage = _mm256_add_epi16(coverage, change);
                shares = sharesOf(coverage);
                isNothing = _mm256_testz_si256(coverage, coverage) != 0;
                isAll = kOpaque && _mm256_movemask_epi8(_mm256_cmpeq_epi16(coverage, whole)) == -1;
            }
            if (isNothing)
                continue;
            if (isAll) {
                _mm256_storeu_si256(reinterpret_cast<__m256i*>(pixels), ink);
                _mm256_storeu_si256(reinterpret_cast<__m256i*>(pixels + 8), ink);
                continue;
            }
            blendEight<kOpaque>(pixels, channels, hiding, shares.each[0], shares.each[1]);
            blendEight<kOpaque>(pixels + 8, channels, hiding, shares.each[2], shares.each[3]);
        }
    }

    PLOTKIT_AVX2 static void blend(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes, quint32 color)
    {
        const Ink ink(color);
        if (ink.isOpaque)
            blendRows<true>(pixels, stride, rows, changes, ink);
        else
            blendRows<false>(pixels, stride, rows, changes, ink);
    }

    PLOTKIT_AVX2 static void shrink(const float* enter, const float* leave, const float* low, const float* high,
                                    float* shrunkLow, float* shrunkHigh, std::ptrdiff_t count, SlopeSpread spread)
    {
        loops::shrink(enter, leave, low, high, shrunkLow, shrunkHigh, count, spread);
    }

    PLOTKIT_AVX2 static void dilate(const float* low, const float* high, qint32* top, qint32* bottom, int count,
                                    const DiscChords& chords, int firstRow, int lastRow)
    {
        loops::dilate<loops::Float8, loops::Int8>(low, high, top, bottom, count, chords, firstRow, lastRow);
    }

    PLOTKIT_AVX2 static void blendMask(quint32* pixels, const quint8* mask, int count, quint32 color)
    {
        loops::blendMask(pixels, mask, count, color);
    }
};

struct Avx512 {
    /// Of pixels 0 1 4 5 8 9 12 13 and of the others, one for every channel: the order unpacking gives.
    PLOTKIT_AVX512 static inline __m512i spread(__m256i shares, __m512i places)
    {
        return _mm512_permutexvar_epi16(places, _mm512_castsi256_si512(shares));
    }

    template <bool kOpaque>
    PLOTKIT_AVX512 static inline __m512i mixed(__m512i there, __m512i ink, __m512i hiding, __m512i share)
    {
        if constexpr (kOpaque)
            return _mm512_add_epi16(there, _mm512_mulhrs_epi16(_mm512_sub_epi16(ink, there), share));
        const __m512i hidden = _mm512_mulhrs_epi16(there, _mm512_mulhrs_epi16(share, hiding));
        return _mm512_add_epi16(_mm512_sub_epi16(there, hidden), _mm512_mulhrs_epi16(ink, share));
    }

    template <bool kOpaque>
    PLOTKIT_AVX512 static void blendRows(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes,
                                         const Ink& color)
    {
        const __m256i none = _mm256_setzero_si256();
        const __m512i zero = _mm512_setzero_si512();
        const __m256i whole = _mm256_set1_epi16(RasterKernels::kWhole);
        const __m512i ink = _mm512_set1_epi32(color.pixel);
        const __m512i channels = _mm512_unpacklo_epi8(ink, zero);
        const __m512i hiding = _mm512_set1_epi16(color.hiding);
        const __m512i pairs =
            _mm512_setr_epi64(0x0000000000000000, 0x0001000100010001, 0x0004000400040004, 0x0005000500050005,
                              0x0008000800080008, 0x0009000900090009, 0x000c000c000c000c, 0x000d000d000d000d);
        const __m512i otherPairs = _mm512_add_epi16(pairs, _mm512_set1_epi16(2));
        __m256i coverage = none;
        __m512i share = zero, nextShare = zero;
        bool isNothing = true;
        bool isAll = false;
        for (int row = 0; row < rows; ++row, changes += RasterKernels::kLanes, pixels += stride) {
            _mm_prefetch(pixels + kRowsAhead * stride, _MM_HINT_T0);
            const __m256i change = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(changes));
            if (!_mm256_testz_si256(change, change)) {
                _mm256_storeu_si256(reinterpret_cast<__m256i*>(changes), none);
                coverage = _mm256_add_epi16(coverage, change);
                const __m256i shares = shareOf(coverage);
                share = spread(shares, pairs);
                nextShare = spread(shares, otherPairs);
                isNothing = _mm256_testz_si256(coverage, coverage) != 0;
                isAll = kOpaque && _mm256_cmpeq_epi16_mask(coverage, whole) == 0xffff;
            }
            if (isNothing)
                continue;
            if (isAll) {
                _mm512_storeu_si512(pixels, ink);
                continue;
            }
            const __m512i there = _mm512_loadu_si512(pixels);
            const __m512i low = mixed<kOpaque>(_mm512_unpacklo_epi8(there, zero), channels, hiding, share);
            const __m512i high = mixed<kOpaque>(_mm512_unpackhi_epi8(there, zero), channels, hiding, nextShare);
            _mm512_storeu_si512(pixels, _mm512_packus_epi16(low, high));
        }
    }

    PLOTKIT_AVX512 static void blend(quint32* pixels, std::ptrdiff_t stride, int rows, qint16* changes, quint32 color)
    {
        const Ink ink(color);
        if (ink.isOpaque)
            blendRows<true>(pixels, stride, rows, changes, ink);
        else
            blendRows<false>(pixels, stride, rows, changes, ink);
    }

    PLOTKIT_AVX512 static void dilate(const float* low, const float* high, qint32* top, qint32* bottom, int count,
                                      const DiscChords& chords, int firstRow, int lastRow)
    {
        loops::dilate<loops::Float16, loops::Int16>(low, high, top, bottom, count, chords, firstRow, lastRow);
    }
};

}  // namespace

const RasterKernels* RasterKernels::avx2()
{
    static const bool isThere = __builtin_cpu_supports("avx2");
    static constexpr RasterKernels kernels{Avx2::shrink, Avx2::dilate, Avx2::blend, Avx2::blendMask};
    return isThere ? &kernels : nullptr;
}

// Shrinking stays as it is: together with these instructions the compiler would join a product and a sum into one
// rounding.
const RasterKernels* RasterKernels::avx512()
{
    static const bool isThere = avx2() != nullptr && __builtin_cpu_supports("avx512bw") &&
                                __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq");
    static constexpr RasterKernels kernels{Avx2::shrink, Avx512::dilate, Avx512::blend, Avx2::blendMask};
    return isThere ? &kernels : nullptr;
}

}  // namespace plotkit

#else

namespace plotkit {

const RasterKernels* RasterKernels::avx2()
{
    return nullptr;
}

const RasterKernels* RasterKernels::avx512()
{
    return nullptr;
}

}  // namespace plotkit

#endif
