#include "plotkit/model/SeriesNarrowing.h"

#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "plotkit/model/SeriesNarrowing.cpp"
#include "base/vectors/Kernels.h"
// After Kernels.h, which says what a vector is on each target.
#include "base/vectors/EightFloats.h"

HWY_BEFORE_NAMESPACE();
namespace plotkit {
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using namespace plotix::vectors::HWY_NAMESPACE;

constexpr std::size_t kWordBits = 64;
constexpr std::size_t kFine = 32;
constexpr std::uint32_t kAllPoints = ~std::uint32_t{0};
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

constexpr hn::CappedTag<double, 8> kDoubles;
constexpr hn::Rebind<float, decltype(kDoubles)> kNarrow;

/// Whether all values are numbers that a float can hold; y then has them.
HWY_INLINE bool narrowWord(const double* values, float* y)
{
    const auto largest = hn::Set(kDoubles, static_cast<double>(std::numeric_limits<float>::max()));
    auto areFine = hn::Not(hn::MaskFromVec(hn::Zero(kDoubles)));
    for (std::size_t at = 0; at < kWordBits; at += hn::MaxLanes(kDoubles)) {
        const auto some = hn::LoadU(kDoubles, values + at);
        hn::StoreU(hn::DemoteTo(kNarrow, some), kNarrow, y + at);
        areFine = hn::And(areFine, hn::Le(hn::Abs(some), largest));
    }
    return hn::AllTrue(kDoubles, areFine);
}

/// The smallest and the largest of a block's points. Requires: finite values.
HWY_INLINE void takeBlock(const float* y, std::uint32_t points, float& least, float& greatest, float& first)
{
    EightFloats low = EightFloats::all(kInfinity);
    EightFloats high = EightFloats::all(-kInfinity);
    for (std::size_t at = 0; at < kFine; at += EightFloats::kCount) {
        const EightFloats eight = EightFloats::load(y + at);
        if (points == kAllPoints) {
            low.lower(eight);
            high.raise(eight);
        } else {
            low.lower(eight.where(points >> at, kInfinity));
            high.raise(eight.where(points >> at, -kInfinity));
        }
    }
    least = low.least();
    greatest = high.greatest();
    first = (points & 1U) != 0 ? y[0] : kNone;
}

std::size_t narrowWords(const double* values, const std::uint64_t* validity, std::size_t words,
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

bool narrowRuns(const RunsToNarrow& runs, std::size_t count, const NarrowedRuns& into)
{
    const auto largest = hn::Set(kDoubles, static_cast<double>(std::numeric_limits<float>::max()));
    auto areFine = hn::Not(hn::MaskFromVec(hn::Zero(kDoubles)));
    const auto take = [&](std::size_t run) HWY_ATTR {
        const auto least = hn::LoadU(kDoubles, runs.least + run);
        const auto greatest = hn::LoadU(kDoubles, runs.greatest + run);
        const auto first = hn::LoadU(kDoubles, runs.first + run);
        areFine = hn::And(hn::And(areFine, hn::Ge(least, hn::Neg(largest))), hn::Le(least, greatest));
        areFine = hn::And(hn::And(areFine, hn::Le(greatest, largest)), hn::Le(hn::Abs(first), largest));
        hn::StoreU(hn::DemoteTo(kNarrow, least), kNarrow, into.least + run);
        hn::StoreU(hn::DemoteTo(kNarrow, greatest), kNarrow, into.greatest + run);
        hn::StoreU(hn::DemoteTo(kNarrow, first), kNarrow, into.first + run);
    };
    const std::size_t lanes = hn::MaxLanes(kDoubles);
    if (count < lanes)
        return false;
    std::size_t run = 0;
    for (; run + lanes <= count; run += lanes)
        take(run);
    if (run < count)
        take(count - lanes);
    return hn::AllTrue(kDoubles, areFine);
}

const SeriesNarrowing& narrowing()
{
    static constexpr SeriesNarrowing kTable{narrowWords, narrowRuns};
    return kTable;
}

}  // namespace HWY_NAMESPACE
}  // namespace
}  // namespace plotkit
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace plotkit {

namespace {
HWY_EXPORT(narrowing);
}  // namespace

const SeriesNarrowing& SeriesNarrowing::best()
{
    return HWY_DYNAMIC_DISPATCH(narrowing)();
}

}  // namespace plotkit
#endif
