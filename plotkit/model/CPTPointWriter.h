#pragma once

#include "base/ValidityBitmap.h"
#include "plotkit/model/CPTFineBlocks.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Turns archived doubles into the points of a series: y narrowed to floats, a bit for every element that is a point,
/// and the blocks of the index, in one pass over memory.
///
/// Every element starts as dropped. Write the blocks first, from the first to the last, then overwrite exceptions one
/// by one. *Borrows* the arrays, which begin with the series' element 0; one thread at a time.
class CPTPointWriter {
public:
    struct Arrays {
        float* y;
        std::uint64_t* points;
        CPTFineBlocks fine;
    };
    /// For elements [first, end). Requires: first is a multiple of 64.
    CPTPointWriter(Arrays arrays, std::size_t first, std::size_t end);

    std::size_t first() const { return m_first; }
    std::size_t end() const { return m_end; }

    /// The values of elements [at, at + values.size()); those not valid by the bitmap, or NaN, stay dropped.
    /// Requires: `at` is a multiple of 64, the block lies inside, and the validity of its elements is held.
    void setBlock(std::size_t at, std::span<const double> values, const plotix::ValidityBitmap& validity);

    /// The same with a bit for each of these values, from bit 0; null: all are valid.
    void setBlock(std::size_t at, std::span<const double> values, const std::uint64_t* valid);

    /// One element on its own; outside: nothing happens. A NaN is dropped.
    void setPoint(std::size_t element, double value);
    void dropPoint(std::size_t element);

    /// What nothing reached stays dropped. Requires: called last.
    void finish();

private:
    bool isInside(std::size_t element) const { return element >= m_first && element < m_end; }
    void setRest(std::size_t at, std::span<const double> values, std::uint64_t validity);
    void dropUpTo(std::size_t end);
    void indexWord(std::size_t word);

    Arrays m_arrays;
    std::size_t m_first, m_end;
    std::size_t m_filled;                     // everything is written up to here; a multiple of 64, or all
    std::vector<std::size_t> m_changedWords;  // whose index must be made again
};
