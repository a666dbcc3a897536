#include "plugins/PlotixPlugIn/reading/figures/FigureKernels.h"

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "plugins/PlotixPlugIn/reading/figures/FigureKernels.cpp"
#include "base/vectors/Kernels.h"

HWY_BEFORE_NAMESPACE();
namespace plotix {
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using namespace vectors::HWY_NAMESPACE;

constexpr std::size_t kRow = 8;
constexpr hn::CappedTag<double, kRow> kNumbers;
constexpr std::size_t kLanes = hn::MaxLanes(kNumbers);
constexpr std::size_t kParts = kRow / kLanes;
using Numbers = hn::Vec<decltype(kNumbers)>;

/// Eight running sums, whatever the width: element i is added to the one of number i % 8, and at the end all of them in
/// the same order.
struct Sums {
    HWY_INLINE Sums()
    {
        unrolled<kParts>([&](auto part) HWY_ATTR { parts[part] = hn::Zero(kNumbers); });
    }
    HWY_INLINE double total() const
    {
        double each[kRow];
        unrolled<kParts>([&](auto part) HWY_ATTR { hn::StoreU(parts[part], kNumbers, each + part * kLanes); });
        return ((each[0] + each[4]) + (each[1] + each[5])) + ((each[2] + each[6]) + (each[3] + each[7]));
    }
    Numbers parts[kParts];
};

bool holdsNaN(const double* values, std::size_t count)
{
    auto isNaN = hn::MaskFromVec(hn::Zero(kNumbers));
    std::size_t at = 0;
    for (; at + kRow <= count; at += kRow)
        unrolled<kParts>([&](auto part) HWY_ATTR {
            isNaN = hn::Or(isNaN, hn::IsNaN(hn::LoadU(kNumbers, values + at + part * kLanes)));
        });
    return !hn::AllFalse(kNumbers, isNaN) ||
           std::any_of(values + at, values + count, [](double value) { return std::isnan(value); });
}

FigureKernels::Values values(const double* values, std::size_t count)
{
    Numbers smallest[kParts], largest[kParts];
    unrolled<kParts>([&](auto part) HWY_ATTR {
        smallest[part] = hn::Set(kNumbers, values[0]);
        largest[part] = smallest[part];
    });
    Sums sums;
    std::size_t at = 0;
    for (; at + kRow <= count; at += kRow)
        unrolled<kParts>([&](auto part) HWY_ATTR {
            const Numbers each = hn::LoadU(kNumbers, values + at + part * kLanes);
            smallest[part] = lower(smallest[part], each);
            largest[part] = raise(largest[part], each);
            sums.parts[part] = hn::Add(sums.parts[part], each);
        });
    double lows[kRow];
    double highs[kRow];
    unrolled<kParts>([&](auto part) HWY_ATTR {
        hn::StoreU(smallest[part], kNumbers, lows + part * kLanes);
        hn::StoreU(largest[part], kNumbers, highs + part * kLanes);
    });
    FigureKernels::Values found{*std::min_element(lows, lows + kRow), *std::max_element(highs, highs + kRow),
                                sums.total()};
    for (; at < count; ++at) {
        found.minimum = std::min(found.minimum, values[at]);
        found.maximum = std::max(found.maximum, values[at]);
        found.sum += values[at];
    }
    return found;
}

double squares(const double* values, std::size_t count, double mean)
{
    const Numbers middle = hn::Set(kNumbers, mean);
    Sums sums;
    std::size_t at = 0;
    for (; at + kRow <= count; at += kRow)
        unrolled<kParts>([&](auto part) HWY_ATTR {
            const Numbers distance = hn::Sub(hn::LoadU(kNumbers, values + at + part * kLanes), middle);
            sums.parts[part] = hn::Add(sums.parts[part], hn::Mul(distance, distance));
        });
    double total = sums.total();
    for (; at < count; ++at)
        total += (values[at] - mean) * (values[at] - mean);
    return total;
}

FigureKernels::Pairs pairs(const double* times, const double* values, std::size_t count, double longestJoin)
{
    const Numbers join = hn::Set(kNumbers, longestJoin);
    const Numbers half = hn::Set(kNumbers, 0.5);
    Sums covered, held, straight;
    FigureKernels::Pairs found;
    std::size_t at = 0;
    for (; at + kRow < count; at += kRow)
        unrolled<kParts>([&](auto part) HWY_ATTR {
            const std::size_t first = at + part * kLanes;
            const Numbers distance =
                hn::Sub(hn::LoadU(kNumbers, times + first + 1), hn::LoadU(kNumbers, times + first));
            const Numbers value = hn::LoadU(kNumbers, values + first);
            const Numbers next = hn::LoadU(kNumbers, values + first + 1);
            const auto isJoined = hn::Le(distance, join);
            const Numbers middle = hn::Add(hn::Mul(half, value), hn::Mul(half, next));
            covered.parts[part] = hn::Add(covered.parts[part], hn::IfThenElseZero(isJoined, distance));
            held.parts[part] = hn::Add(held.parts[part], hn::IfThenElseZero(isJoined, hn::Mul(value, distance)));
            straight.parts[part] =
                hn::Add(straight.parts[part], hn::IfThenElseZero(isJoined, hn::Mul(middle, distance)));
            found.gaps += static_cast<std::int64_t>(kLanes - hn::CountTrue(kNumbers, isJoined));
        });
    found.covered = covered.total();
    found.held = held.total();
    found.straight = straight.total();
    for (; at + 1 < count; ++at) {
        const double distance = times[at + 1] - times[at];
        if (!(distance <= longestJoin)) {
            ++found.gaps;
            continue;
        }
        found.covered += distance;
        found.held += values[at] * distance;
        found.straight += (0.5 * values[at] + 0.5 * values[at + 1]) * distance;
    }
    return found;
}

/// How much of a straight line from `one` to `other` lies above zero, 0 to 1; an end at zero or nowhere is not above.
HWY_INLINE Numbers shareAbove(Numbers one, Numbers other)
{
    const Numbers zero = hn::Zero(kNumbers);
    const Numbers above = hn::Add(raise(zero, one), raise(zero, other));
    const Numbers share = hn::Div(above, hn::Add(hn::Abs(one), hn::Abs(other)));
    const Numbers whole = hn::IfThenElseZero(hn::Gt(above, zero), hn::Set(kNumbers, 1.0));  // an end without bounds
    return hn::IfThenElse(hn::IsNaN(share), whole, share);
}

double shareAbove(double one, double other)
{
    const double above = std::max(0.0, one) + std::max(0.0, other);
    const double share = above / (std::abs(one) + std::abs(other));
    return std::isnan(share) ? (above > 0 ? 1.0 : 0.0) : share;
}

FigureKernels::Sides sides(const double* times, const double* values, std::size_t count, double longestJoin,
                           double limit)
{
    const Numbers join = hn::Set(kNumbers, longestJoin);
    const Numbers level = hn::Set(kNumbers, limit);
    const Numbers zero = hn::Zero(kNumbers);
    Sums heldAbove, heldBelow, straightAbove, straightBelow;
    FigureKernels::Sides found;
    std::size_t at = 0;
    for (; at + kRow < count; at += kRow)
        unrolled<kParts>([&](auto part) HWY_ATTR {
            const std::size_t first = at + part * kLanes;
            const Numbers apart = hn::Sub(hn::LoadU(kNumbers, times + first + 1), hn::LoadU(kNumbers, times + first));
            const auto isJoined = hn::Le(apart, join);
            const Numbers distance = hn::IfThenElseZero(isJoined, apart);
            const Numbers one = hn::Sub(hn::LoadU(kNumbers, values + first), level);
            const Numbers other = hn::Sub(hn::LoadU(kNumbers, values + first + 1), level);
            const auto isAbove = hn::Gt(one, zero);
            heldAbove.parts[part] = hn::Add(heldAbove.parts[part], hn::IfThenElseZero(isAbove, distance));
            heldBelow.parts[part] = hn::Add(heldBelow.parts[part], hn::IfThenElseZero(hn::Lt(one, zero), distance));
            straightAbove.parts[part] = hn::Add(straightAbove.parts[part], hn::Mul(shareAbove(one, other), distance));
            straightBelow.parts[part] =
                hn::Add(straightBelow.parts[part], hn::Mul(shareAbove(hn::Neg(one), hn::Neg(other)), distance));
            const auto crosses = hn::And(isJoined, hn::Xor(isAbove, hn::Gt(other, zero)));
            found.crossings += static_cast<std::int64_t>(hn::CountTrue(kNumbers, crosses));
        });
    found.heldAbove = heldAbove.total();
    found.heldBelow = heldBelow.total();
    found.straightAbove = straightAbove.total();
    found.straightBelow = straightBelow.total();
    for (; at + 1 < count; ++at) {
        const double distance = times[at + 1] - times[at];
        if (!(distance <= longestJoin))
            continue;
        const double one = values[at] - limit;
        const double other = values[at + 1] - limit;
        found.heldAbove += one > 0 ? distance : 0;
        found.heldBelow += one < 0 ? distance : 0;
        found.straightAbove += shareAbove(one, other) * distance;
        found.straightBelow += shareAbove(-one, -other) * distance;
        found.crossings += (one > 0) != (other > 0) ? 1 : 0;
    }
    return found;
}

const FigureKernels& kernels()
{
    static constexpr FigureKernels kTable{holdsNaN, values, squares, pairs, sides};
    return kTable;
}

}  // namespace HWY_NAMESPACE
}  // namespace
}  // namespace plotix
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace plotix {

namespace {
HWY_EXPORT(kernels);
}  // namespace

const FigureKernels& FigureKernels::best()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

}  // namespace plotix
#endif
