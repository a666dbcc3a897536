#include "plotkit/layout/BinKernels.h"

#include "plotkit/model/VectorLoops.h"

#include <limits>

namespace plotkit {

namespace {

using namespace vectors;

constexpr std::size_t kFine = CPTFineBlocks::kElements;
constexpr std::size_t kMostScanned = 1024;  // samples; beyond, the index is faster, however it is entered
constexpr std::size_t kFinePerCoarse = CPTSeriesIndex::kCoarseBlock / kFine;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

struct Extremes {
    float least;
    float greatest;
};

/// Of `count` numbers of each row; NaN drops out. The last eight may overlap the ones before.
PLOTKIT_LOOP void takeRuns(const float* least, const float* greatest, std::size_t count, Extremes& extremes)
{
    if (count < kLanes) {
        extremes = {kInfinity, -kInfinity};
        for (std::size_t at = 0; at < count; ++at) {
            lower(extremes.least, least[at]);
            raise(extremes.greatest, greatest[at]);
        }
        return;
    }
    Float8 low = Float8{} + kInfinity;
    Float8 high = -low;
    Float8 lows, highs;
    for (std::size_t at = 0; at + kLanes <= count; at += kLanes) {
        load(lows, least + at);
        load(highs, greatest + at);
        lower(low, lows);
        raise(high, highs);
    }
    load(lows, least + count - kLanes);
    load(highs, greatest + count - kLanes);
    lower(low, lows);
    raise(high, highs);
    extremes = {leastOf(low), greatestOf(high)};
}

PLOTKIT_LOOP void join(Extremes& extremes, const Extremes& others)
{
    lower(extremes.least, others.least);
    raise(extremes.greatest, others.greatest);
}

/// Of fine blocks [first, last), by the coarser level where that is shorter.
PLOTKIT_LOOP void takeBlocks(const CPTSeriesIndex& index, std::size_t first, std::size_t last, Extremes& extremes)
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
PLOTKIT_LOOP bool areAllPoints(const std::uint64_t* points, std::size_t from, std::size_t to)
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

PLOTKIT_LOOP bool isFinite(float value)
{
    return value > -kInfinity && value < kInfinity;
}

/// False where the fast way does not lead to the summary.
PLOTKIT_LOOP bool summariseBlocks(const BinSource& source, std::size_t from, std::size_t to, BinSummary& summary)
{
    const CPTFineBlocks& fine = source.index.fine();
    const std::size_t block = from / kFine;
    const std::size_t end = to / kFine;
    Extremes extremes;
    takeBlocks(source.index, block, end, extremes);
    summary.first = fine.first()[block];
    // The line goes on to the sample that stands at the edge: as near as can be told, that is where it leaves.
    summary.last = end < fine.count ? fine.first()[end] : kNone;
    if (!isFinite(summary.last)) {
        const bool isPoint = source.points == nullptr || (source.points[(to - 1) / 64] >> ((to - 1) % 64) & 1U) != 0;
        summary.last = isPoint ? source.y[to - 1] : kNone;
    }
    summary.min = extremes.least;
    summary.max = extremes.greatest;
    return isFinite(summary.first) && isFinite(summary.last);
}

PLOTKIT_LOOP bool summariseSamples(const BinSource& source, std::size_t from, std::size_t to, BinSummary& summary)
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

PLOTKIT_LOOP void summariseBins(const BinSource& source, const BinRows& rows, std::size_t from, std::size_t to)
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

PLOTKIT_LOOP void loadWide(Double4& vector, const float* numbers)
{
    Float4 narrow;
    load(narrow, numbers);
    vector = __builtin_convertvector(narrow, Double4);
}

PLOTKIT_LOOP void place(Double4& values, const ValueScale& scale)
{
    values = scale.firstPlace + (values - scale.location) * scale.placesPerValue;
}

PLOTKIT_LOOP void cut(Float4& narrow, Double4& places, const ValueScale& scale)
{
    places = places < scale.farthest ? places : Double4{} + scale.farthest;
    places = places > -scale.farthest ? places : Double4{} - scale.farthest;
    narrow = __builtin_convertvector(places, Float4);
}

/// Eight values' places.
PLOTKIT_LOOP void placeEight(Float8& places, const float* values, const ValueScale& scale)
{
    Double4 wide;
    Float4 left, right;
    loadWide(wide, values);
    place(wide, scale);
    cut(left, wide, scale);
    loadWide(wide, values + kWideLanes);
    place(wide, scale);
    cut(right, wide, scale);
    places = __builtin_shufflevector(left, right, 0, 1, 2, 3, 4, 5, 6, 7);
}

/// Where the extremes of eight bins stand; `open` gathers the lanes that are empty.
PLOTKIT_LOOP void mapExtremes(const BinRows& rows, std::size_t bin, const ValueScale& scale, float* low, float* high,
                              Int8& open)
{
    Float8 min, max, atMin, atMax;
    load(min, rows.min + bin);
    load(max, rows.max + bin);
    placeEight(atMin, rows.min + bin, scale);
    placeEight(atMax, rows.max + bin, scale);
    const Int8 holds = min <= max;
    open |= ~holds;
    Float8 top = atMin;
    lower(top, atMax);
    raise(atMax, atMin);
    store(low + bin, holds ? top : Float8{} + kInfinity);
    store(high + bin, holds ? atMax : Float8{} - kInfinity);
}

/// The left edges of four bins. From the nearer end, lest a far-away one swallow the digits.
PLOTKIT_LOOP void mapJoins(const BinRows& rows, std::size_t bin, const ValueScale& scale, float* joins)
{
    Double4 from, to, right, left;
    loadWide(from, rows.last + bin - 1);
    loadWide(to, rows.first + bin);
    loadWide(right, rows.leave + bin - 1);
    loadWide(left, rows.enter + bin);
    right = 1.0 - right;
    place(from, scale);
    place(to, scale);
    const Double4 slope = (to - from) / (right + left);
    Double4 join = right < left ? from + right * slope : to - left * slope;
    join = right > 0.0 ? join : from;
    Float4 narrow;
    cut(narrow, join, scale);
    store(joins + bin, narrow);
}

PLOTKIT_LOOP bool mapBins(const BinRows& rows, std::size_t count, const ValueScale& scale, float* joins, float* low,
                          float* high)
{
    Int8 open{};
    std::size_t bin = 0;
    for (; bin + kLanes <= count; bin += kLanes)
        mapExtremes(rows, bin, scale, low, high, open);
    std::int32_t anyOpen = 0;
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        anyOpen |= open[lane];
    Int8 beyond{};
    if (bin < count)
        mapExtremes(rows, bin, scale, low, high, beyond);
    for (std::size_t lane = 0; bin + lane < count; ++lane)
        anyOpen |= beyond[lane];
    for (std::size_t edge = 1; edge < count; edge += kWideLanes)
        mapJoins(rows, edge, scale, joins);
    return anyOpen != 0;
}

PLOTKIT_LOOP void takeJoinsIn(const float* joins, std::size_t count, float* low, float* high)
{
    for (std::size_t column = 0; column < count; column += kLanes) {
        Float8 left, right, least, greatest;
        load(left, joins + column);
        load(right, joins + column + 1);
        load(least, low + column);
        load(greatest, high + column);
        lower(least, left);
        lower(least, right);
        raise(greatest, left);
        raise(greatest, right);
        store(low + column, least);
        store(high + column, greatest);
    }
}

struct Plain {
    static void summarise(const BinSource& source, const BinRows& rows, std::size_t from, std::size_t to)
    {
        summariseBins(source, rows, from, to);
    }
    static bool map(const BinRows& rows, std::size_t count, const ValueScale& scale, float* joins, float* low,
                    float* high)
    {
        return mapBins(rows, count, scale, joins, low, high);
    }
    static void takeJoins(const float* joins, std::size_t count, float* low, float* high)
    {
        takeJoinsIn(joins, count, low, high);
    }
};

#if defined(__x86_64__)
struct Avx2 {
    PLOTKIT_FOR_AVX2 static void summarise(const BinSource& source, const BinRows& rows, std::size_t from,
                                           std::size_t to)
    {
        summariseBins(source, rows, from, to);
    }
    PLOTKIT_FOR_AVX2 static bool map(const BinRows& rows, std::size_t count, const ValueScale& scale, float* joins,
                                     float* low, float* high)
    {
        return mapBins(rows, count, scale, joins, low, high);
    }
    PLOTKIT_FOR_AVX2 static void takeJoins(const float* joins, std::size_t count, float* low, float* high)
    {
        takeJoinsIn(joins, count, low, high);
    }
};
#endif

}  // namespace

const BinKernels& BinKernels::plain()
{
    static constexpr BinKernels kernels{Plain::summarise, Plain::map, Plain::takeJoins};
    return kernels;
}

const BinKernels* BinKernels::avx2()
{
#if defined(__x86_64__)
    static const bool isThere = __builtin_cpu_supports("avx2");
    static constexpr BinKernels kernels{Avx2::summarise, Avx2::map, Avx2::takeJoins};
    return isThere ? &kernels : nullptr;
#else
    return nullptr;
#endif
}

const BinKernels& BinKernels::best()
{
    const BinKernels* wide = avx2();
    return wide != nullptr ? *wide : plain();
}

}  // namespace plotkit
