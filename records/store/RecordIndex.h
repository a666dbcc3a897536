#pragma once

#include "records/columns/ColumnIndex.h"
#include "records/store/RecordBlock.h"

#include <vector>

/// What a store knows of the values of its records without unpacking them, fine enough to draw and to sum up: pieces
/// of successive records, and runs inside each of them. Where a piece or a run ends says nothing about the records.
/// Values; any thread.
namespace plotix {

struct RecordIndex {
    enum class Detail {
        Pieces,  ///< nothing of runs
        Runs,
    };
    enum class Source {
        Index,         ///< as it is stored
        Records,       ///< no index is stored, as by earlier versions: worked out from the records
        DamagedIndex,  ///< the stored one is damaged: worked out from the records
        NothingKnown,  ///< of a computed property, whose values stand nowhere
    };
    struct Column {
        RowId property = 0;
        Source source = Source::Index;
        ColumnIndex index;  ///< as long as the piece; without runs where the column is so short, packed, that they save
                            ///< nothing
    };
    struct Piece {
        double t0 = 0, t1 = 0;  ///< times of its first and last record
        std::size_t records = 0;
        RunTimes times;               ///< of runs of the length they say, which that of each column is a multiple of
        std::vector<Column> columns;  ///< in the order asked for
    };
    std::vector<Piece> pieces;  ///< in time order
};

}  // namespace plotix
