#pragma once

#include "base/SharedArray.h"
#include "base/ValidityBitmap.h"
#include "hostapp/exchange/GrowingColumn.h"
#include "hostapp/exchange/ImportPlan.h"

#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// The rows of a file as columns of numbers, from reading until they are ready to be stored. It decides, for every
/// format, what happens to bad cells and rows, to words among numbers, to rows out of order and to rows at one time.
///
///   A cell that is no number costs itself, never its row; it is counted in its column.
///   On and off, open and closed, … are 1 and 0 in a column that holds nothing else but 0 and 1.
///   -999 and the like, where all other numbers are far above, stand for gaps.
///   A number marked as bad is kept, bit for bit, and is not valid.
///   A column with hardly a number among its texts is a column of texts, and left out unless it is asked for.
///   A row without a time is passed over and counted; when a third of all rows are like that, the import is refused.
///   The lines at the end that have none (a sum, an average) are told apart from them. Rows at one time become one: of
///   each column the last number counts, and one marked as bad only where there is no other. Where they contradict each
///   other in more than a tenth of all rows, the import is refused.
///
/// One import *owns* it, a row source *borrows* it; one thread.
namespace plotix {

/// One column's values. Only at the end of the file a column of texts, which is left out, can be told from a column of
/// numbers with bad cells.
struct ImportColumn {
    GrowingColumn values;
    std::vector<std::uint64_t> valid;  ///< bitmap, least significant bit first
    std::size_t numbers = 0;           ///< states among them, and those marked as bad
    std::size_t marked = 0;            ///< numbers that a column of quality marks as bad: kept, but not valid
    std::size_t bad = 0;               ///< cells that are neither number nor gap
    std::optional<ImportFinding> firstBad;
    std::vector<std::size_t> stateRows;
    std::optional<ImportFinding> firstState;
    double gapNumber = 0;        ///< the number that stands for gaps,
    std::size_t gapNumbers = 0;  ///< and how many there were of it
};

struct RowCounts {
    std::size_t rows = 0;            ///< read
    std::size_t otherRows = 0;       ///< skipped because they were not asked for
    std::size_t badRows = 0;         ///< skipped because they have no time, or too many cells
    std::size_t unorderedTimes = 0;  ///< earlier than the row before them
    std::size_t repeatedTimes = 0;   ///< joined with a later row at the same time
    std::size_t replacedRows = 0;    ///< of these: rows of which a number was replaced by another one
    std::size_t linesBelow = 0;      ///< at the end, without a time
    std::optional<ImportFinding> firstBad{};
    std::optional<ImportFinding> firstBelow{};
};

class ImportTable {
public:
    /// What a column of quality says of a value.
    enum class Mark : std::uint8_t { Good, Bad };

    /// Borrows the plan: its columns are the table's.
    explicit ImportTable(const ImportPlan& plan);

    /// Forgets all rows: the source found out that it must read them in another way.
    void restart();

    /// About how many rows will come.
    void expectRows(std::size_t count);

    /// Adds a row with a value for each column; NaN where there is none.
    void addRow(double time, std::span<const double> values);
    /// The same, and which of the values are marked as bad.
    void addRow(double time, std::span<const double> values, std::span<const Mark> marks);

    /// The same cell by cell: one of these for each column, in order, then the time that ends the row.
    void addNumber(std::size_t column, double value, Mark mark = Mark::Good)
    {
        addMarked(m_columns[column], value, mark);
    }
    void addMissing(std::size_t column) { addValue(m_columns[column], kNoNumber, false); }
    void addText(std::size_t column, qint64 line, std::string_view text);
    void addState(std::size_t column, double value, qint64 line, std::string_view word, Mark mark = Mark::Good);
    void endRow(double time) { m_times.push_back(time); }

    /// Instead of a row: counts one that was not asked for, or one that cannot be read.
    void passOverRow() { ++m_counts.otherRows; }
    void addBadRow(const ImportFinding& finding);

    /// Decides what only the whole file tells, and orders the rows. Throws ImportFailure when what was read is not what
    /// the file means: too many bad rows, too many at one time.
    void finish();

    /// Whether the column is one of numbers, or asked for. Requires: finish().
    bool isTaken(std::size_t column) const;

    std::size_t rows() const { return m_times.size(); }
    double time(std::size_t row) const { return m_times[row]; }
    const std::vector<ImportColumn>& columns() const { return m_columns; }
    QString headerOf(std::size_t column) const { return m_plan.columns[column].header; }
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
    void addMarked(ImportColumn& column, double value, Mark mark);
    void settleBadRows();
    void settleStates(ImportColumn& column);
    void settleGapNumbers(ImportColumn& column);
    void sortRows();
    void joinRows(const std::vector<std::size_t>& order);

    /// Rows at one time, as places in the order of all rows.
    struct Group {
        std::size_t begin = 0, end = 0;
    };
    static std::size_t placeThatCounts(const ImportColumn& column, const std::vector<std::size_t>& order,
                                       const Group& group);
    std::size_t replacedRows(const std::vector<std::size_t>& order, const std::vector<Group>& groups) const;

    const ImportPlan& m_plan;  // borrowed
    GrowingColumn m_times;
    std::vector<ImportColumn> m_columns;
    RowCounts m_counts;
    // Bad rows since the last good one: they may be the lines below the table.
    std::size_t m_badInRun = 0;
    std::size_t m_runBegan = 0;  // rows there were before it
    std::optional<ImportFinding> m_firstInRun;
};

/// Finishes the table; where rows at one time stop it, the finding names the source's columns that tell them apart.
/// Rows of several devices stop it too.
void finishImport(RowSource& source, ImportTable& table);

/// What the source and the table decided about the file. Requires: finish().
std::vector<ImportFinding> notesOf(const RowSource& source, const ImportTable& table);

}  // namespace plotix
