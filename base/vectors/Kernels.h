// What every kernel file includes: the operations of the processor that it is being compiled for. Read README.md first.
//
// The kernel file is compiled once a target, and this header with it, so it has no guard. Defines namespace
// HWY_NAMESPACE (such as N_AVX2) in which the file writes its loops, and `hn`, the operations there.

#include "base/vectors/Targets.h"

#include <cstddef>
#include <utility>

#include <hwy/foreach_target.h>
// After the include above, which compiles the kernel file for the other targets.
#include <hwy/highway.h>

#if defined(BASE_VECTORS_KERNELS_H) == defined(HWY_TARGET_TOGGLE)
#ifdef BASE_VECTORS_KERNELS_H
#undef BASE_VECTORS_KERNELS_H
#else
#define BASE_VECTORS_KERNELS_H
#endif

HWY_BEFORE_NAMESPACE();
namespace plotix::vectors::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Calls `body` with 0, 1 … kCount − 1, each known to the compiler. Vectors in an array stay in registers only if it
/// knows their indexes early; it unrolls loops too late. The body's lambda is marked HWY_ATTR.
template <std::size_t kCount, class Body>
HWY_INLINE void unrolled(const Body& body)
{
    [&]<std::size_t... kPlace>(std::index_sequence<kPlace...>) HWY_ATTR
    {
        (body(std::integral_constant<std::size_t, kPlace>()), ...);
    }
    (std::make_index_sequence<kCount>());
}

/// `least`, or `other` where that is smaller: a NaN in `other` changes nothing, and of two zeros `least` stays.
/// Highway's own Min does not define which of two zeros or NaNs it answers.
template <class V>
HWY_INLINE V lower(V least, V other)
{
#if HWY_ARCH_X86 && HWY_TARGET != HWY_SCALAR
    return hn::Min(other, least);  // these answer their second operand when neither is smaller
#else
    return hn::IfThenElse(hn::Lt(other, least), other, least);
#endif
}

/// The same for the greatest.
template <class V>
HWY_INLINE V raise(V greatest, V other)
{
#if HWY_ARCH_X86 && HWY_TARGET != HWY_SCALAR
    return hn::Max(other, greatest);
#else
    return hn::IfThenElse(hn::Gt(other, greatest), other, greatest);
#endif
}

}  // namespace plotix::vectors::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
