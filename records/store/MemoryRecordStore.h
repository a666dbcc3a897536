#pragma once

#include "records/store/RecordStore.h"

#include <memory>

/// Records in memory alone: the twin of every store that keeps them somewhere.
///
/// It keeps the promises of RecordStore in the simplest way, with a map from times to elements for each agent, so that
/// other stores' answers can be compared with its own. It serves wherever records need not outlive the process; a
/// record takes some hundred bytes. *Shared*; what it hands out shares its records with it. Any thread.
///
/// There is one writer at a time: another one waits for it, 3 seconds unless told otherwise. Its overview has a run for
/// every 16,384 records. Compacting only drops old records; there is nothing to verify but to count.
namespace plotix {

class RecordsInMemory;

class MemoryRecordStore final : public RecordStore {
public:
    MemoryRecordStore();
    explicit MemoryRecordStore(std::shared_ptr<RecordsInMemory> records);
    ~MemoryRecordStore() override;

    /// Accepts records of the property from now on. Requires: 0 < property < kPropertyLimit, of no other agent.
    void addProperty(RowId agent, RowId property);

    std::optional<RecordExtent> extent(RowId agent) override;
    std::optional<RecordExtent> extent() override;
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                            std::optional<double> to) override;
    RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                      std::optional<double> to, RecordIndex::Detail detail) override;
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress) override;
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from, std::optional<double> to,
                                StatisticsFrom source) override;
    std::vector<Amendment> amendments(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                      std::optional<double> to) override;
    std::unique_ptr<RecordTransaction> begin() override;
    std::unique_ptr<RecordAppender> appender() override;
    CompactionResult compact(const CompactionRequest& request, const ArchiveProgress& progress) override;
    VerificationResult verify(const ArchiveProgress& progress, std::uint64_t memory) override;
    void requireInPlace() override {}  ///< it has no place
    void closeIdle() override {}       ///< nothing is open

private:
    std::shared_ptr<RecordsInMemory> m_records;
};

}  // namespace plotix
