#include "plotkit/layout/BinKernels.h"

#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "plotkit/layout/BinKernels.cpp"
#include "base/vectors/Kernels.h"
// After Kernels.h, which says what a vector is on each target.
#include "base/vectors/EightFloats.h"

HWY_BEFORE_NAMESPACE();
namespace plotkit {
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using namespace plotix::vectors::HWY_NAMESPACE;

constexpr std::size_t kFine = CPTFineBlocks::kElements;
constexpr std::size_t kMostScanned = 1024;  // samples; beyond, the index is faster, however it is entered
constexpr std::size_t kFinePerCoarse = CPTSeriesIndex::kCoarseBlock / kFine;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

// Coordinates are worked out in doubles, a vector of them at a time.
constexpr hn::CappedTag<double, 8> kWide;
constexpr hn::Rebind<float, decltype(kWide)> kNarrow;
constexpr std::size_t kLanes = hn::MaxLanes(kWide);
using Wide = hn::Vec<decltype(kWide)>;
using Narrow = hn::Vec<decltype(kNarrow)>;

struct Extremes {
    float least;
    float greatest;
};

HWY_INLINE void take(Extremes& extremes, float least, float greatest)
{
    extremes.least = least < extremes.least ? least : extremes.least;
    extremes.greatest = greatest > extremes.greatest ? greatest : extremes.greatest;
}

/// The extremes of `count` numbers of each row, without NaN. The last eight may overlap the eight before.
HWY_INLINE void takeRuns(const float* least, const float* greatest, std::size_t count, Extremes& extremes)
{
    constexpr std::size_t kEight = EightFloats::kCount;
    if (count < kEight) {
        extremes = {kInfinity, -kInfinity};
        for (std::size_t at = 0; at < count; ++at)
            take(extremes, least[at], greatest[at]);
        return;
    }
    EightFloats low = EightFloats::all(kInfinity);
    EightFloats high = EightFloats::all(-kInfinity);
    for (std::size_t at = 0; at + kEight <= count; at += kEight) {
        low.lower(EightFloats::load(least + at));
        high.raise(EightFloats::load(greatest + at));
    }
    low.lower(EightFloats::load(least + count - kEight));
    high.raise(EightFloats::load(greatest + count - kEight));
    extremes = {low.least(), high.greatest()};
}

HWY_INLINE void join(Extremes& extremes, const Extremes& others)
{
    take(extremes, others.least, others.greatest);
}

/// Of fine blocks [first, last), by the coarser level where that is shorter.
HWY_INLINE void takeBlocks(const CPTSeriesIndex& index, std::size_t first, std::size_t last, Extremes& extremes)
{
    const float* least = index.fine().least();
    const float* greatest = index.fine().greatest();
    const std::size_t firstCoarse = (first + kFinePerCoarse - 1) / kFinePerCoarse;
    const std::size_t lastCoarse = last / kFinePerCoarse;
    if (firstCoarse >= lastCoarse) {
        takeRuns(least + first, greatest + first, last - first, extremes);
        return;
    }
    const std::size_t head = firstCoarse * kFinePerCoarse;
    const std::size_t tail = lastCoarse * kFinePerCoarse;
    Extremes part;
    takeRuns(least + first, greatest + first, head - first, extremes);
    takeRuns(least + tail, greatest + tail, last - tail, part);
    join(extremes, part);
    takeRuns(index.coarseLeast().data() + firstCoarse, index.coarseGreatest().data() + firstCoarse,
             lastCoarse - firstCoarse, part);
    join(extremes, part);
}

/// Whether elements [from, to) are points, all of them.
HWY_INLINE bool areAllPoints(const std::uint64_t* points, std::size_t from, std::size_t to)
{
    constexpr std::uint64_t kAll = ~std::uint64_t{0};
    const std::size_t firstWord = from / 64;
    const std::size_t lastWord = (to - 1) / 64;
    for (std::size_t word = firstWord; word <= lastWord; ++word) {
        std::uint64_t wanted = kAll;
        if (word == firstWord)
            wanted &= kAll << (from % 64);
        if (word == lastWord)
            wanted &= kAll >> (63 - (to - 1) % 64);
        if ((points[word] & wanted) != wanted)
            return false;
    }
    return true;
}

HWY_INLINE bool isFinite(float value)
{
    return value > -kInfinity && value < kInfinity;
}

/// False where the blocks alone do not give the summary.
HWY_INLINE bool summariseBlocks(const BinSource& source, std::size_t from, std::size_t to, BinSummary& summary)
{
    const CPTFineBlocks& fine = source.index.fine();
    const std::size_t block = from / kFine;
    const std::size_t end = to / kFine;
    Extremes extremes;
    takeBlocks(source.index, block, end, extremes);
    summary.first = fine.first()[block];
    // The line goes on to the sample at the edge: that is as near as can be told to where it leaves the bin.
    summary.last = end < fine.count ? fine.first()[end] : kNone;
    if (!isFinite(summary.last)) {
        const bool isPoint = source.points == nullptr || (source.points[(to - 1) / 64] >> ((to - 1) % 64) & 1U) != 0;
        summary.last = isPoint ? source.y[to - 1] : kNone;
    }
    summary.min = extremes.least;
    summary.max = extremes.greatest;
    return isFinite(summary.first) && isFinite(summary.last);
}

HWY_INLINE bool summariseSamples(const BinSource& source, std::size_t from, std::size_t to, BinSummary& summary)
{
    if (to - from > kMostScanned || (source.points != nullptr && !areAllPoints(source.points, from, to)))
        return false;
    Extremes extremes;
    takeRuns(source.y + from, source.y + from, to - from, extremes);
    summary.first = source.y[from];
    summary.last = source.y[to - 1];
    summary.min = extremes.least;
    summary.max = extremes.greatest;
    return extremes.least > -kInfinity && extremes.greatest < kInfinity && isFinite(summary.first) &&
           isFinite(summary.last);
}

void summarise(const BinSource& source, const BinRows& rows, std::size_t from, std::size_t to)
{
    for (std::size_t bin = from; bin < to; ++bin) {
        const std::size_t begin = source.edges[bin];
        const std::size_t end = source.edges[bin + 1];
        BinSummary summary{0, kInfinity, -kInfinity, 0, 0, 1};
        if (begin != end) {
            const bool inBlocks = end - begin >= BinKernels::kDense && begin % kFine == 0 && end % kFine == 0;
            const bool known =
                inBlocks ? summariseBlocks(source, begin, end, summary) : summariseSamples(source, begin, end, summary);
            if (!known)
                summary.first = kNone;
            summary.enter = source.enter[bin];
            summary.leave = source.leave[bin];
        }
        rows.set(bin, summary);
    }
}

HWY_INLINE Wide loadWide(const float* numbers)
{
    return hn::PromoteTo(kWide, hn::LoadU(kNarrow, numbers));
}

/// A scale in every lane.
struct WideScale {
    explicit HWY_INLINE WideScale(const ValueScale& scale)
        : location(hn::Set(kWide, scale.location)),
          placesPerValue(hn::Set(kWide, scale.placesPerValue)),
          firstPlace(hn::Set(kWide, scale.firstPlace)),
          farthest(hn::Set(kWide, scale.farthest))
    {
    }
    HWY_INLINE Wide place(Wide values) const
    {
        return hn::Add(firstPlace, hn::Mul(hn::Sub(values, location), placesPerValue));
    }
    HWY_INLINE Narrow cut(Wide places) const
    {
        return hn::DemoteTo(kNarrow, raise(hn::Neg(farthest), lower(farthest, places)));
    }

    Wide location, placesPerValue, firstPlace, farthest;
};

/// The coordinates of the extremes of some bins; answers which bins are not empty.
HWY_INLINE hn::Mask<decltype(kNarrow)> mapExtremes(const BinRows& rows, std::size_t bin, const WideScale& scale,
                                                   float* low, float* high)
{
    const Narrow atMin = scale.cut(scale.place(loadWide(rows.min + bin)));
    const Narrow atMax = scale.cut(scale.place(loadWide(rows.max + bin)));
    const auto holds = hn::Le(hn::LoadU(kNarrow, rows.min + bin), hn::LoadU(kNarrow, rows.max + bin));
    const Narrow none = hn::Set(kNarrow, kInfinity);
    hn::StoreU(hn::IfThenElse(holds, lower(atMin, atMax), none), kNarrow, low + bin);
    hn::StoreU(hn::IfThenElse(holds, raise(atMax, atMin), hn::Neg(none)), kNarrow, high + bin);
    return holds;
}

/// Where the line crosses the left edges of some bins: reckoned from the nearer end, as a far-away one would cost
/// digits.
HWY_INLINE void mapJoins(const BinRows& rows, std::size_t bin, const WideScale& scale, float* joins)
{
    const Wide from = scale.place(loadWide(rows.last + bin - 1));
    const Wide to = scale.place(loadWide(rows.first + bin));
    const Wide right = hn::Sub(hn::Set(kWide, 1.0), loadWide(rows.leave + bin - 1));
    const Wide left = loadWide(rows.enter + bin);
    const Wide slope = hn::Div(hn::Sub(to, from), hn::Add(right, left));
    const Wide join =
        hn::IfThenElse(hn::Lt(right, left), hn::Add(from, hn::Mul(right, slope)), hn::Sub(to, hn::Mul(left, slope)));
    const auto isApart = hn::Gt(right, hn::Zero(kWide));
    hn::StoreU(scale.cut(hn::IfThenElse(isApart, join, from)), kNarrow, joins + bin);
}

bool map(const BinRows& rows, std::size_t count, const ValueScale& scale, float* joins, float* low, float* high)
{
    const WideScale wide(scale);
    bool isAnyOpen = false;
    for (std::size_t bin = 0; bin < count; bin += kLanes) {
        const auto holds = mapExtremes(rows, bin, wide, low, high);
        isAnyOpen |= !hn::AllTrue(kNarrow, hn::Or(holds, hn::Not(hn::FirstN(kNarrow, count - bin))));
    }
    for (std::size_t edge = 1; edge < count; edge += kLanes)
        mapJoins(rows, edge, wide, joins);
    return isAnyOpen;
}

void takeJoins(const float* joins, std::size_t count, float* low, float* high)
{
    for (std::size_t column = 0; column < count; column += EightFloats::kCount) {
        const EightFloats left = EightFloats::load(joins + column);
        const EightFloats right = EightFloats::load(joins + column + 1);
        EightFloats least = EightFloats::load(low + column);
        EightFloats greatest = EightFloats::load(high + column);
        least.lower(left);
        least.lower(right);
        greatest.raise(left);
        greatest.raise(right);
        least.store(low + column);
        greatest.store(high + column);
    }
}

const BinKernels& kernels()
{
#if HWY_TARGET == HWY_AVX3 && (HWY_TARGETS & HWY_AVX2) != 0
    // AVX-512 gains nothing from eight floats at a time, and the compiler then keeps addresses in vectors: a fifth
    // slower.
    static constexpr BinKernels kTable{N_AVX2::summarise, map, takeJoins};
#else
    static constexpr BinKernels kTable{summarise, map, takeJoins};
#endif
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

const BinKernels& BinKernels::best()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

}  // namespace plotkit
#endif
