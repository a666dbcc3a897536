#include "plotkit/model/UsualDistance.h"

#include "plotkit/model/CPTSeriesIndex.h"

#include <algorithm>
#include <vector>

namespace plotkit {

namespace {

constexpr std::size_t kMostDistances = 4096;

}  // namespace

double usualDistance(const CPTPointSeries& series)
{
    const std::size_t count = series.elementCount();
    if (!series.isXSorted() || count < 2)
        return 0;
    const std::size_t step = std::max<std::size_t>(1, count / kMostDistances);
    std::vector<double> distances;
    distances.reserve(count / step + 1);
    std::size_t after = 0;  // where points that were not taken yet begin
    for (std::size_t element = 0; element < count; element = std::max(element + step, after)) {
        const std::size_t point = series.index().firstPointFrom(element);
        const std::size_t next = point < count ? series.index().firstPointFrom(point + 1) : count;
        if (next >= count)
            break;
        distances.push_back(series.x()[next] - series.x()[point]);
        after = point + 1;
    }
    if (distances.empty())
        return 0;
    const auto middle = distances.begin() + static_cast<std::ptrdiff_t>(distances.size() / 2);
    std::nth_element(distances.begin(), middle, distances.end());
    return *middle;
}

}  // namespace plotkit
