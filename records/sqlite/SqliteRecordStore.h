#pragma once

#include "records/sqlite/ReadConnections.h"
#include "records/store/RecordStore.h"
#include "storage/DatabaseSchema.h"

#include <QtCore/QString>

#include <memory>

/// The records inside a site document's own file: packed columns in SQLite. See RecordStore for what each call
/// promises.
///
/// *Shared*. Any thread. Keeps a few read connections open between calls and opens none before the first call, which
/// therefore is the one that finds a file unusable.
namespace plotix {

class Database;
class SharedSpans;

class SqliteRecordStore final : public RecordStore {
public:
    /// `schema`: of the whole file, the tables of records among them (`schema::kRecordTables`).
    SqliteRecordStore(QString file, DatabaseSchema schema);
    ~SqliteRecordStore() override;

    /// Records inside the transaction already begun on `site`, which it borrows: they are stored when `site` is
    /// committed.
    static std::unique_ptr<RecordTransaction> join(Database& site);

    std::optional<RecordExtent> extent(RowId agent) override;
    std::optional<RecordExtent> extent() override;
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                            std::optional<double> to) override;
    bool hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to) override;
    RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                      std::optional<double> to, RecordIndex::Detail detail) override;
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress) override;
    /// What is longer than a page is paged; what somebody still has of a call before is shared.
    std::optional<RecordColumns> columns(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                         std::optional<double> to, const std::shared_ptr<PageCache>& cache,
                                         const ArchiveProgress& progress) override;
    bool unpacksOnDemand(std::span<const RowId> /*properties*/) const override { return true; }
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from, std::optional<double> to,
                                StatisticsFrom source) override;
    std::vector<Amendment> amendments(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                      std::optional<double> to) override;
    std::unique_ptr<RecordTransaction> begin() override;
    std::unique_ptr<RecordAppender> appender() override;
    CompactionResult compact(const CompactionRequest& request, const ArchiveProgress& progress) override;
    VerificationResult verify(const ArchiveProgress& progress, std::uint64_t memory) override;
    void requireInPlace() override { m_connections->requireInPlace(); }
    void closeIdle() override;

private:
    const QString m_file;
    const DatabaseSchema m_schema;
    const std::shared_ptr<ReadConnections> m_connections;
    const std::unique_ptr<SharedSpans> m_spans;
};

}  // namespace plotix
