#pragma once

#include "records/store/RecordBlock.h"

#include <cstdint>
#include <span>
#include <vector>

/// Rows of a table, in the order of their times, on their way to records. One thread.
namespace plotix {

class GatheredRows {
public:
    /// `isLong`: rows say time, place among the properties, and value; else time, and a value for each property.
    GatheredRows(std::size_t properties, bool isLong) : m_columns(properties), m_isLong(isLong) {}

    void clear();
    /// Requires: times are finite and do not fall.
    void add(std::span<const std::vector<double>> rows);

    std::size_t size() const { return m_times.size(); }
    double lastTime() const { return m_times.back(); }  ///< requires: size() > 0
    const std::vector<double>& times() const { return m_times; }
    const std::vector<double>& column(std::size_t place) const { return m_columns[place]; }

    /// Columns in the order of the properties; what is NaN is not valid.
    RecordBlock taken(std::span<const RowId> properties);

private:
    void addRow(double time);
    void put(std::size_t place, double value);

    std::vector<double> m_times;
    std::vector<std::vector<double>> m_columns;
    bool m_isLong;
};

/// A bit for each value; nothing where none is NaN.
std::vector<std::uint64_t> validWords(std::span<const double> values);

}  // namespace plotix
