#pragma once

#include "plotkit/model/CPTFineBlocks.h"
#include "plotkit/model/CPTPointSeries.h"
#include "plotkit/model/CPTPointWriter.h"

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
    SeriesBuilder(PagedArray<double> time, std::size_t elementCount);

    std::size_t elementCount() const { return m_count; }

    /// The values of elements [first, first + values.size()); those not valid by the bitmap, or NaN, stay dropped.
    /// Requires: first is a multiple of 64, and the block lies inside.
    void setBlock(std::size_t first, std::span<const double> values, const ValidityBitmap& validity)
    {
        m_writer.setBlock(first, values, validity);
    }

    /// One element on its own; outside: nothing happens. A NaN is dropped.
    void setPoint(std::size_t index, double value) { m_writer.setPoint(index, value); }
    void dropPoint(std::size_t index) { m_writer.dropPoint(index); }

    /// The series. Requires: called once; the builder is empty afterwards.
    CPTPointSeriesPtr finish();

private:
    PagedArray<double> m_time;
    std::size_t m_count;
    std::shared_ptr<float> m_y;
    CPTFineBlocks m_fine;
    std::vector<std::uint64_t> m_points;
    CPTPointWriter m_writer;
};

}  // namespace plotix
