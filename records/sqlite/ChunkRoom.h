#pragma once

#include "base/ReportableError.h"
#include "records/sqlite/ChunkStore.h"

#include <cstdint>

/// Whether a chunk may be read whole, asked before it is: a column of equal values takes 17 bytes in the file, whatever
/// its length, so that a file made to do harm can claim any amount in few bytes.
///
/// *Borrows* the connection; one thread.
namespace plotix {

/// More memory than allowed: no damage, so whoever looks for damage passes it on.
class TooLittleMemory : public ReportableError {
public:
    using ReportableError::ReportableError;
};

class ChunkRoom {
public:
    /// `copies`: how many of a chunk's values are in memory at once; `memory`: the most bytes for them, 0: no limit.
    ChunkRoom(Database& database, std::uint64_t copies, std::uint64_t memory);

    void require(const Chunk& chunk);  ///< throws TooLittleMemory

private:
    Database& m_database;
    std::uint64_t m_copies, m_memory;
    Statement m_segments;
};

}  // namespace plotix
