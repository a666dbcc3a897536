#pragma once

#include "base/SharedArray.h"
#include "hostapp/exchange/GrowingColumn.h"
#include "hostapp/exchange/ImportPlan.h"

#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// The rows of a file as columns of numbers, from reading until they are ready to be stored. It decides, for every
/// format, what happens to bad rows, to texts among numbers and to rows out of order.
///
/// One import *owns* it, a row source *borrows* it; one thread.
namespace plotix {

/// One column's values. Texts among them are remembered: only at the end of the file a column of texts, which is left
/// out, can be told from a column of numbers with bad rows.
struct ImportColumn {
    GrowingColumn values;
    std::vector<std::uint64_t> valid;  ///< bitmap, least significant bit first
    std::size_t numbers = 0;
    std::vector<std::size_t> textRows;  ///< kept only when bad rows are skipped
    std::optional<ImportFinding> firstText;
};

struct RowCounts {
    std::size_t rows = 0;            ///< read
    std::size_t otherRows = 0;       ///< skipped because they were not asked for
    std::size_t badRows = 0;         ///< skipped because they did not parse
    std::size_t unorderedTimes = 0;  ///< earlier than the row before them
    std::size_t repeatedTimes = 0;   ///< replaced by a later row at the same time
    std::optional<ImportFinding> firstBad{};
};

class ImportTable {
public:
    enum class BadRows { Stop, Skip };

    /// Borrows the plan: its columns are the table's.
    ImportTable(const ImportPlan& plan, BadRows badRows);

    /// About how many rows will come.
    void expectRows(std::size_t count);

    /// Adds a row with a value for each column; NaN where there is none. Throws ImportFailure as soon as a column holds
    /// both numbers and texts, unless bad rows are skipped.
    void addRow(double time, std::span<const double> values);

    /// The same cell by cell: one of these for each column, in order, then the time that ends the row.
    void addNumber(std::size_t column, double value) { addValue(m_columns[column], value, true); }
    void addMissing(std::size_t column) { addValue(m_columns[column], kNoNumber, false); }
    void addText(std::size_t column, qint64 line, std::string_view text);
    void endRow(double time) { m_times.push_back(time); }

    /// Instead of a row: counts one that was not asked for, or one that cannot be read; the latter throws ImportFailure
    /// unless bad rows are skipped.
    void passOverRow() { ++m_counts.otherRows; }
    void addBadRow(const ImportFinding& finding);

    /// Drops rows with texts in columns of numbers and orders the rest: of rows at one time the last stays.
    void finish();

    std::size_t rows() const { return m_times.size(); }
    const std::vector<ImportColumn>& columns() const { return m_columns; }
    /// What became of the rows. Requires: finish().
    const RowCounts& counts() const { return m_counts; }

    /// The column's values, moved out, with how many of them are valid. Requires: finish().
    struct Taken {
        plotix::SharedArray<double> values;
        plotix::ValidityBitmap validity;
        std::size_t valid = 0;
    };
    Taken takeColumn(std::size_t index);
    /// The times, moved out. Requires: finish().
    plotix::SharedArray<double> takeTimes() { return m_times.take(); }

private:
    static constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

    void addValue(ImportColumn& column, double value, bool isNumber);
    void dropTextRows();
    void sortRows();
    void keepRows(const std::vector<std::size_t>& rows);

    const ImportPlan& m_plan;  // borrowed
    BadRows m_badRows;
    GrowingColumn m_times;
    std::vector<ImportColumn> m_columns;
    RowCounts m_counts;
};

}  // namespace plotix
