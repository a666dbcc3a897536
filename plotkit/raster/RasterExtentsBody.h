// The loops of RasterKernels over extents: shrinking and widening. RasterKernels.cpp includes this file once a target,
// in a namespace that says what a vector is there; so it has no guard.

// Vectors of up to as many columns as are handled side by side.
using FloatTag = hn::CappedTag<float, kColumns>;
using Floats = hn::Vec<FloatTag>;
constexpr FloatTag kFloats;
constexpr int kAtOnce = static_cast<int>(hn::MaxLanes(kFloats));
constexpr int kParts = kColumns / kAtOnce;

/// One vector of columns: see RasterKernels::shrink.
HWY_INLINE void shrinkSome(const float* enter, const float* leave, const float* low, const float* high,
                           float* shrunkLow, float* shrunkHigh, SlopeSpread spread)
{
    const Floats zero = hn::Zero(kFloats);
    const Floats half = hn::Set(kFloats, 0.5F);
    const Floats one = hn::Set(kFloats, 1.0F);
    const Floats in = hn::LoadU(kFloats, enter);
    const Floats out = hn::LoadU(kFloats, leave);
    const Floats lowest = hn::LoadU(kFloats, low);
    const Floats highest = hn::LoadU(kFloats, high);
    const Floats top = lower(in, out);
    const Floats bottom = raise(in, out);
    const Floats rise = hn::Sub(bottom, top);
    Floats above = hn::Sub(top, lowest);
    Floats below = hn::Sub(highest, bottom);
    const auto isNear = hn::Or(hn::Lt(hn::Add(above, above), rise), hn::Lt(hn::Add(below, below), rise));
    const auto passes = hn::And(hn::And(hn::Gt(rise, zero), hn::Le(lowest, highest)), isNear);
    above = raise(above, zero);
    below = raise(below, zero);
    const Floats steepness = raise(hn::Sub(one, hn::Div(hn::Set(kFloats, spread.gentle), rise)), zero);
    const Floats spreading = hn::Mul(hn::Set(kFloats, spread.most), hn::Mul(steepness, steepness));
    const Floats shift = hn::Mul(hn::Mul(rise, half), hn::Sub(one, spreading));
    const Floats innerLow = raise(hn::Sub(hn::Add(top, shift), hn::Add(above, above)), lowest);
    const Floats innerHigh = lower(hn::Add(hn::Sub(bottom, shift), hn::Add(below, below)), highest);
    const Floats middle = hn::Mul(hn::Add(innerLow, innerHigh), half);
    const auto crossed = hn::Gt(innerLow, innerHigh);
    hn::StoreU(hn::IfThenElse(passes, hn::IfThenElse(crossed, middle, innerLow), lowest), kFloats, shrunkLow);
    hn::StoreU(hn::IfThenElse(passes, hn::IfThenElse(crossed, middle, innerHigh), highest), kFloats, shrunkHigh);
}

void shrink(const float* enter, const float* leave, const float* low, const float* high, float* shrunkLow,
            float* shrunkHigh, std::ptrdiff_t count, SlopeSpread spread)
{
    std::ptrdiff_t column = 0;
    for (; column + kAtOnce <= count; column += kAtOnce)
        shrinkSome(enter + column, leave + column, low + column, high + column, shrunkLow + column, shrunkHigh + column,
                   spread);
    if (column == count)
        return;
    float rest[6][kAtOnce] = {};
    const float* from[4] = {enter, leave, low, high};
    for (int row = 0; row < 4; ++row)
        std::copy_n(from[row] + column, count - column, rest[row]);
    shrinkSome(rest[0], rest[1], rest[2], rest[3], rest[4], rest[5], spread);
    std::copy_n(rest[4], count - column, shrunkLow + column);
    std::copy_n(rest[5], count - column, shrunkHigh + column);
}

/// In steps below the first row.
HWY_INLINE void storeRows(qint32* steps, Floats rows, int firstRow, int lastRow)
{
    constexpr hn::RebindToSigned<FloatTag> kSteps;
    rows = raise(rows, hn::Set(kFloats, static_cast<float>(firstRow)));
    rows = lower(rows, hn::Set(kFloats, static_cast<float>(lastRow)));
    rows =
        hn::Add(hn::Mul(rows, hn::Set(kFloats, static_cast<float>(RasterKernels::kRowSteps))), hn::Set(kFloats, 0.5F));
    const auto first = hn::Set(kSteps, firstRow * RasterKernels::kRowSteps);
    hn::StoreU(hn::Sub(hn::ConvertTo(kSteps, rows), first), kSteps, steps);
}

void dilate(const float* low, const float* high, qint32* top, qint32* bottom, int count, const DiscChords& chords,
            int firstRow, int lastRow)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (int base = 0; base < count; base += kColumns) {
        Floats lowest[kParts], highest[kParts];
        unrolled<kParts>([&](auto part) HWY_ATTR {
            lowest[part] = hn::Set(kFloats, kInfinity);
            highest[part] = hn::Set(kFloats, -kInfinity);
        });
        for (int tap = 0; tap < chords.taps; ++tap) {
            const Floats height = hn::Set(kFloats, chords.heights[tap]);
            unrolled<kParts>([&](auto part) HWY_ATTR {
                const std::ptrdiff_t before = base + static_cast<int>(part) * kAtOnce - tap;
                const std::ptrdiff_t after = base + static_cast<int>(part) * kAtOnce + 1 + tap;
                const Floats least = lower(hn::LoadU(kFloats, low + before), hn::LoadU(kFloats, low + after));
                const Floats greatest = raise(hn::LoadU(kFloats, high + before), hn::LoadU(kFloats, high + after));
                lowest[part] = lower(lowest[part], hn::Sub(least, height));
                highest[part] = raise(highest[part], hn::Add(greatest, height));
            });
        }
        unrolled<kParts>([&](auto part) HWY_ATTR {
            storeRows(top + base + static_cast<int>(part) * kAtOnce, lowest[part], firstRow, lastRow);
            storeRows(bottom + base + static_cast<int>(part) * kAtOnce, highest[part], firstRow, lastRow);
        });
    }
}
