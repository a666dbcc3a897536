#include "base/png/PngRows.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace plotix {

namespace {

template <int kBytes>
constexpr quint32 kKept = kBytes == 3 ? 0x00ffffffU : 0xffffffffU;

/// Four differences of bytes at once: the highest bits apart, so that none borrows from its neighbour.
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

template <int kBytes>
void differencesPlain(const PngRow& row)
{
    differencesFrom<kBytes>(row, 0);
}

#if defined(__x86_64__)

constexpr char kNone = -1;

/// The bytes of eight differences in file order. Three bytes a pixel: 24, and eight that the next ones cover.
template <int kBytes>
__attribute__((target("avx2"))) inline __m256i fileOrder(__m256i differences)
{
    if constexpr (kBytes == 4) {
        return _mm256_shuffle_epi8(differences,
                                   _mm256_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15,  //
                                                    2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15));
    } else {
        const __m256i packed = _mm256_shuffle_epi8(
            differences, _mm256_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, kNone, kNone, kNone, kNone,  //
                                          2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, kNone, kNone, kNone, kNone));
        return _mm256_permutevar8x32_epi32(packed, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
    }
}

template <int kBytes>
__attribute__((target("avx2"))) void differencesAvx2(const PngRow& row)
{
    const __m256i kept = _mm256_set1_epi32(static_cast<int>(kKept<kBytes>));
    const int wholeWords = row.width & ~63;
    // No difference precedes the first one: what stands in its place differs from it.
    __m256i before = _mm256_set1_epi32(static_cast<int>(~difference(row.pixels[0], row.above[0])));
    for (int start = 0; start < wholeWords; start += 64) {
        quint64 word = 0;
        for (int column = start; column < start + 64; column += 8) {
            const auto at = [column](const quint32* numbers) {
                return reinterpret_cast<const __m256i*>(numbers + column);
            };
            const __m256i now = _mm256_and_si256(
                _mm256_sub_epi8(_mm256_loadu_si256(at(row.pixels)), _mm256_loadu_si256(at(row.above))), kept);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(row.differences + column), now);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(row.bytes + column * kBytes), fileOrder<kBytes>(now));
            const __m256i shifted = _mm256_alignr_epi8(now, _mm256_permute2x128_si256(before, now, 0x21), 12);
            const __m256i equal = _mm256_cmpeq_epi32(now, shifted);
            const auto mask = static_cast<quint32>(_mm256_movemask_ps(_mm256_castsi256_ps(equal)));
            word |= quint64{mask} << (column & 63);
            before = now;
        }
        row.repeats[start >> 6] = word;
    }
    differencesFrom<kBytes>(row, wholeWords);
}

#endif

}  // namespace

const PngRowKernels& PngRowKernels::plain()
{
    static constexpr PngRowKernels kernels{differencesPlain<3>, differencesPlain<4>};
    return kernels;
}

const PngRowKernels& PngRowKernels::best()
{
#if defined(__x86_64__)
    static constexpr PngRowKernels kernels{differencesAvx2<3>, differencesAvx2<4>};
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    if (hasAvx2)
        return kernels;
#endif
    return plain();
}

}  // namespace plotix
