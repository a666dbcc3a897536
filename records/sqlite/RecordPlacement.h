#pragma once

#include "records/sqlite/ChunkStore.h"

#include <map>
#include <span>

/// Decides where records go: into chunks, into the tail, or into a chunk that is there already.
///
/// - A few records later than all others become rows of the tail. When rows and new records fill a chunk, they become
///   one.
/// - Many records become chunks; a rest that does not fill one is joined with the tail and with the short chunks before
///   it that are not longer than it, the way a counter carries. So appending leaves an agent at most about log₂(16,384)
///   chunks that are not full, and rewrites a value at most that often.
/// - Records at or before the last chunk's end are merged into the chunk they fall into, later ones into the tail.
///
/// Until `flush`, records may wait in memory. Borrows the store and works inside the caller's transaction; one thread.
/// Requires: records are ordered, and their properties are the agent's.
namespace plotix {

class RecordPlacement {
public:
    /// At most this many records become rows of the tail: more of them are cheaper as a chunk.
    static constexpr std::size_t kMostRows = 1024;

    explicit RecordPlacement(ChunkStore& chunks) : m_chunks(chunks) {}

    void store(RowId agent, const RecordsView& records);
    /// `store` and `flush` in one, without waiting in memory where possible.
    void storeNow(RowId agent, const RecordsView& records);
    /// Whether some of the records are not later than all that the agent has. Requires: the records are ordered.
    bool overlaps(RowId agent, const RecordsView& records)
    {
        return records.size > 0 && !(records.times[0] > endOf(agent).lastTime);
    }
    /// Takes elements out of records with from ≤ time ≤ to, and records that are left without any.
    void remove(RowId agent, std::span<const RowId> properties, double from, double to);
    void flush();

    /// Drops what waits and what was looked up: after a rollback, or when another connection changed the document.
    void forget() { m_ends.clear(); }

private:
    /// What an agent's records end with, in this order in time.
    struct End {
        std::optional<Chunk> lastChunk;
        std::size_t rows = 0;       ///< of the tail
        Records waiting;            ///< in memory alone
        double lastTime = 0;        ///< of all; −∞ when there are none
        std::size_t newChunks = 0;  ///< that nobody looked at to outline them

        bool isInChunks(double time) const { return lastChunk && time <= lastChunk->t1; }
    };
    End& endOf(RowId agent);
    void append(RowId agent, End& end, const RecordsView& records);
    void overlap(RowId agent, End& end, const RecordsView& records);
    void insert(RowId agent, End& end, const RecordsView& records);
    void takeInTail(RowId agent, End& end);
    void takeInShortChunks(RowId agent, End& end, std::size_t coming);
    void writeFullChunks(RowId agent, End& end);
    void writeChunks(RowId agent, End& end, const RecordsView& records);
    void flush(RowId agent, End& end);
    void flushWaiting(RowId agent, End& end);

    ChunkStore& m_chunks;
    std::map<RowId, End> m_ends;
};

}  // namespace plotix
