#pragma once

#include "base/ColumnRuns.h"
#include "records/columns/ColumnIndex.h"
#include "records/store/Records.h"

#include <vector>

/// What an outline takes of a chunk. Values; any thread.
namespace plotix {

struct ChunkFigures {
    struct Column {
        RowId property = 0;
        ValueRuns runs;         ///< of 512 elements
        std::size_t valid = 0;  ///< elements that are valid and no NaN
        ExactTotal sum;         ///< of these, with infinities

        static Column of(RowId property, const ColumnIndex& index);
    };
    RunTimes times;
    std::vector<Column> columns;

    static ChunkFigures of(const RecordsView& records);
};

}  // namespace plotix
