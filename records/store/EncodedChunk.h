#pragma once

#include "records/columns/ColumnCodec.h"
#include "records/columns/ColumnSummary.h"
#include "records/columns/SealedColumn.h"
#include "records/store/ChunkFigures.h"
#include "records/store/Records.h"

/// A chunk encoded as it will be stored: the slow part of writing one, without any store.
///
/// Pure; any thread.
namespace plotix {

struct EncodedChunk {
    struct Segment {
        RowId property = 0;                ///< kTimes: the times, which have no summary
        codec::Encoded values;             ///< its checksum is behind its bytes
        std::vector<std::uint64_t> valid;  ///< empty: every element
        Summary summary;
        std::vector<std::byte> whole, runs;  ///< the index as bytes; empty: there is none

        int storedCodec() const { return static_cast<int>(values.codec) + sealed::kSealed; }
    };
    double t0 = 0, t1 = 0;
    std::size_t n = 0;
    std::vector<Segment> segments;  ///< times first, then properties ascending
    ChunkFigures figures;           ///< not stored with the chunk
};

/// The most of a column's bytes that its index may take: one of so many.
inline constexpr std::size_t kIndexShare = 34;

/// Columns whose elements are all absent are left out.
/// Requires: 1 to kRecordsPerChunk records, ordered.
EncodedChunk encodedChunk(const RecordsView& records);

}  // namespace plotix
