#pragma once

#include "records/store/RecordBlock.h"

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <shared_mutex>
#include <utility>

/// What a MemoryRecordStore holds, and who may write it. *Shared* by the store, its transactions and its appenders. Any
/// thread.
namespace plotix {

class RecordsInMemory {
public:
    struct Element {
        double value = 0;
        bool valid = false;
    };
    using Elements = std::map<RowId, Element>;    ///< by property
    using Timeline = std::map<double, Elements>;  ///< an agent's records by time
    using Timelines = std::map<RowId, Timeline>;  ///< by agent

    /// The right to write, for as long as it lives. *Borrows* the records.
    class Turn {
    public:
        explicit Turn(RecordsInMemory& records) : m_records(&records) {}
        Turn(Turn&& other) noexcept : m_records(std::exchange(other.m_records, nullptr)) {}
        Turn& operator=(Turn&&) = delete;
        ~Turn();

    private:
        RecordsInMemory* m_records;
    };

    /// Waits for whoever writes; throws ReportableError when that takes longer than `patience` milliseconds.
    Turn turn(int patience);

    void addProperty(RowId agent, RowId property);
    /// Throws ReportableError for a block that may not be stored.
    void requireStorable(RowId agent, const RecordBlock& block) const;

    /// `look` sees all records as they stand, while nobody changes them.
    template <class Look>
    auto seen(Look&& look) const
    {
        const std::shared_lock lock = whileNobodyChanges();
        return look(std::as_const(m_timelines));
    }
    /// `change` is alone with them. Requires: it is the caller's turn.
    template <class Change>
    void changed(Change&& change)
    {
        const std::unique_lock lock = alone();
        change(m_timelines);
    }

private:
    std::shared_lock<std::shared_mutex> whileNobodyChanges() const;
    std::unique_lock<std::shared_mutex> alone();

    mutable std::mutex m_door;          // held by a writer that waits, so that readers who come later wait for it
    mutable std::shared_mutex m_mutex;  // guards the two below
    Timelines m_timelines;
    std::set<std::pair<RowId, RowId>> m_properties;  // agent and property

    std::mutex m_turnMutex;  // guards m_taken
    std::condition_variable m_givenBack;
    bool m_taken = false;
};

/// Puts a block's records where they belong. Of equal times the last one stays; at a time that is there already, the
/// block's elements replace their own kind and leave the others.
void merge(const RecordBlock& block, RecordsInMemory::Timeline& into);

}  // namespace plotix
