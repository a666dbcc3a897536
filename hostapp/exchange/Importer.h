#pragma once

#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/exchange/RowSource.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

/// Stores the rows of a source into an agent of a site document.
///
/// All or nothing: the source is read and checked whole before anything is stored, and storing is one transaction. Free
/// function; any thread, so a window can run it on a worker.
namespace plotix {

/// What an import did, for people and for scripts.
struct ImportSummary {
    struct Column {
        QString header;        ///< as in the file
        QString name;          ///< of the property
        QString propertyName;  ///< its key
        QString unit;
        std::size_t valid = 0;
        std::size_t bad = 0;  ///< cells that are neither number nor gap, and were lost
        std::optional<ImportFinding> firstBad{};
        double lowest = 0, highest = 0;  ///< of the valid finite values stored
        std::size_t marked = 0;          ///< values marked as bad: stored, and not valid
        QString quality{};               ///< the headers of the columns that mark them, with commas
    };

    QString file, site, agent;
    QString timeColumn;
    bool createdSite = false;
    bool firstImport = false;   ///< the agent had no records before: it gets its first trend view
    std::size_t rows = 0;       ///< read, not counting header and blank lines
    std::size_t otherRows = 0;  ///< skipped because their texts were not those asked for
    std::size_t badRows = 0;    ///< skipped because they have no time, or too many cells
    std::optional<ImportFinding> firstBadRow;
    std::size_t records = 0;            ///< stored
    std::size_t replaced = 0;           ///< values that were stored before and became others
    std::size_t unorderedTimes = 0;     ///< rows earlier than the row before them
    std::size_t repeatedTimes = 0;      ///< rows joined with a later row at the same time
    std::size_t replacedRows = 0;       ///< of these: rows of which a number was replaced by another one
    std::optional<double> first, last;  ///< times stored, seconds since 1970-01-01 UTC
    std::vector<Column> columns;        ///< stored
    QStringList leftOut;                ///< headers of columns without a number, or hardly one
    std::vector<ImportFinding> notes;   ///< what was decided about the file
};

/// Makes the site and the agent when they do not exist. `file` is where the rows come from, for the summary and the
/// agent's name. Throws ImportFailure when the file is bad or does not fit the site, ReportableError when the site
/// fails, and ImportCancelled; then nothing is stored and no site is created.
ImportSummary importRows(RowSource& source, const QString& file, const QString& site, const ImportOptions& options,
                         const ImportProgress& progress = {});

}  // namespace plotix
