#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include "base/LargeMemory.h"

#include <algorithm>
#include <bit>

namespace plotix {

namespace {

constexpr std::size_t kWordBits = 64;
constexpr std::uint64_t kAll = ~std::uint64_t{0};

}  // namespace

SeriesBuilder::SeriesBuilder(PagedArray<double> time, std::size_t elementCount)
    : m_time(std::move(time)),
      m_count(std::min(elementCount, m_time.size())),
      m_y(unsetArray<float>(m_count)),
      m_fine(m_count),
      m_points((m_count + kWordBits - 1) / kWordBits),
      m_writer({m_y.get(), m_points.data(), m_fine}, 0, m_count)
{
}

CPTPointSeriesPtr SeriesBuilder::finish()
{
    m_writer.finish();
    std::size_t count = 0;
    for (const std::uint64_t word : m_points)
        count += word == kAll ? kWordBits : static_cast<std::size_t>(std::popcount(word));
    ValidityBitmap points;
    if (count < m_count)
        points = ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(m_points)));
    return std::make_shared<const CPTPointSeries>(std::move(m_time), SharedArray<float>(std::move(m_y), m_count),
                                                  std::move(points), count, std::move(m_fine));
}

}  // namespace plotix
