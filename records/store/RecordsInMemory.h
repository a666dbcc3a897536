#pragma once

#include "records/store/Amendment.h"
#include "records/store/RecordBlock.h"

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <shared_mutex>
#include <span>
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

    using Amendments = std::map<RowId, std::vector<Amendment>>;  ///< by property, in the order they were made

    /// All records of all agents.
    struct Contents {
        Timelines timelines;
        Amendments amendments;
    };

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

    RecordsInMemory() = default;
    /// The same records, to be read alone.
    explicit RecordsInMemory(Contents contents) : m_contents(std::move(contents)) {}

    void addProperty(RowId agent, RowId property);
    /// Throws ReportableError for a block that may not be stored.
    void requireStorable(RowId agent, const RecordBlock& block) const;

    /// Calls `look` with all records, while nobody changes them.
    template <class Look>
    auto seen(Look&& look) const
    {
        const std::shared_lock lock = whileNobodyChanges();
        return look(std::as_const(m_contents.timelines));
    }
    Contents copied() const
    {
        const std::shared_lock lock = whileNobodyChanges();
        return m_contents;
    }
    std::vector<Amendment> amendmentsOf(RowId property) const;
    /// Calls `change` while nobody else reads or writes. Requires: it is the caller's turn.
    template <class Change>
    void changed(Change&& change)
    {
        const std::unique_lock lock = alone();
        change(m_contents);
    }

private:
    std::shared_lock<std::shared_mutex> whileNobodyChanges() const;
    std::unique_lock<std::shared_mutex> alone();

    mutable std::mutex m_door;          // held by a waiting writer, so that later readers wait for it
    mutable std::shared_mutex m_mutex;  // guards the two below
    Contents m_contents;
    std::set<std::pair<RowId, RowId>> m_properties;  // agent and property

    std::mutex m_turnMutex;  // guards m_taken
    std::condition_variable m_givenBack;
    bool m_taken = false;
};

/// Takes elements out of the records with from ≤ time ≤ to, and records that are left without any.
void remove(std::span<const RowId> properties, double from, double to, RecordsInMemory::Timeline& out);

/// Cuts [from, to] out of the stretches.
void remove(double from, double to, std::vector<Amendment>& out);

/// Adds a stretch: those of its kind that lie within it go. `areNeighbours` answers whether nothing is recorded of the
/// property between two times. Answers the stretch that it is part of now.
Amendment add(const Amendment& amendment, std::vector<Amendment>& to,
              const std::function<bool(double from, double to)>& areNeighbours);

/// Merges a block's records. Of equal times in the block the last one stays; at a time that `into` already has, the
/// block's elements replace those of the same properties and leave the others.
void merge(const RecordBlock& block, RecordsInMemory::Timeline& into);

}  // namespace plotix
