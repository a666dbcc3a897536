// The loops of ColumnKernels, written once over vectors of the compiler's own. ColumnKernels.cpp includes this file
// once a processor, in a namespace that says how wide a vector is (kVectorBytes) and how one is divided; so no #pragma
// once, and no templates, which would not be compiled for that processor.

using Reals = double __attribute__((vector_size(kVectorBytes)));
using Words = std::uint64_t __attribute__((vector_size(kVectorBytes)));
using Integers = std::int64_t __attribute__((vector_size(kVectorBytes)));

constexpr std::size_t kLanes = kVectorBytes / 8;
constexpr std::size_t kParts = kRow / kLanes;

/// Lane by lane 0, 1, 2, …, from the part's first position in a row.
PLOTIX_BODY void positions(Words& lanes, std::size_t part)
{
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        lanes[lane] = part * kLanes + lane;
}

PLOTIX_BODY void load(Words& vector, const void* from)
{
    std::memcpy(&vector, from, sizeof vector);
}

PLOTIX_BODY void load(Reals& vector, const double* from)
{
    std::memcpy(&vector, from, sizeof vector);
}

PLOTIX_BODY void store(double* to, const Words& vector)
{
    std::memcpy(to, &vector, sizeof vector);
}

/// What a scale comes to in every lane. Made before a loop: the compiler cannot know that what the loop stores changes
/// nothing of it.
struct Factors {
    Reals up, down;
    Reals high, low;  ///< inverse of up
};

PLOTIX_BODY void factorsOf(Factors& factors, const ColumnKernels::Scale& scale)
{
    factors.up = Reals{} + scale.up;
    factors.down = Reals{} + scale.down;
    const Inverse inverse = inverseOf(scale.up);
    factors.high = Reals{} + inverse.high;
    factors.low = Reals{} + inverse.low;
}

PLOTIX_BODY void finish(Words& number, Form form, const Factors& factors, const ColumnKernels::Pattern& pattern)
{
    if (form == Form::Pattern) {
        number <<= pattern.zeros;
    } else if (form == Form::MixedPattern) {
        number = ((number >> 1) << pattern.zeros) | (number << 63);
    } else {
        Reals real = (Reals)number - kMagic;
        if (form == Form::Quotient)
            divide(real, factors.up, factors.high, factors.low);
        else
            real *= factors.down;
        number = (Words)real;
    }
}

PLOTIX_BODY void unpack(const ColumnKernels::Packed& run, Form form, const ColumnKernels::Scale& scale,
                        const ColumnKernels::Pattern& pattern, double* values)
{
    Factors factors;
    factorsOf(factors, scale);
    const std::byte* words = run.words;
    const std::uint64_t width = run.width;
    const std::uint64_t last = width == 0 ? 0 : width - 1;
    const Words mask = Words{} + (width == 0 ? 0 : ~std::uint64_t{0} >> (64 - width));
    const Words step = Words{} + run.slope * kRow;
    const bool isReal = form == Form::Quotient || form == Form::Product;
    Words line[kParts];
    for (std::size_t part = 0; part < kParts; ++part) {
        positions(line[part], part);
        line[part] = line[part] * run.slope + (run.base + (isReal ? kMagicBits : 0));
    }
    std::uint64_t bit = 0;
    for (std::size_t row = 0; row < kRun / kRow; ++row, bit += width) {
        const std::uint64_t word = bit / 64;
        const std::uint64_t shift = bit % 64;
        // Behind the last word there is nothing to read, and of what lies there nothing is kept.
        const std::byte* here = words + std::min(word, last) * kRowBytes;
        const std::byte* next = words + std::min(word + 1, last) * kRowBytes;
        for (std::size_t part = 0; part < kParts; ++part) {
            Words low;
            Words high;
            load(low, here + part * kVectorBytes);
            load(high, next + part * kVectorBytes);
            Words number = ((low >> shift) | ((high << 1) << (63 - shift))) & mask;
            number += line[part];
            line[part] += step;
            finish(number, form, factors, pattern);
            store(values + row * kRow + part * kLanes, number);
        }
    }
}

void quotients(const ColumnKernels::Packed& run, const ColumnKernels::Scale& scale, double* values)
{
    unpack(run, Form::Quotient, scale, {}, values);
}

void products(const ColumnKernels::Packed& run, const ColumnKernels::Scale& scale, double* values)
{
    unpack(run, Form::Product, scale, {}, values);
}

void patterns(const ColumnKernels::Packed& run, const ColumnKernels::Pattern& pattern, double* values)
{
    if (pattern.isMixed)
        unpack(run, Form::MixedPattern, {}, pattern, values);
    else
        unpack(run, Form::Pattern, {}, pattern, values);
}

/// All bits of a lane set where that element's bit is. `weights` is the lanes' bits of the first row.
PLOTIX_BODY void lanesOf(Words& lanes, std::uint64_t bits, std::size_t row, const Words& weights)
{
    lanes = (Words)(((Words{} + (bits >> (row * kRow))) & weights) != 0U);
}

PLOTIX_BODY void weightsOf(Words* weights)
{
    for (std::size_t part = 0; part < kParts; ++part) {
        positions(weights[part], part);
        weights[part] = (Words{} + 1) << weights[part];
    }
}

void blank(const std::uint64_t* bits, double filler, double* values)
{
    Words weights[kParts];
    weightsOf(weights);
    const Words filling = (Words)(Reals{} + filler);
    for (std::size_t word = 0; word < kMask; ++word) {
        if (bits[word] == ~std::uint64_t{0})
            continue;
        for (std::size_t row = 0; row < 8; ++row) {
            for (std::size_t part = 0; part < kParts; ++part) {
                double* at = values + word * 64 + row * kRow + part * kLanes;
                Words kept;
                Words lanes;
                load(kept, at);
                lanesOf(lanes, bits[word], row, weights[part]);
                store(at, (kept & lanes) | (filling & ~lanes));
            }
        }
    }
}

PLOTIX_BODY void quantise(const double* values, Form form, const ColumnKernels::Scale& scale, std::uint64_t* numbers,
                          std::uint64_t* exact)
{
    Words first[kParts];
    weightsOf(first);
    Factors factors;
    factorsOf(factors, scale);
    for (std::size_t word = 0; word < kMask; ++word) {
        Words found{};
        for (std::size_t row = 0; row < 8; ++row) {
            for (std::size_t part = 0; part < kParts; ++part) {
                const std::size_t at = word * 64 + row * kRow + part * kLanes;
                Reals value;
                load(value, values + at);
                // Processors that round only once here come to the same numbers wherever one gives its value back.
                const Reals shifted = value * factors.up + kMagic;
                const Reals whole = shifted - kMagic;
                Reals back = whole;
                if (form == Form::Quotient)
                    divide(back, factors.up, factors.high, factors.low);
                else
                    back *= factors.down;
                // A NaN comes back with its bits; only the limits tell that it is no number.
                const Words same = (Words)(((Words)back == (Words)value) & (whole <= kLimit) & (whole >= -kLimit));
                found |= same & (first[part] << (row * kRow));
                const Words number = (Words)shifted - kMagicBits;
                std::memcpy(numbers + at, &number, sizeof number);
            }
        }
        std::uint64_t lanes[kLanes];
        std::memcpy(lanes, &found, sizeof lanes);
        exact[word] = 0;
        for (const std::uint64_t lane : lanes)
            exact[word] |= lane;
    }
}

void asQuotients(const double* values, const ColumnKernels::Scale& scale, std::uint64_t* numbers, std::uint64_t* exact)
{
    quantise(values, Form::Quotient, scale, numbers, exact);
}

void asProducts(const double* values, const ColumnKernels::Scale& scale, std::uint64_t* numbers, std::uint64_t* exact)
{
    quantise(values, Form::Product, scale, numbers, exact);
}

ColumnKernels::Range range(const std::uint64_t* numbers, std::uint64_t origin, std::uint64_t slope)
{
    Words line[kParts];
    Integers lowest = Integers{} + std::numeric_limits<std::int64_t>::max();
    Integers highest = Integers{} + std::numeric_limits<std::int64_t>::min();
    for (std::size_t part = 0; part < kParts; ++part) {
        positions(line[part], part);
        line[part] = line[part] * slope + origin;
    }
    for (std::size_t row = 0; row < kRun; row += kRow) {
        for (std::size_t part = 0; part < kParts; ++part) {
            Words number;
            load(number, numbers + row + part * kLanes);
            const Integers rest = (Integers)(number - line[part]);
            line[part] += slope * kRow;
            lowest = rest < lowest ? rest : lowest;
            highest = rest > highest ? rest : highest;
        }
    }
    // Picking lanes out of the vectors themselves would keep them in memory all through the loop.
    std::int64_t lows[kLanes];
    std::int64_t highs[kLanes];
    std::memcpy(lows, &lowest, sizeof lows);
    std::memcpy(highs, &highest, sizeof highs);
    return {*std::min_element(lows, lows + kLanes), *std::max_element(highs, highs + kLanes)};
}

void pack(const std::uint64_t* numbers, std::uint64_t base, std::uint64_t slope, std::uint64_t width, std::size_t rows,
          std::byte* words)
{
    if (width == 0)
        return;
    for (std::size_t part = 0; part < kParts; ++part) {
        Words line;
        Words word{};
        std::uint64_t shift = 0;
        std::byte* to = words + part * kVectorBytes;
        positions(line, part);
        line = line * slope + base;
        for (std::size_t row = 0; row < rows; ++row) {
            Words number;
            load(number, numbers + row * kRow + part * kLanes);
            number -= line;
            line += slope * kRow;
            word |= number << shift;
            shift += width;
            if (shift < 64)
                continue;
            std::memcpy(to, &word, sizeof word);
            to += kRowBytes;
            shift -= 64;
            word = shift == 0 ? Words{} : number >> (width - shift);
        }
        if (shift > 0)
            std::memcpy(to, &word, sizeof word);
    }
}

#include "records/columns/ColumnSumBody.h"

constexpr ColumnKernels kTable{quotients,  products, patterns, blank,    asQuotients,
                               asProducts, range,    pack,     sumOfAll, sumOfSome};
