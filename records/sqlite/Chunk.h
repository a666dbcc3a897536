#pragma once

#include "records/columns/ColumnFormat.h"
#include "records/sqlite/RecordSchema.h"

#include <QtCore/QtGlobal>

#include <cstddef>
#include <limits>

/// A row of the table of chunks. A value; any thread.
namespace plotix {

struct Chunk {
    qint64 id = 0;
    double t0 = 0, t1 = 0;  ///< times of its first and last record
    std::size_t n = 0;      ///< records

    /// Whether a row like this can have been stored. The ids of its columns are numbers, too.
    bool isPossible() const
    {
        return id > 0 && id < std::numeric_limits<qint64>::max() / schema::kPropertiesPerChunk && n > 0 &&
               n <= schema::kRecordsPerChunk && t0 <= t1;
    }
};

}  // namespace plotix
