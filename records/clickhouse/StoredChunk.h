#pragma once

#include "records/store/Records.h"

#include <cstdint>
#include <map>
#include <vector>

/// What a server holds of an agent, as it is stored: packed chunks, and the young records that came since. Values; any
/// thread.
namespace plotix {

/// A writer's young records up to a number.
using WriterMarks = std::map<std::uint64_t, std::uint64_t>;

/// Says of all times of a span which records the agent has there, but for young ones that it has not taken in.
struct StoredChunk {
    std::uint64_t id = 0, version = 0;
    double begin = 0, end = 0;  ///< the span
    double t0 = 0, t1 = 0;      ///< of the first and last record, where there is one
    std::size_t n = 0;          ///< 0: the span has none
    WriterMarks taken;          ///< the young records that it has taken in

    bool hasTaken(std::uint64_t writer, std::uint64_t number) const
    {
        const auto found = taken.find(writer);
        return found != taken.end() && found->second >= number;
    }
};

struct YoungRecord {
    double time = 0;
    std::uint64_t writer = 0, number = 0;  ///< a writer's numbers rise with its inserts
    std::uint32_t place = 0;               ///< in the insert
    std::uint64_t version = 0;             ///< of records of one time, what the later one has counts
    std::vector<RowId> properties;
    std::vector<double> values;
    std::vector<std::uint8_t> valid;
};

/// The stretch of an agent's times that a chunk is to be asked about.
struct ChunkStretch {
    const StoredChunk* chunk = nullptr;
    double begin = 0, end = 0;

    bool isWhole() const { return begin == chunk->begin && end == chunk->end; }
};

/// Of chunks whose spans overlap, the one of the highest version says what is there. In time order; borrows the chunks.
std::vector<ChunkStretch> stretchesOf(const std::vector<StoredChunk>& chunks);

/// The records with those that came later: element by element, that of the highest version counts. Columns of these
/// properties, or of all that occur where there are none. Requires: the records are ordered.
Records joined(const RecordsView& records, std::vector<const YoungRecord*> young, const std::vector<RowId>* properties);

}  // namespace plotix
