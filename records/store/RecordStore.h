#pragma once

#include "records/store/RecordBlock.h"

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

/// The timed records inside a site document: per agent one time column and one value column per property.
///
/// Values are kept bit for bit (every double, -0.0 and NaN payloads included) together with whether they are valid.
/// Records of one agent are ordered by time and unique in it; a record stored again at the same time replaces the
/// values it brings and keeps the others.
namespace plotix {

class Database;
class ReadConnections;

/// Reads from a connection of its own; one thread at a time each, any number beside one writer. Every call sees the
/// records as they were stored when it began. Throws ReportableError, and std::bad_alloc where a result has no room.
class RecordReader {
public:
    explicit RecordReader(const QString& file);
    /// Takes its connection from those kept open, and gives it back at its end. *Shares* them.
    explicit RecordReader(std::shared_ptr<ReadConnections> connections);
    ~RecordReader();

    /// Every record of the agent with from ≤ time ≤ to, in time order. Absent bounds are open. A property without any
    /// values in the range is there with all elements invalid. Long reads take idle cores to help. `progress` is called
    /// on the calling thread, with fractions that never decrease. Stopped by it: an empty result.
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress = {});
    ArchiveSummary summary(RowId agent);

    /// The runs with a record in [from, to], whole. Absent bounds are open.
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from = {},
                            std::optional<double> to = {});

    /// Over the valid elements that are no NaN, with from ≤ time ≤ to. Absent bounds are open.
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from = {},
                                std::optional<double> to = {}, StatisticsFrom source = StatisticsFrom::Summaries);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

/// Writes inside one transaction: nothing is stored until `commit`; destruction without it rolls back.
/// At most one at a time a document (a second one waits, then throws ReportableError). Any one thread.
class RecordWriter {
public:
    explicit RecordWriter(const QString& file);
    ~RecordWriter();

    /// Times must be finite; they need not be sorted or unique: within a block the last one wins.
    /// Fast for blocks that lie behind everything stored.
    /// Columns are as long as `times`; a property stands in a block once. A block without columns stores times alone.
    void store(RowId agent, const RecordBlock& block);
    void commit();

private:
    friend class SiteTransaction;
    friend class RecordAppender;
    struct Impl;
    explicit RecordWriter(Database& database);  ///< inside a transaction of the caller's; borrows
    void flush();
    std::unique_ptr<Impl> m_impl;
};

}  // namespace plotix
