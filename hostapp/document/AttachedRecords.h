#pragma once

#include "hostapp/document/RememberedExtent.h"

#include <map>
#include <mutex>

/// A site's records with those of the tables that are attached to it: whoever reads such an agent reads its table;
/// everything else goes to the site's own store, which alone is written, compacted and verified. *Shares* that store.
/// Any thread, as RecordStore says.
namespace plotix {

class AttachedRecords : public RecordStore {
public:
    explicit AttachedRecords(std::shared_ptr<RecordStore> stored) : m_stored(std::move(stored)) {}

    /// Which agents have which tables now, as the site keeps it. Reads under way go on with what they began with. What
    /// cannot be understood is told when it is read.
    void setAttached(const std::map<RowId, QByteArray>& tables);

    /// Of an attached agent from memory.
    std::optional<RecordExtent> extent(RowId agent) override;
    /// Without those of tables that cannot be reached.
    std::optional<RecordExtent> extent() override;
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from = {},
                            std::optional<double> to = {}) override
    {
        return of(agent)->overview(agent, properties, from, to);
    }
    bool hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to) override
    {
        return of(agent)->hasMoreThan(records, agent, from, to);
    }
    RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                      std::optional<double> to, RecordIndex::Detail detail) override
    {
        return of(agent)->index(agent, properties, from, to, detail);
    }
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress = {}) override
    {
        return of(agent)->read(agent, properties, from, to, progress);
    }
    std::optional<RecordColumns> columns(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                         std::optional<double> to, const std::shared_ptr<PageCache>& cache,
                                         const ArchiveProgress& progress = {}) override
    {
        return of(agent)->columns(agent, properties, from, to, cache, progress);
    }
    bool unpacksOnDemand(std::span<const RowId> properties) const override
    {
        return m_stored->unpacksOnDemand(properties);  // tables do always
    }
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from = {},
                                std::optional<double> to = {},
                                StatisticsFrom source = StatisticsFrom::Summaries) override
    {
        return of(agent)->statistics(agent, property, from, to, source);
    }
    std::vector<Amendment> amendments(RowId agent, std::span<const RowId> properties, std::optional<double> from = {},
                                      std::optional<double> to = {}) override
    {
        return of(agent)->amendments(agent, properties, from, to);
    }
    std::unique_ptr<RecordTransaction> begin() override { return m_stored->begin(); }
    std::unique_ptr<RecordAppender> appender() override { return m_stored->appender(); }
    CompactionResult compact(const CompactionRequest& request, const ArchiveProgress& progress = {}) override
    {
        return m_stored->compact(request, progress);
    }
    VerificationResult verify(const ArchiveProgress& progress = {}, std::uint64_t memory = 0) override
    {
        return m_stored->verify(progress, memory);
    }
    void requireInPlace() override { m_stored->requireInPlace(); }
    void closeIdle() override;

private:
    struct Attached {
        QByteArray said;
        std::shared_ptr<RecordStore> records;
        std::shared_ptr<RememberedExtent> extent;  // null: what is said cannot be understood
        QString problem;                           // then
    };
    using Agents = std::map<RowId, Attached>;
    std::shared_ptr<const Agents> agents() const;
    /// Throws where a table is attached that cannot be understood.
    std::shared_ptr<RecordStore> of(RowId agent) const;

    const std::shared_ptr<RecordStore> m_stored;
    mutable std::mutex m_mutex;
    std::shared_ptr<const Agents> m_agents = std::make_shared<Agents>();  // under the mutex
};

}  // namespace plotix
