#include "records/tables/GatheredRows.h"

#include "records/store/Records.h"

#include <cmath>
#include <limits>

namespace plotix {

void GatheredRows::clear()
{
    m_times.clear();
    for (std::vector<double>& column : m_columns)
        column.clear();
}

void GatheredRows::add(std::span<const std::vector<double>> rows)
{
    const std::vector<double>& times = rows.front();
    if (times.empty())
        return;
    if (m_isLong) {
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double place = rows[1][i];
            if (!(place >= 0) || place >= static_cast<double>(m_columns.size()))
                continue;
            addRow(times[i]);
            put(static_cast<std::size_t>(place), rows[2][i]);
        }
        return;
    }
    if (ascend(times) && (m_times.empty() || times.front() > m_times.back())) {
        m_times.insert(m_times.end(), times.begin(), times.end());
        for (std::size_t place = 0; place < m_columns.size(); ++place)
            m_columns[place].insert(m_columns[place].end(), rows[place + 1].begin(), rows[place + 1].end());
        return;
    }
    for (std::size_t i = 0; i < times.size(); ++i) {
        addRow(times[i]);
        for (std::size_t place = 0; place < m_columns.size(); ++place)
            put(place, rows[place + 1][i]);
    }
}

void GatheredRows::addRow(double time)
{
    if (!m_times.empty() && time == m_times.back())
        return;
    m_times.push_back(time);
    for (std::vector<double>& column : m_columns)
        column.push_back(std::numeric_limits<double>::quiet_NaN());
}

/// The greatest of a time counts: see TableStatements.
void GatheredRows::put(std::size_t place, double value)
{
    double& kept = m_columns[place].back();
    if (std::isnan(kept) || value > kept)
        kept = value;
}

RecordBlock GatheredRows::taken(std::span<const RowId> properties)
{
    RecordBlock block{SharedArray<double>::fromVector(std::move(m_times)), {}};
    for (std::size_t place = 0; place < m_columns.size(); ++place) {
        std::vector<std::uint64_t> words = validWords(m_columns[place]);
        block.columns.push_back({properties[place], SharedArray<double>::fromVector(std::move(m_columns[place])),
                                 words.empty()
                                     ? ValidityBitmap()
                                     : ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(words)))});
    }
    return block;
}

std::vector<std::uint64_t> validWords(std::span<const double> values)
{
    std::vector<std::uint64_t> words((values.size() + 63) / 64, 0);
    std::size_t valid = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool isValid = !std::isnan(values[i]);
        words[i / 64] |= std::uint64_t{isValid} << (i % 64);
        valid += isValid;
    }
    if (valid == values.size())
        words.clear();
    return words;
}

}  // namespace plotix
