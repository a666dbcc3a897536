#pragma once

#include "base/ReportableError.h"
#include "hostapp/formulas/FormulaDirectory.h"
#include "records/store/RecordStore.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <set>

/// A site's records with its computed properties: whoever reads one gets values as of any other property, worked out
/// from the records that its formula names, wherever they are needed beyond the span asked for. Nothing is stored into
/// a computed property. The document *owns* it; it *shares* the store beneath. Any thread, as RecordStore says.
namespace plotix {

/// A formula that cannot be worked out; the message names the property and says why.
class FormulaNotWorkedOut : public ReportableError {
public:
    FormulaNotWorkedOut(RowId property, const QString& message) : ReportableError(message), m_property(property) {}
    RowId property() const { return m_property; }  ///< the one asked for

private:
    RowId m_property;
};

class ComputedRecords : public RecordStore {
public:
    explicit ComputedRecords(std::shared_ptr<RecordStore> stored);

    /// What the site has now. Reads under way go on with what they began with.
    void setDirectory(std::shared_ptr<const FormulaDirectory> directory);
    std::shared_ptr<const FormulaDirectory> directory() const;

    /// Of an agent without records: those of the agents that its formulas name.
    std::optional<RecordExtent> extent(RowId agent) override;
    std::optional<RecordExtent> extent() override { return m_stored->extent(); }
    /// Of a computed property nothing is known without reading: its summaries have no value.
    RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from = {},
                            std::optional<double> to = {}) override;
    bool hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to) override
    {
        return m_stored->hasMoreThan(records, agent, from, to);
    }
    /// Of a computed property nothing is known either.
    RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                      std::optional<double> to, RecordIndex::Detail detail) override;
    /// Times are those of the agent where recorded properties are asked for, and those that formulas give. Throws
    /// FormulaNotWorkedOut.
    std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, const ArchiveProgress& progress = {}) override;
    /// A computed property is gone through once, page by page, and worked out anew where somebody looks; its values
    /// have the bits that `read` gives. Throws FormulaNotWorkedOut, and where it cannot be gone through.
    std::optional<RecordColumns> columns(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                         std::optional<double> to, const std::shared_ptr<PageCache>& cache,
                                         const ArchiveProgress& progress = {}) override;
    bool unpacksOnDemand(std::span<const RowId> properties) const override
    {
        return m_stored->unpacksOnDemand(properties);
    }
    std::vector<RecordPart> partsRead(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                      std::optional<double> to) override;
    /// Throws FormulaNotWorkedOut.
    ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from = {},
                                std::optional<double> to = {},
                                StatisticsFrom source = StatisticsFrom::Summaries) override;
    /// Of a computed property: those of the records that its formula names, and that a read goes through.
    std::vector<Amendment> amendments(RowId agent, std::span<const RowId> properties, std::optional<double> from = {},
                                      std::optional<double> to = {}) override;
    std::unique_ptr<RecordTransaction> begin() override { return m_stored->begin(); }
    std::unique_ptr<RecordAppender> appender() override { return m_stored->appender(); }
    CompactionResult compact(const CompactionRequest& request, const ArchiveProgress& progress = {}) override;
    VerificationResult verify(const ArchiveProgress& progress = {}, std::uint64_t memory = 0) override;
    void requireInPlace() override { m_stored->requireInPlace(); }
    void closeIdle() override { m_stored->closeIdle(); }

private:
    /// What the site had when a call began.
    struct Site {
        std::shared_ptr<const FormulaDirectory> directory;  // never null
        std::set<RowId> computed;                           // a site may have thousands of properties
    };
    std::shared_ptr<const Site> site() const;

    std::shared_ptr<RecordStore> m_stored;
    mutable std::mutex m_mutex;
    std::shared_ptr<const Site> m_site;  // never null
};

/// Why such a read, of everything at once, would not fit into memory; nothing: it fits.
std::optional<QString> refusalToRead(RecordStore& store, const RecordPart& wanted, std::uint64_t budget);

/// Whether what such a read goes through fits into so many bytes. Told without looking at all of it.
bool fitsInto(std::uint64_t bytes, RecordStore& store, const RecordPart& wanted);

/// The same as refusalToRead() where the store has to read everything at once; else nothing.
std::optional<QString> refusalToReadColumns(RecordStore& store, const RecordPart& wanted, std::uint64_t budget);

}  // namespace plotix
