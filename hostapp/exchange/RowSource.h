#pragma once

#include "hostapp/exchange/ImportFinding.h"
#include "hostapp/exchange/ImportOptions.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <optional>
#include <utility>
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
    bool isTime = false;        ///< it is the time, or a part of it
    std::vector<std::size_t> qualities{};   ///< the columns that say which of its values are bad
    std::optional<std::size_t> valuesIn{};  ///< of a quantity that rows name: the file's own column with its values
};

/// How a source takes its file: what was said, or else guessed. Each has its field in ImportOptions.
struct SourceForm {
    QString delimiter{};                        ///< of text
    DecimalSign decimal = DecimalSign::Detect;  ///< Detect: no number has a mark, or columns differ
    DateOrder dateOrder = DateOrder::Detect;    ///< Detect: dates say it themselves, or it is still open
    Arrangement arrangement = Arrangement::Columns;
    QStringList sheets{};  ///< of a spreadsheet
    QString sheet{};
};

/// Called with bytes read and bytes in all; answers false to cancel.
using ImportProgress = std::function<bool(qint64 done, qint64 total)>;

class RowSource {
public:
    virtual ~RowSource() = default;

    /// Who is told how far the source has come, also while it reads the whole file before the rows, and may cancel.
    void watch(ImportProgress progress) { m_progress = std::move(progress); }
    /// Tells it. Throws ImportCancelled.
    void report() const
    {
        if (m_progress && !m_progress(bytesRead(), bytesInAll()))
            throw ImportCancelled();
    }

    virtual const std::vector<SourceColumn>& columns() const = 0;

    /// Decides which column holds the times: the one named, several that do so together (a date and a time of day), or
    /// the likeliest where none is named. Answers the first one's index. `columns` may change by it: where each row
    /// names its quantity, these are added behind those of the file.
    virtual std::size_t chooseTimeColumn(const std::vector<std::size_t>& named) = 0;

    /// The zone that the file states for times without one of their own; empty: none.
    virtual QString statedTimeZone() const { return {}; }

    /// Once, before the first `read`. Borrows the plan, whose fields are indexes into `columns`.
    virtual void begin(const ImportPlan& plan) = 0;

    /// Adds the next rows to the table; none in calls that first scan the whole file for what only that can tell. False
    /// after the last row, or where the plan wants no more.
    virtual bool read(ImportTable& table) = 0;

    /// Whether it ended before the last row, because the plan wants no more.
    virtual bool isCutShort() const { return false; }

    /// How far `read` has come, and how far it will have to go.
    virtual qint64 bytesRead() const = 0;
    virtual qint64 bytesInAll() const = 0;

    /// As far as it is known; all of it after the last row.
    virtual SourceForm form() const { return {}; }

    /// The columns of texts with a few different ones in the whole file, which may tell rows at one time apart; each
    /// with its first text. Reads the file again.
    virtual std::vector<std::pair<QString, QString>> categories() { return {}; }

    /// After the last row: why the rows must not become one line though their times differ, such as those of several
    /// devices. May read the file again.
    virtual std::optional<ImportFinding> mixture() { return {}; }

    /// What has been decided about the file so far.
    virtual const std::vector<ImportFinding>& notes() const = 0;

private:
    ImportProgress m_progress;
};

}  // namespace plotix
