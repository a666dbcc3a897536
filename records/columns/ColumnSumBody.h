// The sums of ColumnKernels: how many, least, greatest and sum of a run. Part of ColumnKernelsBody.h, which includes it
// once a processor with the vectors they are written in.

/// Two rows side by side: sixteen running sums.
struct Running {
    Reals sum[2 * kParts];
    Reals lowest[2 * kParts];
    Reals highest[2 * kParts];
};

PLOTIX_BODY void start(Running& running)
{
    for (std::size_t part = 0; part < 2 * kParts; ++part) {
        running.sum[part] = Reals{};
        running.lowest[part] = Reals{} + std::numeric_limits<double>::infinity();
        running.highest[part] = Reals{} - std::numeric_limits<double>::infinity();
    }
}

PLOTIX_BODY ColumnKernels::Sum summed(const Running& running, std::uint64_t count)
{
    double sums[2 * kRow];
    double lowest[2 * kRow];
    double highest[2 * kRow];
    for (std::size_t part = 0; part < 2 * kParts; ++part) {
        std::memcpy(sums + part * kLanes, &running.sum[part], kVectorBytes);
        std::memcpy(lowest + part * kLanes, &running.lowest[part], kVectorBytes);
        std::memcpy(highest + part * kLanes, &running.highest[part], kVectorBytes);
    }
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
    start(running);
    for (std::size_t row = 0; row < kRun; row += 2 * kRow) {
        for (std::size_t part = 0; part < 2 * kParts; ++part) {
            Reals value;
            load(value, values + row + part * kLanes);
            running.sum[part] += value;
            running.lowest[part] = value < running.lowest[part] ? value : running.lowest[part];
            running.highest[part] = value > running.highest[part] ? value : running.highest[part];
        }
    }
    return summed(running, kRun);
}

ColumnKernels::Sum sumOfSome(const double* values, const std::uint64_t* bits)
{
    Running running;
    start(running);
    Words weights[kParts];
    weightsOf(weights);
    Words counts{};
    const Reals nothing = Reals{} - 0.0;  // added to any sum, it changes nothing
    for (std::size_t row = 0; row < kRun / kRow; row += 2) {
        for (std::size_t part = 0; part < 2 * kParts; ++part) {
            Reals value;
            Words lanes;
            load(value, values + row * kRow + part * kLanes);
            lanesOf(lanes, bits[row / 8], row % 8 + part / kParts, weights[part % kParts]);
            lanes &= (Words)(value == value);
            counts -= lanes;
            running.sum[part] += (Reals)(((Words)value & lanes) | ((Words)nothing & ~lanes));
            const Reals low = (Integers)lanes ? value : running.lowest[part];
            const Reals high = (Integers)lanes ? value : running.highest[part];
            running.lowest[part] = low < running.lowest[part] ? low : running.lowest[part];
            running.highest[part] = high > running.highest[part] ? high : running.highest[part];
        }
    }
    std::uint64_t lanes[kLanes];
    std::memcpy(lanes, &counts, sizeof lanes);
    std::uint64_t count = 0;
    for (const std::uint64_t lane : lanes)
        count += lane;
    return summed(running, count);
}
