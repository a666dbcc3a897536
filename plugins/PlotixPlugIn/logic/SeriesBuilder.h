#pragma once

#include "plotkit/model/CPTPointSeries.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Makes the series of one property: x shared with the record dictionary, y narrowed to floats, and a bit for every
/// element that is a point. One pass in blocks; no object per sample.
///
/// Every element starts as dropped. Fill the blocks first, then overwrite the odd elements one by one.
class SeriesBuilder {
public:
    /// Elements one block holds at most; a multiple of 64, so that blocks end where words of the bitmap do.
    static constexpr std::size_t kBlock = 4096;

    /// `elementCount` elements, at most as many as there are times.
    SeriesBuilder(plotix::SharedArray<double> time, std::size_t elementCount);

    std::size_t elementCount() const { return m_count; }

    /// The values of elements [first, first + values.size()); those not valid by the bitmap, or NaN, stay dropped.
    /// Requires: first is a multiple of 64, and the block lies inside.
    void setBlock(std::size_t first, std::span<const double> values, const plotix::ValidityBitmap& validity);

    /// One element on its own; outside: nothing happens. A NaN is dropped.
    void setPoint(std::size_t index, double value);
    void dropPoint(std::size_t index);

    /// The series. Requires: called once; the builder is empty afterwards.
    CPTPointSeriesPtr finish();

private:
    plotix::SharedArray<double> m_time;
    std::size_t m_count;
    std::shared_ptr<float> m_y;
    std::vector<std::uint64_t> m_points;
};
