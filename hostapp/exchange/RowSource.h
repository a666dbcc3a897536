#pragma once

#include "hostapp/exchange/ImportFinding.h"

#include <QtCore/QString>

#include <optional>
#include <vector>

/// What a file format must give so that its files can be imported: columns, one of them the time, and rows.
///
/// The importer *owns* the source and asks it in the order below. Rows come some thousands a call, straight into the
/// table that will be stored: there is no call through this interface for a row or a value. What is wrong with the file
/// is thrown as ImportFailure; what is wrong with a row is said to the table, which knows whether that ends the import.
/// One thread.
namespace plotix {

struct ImportPlan;
class ImportTable;

/// A column as its file gives it.
struct SourceColumn {
    QString header;             ///< as it stands; "Column 3" where the file names none
    QString name;               ///< of the property: the header without the unit
    QString unit;               ///< one that `Units` knows; empty: none
    bool isMeasurement = true;  ///< false: taken only when it is asked for, such as a column that counts the rows
};

class RowSource {
public:
    virtual ~RowSource() = default;

    virtual const std::vector<SourceColumn>& columns() const = 0;

    /// Settles which column holds the times: the one named, else the one that looks most like it. Answers its place.
    virtual std::size_t chooseTimeColumn(std::optional<std::size_t> named) = 0;

    /// Once, before the first `read`. Borrows the plan, whose fields are places in `columns`.
    virtual void begin(const ImportPlan& plan) = 0;

    /// Adds the next rows to the table; none while it looks ahead for what only the whole file can tell. False after
    /// the last one.
    virtual bool read(ImportTable& table) = 0;

    /// How far `read` has come, and how far it will have to go.
    virtual qint64 bytesRead() const = 0;
    virtual qint64 bytesInAll() const = 0;

    /// What has been decided about the file so far.
    virtual const std::vector<ImportFinding>& notes() const = 0;
};

}  // namespace plotix
