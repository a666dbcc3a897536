#include "plugins/PlotixPlugIn/logic/Statistics.h"

#include <algorithm>
#include <cmath>

namespace plotix {

void StatisticsAccumulator::add(double value)
{
    if (std::isnan(value))
        return;
    if (m_minimum > value)
        m_minimum = value;
    if (value > m_maximum)
        m_maximum = value;
    m_sum += value;
    ++m_count;
}

void StatisticsAccumulator::addAll(std::span<const double> values)
{
    // The fields in registers: a column of ten million values passes through here.
    StatisticsAccumulator local = *this;
    for (const double value : values)
        local.add(value);
    *this = local;
}

void StatisticsAccumulator::addBlock(std::span<const double> values, const ValidityBitmap& validity, std::size_t first)
{
    if (validity.isAllValid()) {
        addAll(values);
        return;
    }
    for (std::size_t index = 0; index < values.size(); ++index)
        if (validity.isValid(first + index))
            add(values[index]);
}

Statistics StatisticsAccumulator::statistics() const
{
    if (m_count < 1)
        return {};
    constexpr std::int64_t kMostPoints = std::numeric_limits<std::int32_t>::max();
    return {m_minimum, m_maximum, m_sum / static_cast<double>(m_count),
            static_cast<std::int32_t>(std::min(m_count, kMostPoints))};
}

}  // namespace plotix
