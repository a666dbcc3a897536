#include "plotkit/model/CPTPointSeries.h"

#include "plotkit/model/CPTPagedPoints.h"
#include "plotkit/model/CPTSeriesIndex.h"
#include "plotkit/model/CPTSeriesRuns.h"
#include "plotkit/model/TimeOrder.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cassert>
#include <cmath>

namespace {

constexpr std::size_t kPage = plotix::PagedMemory::kPage;

/// y cut to the length of x, for a maker that handed over too few times.
plotix::SharedArray<float> cutToLength(plotix::SharedArray<float> y, std::size_t length)
{
    if (y.size() <= length)
        return y;
    return plotix::SharedArray<float>::fromVector({y.data(), y.data() + length});
}

/// Beside points in memory there are no runs that could tell about times that are not.
plotix::PagedArray<double> inMemory(plotix::PagedArray<double> x)
{
    if (x.isResident())
        return x;
    std::vector<double> all;
    all.reserve(x.size());
    for (std::size_t first = 0; first < x.size(); first += kPage) {
        const std::size_t end = std::min(x.size(), first + kPage);
        const plotix::PagedMemory::Hold held = x.hold(first, end);
        all.insert(all.end(), x.data() + first, x.data() + end);
    }
    return plotix::SharedArray<double>::fromVector(std::move(all));
}

std::uint64_t nextSerial()
{
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

CPTPointSeries::CPTPointSeries(plotix::PagedArray<double> x, plotix::SharedArray<float> y,
                               plotix::ValidityBitmap points, std::size_t pointCount)
    : m_x(inMemory(std::move(x))),
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

CPTPointSeries::CPTPointSeries(plotix::PagedArray<double> x, plotix::SharedArray<float> y,
                               plotix::ValidityBitmap points, std::size_t pointCount, CPTFineBlocks fine)
    : m_x(inMemory(std::move(x))),
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

CPTPointSeries::CPTPointSeries(plotix::PagedArray<double> x, const std::shared_ptr<const CPTPagedPoints>& points,
                               std::shared_ptr<const CPTSeriesRuns> runs, std::size_t pointCount)
    : m_x(std::move(x)),
      m_y(points->y()),
      m_points(points->points()),
      m_pointCount(pointCount),
      m_serial(nextSerial()),
      m_xSorted(runs->areTimesSorted()),
      m_index(std::make_unique<CPTSeriesIndex>(points, runs)),
      m_runs(std::move(runs))
{
    assert(m_y.size() <= m_x.size());
    m_extent = computedExtent();
}

CPTPointSeries::~CPTPointSeries() = default;

std::optional<CPTPointSeries::Extent> CPTPointSeries::computedExtent() const
{
    const CPTSeriesIndex::MinMax values = m_index->minMax(0, elementCount());
    if (values.isEmpty())
        return std::nullopt;
    if (!m_xSorted)
        return extentOfAll();
    const std::size_t first = m_index->firstPointFrom(0);
    if (first == elementCount())
        return std::nullopt;
    return Extent{m_x.valueAt(first), m_x.valueAt(m_index->lastPointBefore(elementCount())), values.min, values.max};
}

std::optional<CPTPointSeries::Extent> CPTPointSeries::extentOfAll() const
{
    std::optional<Extent> extent;
    Hold held;
    for (std::size_t element = 0; element < elementCount(); ++element) {
        if (element % kPage == 0)
            held = hold(element, std::min(elementCount(), element + kPage));
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
    const auto pointOf = [this](std::size_t element) { return CPTPoint{m_x.valueAt(element), m_y.valueAt(element)}; };
    if (m_points.isAllValid())
        return pointOf(index);
    constexpr std::size_t kWordsAPage = kPage / 64;
    plotix::PagedMemory::Hold held;
    std::size_t remaining = index;
    for (std::size_t word = 0; word < m_points.words().size(); ++word) {
        if (word % kWordsAPage == 0)
            held = m_points.words().hold(word, std::min(m_points.words().size(), word + kWordsAPage));
        std::uint64_t bits = m_points.words()[word];
        const auto inWord = static_cast<std::size_t>(std::popcount(bits));
        if (remaining >= inWord) {
            remaining -= inWord;
            continue;
        }
        for (; remaining > 0; --remaining)
            bits &= bits - 1;
        return pointOf(word * 64 + static_cast<std::size_t>(std::countr_zero(bits)));
    }
    return {};
}

namespace {

/// The first element of [first, end) that is not before, where those come first. Requires: they are held.
template <class IsBefore>
std::size_t firstNotBefore(const double* x, std::size_t first, std::size_t end, const IsBefore& isBefore)
{
    return static_cast<std::size_t>(std::partition_point(x + first, x + end, isBefore) - x);
}

/// The same of a whole series.
template <class IsBefore>
std::size_t firstNotBefore(const CPTPointSeries& series, const IsBefore& isBefore)
{
    const CPTSeriesRuns* runs = series.runs().get();
    if (!runs)
        return firstNotBefore(series.x().data(), 0, series.elementCount(), isBefore);
    const auto firstTime = runs->times()->first.begin();
    const auto after =
        std::partition_point(firstTime, firstTime + static_cast<std::ptrdiff_t>(runs->count()), isBefore) - firstTime;
    if (after == 0)
        return 0;
    const std::size_t run = static_cast<std::size_t>(after) - 1;  // whose first element is before
    if (isBefore(runs->lastTime(run)))
        return runs->end(run);
    const plotix::PagedMemory::Hold held = series.x().hold(runs->begin(run), runs->end(run));
    return firstNotBefore(series.x().data(), runs->begin(run), runs->end(run), isBefore);
}

}  // namespace

std::size_t CPTPointSeries::elementFrom(double x) const
{
    return firstNotBefore(*this, [x](double time) { return time < x; });
}

std::size_t CPTPointSeries::elementAfter(double x) const
{
    return firstNotBefore(*this, [x](double time) { return !(x < time); });
}
