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

/// Answers false to stop.
using ArchiveProgress = std::function<bool(double fraction)>;

/// Reads from its own connection; one thread at a time each, any number beside one writer. Throws HostError.
class RecordReader {
public:
    explicit RecordReader(const QString& file);
    ~RecordReader();

    /// Every record of the agent with from ≤ time ≤ to, in time order. Absent bounds are open. A property without any
    /// values in the range is there with all elements invalid. Stopped by `progress`: an empty result.
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress = {});
    ArchiveSummary summary(RowId agent);

    /// Over the valid elements that are no NaN, with from ≤ time ≤ to. Absent bounds are open.
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from = {},
                                std::optional<double> to = {});

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
