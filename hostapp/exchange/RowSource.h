#pragma once

#include "hostapp/exchange/ImportFinding.h"

#include <QtCore/QString>

#include <optional>
#include <vector>

/// What a file format must give so that its files can be imported: columns, one of them the time, and rows.
///
/// The importer *owns* the source and calls it in the order below. A call of `read` adds some thousands of rows
/// straight to the table that will be stored, so there is no virtual call for a row or a value. An error of the file is
/// thrown as ImportFailure; an error of a row is reported to the table, which decides whether it ends the import. One
/// thread.
namespace plotix {

struct ImportPlan;
class ImportTable;

/// A column as its file gives it.
struct SourceColumn {
    QString header;             ///< as in the file; "Column 3" when the file names none
    QString name;               ///< of the property: the header without the unit
    QString unit;               ///< one that `Units` knows; empty: none
    bool isMeasurement = true;  ///< false: imported only when asked for, such as a column that counts the rows
};

class RowSource {
public:
    virtual ~RowSource() = default;

    virtual const std::vector<SourceColumn>& columns() const = 0;

    /// Decides which column holds the times: the one named, else the likeliest. Answers its index.
    virtual std::size_t chooseTimeColumn(std::optional<std::size_t> named) = 0;

    /// Once, before the first `read`. Borrows the plan, whose fields are indexes into `columns`.
    virtual void begin(const ImportPlan& plan) = 0;

    /// Adds the next rows to the table; none in calls that first scan the whole file for what only that can tell. False
    /// after the last row.
    virtual bool read(ImportTable& table) = 0;

    /// How far `read` has come, and how far it will have to go.
    virtual qint64 bytesRead() const = 0;
    virtual qint64 bytesInAll() const = 0;

    /// What has been decided about the file so far.
    virtual const std::vector<ImportFinding>& notes() const = 0;
};

}  // namespace plotix
