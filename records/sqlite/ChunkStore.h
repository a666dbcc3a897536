#pragma once

#include "records/sqlite/Chunk.h"
#include "records/sqlite/OutlineTable.h"
#include "records/sqlite/TailStore.h"
#include "records/store/EncodedChunk.h"
#include "records/store/Records.h"
#include "storage/Database.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

/// The chunks of a site document, one at a time: looking them up, reading, writing and removing whole ones; and the
/// tail, the records after an agent's last chunk, which belongs to every read up to the last record.
///
/// Knows the layout, not what records mean. Borrows its connection and works inside the caller's transaction; one
/// thread. Throws ReportableError, also for blobs whose length does not fit.
namespace plotix {

class ChunkStore {
public:
    explicit ChunkStore(Database& database);
    ~ChunkStore();

    Database& database() const { return m_database; }

    std::optional<Chunk> firstChunk(RowId agent);
    std::optional<Chunk> lastChunk(RowId agent);
    std::optional<Chunk> lastChunkBeginningAt(RowId agent, double time);  ///< or earlier
    std::optional<double> firstBeginningAfter(RowId agent, double time);

    /// Chunks with a record in [from, to], in time order.
    std::vector<Chunk> chunksBetween(RowId agent, double from, double to);

    /// Those that begin after a time, in time order; so many at most.
    std::vector<Chunk> firstChunksAfter(RowId agent, double time, std::size_t most);

    /// Whether chunks with a record in [from, to] have more records than this, all of theirs counted.
    bool hasMoreBetween(RowId agent, double from, double to, std::size_t records);
    /// Whether all of these chunks, by id, are there, whichever agent's they are.
    bool hasAll(std::vector<qint64> ids);

    /// What their columns take in the file.
    std::size_t packedBytes(std::span<const Chunk> chunks);

    /// Throws where one of its columns has changed since it was stored.
    Records read(const Chunk& chunk);
    /// The same without the columns that have changed, which are noted; nothing at all when the times have.
    Records readUnchanged(const Chunk& chunk, std::vector<RowId>& changed);

    /// Records after the agent's last chunk, with from ≤ time ≤ to; at most kRecordsPerChunk.
    Records tail(RowId agent, double from, double to);
    TailExtent tailExtent(RowId agent) { return m_tail.extent(agent); }
    /// Of the agent's records, in chunks and in the tail.
    std::optional<RecordExtent> extent(RowId agent);
    /// Those with records, ascending. One index look-up an agent, however many records it has.
    std::vector<RowId> agents();
    TailStore& tailRows() { return m_tail; }
    OutlineTable& outlines() { return m_outlines; }

    /// The highest that was ever given to a chunk.
    qint64 highestNumber();

    /// Ordered records as one chunk. Columns whose elements are all absent are not written.
    /// Requires: 1 to kRecordsPerChunk records, ordered.
    Chunk write(RowId agent, const RecordsView& records) { return write(agent, encodedChunk(records)); }
    Chunk write(RowId agent, EncodedChunk&& chunk);
    /// What an outline takes of a chunk that this transaction wrote, once; nothing where that is no longer known.
    std::optional<ChunkFigures> takeFigures(const Chunk& chunk);
    /// From what the file has now. Its columns stay as long as somebody wants to read them as they were: they are
    /// *retired*, and dropped by a later transaction.
    void remove(const Chunk& chunk);
    /// Drops what transactions before retired and nobody wants any more. Requires: called before `remove`.
    void dropRetired();

private:
    std::optional<Chunk> one(Statement& statement);
    void requirePossible(const Chunk& chunk) const;  ///< throws for a length or times that no chunk can have
    enum class Segment { Sound, Changed, Unreadable };
    Segment readSegment(const Chunk& chunk, Records::Column& column) const;
    void writeSegment(qint64 chunk, std::size_t count, const EncodedChunk::Segment& segment);

    struct Writing;
    void noteTransaction();
    void removeSegments(qint64 chunk);
    Writing& writing();  ///< made when first used: before that a document may lack the tables

    Database& m_database;
    TailStore m_tail;
    OutlineTable m_outlines;
    Statement m_first, m_last, m_atOrBefore, m_after, m_between, m_nextAgent, m_ids, m_highestNumber;
    Statement m_segments;
    std::unique_ptr<Writing> m_writing;
    std::map<qint64, ChunkFigures> m_figures;  // of some chunks that this transaction wrote, by id
    std::optional<unsigned> m_version;         // of the document when this transaction wrote first
    qint64 m_numberBefore = 0;                 // the highest that transactions before gave to a chunk
};

}  // namespace plotix
