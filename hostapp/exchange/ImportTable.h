#pragma once

#include "base/SharedArray.h"
#include "hostapp/exchange/GrowingColumn.h"
#include "hostapp/exchange/ImportPlan.h"
#include "hostapp/exchange/NumberText.h"

#include <optional>
#include <span>
#include <vector>

/// The rows of a file as columns of numbers, while they are read and when they are ready to be stored.
///
/// One import *owns* it; one thread.
namespace plotix {

/// Why a row does not parse. The line counts from 1.
struct BadField {
    qint64 line = 0;
    QString column;  ///< empty: the row as a whole
    QString what;

    /// `line 12, column “Temperature”: “abc” is no number`
    QString message() const;
};

/// `“text”`, in one line and not too long, for messages.
QString quotation(std::string_view text);

/// One column's values. Texts among them are remembered, since only the end tells a column of texts, which is left
/// out, from a column of numbers with bad rows.
struct ImportColumn {
    GrowingColumn values;
    std::vector<std::uint64_t> valid;  ///< bitmap, least significant bit first
    std::size_t numbers = 0;
    std::vector<std::size_t> textRows;  ///< kept only where bad rows are passed over
    std::optional<BadField> firstText;
};

class ImportTable {
public:
    enum class BadRows { Stop, Skip };

    ImportTable(const ImportPlan& plan, BadRows badRows);

    /// So many rows will come, as far as can be told.
    void expectRows(std::size_t count);

    /// Adds a row. Throws ReportableError as soon as one of the columns holds both numbers and texts, unless bad rows
    /// are skipped.
    void addRow(double time, const TextRecord& record);
    /// The same with a value for each column; NaN where there is none.
    void addRow(double time, std::span<const double> values);
    DecimalMark decimalMark() const { return m_mark; }  ///< as known from the rows added so far

    /// Drops rows with texts in columns of numbers and orders the rest: of rows at one time the last stays.
    void finish();

    std::size_t rows() const { return m_times.size(); }
    const std::vector<ImportColumn>& columns() const { return m_columns; }
    std::size_t droppedRows() const { return m_dropped; }
    std::size_t unorderedTimes() const { return m_unordered; }
    std::size_t repeatedTimes() const { return m_repeated; }
    const std::optional<BadField>& firstDropped() const { return m_firstDropped; }

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
    void addValue(ImportColumn& column, double value, bool isNumber);
    void addField(std::size_t index, std::string_view field, qint64 line);
    void dropTextRows();
    void sortRows();
    void keepRows(const std::vector<std::size_t>& rows);

    const ImportPlan& m_plan;  // borrowed
    BadRows m_badRows;
    DecimalMark m_mark = DecimalMark::Unknown;
    GrowingColumn m_times;
    std::vector<ImportColumn> m_columns;
    std::size_t m_dropped = 0, m_unordered = 0, m_repeated = 0;
    std::optional<BadField> m_firstDropped;
};

}  // namespace plotix
