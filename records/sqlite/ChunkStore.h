#pragma once

#include "records/sqlite/TailStore.h"
#include "records/store/EncodedChunk.h"
#include "records/store/Records.h"
#include "storage/Database.h"

#include <optional>

/// The chunks of a site document, one at a time: looking them up, reading, writing and removing whole ones; and the
/// tail, the records after an agent's last chunk, which belongs to every read up to the last record.
///
/// Knows the layout, not what records mean. Borrows its connection and works inside the caller's transaction; one
/// thread. Throws ReportableError, also for blobs whose length does not fit.
namespace plotix {

struct Chunk {
    qint64 id = 0;
    double t0 = 0, t1 = 0;  ///< times of its first and last record
    std::size_t n = 0;      ///< records
};

class ChunkStore {
public:
    explicit ChunkStore(Database& database);

    Database& database() const { return m_database; }

    std::optional<Chunk> firstChunk(RowId agent);
    std::optional<Chunk> lastChunk(RowId agent);
    std::optional<Chunk> lastChunkBeginningAt(RowId agent, double time);  ///< or earlier
    std::optional<double> firstBeginningAfter(RowId agent, double time);

    /// Chunks with a record in [from, to], in time order.
    std::vector<Chunk> chunksBetween(RowId agent, double from, double to);

    Records read(const Chunk& chunk);

    /// Records after the agent's last chunk, with from ≤ time ≤ to; at most kRecordsPerChunk.
    Records tail(RowId agent, double from, double to) { return m_tail.read(agent, from, to); }
    TailExtent tailExtent(RowId agent) { return m_tail.extent(agent); }
    /// Of the agent's records, in chunks and in the tail.
    std::optional<RecordExtent> extent(RowId agent);
    /// Those with records, ascending. One index look-up an agent, however many records it has.
    std::vector<RowId> agents();
    TailStore& tailRows() { return m_tail; }

    /// Ordered records as one chunk. Columns whose elements are all absent are not written.
    /// Requires: 1 to kRecordsPerChunk records, ordered.
    Chunk write(RowId agent, const RecordsView& records) { return write(agent, encodedChunk(records)); }
    Chunk write(RowId agent, const EncodedChunk& chunk);
    void remove(const Chunk& chunk);

private:
    std::optional<Chunk> one(Statement& statement);
    void requirePossible(const Chunk& chunk) const;  ///< throws for a length or times that no chunk can have
    bool readSegment(const Chunk& chunk, Records::Column& column) const;
    void writeSegment(qint64 chunk, std::size_t count, const EncodedChunk::Segment& segment);

    Database& m_database;
    TailStore m_tail;
    Statement m_first, m_last, m_atOrBefore, m_after, m_between, m_nextAgent;
    Statement m_segments, m_addChunk, m_addSegment, m_addSummary, m_removeChunk, m_removeSegments, m_removeSummaries;
};

}  // namespace plotix
