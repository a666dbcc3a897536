#include "hostapp/formulas/PagedSeries.h"

#include <algorithm>

namespace plotix {

SeriesReader::SeriesReader(const PagedSeries& series)
    : m_series(series),
      m_times(series.times.array.data() + series.times.first),
      m_values(series.values.data() + series.first),
      m_isAllValid(series.validity.isAllValid())
{
    if (series.times.array.isResident() && series.values.isResident() && series.validity.words().isResident())
        m_places[0].count = series.times.count;
}

void SeriesReader::moveTo(std::size_t index) const
{
    m_now = 1 - m_now;
    Place& place = m_places[m_now];
    if (index - place.first < place.count)
        return;
    place.first = index / PagedMemory::kPage * PagedMemory::kPage;
    place.count = std::min(m_series.times.count - place.first, PagedMemory::kPage);
    const auto hold = [&](const PagedArray<double>& array, std::size_t offset, PagedMemory::Hold& held) {
        const std::size_t first = offset + place.first, end = std::min(array.size(), first + place.count);
        held = array.hold(std::min(first, end), end);
        m_isRead = m_isRead && plotix::isRead(array, std::min(first, end), end);
    };
    hold(m_series.times.array, m_series.times.first, place.times);
    hold(m_series.values, m_series.first, place.values);
}

bool isRead(const PagedArray<double>& array, std::size_t first, std::size_t end)
{
    PagedMemory::Hold held;
    return array.isResident() || array.memory()->holdIfThere(first, end, held);
}

}  // namespace plotix
