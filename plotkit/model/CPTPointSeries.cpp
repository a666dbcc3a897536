#include "plotkit/model/CPTPointSeries.h"

#include "plotkit/model/CPTSeriesIndex.h"
#include "plotkit/model/TimeOrder.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cassert>
#include <cmath>

namespace {

/// y cut to the length of x, for a maker that handed over too few times.
plotix::SharedArray<float> cutToLength(plotix::SharedArray<float> y, std::size_t length)
{
    if (y.size() <= length)
        return y;
    return plotix::SharedArray<float>::fromVector({y.data(), y.data() + length});
}

std::uint64_t nextSerial()
{
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

CPTPointSeries::CPTPointSeries(plotix::SharedArray<double> x, plotix::SharedArray<float> y,
                               plotix::ValidityBitmap points, std::size_t pointCount)
    : m_x(std::move(x)),
      m_y(cutToLength(std::move(y), m_x.size())),
      m_points(std::move(points)),
      m_pointCount(pointCount),
      m_serial(nextSerial()),
      m_xSorted(plotkit::areTimesSorted(m_x, m_y.size())),
      m_xCourse(plotkit::courseOfTimes(m_x, m_y.size())),
      m_index(std::make_unique<CPTSeriesIndex>(m_y.span(), m_points))
{
    m_extent = computedExtent();
}

CPTPointSeries::CPTPointSeries(plotix::SharedArray<double> x, plotix::SharedArray<float> y,
                               plotix::ValidityBitmap points, std::size_t pointCount, CPTFineBlocks fine)
    : m_x(std::move(x)),
      m_y(std::move(y)),
      m_points(std::move(points)),
      m_pointCount(pointCount),
      m_serial(nextSerial()),
      m_xSorted(plotkit::areTimesSorted(m_x, m_y.size())),
      m_xCourse(plotkit::courseOfTimes(m_x, m_y.size())),
      m_index(std::make_unique<CPTSeriesIndex>(m_y.span(), m_points, std::move(fine)))
{
    m_extent = computedExtent();
}

CPTPointSeries::~CPTPointSeries() = default;

std::optional<CPTPointSeries::Extent> CPTPointSeries::computedExtent() const
{
    const CPTSeriesIndex::MinMax values = m_index->minMax(0, elementCount());
    const std::size_t first = m_index->firstPointFrom(0);
    if (values.isEmpty() || first == elementCount())
        return std::nullopt;
    if (m_xSorted)
        return Extent{m_x[first], m_x[m_index->lastPointBefore(elementCount())], values.min, values.max};

    std::optional<Extent> extent;
    for (std::size_t element = first; element < elementCount(); ++element) {
        const double x = m_x[element];
        const float y = m_y[element];
        if (!isPoint(element) || !std::isfinite(x) || !std::isfinite(y))
            continue;
        if (!extent)
            extent = Extent{x, x, y, y};
        extent->minX = std::min(extent->minX, x);
        extent->maxX = std::max(extent->maxX, x);
        extent->minY = std::min(extent->minY, y);
        extent->maxY = std::max(extent->maxY, y);
    }
    return extent;
}

std::shared_ptr<const CPTPointSeries> CPTPointSeries::origin()
{
    return std::make_shared<const CPTPointSeries>(plotix::SharedArray<double>::fromVector({0.0}),
                                                  plotix::SharedArray<float>::fromVector({0.0F}),
                                                  plotix::ValidityBitmap(), 1);
}

CPTPoint CPTPointSeries::pointAt(std::size_t index) const
{
    assert(index < count());
    if (m_points.isAllValid())
        return {m_x[index], m_y[index]};
    std::size_t remaining = index;
    for (std::size_t word = 0; word < m_points.words().size(); ++word) {
        std::uint64_t bits = m_points.words()[word];
        const auto inWord = static_cast<std::size_t>(std::popcount(bits));
        if (remaining >= inWord) {
            remaining -= inWord;
            continue;
        }
        for (; remaining > 0; --remaining)
            bits &= bits - 1;
        const std::size_t element = word * 64 + static_cast<std::size_t>(std::countr_zero(bits));
        return {m_x[element], m_y[element]};
    }
    return {};
}
