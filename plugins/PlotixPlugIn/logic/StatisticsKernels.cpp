#include "plugins/PlotixPlugIn/logic/StatisticsKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "plugins/PlotixPlugIn/logic/StatisticsKernels.cpp"
#include "base/vectors/Kernels.h"

HWY_BEFORE_NAMESPACE();
namespace plotix {
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using namespace vectors::HWY_NAMESPACE;

constexpr std::size_t kRow = StatisticsKernels::kRow;
constexpr hn::CappedTag<double, kRow> kNumbers;
constexpr std::size_t kLanes = hn::MaxLanes(kNumbers);
constexpr std::size_t kParts = kRow / kLanes;
using Numbers = hn::Vec<decltype(kNumbers)>;

// The sum is one chain of additions, as long as the values: it alone says how long this takes, and the extremes of
// several values at once go along with it.
StatisticsKernels::Found addUp(const double* values, std::size_t count, double sum)
{
    Numbers smallest[kParts], largest[kParts];
    unrolled<kParts>([&](auto part) HWY_ATTR {
        smallest[part] = hn::LoadU(kNumbers, values + part * kLanes);
        largest[part] = smallest[part];
    });
    auto isNaN = hn::MaskFromVec(hn::Zero(kNumbers));
    for (std::size_t first = 0; first < count; first += kRow) {
        unrolled<kParts>([&](auto part) HWY_ATTR {
            const Numbers each = hn::LoadU(kNumbers, values + first + part * kLanes);
            smallest[part] = lower(smallest[part], each);
            largest[part] = raise(largest[part], each);
            isNaN = hn::Or(isNaN, hn::IsNaN(each));
        });
        for (std::size_t i = first; i < first + kRow; ++i)
            sum += values[i];
    }
    double lows[kRow];
    double highs[kRow];
    unrolled<kParts>([&](auto part) HWY_ATTR {
        hn::StoreU(smallest[part], kNumbers, lows + part * kLanes);
        hn::StoreU(largest[part], kNumbers, highs + part * kLanes);
    });
    return {sum, *std::min_element(lows, lows + kRow), *std::max_element(highs, highs + kRow),
            !hn::AllFalse(kNumbers, isNaN)};
}

const StatisticsKernels& kernels()
{
    static constexpr StatisticsKernels kTable{addUp};
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

const StatisticsKernels& StatisticsKernels::best()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

}  // namespace plotix
#endif
