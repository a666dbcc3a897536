// Packing of ColumnKernels. ColumnKernels.cpp includes this file once a target, in a namespace that says what a vector
// is there; so it has no guard.

constexpr std::size_t kAhead = 2 * kRun;  // values of a column that is met for the first time

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
            // A run is a page of memory: processors fetch ahead inside a page, but not beyond it.
            hwy::Prefetch(values + kAhead + word * 64 + row * kRow);
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
