#pragma once

#include "records/sqlite/ChunkStore.h"

#include <map>

/// Decides where records go: into chunks, into the tail, or into a chunk that is there already.
///
/// - Few records behind everything become rows of the tail. When rows and records fill a chunk, the tail becomes one.
/// - Many records become chunks; what does not fill one is taken together with the tail and with the short chunks
///   before it that are not longer than it, the way a counter carries. So an agent never has more than about
///   log₂(16,384) chunks that are not full from appending, and a value is rewritten as often at most.
/// - Records at or before the last chunk's end are merged into the chunk they fall into, those behind it into the tail.
///
/// Until `flush`, records may wait in memory. Borrows the store and works inside the caller's transaction; one thread.
/// Records are ordered, of properties that are the agent's own.
namespace plotix {

class RecordPlacement {
public:
    /// So many records at most become rows of the tail: more of them are cheaper as a chunk.
    static constexpr std::size_t kMostRows = 1024;

    explicit RecordPlacement(ChunkStore& chunks) : m_chunks(chunks) {}

    void store(RowId agent, const RecordsView& records);
    /// `store` and `flush` in one, without the way through memory where that can be.
    void storeNow(RowId agent, const RecordsView& records);
    void flush();

    /// Drops what waits and what is known: after a rollback, or when another connection changed the document.
    void forget() { m_ends.clear(); }

private:
    /// What an agent's records end with, in this order of time.
    struct End {
        std::optional<Chunk> lastChunk;
        std::size_t rows = 0;  ///< of the tail
        Records waiting;       ///< in memory alone
        double lastTime = 0;   ///< of all; −∞ when there are none

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

    ChunkStore& m_chunks;
    std::map<RowId, End> m_ends;
};

}  // namespace plotix
