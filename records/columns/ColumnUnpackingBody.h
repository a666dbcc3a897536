// Unpacking of ColumnKernels. Included like ColumnPackingBody.h.

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

/// Whole lines of the cache, wherever they begin; of lines that are only touched, the rest is the neighbours'.
void putPastCaches(const double* values, double* to)
{
    constexpr std::size_t kLine = 64;
    const std::size_t beyond = reinterpret_cast<std::uintptr_t>(to) % kLine / sizeof(double);
    const std::size_t before = beyond == 0 ? 0 : kLine / sizeof(double) - beyond;
    std::memcpy(to, values, before * sizeof(double));
    std::size_t at = before;
    for (; at + kRow <= kRun; at += kRow)
        for (std::size_t part = 0; part < kParts; ++part)
            hn::Stream(hn::LoadU(kReals, values + at + part * kLanes), kReals, to + at + part * kLanes);
    std::memcpy(to + at, values + at, (kRun - at) * sizeof(double));
}

void endPuttingPast()
{
    hwy::FlushStream();
}
