#pragma once

#include "records/columns/ColumnCodec.h"
#include "records/sqlite/ReadConnections.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

struct sqlite3_blob;

namespace plotix {

/// The records of a chunk that lie inside the range asked for, and where they go.
struct ChunkPart {
    Chunk chunk;
    std::size_t first = 0;  ///< in the chunk
    std::size_t count = 0;
    std::size_t target = 0;  ///< in the result

    bool isWhole() const { return count == chunk.n; }
};

/// Decodes parts of segments straight from the file's pages into the caller's memory.
///
/// Borrows its connection, inside one read transaction, and must end before it. One thread. Throws ReportableError,
/// also for segments that do not fit their chunk, and for those that have changed since they were stored.
class SegmentReader {
public:
    explicit SegmentReader(ReadConnection& connection) : m_connection(connection) {}
    ~SegmentReader();
    SegmentReader(const SegmentReader&) = delete;
    SegmentReader& operator=(const SegmentReader&) = delete;

    /// Fills `part.count` values; false when the chunk has no such segment.
    bool read(const ChunkPart& part, RowId property, double* values, codec::Into into = codec::Into::Caches);

    /// The same piece by piece, for whoever needs no more than a look at each value.
    bool readInPieces(const ChunkPart& part, RowId property, const codec::TakePiece& take);

    /// The validity words of the chunk of the last segment read, from bit 0; null when all elements are valid.
    /// Borrowed until the next read.
    const std::uint64_t* valid() const { return m_hasValid ? m_valid.data() : nullptr; }

    /// The part's times; they must begin and end where the chunk says.
    void readTimes(const ChunkPart& part, double* times, codec::Into into = codec::Into::Caches);
    /// The same; false when the chunk has none.
    bool findTimes(const ChunkPart& part, double* times, codec::Into into = codec::Into::Caches);

private:
    bool readHead(const ChunkPart& part, qint64 id);
    void readBlob(std::size_t first, std::span<std::byte> target);
    std::size_t openBlob(qint64 id);
    template <class RoomForPlain, class Decode>
    bool readWith(const ChunkPart& part, RowId property, const RoomForPlain& room, const Decode& decode);
    bool readWholeRaw(const ChunkPart& part, RowId property, std::span<double> target);
    std::uint64_t checksumBefore(const ChunkPart& part, RowId property, int codec) const;
    [[noreturn]] void failAsWrongLength(const ChunkPart& part) const;

    ReadConnection& m_connection;
    sqlite3_blob* m_blob = nullptr;
    int m_codec = 0;
    bool m_hasValid = false;
    std::vector<std::uint64_t> m_valid;
    std::vector<double> m_plain;  // plain doubles on their way to whoever takes pieces
};

}  // namespace plotix
