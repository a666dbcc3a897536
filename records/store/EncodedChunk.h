#pragma once

#include "records/columns/ColumnCodec.h"
#include "records/columns/ColumnSummary.h"
#include "records/store/Records.h"

/// A chunk encoded as it will be stored: the slow part of writing one, without any store.
///
/// Pure; any thread.
namespace plotix {

struct EncodedChunk {
    struct Segment {
        RowId property = 0;  ///< kTimes: the times, which have no summary
        codec::Encoded values;
        std::vector<std::uint64_t> valid;  ///< empty: every element
        Summary summary;
    };
    double t0 = 0, t1 = 0;
    std::size_t n = 0;
    std::vector<Segment> segments;  ///< times first, then properties ascending
};

/// Columns whose elements are all absent are left out.
/// Requires: 1 to kRecordsPerChunk records, ordered.
EncodedChunk encodedChunk(const RecordsView& records);

}  // namespace plotix
