#include "hostapp/formulas/CumulativeIntegral.h"

#include "hostapp/formulas/ExactSum.h"

#include <cmath>

namespace plotix {

CumulativeIntegral::CumulativeIntegral(std::span<const double> times, std::span<const double> values,
                                       PropertyFormula::Join join, double longestGap)
    : m_join(join), m_longestGap(longestGap)
{
    for (std::vector<double>* column : {&m_times, &m_values, &m_areas})
        column->reserve(times.size());
    for (std::size_t i = 0; i < times.size(); ++i)
        if (std::isfinite(values[i])) {
            m_times.push_back(times[i]);
            m_values.push_back(values[i]);
        }
    ExactSum area;
    for (std::size_t i = 0; i < m_times.size(); ++i) {
        if (i > 0)
            area.add(areaUpTo(i - 1, m_times[i]));
        m_areas.push_back(area.value());
    }
}

double CumulativeIntegral::areaUpTo(std::size_t first, double time) const
{
    if (first + 1 >= m_times.size())
        return 0;
    const double length = m_times[first + 1] - m_times[first], part = time - m_times[first];
    if (length > m_longestGap)
        return 0;
    const double slope =
        m_join == PropertyFormula::Join::Straight ? (m_values[first + 1] - m_values[first]) / length : 0;
    return part * (m_values[first] + slope * part / 2);
}

double CumulativeIntegral::at(double time, Cursor& cursor) const
{
    std::size_t& next = cursor.next;
    while (next > 0 && m_times[next - 1] > time)
        --next;
    while (next < m_times.size() && m_times[next] <= time)
        ++next;
    return next == 0 ? 0 : m_areas[next - 1] + areaUpTo(next - 1, time);
}

}  // namespace plotix
