// Packing and unpacking of ColumnKernels. ColumnKernels.cpp includes this file once a target, in a namespace that says
// what a vector is there; so it has no guard.

// A double of 1.5 × 2^52 plus a whole number up to ±2^51 holds that number in its low bits.
constexpr double kMagic = 0x1.8p52;
constexpr std::uint64_t kMagicBits = 0x4338000000000000;
constexpr double kLimit = 0x1p51;

enum class Form { Quotient, Product, Pattern, MixedPattern };

/// A scale in every lane. Made before a loop, because the compiler cannot know that the loop's stores leave the scale
/// alone.
struct Factors {
    explicit HWY_INLINE Factors(const ColumnKernels::Scale& scale)
        : up(hn::Set(kReals, scale.up)), down(hn::Set(kReals, scale.down))
    {
#if HWY_NATIVE_FMA
        const double inverse = 1 / scale.up;
        high = hn::Set(kReals, inverse);
        low = hn::Set(kReals, std::fma(-inverse, scale.up, 1.0) / scale.up);
#endif
    }

    Reals up, down;
#if HWY_NATIVE_FMA
    Reals high, low;  ///< the inverse of up, and its rounding error
#endif
};

// Division by multiplying with an inverse in two parts (Brisebarre and Muller 2008): n·low is rounded, n·high is added
// to it and the sum rounded once. For whole |n| < 2^53 and d = 10^k, k up to 15, that is the correctly rounded
// quotient: the sum misses n/d by less than 2^-104 of it; and n/d, whose denominator is d, never is the middle of two
// doubles and stays at least 2^-54/d of it away from one, which is further.
HWY_INLINE Reals divided(Reals numbers, const Factors& factors)
{
#if HWY_NATIVE_FMA
    return hn::MulAdd(numbers, factors.high, hn::Mul(numbers, factors.low));
#else
    return hn::Div(numbers, factors.up);
#endif
}

template <Form kForm>
HWY_INLINE Words finished(Words number, const Factors& factors, int zeros)
{
    if constexpr (kForm == Form::Pattern)
        return hn::ShiftLeftSame(number, zeros);
    if constexpr (kForm == Form::MixedPattern)
        return hn::Or(hn::ShiftLeftSame(hn::ShiftRight<1>(number), zeros), hn::ShiftLeft<63>(number));
    const Reals real = hn::Sub(hn::BitCast(kReals, number), hn::Set(kReals, kMagic));
    return hn::BitCast(kWords, kForm == Form::Quotient ? divided(real, factors) : hn::Mul(real, factors.down));
}

/// base + i × slope for the elements of a row, and what the next row adds.
struct Line {
    HWY_INLINE Line(std::uint64_t base, std::uint64_t slope) : step(hn::Set(kWords, slope * kRow))
    {
        alignas(64) std::uint64_t first[kRow];
        for (std::size_t i = 0; i < kRow; ++i)
            first[i] = base + i * slope;
        for (std::size_t part = 0; part < kParts; ++part)
            parts[part] = hn::Load(kWords, first + part * kLanes);
    }
    HWY_INLINE void goOn(std::size_t part) { parts[part] = hn::Add(parts[part], step); }

    Words parts[kParts];
    Words step;
};

template <Form kForm>
HWY_INLINE void unpack(const ColumnKernels::Packed& run, const ColumnKernels::Scale& scale, std::uint64_t zeros,
                       double* values)
{
    const Factors factors(scale);
    const std::byte* words = run.words;
    const std::uint64_t width = run.width;
    constexpr std::uint64_t kWordBits = 64;  // and so many bytes hold the words of a row
    static_assert(kRow * sizeof(std::uint64_t) == kWordBits);
    const std::uint64_t last = width == 0 ? 0 : (width - 1) * kWordBits;
    const Words mask = hn::Set(kWords, width == 0 ? 0 : ~std::uint64_t{0} >> (64 - width));
    constexpr bool kIsReal = kForm == Form::Quotient || kForm == Form::Product;
    Line line(run.base + (kIsReal ? kMagicBits : 0), run.slope);
    std::uint64_t bit = 0;
    for (const double* const end = values + kRun; values != end; values += kRow, bit += width) {
        const int shift = static_cast<int>(bit % kWordBits);
        const std::uint64_t word = bit - bit % kWordBits;
        // Behind the last word there is nothing to read, and of what lies there nothing is kept.
        const std::byte* here = words + word;
        const std::byte* next = words + std::min(word + kWordBits, last);
        for (std::size_t part = 0; part < kParts; ++part) {
            const Words low = loadWords(here + part * sizeof(Words));
            const Words high = loadWords(next + part * sizeof(Words));
            const Words bits =
                hn::Or(hn::ShiftRightSame(low, shift), hn::ShiftLeftSame(hn::ShiftLeft<1>(high), 63 - shift));
            const Words number = hn::Add(hn::And(bits, mask), line.parts[part]);
            line.goOn(part);
            hn::StoreU(hn::BitCast(kReals, finished<kForm>(number, factors, static_cast<int>(zeros))), kReals,
                       values + part * kLanes);
        }
    }
}

void quotients(const ColumnKernels::Packed& run, const ColumnKernels::Scale& scale, double* values)
{
    unpack<Form::Quotient>(run, scale, 0, values);
}

void products(const ColumnKernels::Packed& run, const ColumnKernels::Scale& scale, double* values)
{
    unpack<Form::Product>(run, scale, 0, values);
}

void patterns(const ColumnKernels::Packed& run, const ColumnKernels::Pattern& pattern, double* values)
{
    if (pattern.isMixed)
        unpack<Form::MixedPattern>(run, {}, pattern.zeros, values);
    else
        unpack<Form::Pattern>(run, {}, pattern.zeros, values);
}

void blank(const std::uint64_t* bits, double filler, double* values)
{
    const RowBits lanes;
    const Reals filling = hn::Set(kReals, filler);
    for (std::size_t word = 0; word < kMask; ++word) {
        if (bits[word] == ~std::uint64_t{0})
            continue;
        for (std::size_t row = 0; row < 8; ++row) {
            for (std::size_t part = 0; part < kParts; ++part) {
                double* at = values + word * 64 + row * kRow + part * kLanes;
                hn::StoreU(hn::IfThenElse(lanes.mask(bits[word], row, part), hn::LoadU(kReals, at), filling), kReals,
                           at);
            }
        }
    }
}

template <Form kForm>
HWY_INLINE void quantise(const double* values, const ColumnKernels::Scale& scale, std::uint64_t* numbers,
                         std::uint64_t* exact)
{
    const RowBits lanes;
    const Factors factors(scale);
    const Reals magic = hn::Set(kReals, kMagic);
    const Reals limit = hn::Set(kReals, kLimit);
    for (std::size_t word = 0; word < kMask; ++word) {
        Words found = hn::Zero(kWords);
        for (std::size_t row = 0; row < 8; ++row) {
            for (std::size_t part = 0; part < kParts; ++part) {
                const std::size_t at = word * 64 + row * kRow + part * kLanes;
                const Reals value = hn::LoadU(kReals, values + at);
                // Processors that round only once here come to the same numbers wherever one gives its value back.
                const Reals shifted = hn::MulAdd(value, factors.up, magic);
                const Reals whole = hn::Sub(shifted, magic);
                const Reals back = kForm == Form::Quotient ? divided(whole, factors) : hn::Mul(whole, factors.down);
                // A NaN comes back with its bits; only the limit tells that it is no number.
                const auto isSame = hn::Eq(hn::BitCast(kWords, back), hn::BitCast(kWords, value));
                const auto isWhole = hn::RebindMask(kWords, hn::Le(hn::Abs(whole), limit));
                const Words bits = hn::ShiftLeftSame(lanes.first[part], static_cast<int>(row * kRow));
                found = hn::Or(found, hn::IfThenElseZero(hn::And(isSame, isWhole), bits));
                hn::StoreU(hn::Sub(hn::BitCast(kWords, shifted), hn::Set(kWords, kMagicBits)), kWords, numbers + at);
            }
        }
        std::uint64_t each[kLanes];
        hn::StoreU(found, kWords, each);
        exact[word] = 0;
        for (const std::uint64_t lane : each)
            exact[word] |= lane;
    }
}

void asQuotients(const double* values, const ColumnKernels::Scale& scale, std::uint64_t* numbers, std::uint64_t* exact)
{
    quantise<Form::Quotient>(values, scale, numbers, exact);
}

void asProducts(const double* values, const ColumnKernels::Scale& scale, std::uint64_t* numbers, std::uint64_t* exact)
{
    quantise<Form::Product>(values, scale, numbers, exact);
}

ColumnKernels::Range range(const std::uint64_t* numbers, std::uint64_t origin, std::uint64_t slope)
{
    Line line(origin, slope);
    hn::Vec<IntegerTag> lowest[kParts];
    hn::Vec<IntegerTag> highest[kParts];
    unrolled<kParts>([&](auto part) HWY_ATTR {
        lowest[part] = hn::Set(kIntegers, std::numeric_limits<std::int64_t>::max());
        highest[part] = hn::Set(kIntegers, std::numeric_limits<std::int64_t>::min());
    });
    for (std::size_t row = 0; row < kRun; row += kRow) {
        unrolled<kParts>([&](auto part) HWY_ATTR {
            const Words number = hn::LoadU(kWords, numbers + row + part * kLanes);
            const auto rest = hn::BitCast(kIntegers, hn::Sub(number, line.parts[part]));
            line.goOn(part);
            lowest[part] = hn::Min(lowest[part], rest);
            highest[part] = hn::Max(highest[part], rest);
        });
    }
    std::int64_t lows[kRow];
    std::int64_t highs[kRow];
    unrolled<kParts>([&](auto part) HWY_ATTR {
        hn::StoreU(lowest[part], kIntegers, lows + part * kLanes);
        hn::StoreU(highest[part], kIntegers, highs + part * kLanes);
    });
    return {*std::min_element(lows, lows + kRow), *std::max_element(highs, highs + kRow)};
}

void pack(const std::uint64_t* numbers, std::uint64_t base, std::uint64_t slope, std::uint64_t width, std::size_t rows,
          std::byte* words)
{
    if (width == 0)
        return;
    Line line(base, slope);
    for (std::size_t part = 0; part < kParts; ++part) {
        Words word = hn::Zero(kWords);
        std::uint64_t shift = 0;
        std::byte* to = words + part * sizeof(Words);
        for (std::size_t row = 0; row < rows; ++row) {
            const Words number = hn::Sub(hn::LoadU(kWords, numbers + row * kRow + part * kLanes), line.parts[part]);
            line.goOn(part);
            word = hn::Or(word, hn::ShiftLeftSame(number, static_cast<int>(shift)));
            shift += width;
            if (shift < 64)
                continue;
            storeWords(word, to);
            to += kRow * sizeof(double);
            shift -= 64;
            word = shift == 0 ? hn::Zero(kWords) : hn::ShiftRightSame(number, static_cast<int>(width - shift));
        }
        if (shift > 0)
            storeWords(word, to);
    }
}
