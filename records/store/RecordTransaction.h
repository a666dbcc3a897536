#pragma once

#include "records/store/Amendment.h"
#include "records/store/RecordBlock.h"

#include <functional>
#include <optional>
#include <span>

/// How records come into a store: see RecordStore for what holds of all of it, errors among that.
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
    /// One that came with the records from elsewhere. Requires: the property is the agent's.
    virtual void addAmendment(RowId agent, const Amendment& amendment) = 0;

    /// Does whatever may still fail, so that `commit` will not for any other reason than a lost connection. Requires:
    /// nothing is stored afterwards. Called by whoever commits something else together with the records (see below).
    virtual void prepare() = 0;

    /// Has an effect once; `store` is refused afterwards. Calls `prepare` if nobody did.
    virtual void commit() = 0;
};

// Writing new agents and properties of a site together with their records, in a transaction of the site's own, takes
// this order: `prepare` the records, commit the site, `commit` the records.
//   A store inside the site's file joins the site's transaction: `prepare` puts all records into it, and `commit` has
// nothing left to do. All or nothing, whatever ends the process.
//   A store elsewhere puts the records where nobody reads them (`prepare`) and makes all visible at once (`commit`).
// When it is next opened, those never committed are made visible if the site has what they belong to, else dropped.

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

}  // namespace plotix
