#include "records/columns/ColumnKernels.h"

#include <algorithm>
#include <cstring>
#include <limits>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#define PLOTIX_BODY inline __attribute__((always_inline))

namespace plotix {

namespace {

constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr std::size_t kRow = ColumnKernels::kRow;
constexpr std::size_t kMask = ColumnKernels::kMask;
constexpr std::size_t kRowBytes = kRow * sizeof(double);

// A double of 1.5 × 2^52 plus a whole number up to ±2^51 holds that number in its low bits.
constexpr double kMagic = 0x1.8p52;
constexpr std::uint64_t kMagicBits = 0x4338000000000000;
constexpr double kLimit = 0x1p51;

enum class Form { Quotient, Product, Pattern, MixedPattern };

/// 1 ÷ `by` in two doubles, the second what the first leaves.
struct Inverse {
    double high = 1, low = 0;
};

namespace everyProcessor {
constexpr std::size_t kVectorBytes = 16;
using Vector = double __attribute__((vector_size(kVectorBytes)));
PLOTIX_BODY Inverse inverseOf(double /*by*/)
{
    return {};
}
PLOTIX_BODY void divide(Vector& numbers, const Vector& by, const Vector& /*high*/, const Vector& /*low*/)
{
    numbers /= by;
}
#include "records/columns/ColumnKernelsBody.h"
}  // namespace everyProcessor

#if defined(__x86_64__)

// Division by multiplying with an inverse in two parts (Brisebarre and Muller 2008): n·low is rounded, n·high is added
// to it and the sum rounded once. For whole |n| < 2^53 and d = 10^k, k up to 15, that is the correctly rounded
// quotient: the sum misses n/d by less than 2^-104 of it; and n/d, whose denominator is d, never is the middle of two
// doubles and stays at least 2^-54/d of it away from one, which is further.

#pragma GCC push_options
#pragma GCC target("avx2,fma")
namespace withAvx2 {
constexpr std::size_t kVectorBytes = 32;
PLOTIX_BODY Inverse inverseOf(double by)
{
    const double high = 1 / by;
    return {high, __builtin_fma(-high, by, 1.0) / by};
}
PLOTIX_BODY void divide(__m256d& numbers, const __m256d& /*by*/, const __m256d& high, const __m256d& low)
{
    numbers = _mm256_fmadd_pd(numbers, high, _mm256_mul_pd(numbers, low));
}
#include "records/columns/ColumnKernelsBody.h"
}  // namespace withAvx2
#pragma GCC pop_options

#pragma GCC push_options
#pragma GCC target("avx512f,avx512dq,avx512vl,avx2,fma")
namespace withAvx512 {
constexpr std::size_t kVectorBytes = 64;
PLOTIX_BODY Inverse inverseOf(double by)
{
    const double high = 1 / by;
    return {high, __builtin_fma(-high, by, 1.0) / by};
}
PLOTIX_BODY void divide(__m512d& numbers, const __m512d& /*by*/, const __m512d& high, const __m512d& low)
{
    numbers = _mm512_fmadd_pd(numbers, high, _mm512_mul_pd(numbers, low));
}
#include "records/columns/ColumnKernelsBody.h"
}  // namespace withAvx512
#pragma GCC pop_options

#endif

}  // namespace

const ColumnKernels& ColumnKernels::plain()
{
    return everyProcessor::kTable;
}

const ColumnKernels* ColumnKernels::avx2()
{
#if defined(__x86_64__)
    static const bool hasIt = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    return hasIt ? &withAvx2::kTable : nullptr;
#else
    return nullptr;
#endif
}

const ColumnKernels* ColumnKernels::avx512()
{
#if defined(__x86_64__)
    static const bool hasIt = avx2() && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
                              __builtin_cpu_supports("avx512vl");
    return hasIt ? &withAvx512::kTable : nullptr;
#else
    return nullptr;
#endif
}

const ColumnKernels& ColumnKernels::best()
{
    if (const ColumnKernels* kernels = avx512())
        return *kernels;
    if (const ColumnKernels* kernels = avx2())
        return *kernels;
    return plain();
}

}  // namespace plotix
