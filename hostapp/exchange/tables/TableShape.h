#pragma once

#include "hostapp/exchange/ColumnHeader.h"
#include "hostapp/exchange/RowSource.h"
#include "hostapp/exchange/tables/TableSample.h"

#include <QtCore/QStringList>

#include <optional>

/// Where in a file the table stands, and what its columns are called: lines above it, header, units, rows.
///
/// Pure; any thread. Throws ImportFailure for a file that is not a table.
namespace plotix {

struct TableShape {
    bool hasHeader = false;
    std::size_t firstRow = 0;               ///< of the rows in the sample: the first with measurements
    std::vector<std::string> headerFields;  ///< as in the file, to know the header again further down
    QStringList headers;                    ///< one per field of a row; "Column 3" where the file names none
    std::vector<ColumnHeader> titles;       ///< the same split into name and unit; a row of units has its say
    std::vector<std::string> units;         ///< per column: what stands behind the number in each cell, mostly nothing
    std::optional<std::size_t> rowNumbers;  ///< the unnamed column that only counts the rows
    QString statedZone;                     ///< above the table; empty: none
    std::vector<ImportFinding> notes;       ///< what was decided, when that is not obvious

    std::size_t fields() const { return static_cast<std::size_t>(headers.size()); }
};

/// A header one field shorter than the rows is accepted when the rows' first field only counts them, or when what they
/// have more is always empty; any other difference in length throws.
TableShape shapeOf(const TableSample& sample);

/// The rows below the header.
std::span<const TableSample::Row> dataRows(const TableSample& sample, const TableShape& shape);

/// The columns for the importer.
std::vector<SourceColumn> columnsOf(const TableShape& shape);

/// The zone that a header or a line above the table states: "Time (UTC)", "Date Time, GMT+01:00", "Zeit [MEZ]". As
/// `LocalTime` takes it; empty where there is none.
QString zoneIn(const QString& text);

}  // namespace plotix
