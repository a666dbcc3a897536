#pragma once

/// Which processors kernels are compiled for: AVX-512, AVX2, SSE4 and NEON, and one number at a time for all others.
///
/// The same in every file that includes Highway, so this stands before any of its headers. The last of these targets is
/// compiled everywhere: tests hold the others to it, bit for bit. Processors whose vectors have no size known to the
/// compiler (SVE) run their fixed-size ones, since kernels keep vectors in arrays.

#define HWY_COMPILE_ALL_ATTAINABLE
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128)

#include <hwy/targets.h>
