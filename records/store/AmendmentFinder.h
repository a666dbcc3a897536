#pragma once

#include "records/store/Amendment.h"
#include "records/store/RecordStore.h"
#include "records/store/Records.h"

#include <map>
#include <memory>

/// Tells which of the records that are about to be stored are late or correct what is there.
///
/// A value is late when it is put between the first and the last valid value of its property: history from before the
/// first one is none, nor is anything of a property without values. An element is corrected when another one, or none,
/// takes its place; the same one again corrects nothing. Compared is with what was stored before.
///
/// *Shares* the store; reads a run of it at a time, and nothing for records behind all that is there. One thread at a
/// time. Throws as the store does.
namespace plotix {

class AmendmentFinder {
public:
    /// `before`: the records as they were before those that are judged.
    explicit AmendmentFinder(std::shared_ptr<RecordStore> before) : m_before(std::move(before)) {}

    /// Ordered by property and time; all happen at `now`. Requires: the records are ordered.
    std::vector<Amendment> find(RowId agent, const RecordsView& fresh, double now);

    /// Whether nothing is recorded of the property between two times, both excluded.
    bool hasNothingBetween(RowId agent, RowId property, double from, double to);

    /// `before` has these records from now on too. Requires: the records are ordered.
    void stored(RowId agent, const RecordsView& fresh);
    /// Somebody else changed what is there.
    void forget() { m_extents.clear(); }

private:
    using Extent = std::optional<RecordExtent>;
    const Extent& extentOf(RowId agent, RowId property);
    Extent foundExtent(RowId agent, RowId property);

    std::shared_ptr<RecordStore> m_before;
    std::map<std::pair<RowId, RowId>, Extent> m_extents;  // of valid values, by agent and property
};

}  // namespace plotix
