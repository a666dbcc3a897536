#pragma once

#include "base/PagedReading.h"
#include "hostapp/exchange/Export.h"

#include <vector>

/// The rows of records on their way out, in order: holds the pages of the row it stands at. *Borrows* the records; one
/// thread.
namespace plotix {

class ExportedRows {
public:
    explicit ExportedRows(const RecordColumns& records) : m_records(records) {}

    std::size_t count() const { return m_records.times.size(); }
    /// Whether every time can be written as a date. Reads no page where the store knows.
    bool haveCalendarTimes() const;

    /// Throws ReportableError when the row's records cannot be read. Requires: row < count().
    void moveTo(std::size_t row)
    {
        m_row = row;
        if (row < m_first || row >= m_end)
            holdPage();
    }

    struct Cell {
        double value;
        bool isValid;
    };
    double time() const { return m_records.times[m_row]; }
    std::size_t columns() const { return m_records.columns.size(); }
    Cell cell(std::size_t column) const
    {
        const RecordColumns::Column& from = m_records.columns[column];
        return {from.values[m_row], from.validity.isValid(m_row)};
    }

private:
    void holdPage();

    const RecordColumns& m_records;
    std::size_t m_row = 0, m_first = 0, m_end = 0;  // what is held
    std::vector<PagedMemory::Hold> m_held;
};

}  // namespace plotix
