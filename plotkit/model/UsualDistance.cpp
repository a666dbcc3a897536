#include "plotkit/model/UsualDistance.h"

#include "base/PagedReading.h"
#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <vector>

namespace plotkit {

namespace {

constexpr std::size_t kMostDistances = 4096;
/// Of very long series, which may be paged, distances are taken at so many places alone: each may cost a page.
constexpr std::size_t kPlaces = 16;
constexpr std::size_t kVeryLong = 2 * plotix::PagedMemory::kPage;

class Distances {
public:
    explicit Distances(const CPTPointSeries& series)
        : m_series(series), m_times(series.x()), m_isEachAPoint(series.count() == series.elementCount())
    {
        m_taken.reserve(kMostDistances + 1);
    }

    /// Of a series that leaves no element out the times alone are looked at, which other series mostly share.
    CPTPointSeries::Hold holdPoints(std::size_t first, std::size_t end) const
    {
        return m_isEachAPoint ? CPTPointSeries::Hold() : m_series.hold(first, std::min(end, m_series.elementCount()));
    }

    /// From the first point at or after `element` to the next; answers the element after that point, the number of
    /// elements where there is none.
    std::size_t takeFrom(std::size_t element)
    {
        const std::size_t count = m_series.elementCount();
        const std::size_t point = pointFrom(element);
        const std::size_t next = point < count ? pointFrom(point + 1) : count;
        if (next >= count)
            return count;
        const double from = m_times[point];
        m_taken.push_back(m_times[next] - from);
        return point + 1;
    }
    double median()
    {
        if (m_taken.empty())
            return 0;
        const auto middle = m_taken.begin() + static_cast<std::ptrdiff_t>(m_taken.size() / 2);
        std::nth_element(m_taken.begin(), middle, m_taken.end());
        return *middle;
    }

private:
    std::size_t pointFrom(std::size_t element) const
    {
        return m_isEachAPoint ? element : m_series.index().firstPointFrom(element);
    }

    const CPTPointSeries& m_series;
    const plotix::PagedReader<double> m_times;
    const bool m_isEachAPoint;
    std::vector<double> m_taken;
};

}  // namespace

double usualDistance(const CPTPointSeries& series)
{
    const std::size_t count = series.elementCount();
    if (!series.isXSorted() || count < 2)
        return 0;
    Distances distances(series);
    if (count >= kVeryLong) {
        for (std::size_t place = 0; place < kPlaces; ++place) {
            std::size_t element = count / kPlaces * place;
            const auto held = distances.holdPoints(element, element + kMostDistances / kPlaces + 1);
            for (std::size_t taken = 0; taken < kMostDistances / kPlaces && element < count; ++taken)
                element = distances.takeFrom(element);
        }
        return distances.median();
    }
    const auto held = distances.holdPoints(0, count);
    const std::size_t step = std::max<std::size_t>(1, count / kMostDistances);
    for (std::size_t element = 0, after = 0; element < count; element = std::max(element + step, after))
        after = distances.takeFrom(element);
    return distances.median();
}

}  // namespace plotkit
