#include "records/columns/ColumnKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "records/columns/ColumnKernels.cpp"
#include "base/vectors/Kernels.h"
#include <hwy/cache_control.h>

HWY_BEFORE_NAMESPACE();
namespace plotix {
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using namespace vectors::HWY_NAMESPACE;

constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr std::size_t kRow = ColumnKernels::kRow;
constexpr std::size_t kMask = ColumnKernels::kMask;

// Vectors of up to one row; `kParts` of them make a row.
using RealTag = hn::CappedTag<double, kRow>;
using WordTag = hn::RebindToUnsigned<RealTag>;
using IntegerTag = hn::RebindToSigned<RealTag>;
using Reals = hn::Vec<RealTag>;
using Words = hn::Vec<WordTag>;
constexpr RealTag kReals;
constexpr WordTag kWords;
constexpr IntegerTag kIntegers;
constexpr std::size_t kLanes = hn::MaxLanes(kReals);
constexpr std::size_t kParts = kRow / kLanes;

/// Words of packed numbers; any address will do.
HWY_INLINE Words loadWords(const std::byte* from)
{
#if HWY_TARGET == HWY_SCALAR
    std::uint64_t word;
    std::memcpy(&word, from, sizeof word);
    return hn::Set(kWords, word);
#else
    return hn::LoadU(kWords, reinterpret_cast<const std::uint64_t*>(from));
#endif
}

HWY_INLINE void storeWords(Words words, std::byte* to)
{
#if HWY_TARGET == HWY_SCALAR
    const std::uint64_t word = hn::GetLane(words);
    std::memcpy(to, &word, sizeof word);
#else
    hn::StoreU(words, kWords, reinterpret_cast<std::uint64_t*>(to));
#endif
}

/// Which lanes have their bit set in the words of a mask.
struct RowBits {
    HWY_INLINE RowBits()
    {
        alignas(64) static constexpr std::uint64_t kBits[kRow] = {1, 2, 4, 8, 16, 32, 64, 128};
        for (std::size_t part = 0; part < kParts; ++part)
            first[part] = hn::Load(kWords, kBits + part * kLanes);
    }
    HWY_INLINE hn::Mask<RealTag> mask(std::uint64_t bits, std::size_t row, std::size_t part) const
    {
        return hn::RebindMask(kReals, hn::TestBit(hn::Set(kWords, bits >> (row * kRow)), first[part]));
    }

    Words first[kParts];  ///< the lanes' bits of the first row
};

#include "records/columns/ColumnDetailsBody.h"
#include "records/columns/ColumnLineBody.h"
#include "records/columns/ColumnPackingBody.h"
#include "records/columns/ColumnSumBody.h"
#include "records/columns/ColumnUnpackingBody.h"

const ColumnKernels& kernels()
{
    static constexpr ColumnKernels kTable{quotients,      products,    patterns,   blank, putPastCaches,
                                          endPuttingPast, asQuotients, asProducts, range, pack,
                                          sumOfAll,       sumOfSome,   details};
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

const ColumnKernels& ColumnKernels::best()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

}  // namespace plotix
#endif
