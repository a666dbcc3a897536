#pragma once

#include "hostapp/archive/Database.h"
#include "hostapp/archive/Records.h"

#include <optional>

/// The chunks of a site document, one at a time: looking them up, reading, writing and removing whole ones.
///
/// Knows the layout, not what records mean. Borrows its connection and works inside the caller's transaction; one
/// thread. Throws HostError, also for blobs whose length does not fit.
namespace plotix {

struct Chunk {
    qint64 id = 0;
    double t0 = 0, t1 = 0;  ///< times of its first and last record
    std::size_t n = 0;      ///< records
};

/// Count, extremes and sum of the valid elements that are no NaN.
struct Summary {
    std::size_t valid = 0;
    double minimum = 0, maximum = 0;
    double sum = 0;

    void add(const Summary& other);
};
Summary summaryOf(const RecordsView::Column& column, std::size_t count);

class ChunkStore {
public:
    explicit ChunkStore(Database& database);

    std::optional<Chunk> firstChunk(RowId agent);
    std::optional<Chunk> lastChunk(RowId agent);
    std::optional<Chunk> lastChunkBeginningAt(RowId agent, double time);  ///< or earlier
    std::optional<double> firstBeginningAfter(RowId agent, double time);

    /// Chunks with a record in [from, to], in time order.
    std::vector<Chunk> chunksBetween(RowId agent, double from, double to);

    Records read(const Chunk& chunk);

    /// Ordered records as one chunk. Columns whose elements are all absent are not written.
    /// Requires: 1 to kRecordsPerChunk records, ordered.
    void write(RowId agent, const RecordsView& records);
    void remove(const Chunk& chunk);

private:
    std::optional<Chunk> one(Statement& statement);
    void writeSegment(qint64 id, const double* values, std::size_t count, const std::uint64_t* valid,
                      std::size_t firstValid);
    void writeSummary(qint64 id, const Summary& summary);

    Database& m_database;
    Statement m_first, m_last, m_atOrBefore, m_after, m_between;
    Statement m_segments, m_addChunk, m_addSegment, m_addSummary, m_removeChunk, m_removeSegments, m_removeSummaries;
};

}  // namespace plotix
