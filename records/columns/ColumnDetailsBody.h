// The details of ColumnKernels: where a run has its extremes, and its sum without rounding. ColumnKernels.cpp includes
// this file once a target, in a namespace that says what a vector is there; so it has no guard.

// A sum of up to 2^9 values below 2^e is exact as long as all are multiples of 2^(e - 43): it has no more than 52 bits.
// Adding 1.5 × 2^(e + 9) to a value and taking it away again leaves the nearest multiple of 2^(e - 43); the rest is
// exact, below 2^(e - 43), and is treated the same way once more. What is then left of no value is no loss.
constexpr int kLeastExponent = -900;
constexpr int kMostExponent = 1000;
constexpr int kRoom = 9;            // bits by which a sum may be longer than its values
constexpr int kTaken = 52 - kRoom;  // bits that the upper part takes of each value

/// The first of the values that equals `wanted` and, with `bits`, counts. Requires: there is one.
template <bool kAllCount>
std::size_t placeOf(double wanted, const double* values, const std::uint64_t* bits)
{
    constexpr std::size_t kRowsAtOnce = 4;
    const RowBits lanes;
    const Reals sought = hn::Set(kReals, wanted);
    const auto isFound = [&](std::size_t row, std::size_t part) HWY_ATTR {
        const auto isSame = hn::Eq(hn::LoadU(kReals, values + row * kRow + part * kLanes), sought);
        if constexpr (kAllCount)
            return isSame;
        else
            return hn::And(isSame, lanes.mask(bits[row / 8], row % 8, part));
    };
    for (std::size_t first = 0; first < kRun / kRow; first += kRowsAtOnce) {
        auto any = isFound(first, 0);
        unrolled<kRowsAtOnce * kParts>(
            [&](auto each) HWY_ATTR { any = hn::Or(any, isFound(first + each / kParts, each % kParts)); });
        if (hn::AllFalse(kReals, any))
            continue;
        for (std::size_t each = 0; each < kRowsAtOnce * kParts; ++each) {
            const auto found = hn::FindFirstTrue(kReals, isFound(first + each / kParts, each % kParts));
            if (found >= 0)
                return first * kRow + each * kLanes + static_cast<std::size_t>(found);
        }
    }
    return kRun;
}

template <bool kAllCount>
ColumnKernels::Details detailsOf(const double* values, const std::uint64_t* bits, const ColumnKernels::Sum& sum)
{
    const double magnitude = std::max(std::abs(sum.minimum), std::abs(sum.maximum));
    int exponent = kLeastExponent;
    if (std::isfinite(magnitude) && magnitude > 0)
        std::frexp(magnitude, &exponent);
    const bool isInRange =
        std::isfinite(magnitude) && (magnitude == 0 || exponent > kLeastExponent) && exponent < kMostExponent;
    const Reals upper = hn::Set(kReals, isInRange ? std::ldexp(1.5, exponent + kRoom) : 0);
    const Reals lower = hn::Set(kReals, isInRange ? std::ldexp(1.5, exponent - kTaken + kRoom) : 0);
    const RowBits lanes;
    Reals highs[kParts];
    Reals lows[kParts];
    Words left = hn::Zero(kWords);
    for (std::size_t part = 0; part < kParts; ++part)
        highs[part] = lows[part] = hn::Zero(kReals);
    for (std::size_t row = 0; row < kRun / kRow; ++row) {
        unrolled<kParts>([&](auto part) HWY_ATTR {
            Reals added = hn::LoadU(kReals, values + row * kRow + part * kLanes);
            if constexpr (!kAllCount)
                added =
                    hn::IfThenElseZero(hn::And(lanes.mask(bits[row / 8], row % 8, part), hn::Eq(added, added)), added);
            const Reals high = hn::Sub(hn::Add(added, upper), upper);
            const Reals rest = hn::Sub(added, high);
            const Reals low = hn::Sub(hn::Add(rest, lower), lower);
            left = hn::Or(left, hn::BitCast(kWords, hn::Sub(rest, low)));
            highs[part] = hn::Add(highs[part], high);
            lows[part] = hn::Add(lows[part], low);
        });
    }
    ColumnKernels::Details found;
    std::uint64_t any = 0;
    std::uint64_t words[kLanes];
    hn::StoreU(left, kWords, words);
    for (const std::uint64_t word : words)
        any |= word << 1;  // a difference of −0.0 is none
    for (std::size_t part = 0; part < kParts; ++part) {
        double each[kLanes];
        hn::StoreU(highs[part], kReals, each);
        for (const double high : each)
            found.high += high;
        hn::StoreU(lows[part], kReals, each);
        for (const double low : each)
            found.low += low;
    }
    found.leastAt = placeOf<kAllCount>(sum.minimum, values, bits);
    found.greatestAt = placeOf<kAllCount>(sum.maximum, values, bits);
    found.isExact = isInRange && any == 0;
    return found;
}

ColumnKernels::Details details(const double* values, const std::uint64_t* bits, const ColumnKernels::Sum& sum)
{
    return sum.count == kRun ? detailsOf<true>(values, bits, sum) : detailsOf<false>(values, bits, sum);
}
