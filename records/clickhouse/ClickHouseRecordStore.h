#pragma once

#include "records/clickhouse/SiteOnServer.h"
#include "records/store/RecordStore.h"

/// Records on a ClickHouse server: packed chunks, as in a site document, as rows of one table, and records that came
/// last as rows of another. `docs/formats.md` has the tables.
///
/// *Shared*; any thread. Nothing is kept in memory between two calls but connections.
namespace plotix {

class ClickHouseRecordStore final : public RecordStore {
public:
    explicit ClickHouseRecordStore(std::shared_ptr<SiteOnServer> site) : m_site(std::move(site)) {}

    std::optional<RecordExtent> extent(RowId agent) override;
    std::optional<RecordExtent> extent() override;  ///< of those shards that answer, if any does
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                            std::optional<double> to) override;
    RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                      std::optional<double> to, RecordIndex::Detail detail) override;
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress) override;
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
    void requireInPlace() override {}  ///< a table has no place that another could take
    void closeIdle() override { m_site->closeIdle(); }

private:
    const std::shared_ptr<SiteOnServer> m_site;
};

}  // namespace plotix
