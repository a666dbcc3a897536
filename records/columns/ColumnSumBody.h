// The sums of ColumnKernels: how many, least, greatest and sum of a run. ColumnKernels.cpp includes this file once a
// target, in a namespace that says what a vector is there; so it has no guard.

/// Two rows side by side: sixteen running sums.
struct Running {
    HWY_INLINE Running()
    {
        unrolled<2 * kParts>([&](auto part) HWY_ATTR {
            sum[part] = hn::Zero(kReals);
            lowest[part] = hn::Set(kReals, std::numeric_limits<double>::infinity());
            highest[part] = hn::Set(kReals, -std::numeric_limits<double>::infinity());
        });
    }
    HWY_INLINE void take(std::size_t part, Reals added, Reals low, Reals high)
    {
        sum[part] = hn::Add(sum[part], added);
        lowest[part] = lower(lowest[part], low);
        highest[part] = raise(highest[part], high);
    }

    Reals sum[2 * kParts];
    Reals lowest[2 * kParts];
    Reals highest[2 * kParts];
};

HWY_INLINE ColumnKernels::Sum summed(const Running& running, std::uint64_t count)
{
    double sums[2 * kRow];
    double lowest[2 * kRow];
    double highest[2 * kRow];
    unrolled<2 * kParts>([&](auto part) HWY_ATTR {
        hn::StoreU(running.sum[part], kReals, sums + part * kLanes);
        hn::StoreU(running.lowest[part], kReals, lowest + part * kLanes);
        hn::StoreU(running.highest[part], kReals, highest + part * kLanes);
    });
    for (std::size_t half = kRow; half > 0; half /= 2) {
        for (std::size_t i = 0; i < half; ++i) {
            sums[i] += sums[i + half];
            lowest[i] = lowest[i + half] < lowest[i] ? lowest[i + half] : lowest[i];
            highest[i] = highest[i + half] > highest[i] ? highest[i + half] : highest[i];
        }
    }
    return {count, lowest[0], highest[0], sums[0]};
}

ColumnKernels::Sum sumOfAll(const double* values)
{
    Running running;
    for (std::size_t row = 0; row < kRun; row += 2 * kRow) {
        unrolled<2 * kParts>([&](auto part) HWY_ATTR {
            const Reals value = hn::LoadU(kReals, values + row + part * kLanes);
            running.take(part, value, value, value);
        });
    }
    return summed(running, kRun);
}

ColumnKernels::Sum sumOfSome(const double* values, const std::uint64_t* bits)
{
    Running running;
    const RowBits lanes;
    Words counts = hn::Zero(kWords);
    const Words one = hn::Set(kWords, 1);
    const Reals nothing = hn::Set(kReals, -0.0);  // added to any sum, it changes nothing
    for (std::size_t row = 0; row < kRun / kRow; row += 2) {
        unrolled<2 * kParts>([&](auto part) HWY_ATTR {
            const Reals value = hn::LoadU(kReals, values + row * kRow + part * kLanes);
            const auto isThere =
                hn::And(lanes.mask(bits[row / 8], row % 8 + part / kParts, part % kParts), hn::Eq(value, value));
            counts = hn::Add(counts, hn::IfThenElseZero(hn::RebindMask(kWords, isThere), one));
            running.take(part, hn::IfThenElse(isThere, value, nothing),
                         hn::IfThenElse(isThere, value, running.lowest[part]),
                         hn::IfThenElse(isThere, value, running.highest[part]));
        });
    }
    std::uint64_t lanesOfCounts[kLanes];
    hn::StoreU(counts, kWords, lanesOfCounts);
    std::uint64_t count = 0;
    for (const std::uint64_t lane : lanesOfCounts)
        count += lane;
    return summed(running, count);
}
