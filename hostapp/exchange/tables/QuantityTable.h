#pragma once

#include "hostapp/exchange/ImportTable.h"

#include <functional>
#include <map>
#include <string>
#include <unordered_map>

namespace plotix {

/// Rows that each name their quantity, turned into a table with a column for each: collected first, then added to the
/// import's table time by time. Takes memory for the values there are, not for every quantity at every time. *Owned* by
/// a reader; one thread.
class QuantityTable {
public:
    /// The index of the quantity's column; a new one for a name not seen before.
    std::size_t columnOf(const std::string& name);
    const std::vector<std::string>& names() const { return m_names; }

    /// Requires: column is below names().size().
    void addNumber(std::size_t column, double time, double value, ImportTable::Mark mark = ImportTable::Mark::Good)
    {
        add(column, time, value, Kind::Number, mark, {});
    }
    void addMissing(std::size_t column, double time)
    {
        add(column, time, 0, Kind::Missing, ImportTable::Mark::Good, {});
    }
    void addState(std::size_t column, double time, double value, qint64 line, std::string_view word,
                  ImportTable::Mark mark = ImportTable::Mark::Good);
    void addText(std::size_t column, double time, qint64 line, std::string_view text);

    std::size_t cells() const { return m_count; }  ///< added since it was made, or moved

    /// Adds everything to the table, whose columns are `columns` of this one; forgets it here. `report` is called now
    /// and then and may throw: it ends the work.
    void moveTo(ImportTable& table, const std::vector<std::size_t>& columns, const std::function<void()>& report);

private:
    enum class Kind : std::uint8_t { Number, Missing, State, Text };
    struct Cell {
        double time = 0;
        double value = 0;
        Kind kind = Kind::Number;
        ImportTable::Mark mark = ImportTable::Mark::Good;
        std::size_t remark = 0;  // of a state or a text
    };
    struct Remark {
        qint64 line = 0;
        std::string text;
    };
    void add(std::size_t column, double time, double value, Kind kind, ImportTable::Mark mark, Remark remark);
    void addTo(ImportTable& table, std::size_t index, const Cell& cell) const;

    std::unordered_map<std::string, std::size_t> m_columns;
    std::vector<std::string> m_names;
    std::vector<std::vector<Cell>> m_cells;  // by column
    std::vector<Remark> m_remarks;
    std::size_t m_count = 0;
};

}  // namespace plotix
