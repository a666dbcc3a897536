#pragma once

#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/Importer.h"
#include "hostapp/exchange/PlainRows.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>

#include <memory>

/// Reads the rows of one file under a plan. One import *owns* it; one thread.
namespace plotix {

/// A file that can be read from its beginning any number of times; what comes through a pipe is kept in memory.
class ImportSource {
public:
    /// Throws ReportableError when the file cannot be read.
    explicit ImportSource(const QString& file);

    QIODevice& fromBeginning();
    qint64 size() const { return m_size; }  ///< bytes

private:
    QFile m_file;
    QBuffer m_memory;
    qint64 m_size = 0;
};

/// What reading counted.
struct RowCounts {
    std::size_t rows = 0, otherRows = 0, badRows = 0;
    std::optional<BadField> firstBad;
};

class ImportRows {
public:
    /// Borrows all of them.
    ImportRows(ImportSource& source, ImportPlan& plan, const ImportOptions& options, const ImportProgress& progress);

    /// Settles the order of day and month over all rows, where the plan leaves it open.
    void decideDateOrder();

    /// Fills the table; throws ReportableError for the first bad row unless bad rows are skipped, ImportCancelled when
    /// asked to stop.
    RowCounts read(ImportTable& table);

private:
    template <class TakeAhead, class Take>
    void forEachRow(TakeAhead takeAhead, Take take);
    std::optional<BadField> addRow(ImportTable& table, TimeColumnReader& times, const TextRecord& record);
    bool conditionsHold(const TextRecord& record) const;
    std::size_t expectedRows(std::size_t rows, qint64 bytesRead) const;
    void report(qint64 done) const;

    ImportSource& m_source;
    ImportPlan& m_plan;
    const ImportOptions& m_options;
    const ImportProgress& m_progress;
};

}  // namespace plotix
