#pragma once

#include "base/SharedArray.h"
#include "base/ValidityBitmap.h"
#include "hostapp/formulas/FormulaProgram.h"

#include <array>
#include <cstdint>
#include <vector>

/// The inner loops: steps that work value by value, a block at a time, so that what lies between two steps stays in the
/// near cache. No value is a NaN, and what a NaN goes into is one. Free functions; any thread.
namespace plotix {

/// Values in a block, at most; a multiple of 64.
inline constexpr std::size_t kFormulaBlock = 1024;

/// A step over `count` values. Requires: it is pointwise; its arguments are as long as `to`; count ≤ kFormulaBlock.
void runStep(const FormulaStep& step, const std::array<const double*, 3>& arguments, double* to, std::size_t count);

/// Elements [first, first + count) with a NaN where they are not valid. Requires: first is a multiple of 64.
void copyMasked(const double* values, const ValidityBitmap& validity, std::size_t first, std::size_t count, double* to);

/// Whether all of these are valid. Requires: first is a multiple of 64.
bool areValid(const ValidityBitmap& validity, std::size_t first, std::size_t count);

/// Gathers, block by block, which values are finite numbers.
class FiniteBits {
public:
    explicit FiniteBits(std::size_t count) : m_count(count) {}

    /// Elements [first, first + count) of all; those that are not finite become NaN. Requires: first is a multiple
    /// of 64.
    void take(double* values, std::size_t first, std::size_t count);
    ValidityBitmap bitmap();  ///< once, at the end; no words when all are finite

private:
    std::size_t m_count;
    std::vector<std::uint64_t> m_words;  // empty until one is not finite
};

}  // namespace plotix
