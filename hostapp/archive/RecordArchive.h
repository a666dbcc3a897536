#pragma once

#include "base/SharedArray.h"

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

using RowId = qint64;
class Database;
class ReadConnections;

/// Records to store, or records read: columns of equal length.
struct RecordBlock {
    struct Column {
        RowId property = 0;
        SharedArray<double> values;  ///< in the property's archived unit
        ValidityBitmap validity;
    };
    SharedArray<double> times;  ///< seconds since 1970-01-01 UTC
    std::vector<Column> columns;
};

struct ArchiveSummary {
    std::size_t records = 0;
    std::optional<double> first, last;  ///< times
};

struct ColumnStatistics {
    std::size_t valid = 0;
    double minimum = 0, maximum = 0, average = 0;  ///< in the archived unit; 0 when valid is 0
};

/// What the archive knows of its records without reading them: runs of them that follow each other in time.
struct RecordOverview {
    struct Run {
        double t0 = 0, t1 = 0;  ///< times of its first and last record
        std::size_t records = 0;
    };
    /// Over the valid elements of a run that are no NaN.
    struct Summary {
        std::size_t valid = 0;
        double minimum = 0, maximum = 0;  ///< in the archived unit; 0 when valid is 0
        double sum = 0;                   ///< NaN where infinities of both signs met
    };
    struct Column {
        RowId property = 0;
        std::vector<Summary> summaries;  ///< index for index with `runs`
    };
    std::vector<Run> runs;
    std::vector<Column> columns;
};

/// Where statistics come from. Both answer the same but for rounding of the average.
enum class StatisticsFrom {
    Summaries,  ///< what is stored per chunk; only chunks the range cuts are decoded
    Values,     ///< every value in the range, decoded
};

/// Answers false to stop.
using ArchiveProgress = std::function<bool(double fraction)>;

/// Reads from a connection of its own; one thread at a time each, any number beside one writer. Every call sees the
/// records as they were stored when it began. Throws HostError, and std::bad_alloc where a result has no room.
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
/// At most one at a time a document (a second one waits, then throws HostError). Any one thread.
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
