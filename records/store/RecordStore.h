#pragma once

#include "records/store/Amendment.h"
#include "records/store/RecordBlock.h"
#include "records/store/RecordMaintenance.h"

#include <functional>
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

/// Records of several agents stored together: all at `commit`, or none; destruction without it leaves no trace.
///
/// A store has one at a time: a second one waits some seconds when it begins, then throws. *Shares* its store.
class RecordTransaction {
public:
    virtual ~RecordTransaction() = default;

    /// Times must be finite; they need not be sorted or unique: of equal times in a block the last one wins. Fast for
    /// blocks later than everything stored. Columns are as long as `times`; a property stands in a block once. A block
    /// without columns stores times alone. A block that is refused leaves the transaction as it was before.
    virtual void store(RowId agent, const RecordBlock& block) = 0;

    /// Takes the elements of these properties out of the agent's records with from ≤ time ≤ to, as if they had never
    /// been stored, amended or not. A record there that is left without any element goes too. Absent bounds are open;
    /// properties without elements there, or of other agents, are passed over.
    virtual void remove(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                        std::optional<double> to) = 0;

    /// From now on what is stored is compared with what was there before the transaction, and what is late or corrects
    /// something is noted with it, as happened at `now`. Without it, nothing is: what is moved, or put back, is no
    /// news.
    virtual void noteAmendments(double now) = 0;
    /// Notes one that came with the records from elsewhere. Requires: the property is the agent's.
    virtual void addAmendment(RowId agent, const Amendment& amendment) = 0;

    /// Does whatever may still fail, so that `commit` will not for any other reason than a lost connection. Requires:
    /// nothing is stored afterwards. Called by whoever commits something else together with the records (see below).
    virtual void prepare() = 0;

    /// Has an effect once; `store` is refused afterwards. Calls `prepare` if nobody did.
    virtual void commit() = 0;
};

// Writing new agents and properties of a site together with their records, in a transaction of the site's own, takes
// this order: `prepare` the records, commit the site, `commit` the records.
//   A store inside the site's file joins the site's transaction: `prepare` puts all records into it, the site's commit
// is the records' too, and `commit` has nothing left to do. All or nothing, whatever ends the process.
//   A store elsewhere puts the records where nobody reads them (`prepare`) and makes them all visible at once
// (`commit`). Records that were prepared but never committed are settled when the store is next opened: made visible if
// the site has what they belong to, else dropped.

/// Stores small blocks as they come, second after second, each in a transaction of its own, over a connection it keeps
/// open. Other writers wait while a block is stored, never between two blocks. *Shares* its store.
class RecordAppender {
public:
    virtual ~RecordAppender() = default;

    /// Stored when it returns: whatever happens to this process afterwards, the records are there (as long as the store
    /// itself is). When it throws, nothing of the block is stored, and it may be tried again.
    virtual void append(RowId agent, const RecordBlock& block) = 0;

    /// As RecordTransaction::noteAmendments, for each block with the time of that moment.
    virtual void noteAmendments(std::function<double()> clock) = 0;

    /// How long `append` waits for another writer; 3 seconds at first.
    virtual void setPatience(int milliseconds) = 0;
};

class RecordStore {
public:
    virtual ~RecordStore() = default;

    /// The span that an agent's records cover; nothing without records. The only answer to that question: nobody
    /// derives it from anything else. Reads no record, and is quick enough for the main thread; a remote store keeps it
    /// in memory.
    virtual std::optional<RecordExtent> extent(RowId agent) = 0;
    virtual std::optional<RecordExtent> extent() = 0;  ///< of all agents

    /// The runs whose time overlaps [from, to], whole, in time order. Absent bounds are open, here and below. Summaries
    /// are in the order of `properties`.
    virtual RecordOverview overview(RowId agent, std::span<const RowId> properties, std::optional<double> from = {},
                                    std::optional<double> to = {}) = 0;

    /// Every record of the agent with from ≤ time ≤ to, in time order. Columns are in the order of `properties`; one
    /// without values in the range is there with all elements invalid. An element that was never stored is a NaN and
    /// invalid. `progress` is called on the calling thread, with fractions that never decrease, 1 at the end. Nothing
    /// when `progress` stopped it.
    virtual std::optional<RecordBlock> read(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                            std::optional<double> to, const ArchiveProgress& progress = {}) = 0;

    /// The records that such a read goes through. A store that works some properties out of others, perhaps of other
    /// agents, answers those.
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

    /// The same records in less space, or without those that are too old. Blocks until it is done. Readers may read
    /// meanwhile; other writers wait for one part of the work at a time. If the process ends, the records are the same.
    /// `progress` rises from 0 to 1 and answers false to stop. What cannot be read is left as it is.
    virtual CompactionResult compact(const CompactionRequest& request, const ArchiveProgress& progress = {}) = 0;

    /// Reads everything once, in one snapshot, and compares it with what is stored about it; changes nothing. `memory`
    /// as CompactionRequest has it.
    virtual VerificationResult verify(const ArchiveProgress& progress = {}, std::uint64_t memory = 0) = 0;

    /// Throws FileReplaced once another file has taken the place of the store's. Quick, and disturbs nobody.
    virtual void requireInPlace() = 0;

    /// Closes what is kept open only for later calls, which open it anew. Afterwards the file, or wherever the records
    /// are, may be moved.
    virtual void closeIdle() = 0;
};

}  // namespace plotix
