#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include "base/LargeMemory.h"
#include "plugins/PlotixPlugIn/logic/SinglePrecision.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>

namespace {

constexpr std::size_t kWordBits = 64;

/// Narrows up to 64 values; the answer has a bit for every one that is a number, element 0 lowest.
std::uint64_t narrowWord(std::span<const double> values, float* y)
{
    constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
    int odd = 0;  // not a number, or beyond the range of a float
    for (const double value : values)
        odd |= std::abs(value) <= kLargest ? 0 : 1;
    if (odd == 0) {
        for (std::size_t i = 0; i < values.size(); ++i)
            y[i] = static_cast<float>(values[i]);
        return ~std::uint64_t{0} >> (kWordBits - values.size());
    }
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        y[i] = plotix::singlePrecision(values[i]);
        bits |= static_cast<std::uint64_t>(!std::isnan(values[i])) << i;
    }
    return bits;
}

}  // namespace

SeriesBuilder::SeriesBuilder(plotix::SharedArray<double> time, std::size_t elementCount)
    : m_time(std::move(time)),
      m_count(std::min(elementCount, m_time.size())),
      m_y(plotix::zeroedArray<float>(m_count)),
      m_points((m_count + kWordBits - 1) / kWordBits)
{
}

void SeriesBuilder::setBlock(std::size_t first, std::span<const double> values, const plotix::ValidityBitmap& validity)
{
    assert(first % kWordBits == 0 && first + values.size() <= m_count);
    for (std::size_t done = 0; done < values.size(); done += kWordBits) {
        const std::size_t word = (first + done) / kWordBits;
        std::uint64_t bits =
            narrowWord(values.subspan(done, std::min(kWordBits, values.size() - done)), m_y.get() + first + done);
        if (!validity.isAllValid())
            bits &= word < validity.words().size() ? validity.words()[word] : 0;
        m_points[word] = bits;
    }
}

void SeriesBuilder::setPoint(std::size_t index, double value)
{
    if (index >= m_count || std::isnan(value))
        return dropPoint(index);
    m_y.get()[index] = plotix::singlePrecision(value);
    m_points[index / kWordBits] |= std::uint64_t{1} << (index % kWordBits);
}

void SeriesBuilder::dropPoint(std::size_t index)
{
    if (index < m_count)
        m_points[index / kWordBits] &= ~(std::uint64_t{1} << (index % kWordBits));
}

CPTPointSeriesPtr SeriesBuilder::finish()
{
    std::size_t count = 0;
    for (const std::uint64_t word : m_points)
        count += static_cast<std::size_t>(std::popcount(word));
    plotix::ValidityBitmap points;
    if (count < m_count)
        points = plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(std::move(m_points)));
    return std::make_shared<const CPTPointSeries>(
        std::move(m_time), plotix::SharedArray<float>(std::move(m_y), m_count), std::move(points), count);
}
