#pragma once

#include "records/store/RecordStore.h"
#include "records/tables/TableStatements.h"

#include <chrono>
#include <mutex>

/// The records of one table of somebody else's, for whichever agent is asked for; nothing is ever written. *Shared*;
/// any thread. Every call asks the database; what it tells by summing up is not fetched.
///
/// What differs from other stores: of a table whose rows name their property, a read has the times of the properties
/// asked for alone; see TableStatements.
namespace plotix {

class TableRecordStore final : public RecordStore {
public:
    /// Tables of more rows than so many are fetched where somebody looks.
    static constexpr std::size_t kLittle = std::size_t{1} << 22;

    TableRecordStore(std::shared_ptr<TableDatabase> database, AttachedTable table, std::size_t little = kLittle)
        : m_database(std::move(database)), m_table(std::move(table)), m_little(little)
    {
    }

    std::optional<RecordExtent> extent(RowId agent) override;
    std::optional<RecordExtent> extent() override { return extent(0); }
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                            std::optional<double> to) override;
    /// Rows count, of which several may be a record.
    bool hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to) override;
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
    std::vector<Amendment> amendments(RowId, std::span<const RowId>, std::optional<double>,
                                      std::optional<double>) override
    {
        return {};
    }
    [[noreturn]] std::unique_ptr<RecordTransaction> begin() override { refuse(); }
    [[noreturn]] std::unique_ptr<RecordAppender> appender() override { refuse(); }
    [[noreturn]] CompactionResult compact(const CompactionRequest&, const ArchiveProgress&) override { refuse(); }
    VerificationResult verify(const ArchiveProgress& progress, std::uint64_t memory) override;
    void requireInPlace() override {}  ///< a table has no place that another could take
    void closeIdle() override { m_database->closeIdle(); }

private:
    using Range = TableStatements::Range;
    std::shared_ptr<const TableStatements> statements();
    std::vector<double> numbers(const std::string& statement, std::size_t count);
    [[noreturn]] void refuse() const;

    const std::shared_ptr<TableDatabase> m_database;
    const AttachedTable m_table;
    const std::size_t m_little;
    std::mutex m_mutex;
    std::shared_ptr<const TableStatements> m_statements;  // under the mutex
    /// Whoever reads asks twice whether that is much, one after the other.
    struct Counted {
        Range range;
        double rows = 0;
        std::size_t most = 0;  // no further was counted
        std::chrono::steady_clock::time_point until;
    };
    Counted m_counted;  // under the mutex
};

}  // namespace plotix
