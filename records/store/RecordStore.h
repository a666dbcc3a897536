#pragma once

#include "records/store/Amendment.h"
#include "records/store/RecordBlock.h"
#include "records/store/RecordColumns.h"
#include "records/store/RecordIndex.h"
#include "records/store/RecordMaintenance.h"
#include "records/store/RecordTransaction.h"

#include <memory>
#include <optional>
#include <span>

/// Where timed records are kept: per agent one column of times and one column of values per property. The one interface
/// to them: nobody else knows how and where a store keeps them.
///
/// **Records.** Values are kept bit for bit (every double, -0.0 and NaN payloads included) together with whether they
/// are valid. Records of one agent are ordered by time and unique in it; a record stored again at the same time
/// replaces the values it brings and keeps the others. Agents are independent of each other. A store learns elsewhere
/// (from the site's tables, say) which properties an agent has; a block with any other property is refused.
///
/// **Threads and snapshots.** A store is *shared*. Any number of threads may call it at once, while one of them writes.
/// Every call sees the records as they were stored when it began, however long it takes; two calls may see two states.
/// A transaction and an appender are used by one thread at a time.
///
/// **Its place.** A store is that of the file, or whatever holds the records, that was there when it was first used.
/// Once another one has taken its name, every call throws FileReplaced and neither of the two is written.
///
/// **Errors.** Each call throws ReportableError, one line for people, where records cannot be read or written, and
/// std::bad_alloc where a result has no room. Then nothing is stored, and the call may be repeated.
namespace plotix {

class RecordStore {
public:
    virtual ~RecordStore() = default;

    /// The span that an agent's records cover; nothing without records. The only answer to that question. Reads no
    /// record, and is quick enough for the main thread; a remote store keeps it in memory.
    virtual std::optional<RecordExtent> extent(RowId agent) = 0;
    virtual std::optional<RecordExtent> extent() = 0;  ///< of all agents

    /// The runs whose time overlaps [from, to], whole, in time order. Absent bounds are open, here and below. Summaries
    /// are in the order of `properties`.
    virtual RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from = {},
                                    std::optional<double> to = {}) = 0;

    /// Whether these runs have more records than so many. Quicker than counting them.
    virtual bool hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to);

    /// The pieces whose time overlaps [from, to], whole, in time order. What stands in no index, or in a damaged one,
    /// is worked out of the records; each column says so.
    virtual RecordIndex index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                              std::optional<double> to, RecordIndex::Detail detail) = 0;

    /// Every record of the agent with from ≤ time ≤ to, in time order. Columns are in the order of `properties`; an
    /// element that was never stored is a NaN and invalid. `progress` is called on the calling thread, with fractions
    /// that never decrease, 1 at the end. Nothing when `progress` stopped it.
    virtual std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                            std::optional<double> to, const ArchiveProgress& progress = {}) = 0;

    /// The records that such a read would answer now, to be unpacked where they are looked at, however long they are:
    /// they stay those of this moment, whatever is stored, removed or compacted afterwards. What is unpacked takes room
    /// in `cache`, which the columns *share*; without one, everything is read. A store may read everything where that
    /// is little, and one that has nothing better does so always. Runs are there where columns are paged; what they say
    /// is true of the values. Throws where what is needed at once cannot be read.
    virtual std::optional<RecordColumns> columns(RowId agent, std::span<const RowId> properties,
                                                 std::optional<double> from, std::optional<double> to,
                                                 const std::shared_ptr<PageCache>& cache,
                                                 const ArchiveProgress& progress = {});

    /// Whether the columns of these properties take no more memory than what is looked at, however long they are.
    virtual bool unpacksOnDemand(std::span<const RowId> /*properties*/) const { return false; }

    /// The records that such a read goes through: also those that properties are worked out of, perhaps other agents'.
    virtual std::vector<RecordPart> partsRead(RowId agent, std::span<const RowId> properties,
                                              std::optional<double> from, std::optional<double> to)
    {
        return {{agent, {properties.begin(), properties.end()}, from, to}};
    }

    /// Over the valid elements that are not NaN, with from ≤ time ≤ to. Infinities of both signs have no average: NaN.
    virtual ColumnStatistics statistics(RowId agent, RowId property, std::optional<double> from = {},
                                        std::optional<double> to = {},
                                        StatisticsFrom source = StatisticsFrom::Summaries) = 0;

    /// What of these properties was amended and shares a time with [from, to], by property in this order, then by time;
    /// of one kind, what lies within a later one is gone. Quick.
    virtual std::vector<Amendment> amendments(RowId agent, std::span<const RowId> properties,
                                              std::optional<double> from = {}, std::optional<double> to = {}) = 0;

    /// Waits for another writer to finish.
    virtual std::unique_ptr<RecordTransaction> begin() = 0;
    virtual std::unique_ptr<RecordAppender> appender() = 0;

    /// The same records in less space, or without those too old. Blocks until it is done; readers may read meanwhile,
    /// other writers wait for one part of the work at a time. If the process ends, the records are the same. `progress`
    /// rises from 0 to 1 and answers false to stop. What cannot be read is left as it is.
    virtual CompactionResult compact(const CompactionRequest& request, const ArchiveProgress& progress = {}) = 0;

    /// Reads everything once, in one snapshot, and compares it with what is stored about it. `memory`: see there.
    virtual VerificationResult verify(const ArchiveProgress& progress = {}, std::uint64_t memory = 0) = 0;

    /// Throws FileReplaced once another file has taken the place of the store's. Quick, and disturbs nobody.
    virtual void requireInPlace() = 0;

    /// Closes what is kept open only for later calls, which open it anew. Afterwards the file may be moved.
    virtual void closeIdle() = 0;
};

}  // namespace plotix
