#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

/// Vectors of the compiler's own, for loops that are written once and compiled for several processors.
///
/// Take everything by reference and be inlined: what is compiled depends on the function these are taken into. Pure;
/// any thread.

#define PLOTKIT_LOOP inline __attribute__((always_inline))
#if defined(__x86_64__)
#define PLOTKIT_FOR_AVX2 __attribute__((target("avx2")))
#endif

namespace plotkit::vectors {

using Float8 = float __attribute__((vector_size(32)));
using Int8 = std::int32_t __attribute__((vector_size(32)));
using Float4 = float __attribute__((vector_size(16)));
using Double4 = double __attribute__((vector_size(32)));
using Long4 = std::int64_t __attribute__((vector_size(32)));

inline constexpr std::size_t kLanes = 8;      ///< of floats
inline constexpr std::size_t kWideLanes = 4;  ///< of doubles

template <class Vector, class Number>
PLOTKIT_LOOP void load(Vector& vector, const Number* numbers)
{
    std::memcpy(&vector, numbers, sizeof vector);
}

template <class Vector, class Number>
PLOTKIT_LOOP void store(Number* numbers, const Vector& vector)
{
    std::memcpy(numbers, &vector, sizeof vector);
}

/// A NaN in `other` changes nothing.
template <class Vector>
PLOTKIT_LOOP void lower(Vector& least, const Vector& other)
{
    least = other < least ? other : least;
}

template <class Vector>
PLOTKIT_LOOP void raise(Vector& greatest, const Vector& other)
{
    greatest = other > greatest ? other : greatest;
}

PLOTKIT_LOOP float leastOf(const Float8& vector)
{
    Float8 least = vector;
    lower(least, __builtin_shufflevector(least, least, 4, 5, 6, 7, 0, 1, 2, 3));
    lower(least, __builtin_shufflevector(least, least, 2, 3, 0, 1, 6, 7, 4, 5));
    lower(least, __builtin_shufflevector(least, least, 1, 0, 3, 2, 5, 4, 7, 6));
    return least[0];
}

PLOTKIT_LOOP float greatestOf(const Float8& vector)
{
    Float8 greatest = vector;
    raise(greatest, __builtin_shufflevector(greatest, greatest, 4, 5, 6, 7, 0, 1, 2, 3));
    raise(greatest, __builtin_shufflevector(greatest, greatest, 2, 3, 0, 1, 6, 7, 4, 5));
    raise(greatest, __builtin_shufflevector(greatest, greatest, 1, 0, 3, 2, 5, 4, 7, 6));
    return greatest[0];
}

}  // namespace plotkit::vectors
