// The details of ColumnKernels: where a run has its extremes, and its sum without rounding. ColumnKernels.cpp includes
// this file once a target, in a namespace that says what a vector is there; so it has no guard.

// A sum of up to 2^9 values below 2^e is exact as long as all are multiples of 2^(e - 43): it has no more than 52 bits.
// Adding 1.5 × 2^(e + 9) to a value and taking it away again leaves the nearest multiple of 2^(e - 43); the rest is
// exact, below 2^(e - 43), and is treated the same way once more. What is then left of no value is no loss.
constexpr int kLeastExponent = -900;
constexpr int kMostExponent = 1000;
constexpr int kRoom = 9;            // bits by which a sum may be longer than its values
constexpr int kTaken = 52 - kRoom;  // bits that the upper part takes of each value

ColumnKernels::Details details(const double* values, const std::uint64_t* bits, const ColumnKernels::Sum& sum)
{
    const double magnitude = std::max(std::abs(sum.minimum), std::abs(sum.maximum));
    int exponent = kLeastExponent;
    if (std::isfinite(magnitude) && magnitude > 0)
        std::frexp(magnitude, &exponent);
    const bool isInRange =
        std::isfinite(magnitude) && (magnitude == 0 || exponent > kLeastExponent) && exponent < kMostExponent;
    const Reals upper = hn::Set(kReals, isInRange ? std::ldexp(1.5, exponent + kRoom) : 0);
    const Reals lower = hn::Set(kReals, isInRange ? std::ldexp(1.5, exponent - kTaken + kRoom) : 0);
    const Reals least = hn::Set(kReals, sum.minimum);
    const Reals greatest = hn::Set(kReals, sum.maximum);
    const Reals nowhere = hn::Set(kReals, static_cast<double>(kRun));
    const RowBits lanes;

    double first[kRow];
    for (std::size_t i = 0; i < kRow; ++i)
        first[i] = static_cast<double>(i);
    Reals places[kParts];
    Reals highs[kParts];
    Reals lows[kParts];
    Reals leastAt[kParts];
    Reals greatestAt[kParts];
    Words left = hn::Zero(kWords);
    for (std::size_t part = 0; part < kParts; ++part) {
        places[part] = hn::LoadU(kReals, first + part * kLanes);
        highs[part] = lows[part] = hn::Zero(kReals);
        leastAt[part] = greatestAt[part] = nowhere;
    }
    const Reals step = hn::Set(kReals, static_cast<double>(kRow));
    for (std::size_t row = 0; row < kRun / kRow; ++row) {
        for (std::size_t part = 0; part < kParts; ++part) {
            const Reals value = hn::LoadU(kReals, values + row * kRow + part * kLanes);
            const auto isThere = hn::And(lanes.mask(bits[row / 8], row % 8, part), hn::Eq(value, value));
            const auto isLeast = hn::And(isThere, hn::Eq(value, least));
            const auto isGreatest = hn::And(isThere, hn::Eq(value, greatest));
            leastAt[part] = hn::Min(leastAt[part], hn::IfThenElse(isLeast, places[part], nowhere));
            greatestAt[part] = hn::Min(greatestAt[part], hn::IfThenElse(isGreatest, places[part], nowhere));
            places[part] = hn::Add(places[part], step);
            const Reals added = hn::IfThenElseZero(isThere, value);
            const Reals high = hn::Sub(hn::Add(added, upper), upper);
            const Reals rest = hn::Sub(added, high);
            const Reals low = hn::Sub(hn::Add(rest, lower), lower);
            left = hn::Or(left, hn::BitCast(kWords, hn::Sub(rest, low)));
            highs[part] = hn::Add(highs[part], high);
            lows[part] = hn::Add(lows[part], low);
        }
    }
    ColumnKernels::Details found;
    std::uint64_t any = 0;
    std::uint64_t words[kLanes];
    hn::StoreU(left, kWords, words);
    for (const std::uint64_t word : words)
        any |= word << 1;  // a difference of −0.0 is none
    double leastPlace = static_cast<double>(kRun);
    double greatestPlace = leastPlace;
    for (std::size_t part = 0; part < kParts; ++part) {
        double each[kLanes];
        const auto read = [&](Reals from) { hn::StoreU(from, kReals, each); };
        read(highs[part]);
        for (const double high : each)
            found.high += high;
        read(lows[part]);
        for (const double low : each)
            found.low += low;
        read(leastAt[part]);
        for (const double place : each)
            leastPlace = std::min(leastPlace, place);
        read(greatestAt[part]);
        for (const double place : each)
            greatestPlace = std::min(greatestPlace, place);
    }
    found.leastAt = static_cast<std::size_t>(leastPlace);
    found.greatestAt = static_cast<std::size_t>(greatestPlace);
    found.isExact = isInRange && any == 0;
    return found;
}
