#include "plotkit/model/SeriesNarrowing.h"

#include "plotkit/model/VectorLoops.h"

#include <limits>

namespace plotkit {

namespace {

using namespace vectors;

constexpr std::size_t kWordBits = 64;
constexpr std::size_t kFine = 32;
constexpr std::uint32_t kAllPoints = ~std::uint32_t{0};
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

/// Whether all values are numbers that a float can hold; y then has them.
PLOTKIT_LOOP bool narrowWord(const double* values, float* y)
{
    constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
    Long4 odd{};
    for (std::size_t at = 0; at < kWordBits; at += kWideLanes) {
        Double4 four;
        load(four, values + at);
        store(y + at, __builtin_convertvector(four, Float4));
        odd |= ~((four <= kLargest) & (four >= -kLargest));
    }
    return (odd[0] | odd[1] | odd[2] | odd[3]) == 0;
}

/// The pair of a block's points. Requires: finite values.
PLOTKIT_LOOP void takeBlock(const float* y, std::uint32_t points, float& least, float& greatest, float& first)
{
    Float8 low = Float8{} + kInfinity;
    Float8 high = -low;
    for (std::size_t at = 0; at < kFine; at += kLanes) {
        Float8 eight;
        load(eight, y + at);
        if (points == kAllPoints) {
            lower(low, eight);
            raise(high, eight);
            continue;
        }
        const Int8 bits = Int8{1, 2, 4, 8, 16, 32, 64, 128} & static_cast<std::int32_t>(points >> at & 255U);
        lower(low, bits != 0 ? eight : Float8{} + kInfinity);
        raise(high, bits != 0 ? eight : Float8{} - kInfinity);
    }
    least = leastOf(low);
    greatest = greatestOf(high);
    first = (points & 1U) != 0 ? y[0] : kNone;
}

PLOTKIT_LOOP std::size_t narrowWords(const double* values, const std::uint64_t* validity, std::size_t words,
                                     const NarrowedWords& into)
{
    for (std::size_t word = 0; word < words; ++word) {
        float* y = into.y + word * kWordBits;
        if (!narrowWord(values + word * kWordBits, y))
            return word;
        const std::uint64_t points = validity != nullptr ? validity[word] : ~std::uint64_t{0};
        into.points[word] = points;
        for (std::size_t half = 0; half < 2; ++half) {
            const std::size_t block = 2 * word + half;
            takeBlock(y + half * kFine, static_cast<std::uint32_t>(points >> (half * kFine)), into.least[block],
                      into.greatest[block], into.first[block]);
        }
    }
    return words;
}

std::size_t narrowPlain(const double* values, const std::uint64_t* validity, std::size_t words,
                        const NarrowedWords& into)
{
    return narrowWords(values, validity, words, into);
}

#if defined(__x86_64__)
PLOTKIT_FOR_AVX2 std::size_t narrowAvx2(const double* values, const std::uint64_t* validity, std::size_t words,
                                        const NarrowedWords& into)
{
    return narrowWords(values, validity, words, into);
}
#endif

}  // namespace

const SeriesNarrowing& SeriesNarrowing::plain()
{
    static constexpr SeriesNarrowing narrowing{narrowPlain};
    return narrowing;
}

const SeriesNarrowing* SeriesNarrowing::avx2()
{
#if defined(__x86_64__)
    static const bool isThere = __builtin_cpu_supports("avx2");
    static constexpr SeriesNarrowing narrowing{narrowAvx2};
    return isThere ? &narrowing : nullptr;
#else
    return nullptr;
#endif
}

const SeriesNarrowing& SeriesNarrowing::best()
{
    const SeriesNarrowing* wide = avx2();
    return wide != nullptr ? *wide : plain();
}

}  // namespace plotkit
