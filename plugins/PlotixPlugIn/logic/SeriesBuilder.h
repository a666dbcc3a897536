#pragma once

#include "plotkit/model/CPTPointSeries.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Makes the series of one property: x shared with the record dictionary, y narrowed to floats, and a bit for every
/// element that is a point. One pass in blocks, which fills the series' index too; no object per sample.
///
/// Every element starts as dropped. Fill the blocks first, then overwrite exceptions one by one. One thread at a time.
namespace plotix {

class SeriesBuilder {
public:
    /// A good length for a block that has to be worked out first: a multiple of 64, and the nearest cache holds it.
    static constexpr std::size_t kBlock = 4096;

    /// `elementCount` elements, at most as many as there are times.
    SeriesBuilder(SharedArray<double> time, std::size_t elementCount);

    std::size_t elementCount() const { return m_count; }

    /// The values of elements [first, first + values.size()); those not valid by the bitmap, or NaN, stay dropped.
    /// Requires: first is a multiple of 64, and the block lies inside.
    void setBlock(std::size_t first, std::span<const double> values, const ValidityBitmap& validity);

    /// One element on its own; outside: nothing happens. A NaN is dropped.
    void setPoint(std::size_t index, double value);
    void dropPoint(std::size_t index);

    /// The series. Requires: called once; the builder is empty afterwards.
    CPTPointSeriesPtr finish();

private:
    void setRest(std::size_t first, std::span<const double> values, std::uint64_t validity);
    void dropUpTo(std::size_t end);
    void indexWord(std::size_t word);

    SharedArray<double> m_time;
    std::size_t m_count;
    std::shared_ptr<float> m_y;
    CPTFineBlocks m_fine;
    std::vector<std::uint64_t> m_points;
    std::size_t m_filled = 0;                 // y and index are filled up to here; a multiple of 64, or all
    std::vector<std::size_t> m_changedWords;  // whose index must be made again
};

}  // namespace plotix
