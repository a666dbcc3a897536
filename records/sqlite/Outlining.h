#pragma once

#include "records/sqlite/ChunkStore.h"
#include "records/sqlite/OutlineTable.h"

#include <map>

/// Makes outlines of chunks, and keeps an agent's chunks outlined; those that cannot be read are in none.
///
/// Borrows the store and works inside the caller's transaction; one thread.
namespace plotix {

/// An outline of chunks that are handed to it one after the other. A value.
class OutlineInWork {
public:
    /// Requires: the figures are the chunk's, which follows those before.
    void add(const Chunk& chunk, const ChunkFigures& figures);
    std::size_t chunks() const { return m_outline.chunks.size(); }

    /// As rows, with runs so long that they take no more than a share of `packedBytes`.
    struct Written {
        Outline outline;
        std::vector<std::vector<std::byte>> rows;  ///< times, then properties
    };
    Written written(std::size_t packedBytes) const;
    /// Whether a stored outline says the same, and nothing of it is damaged.
    bool isToldBy(OutlineTable& table, const Outline& stored) const;

private:
    struct Column {
        ValueRuns runs;
        outlinecodec::Totals totals;
    };
    Column withoutValues() const;

    Outline m_outline;
    outlinecodec::Times m_times;
    std::map<RowId, Column> m_columns;
};

class Outlining {
public:
    explicit Outlining(ChunkStore& chunks) : m_chunks(chunks), m_table(chunks.outlines()) {}

    /// Outlines what has come to rest at the end of the agent's chunks, after so many were written: as many chunks and
    /// 64 more at most, so that what a version before has left is made up for, but nobody waits for all of it.
    void extend(RowId agent, std::size_t written);

    /// Outlines the next chunks at or behind `from` that are in no sound outline, as far as there are enough of them.
    /// True when it did, and there may be more: then `from` is behind them.
    bool completeSome(RowId agent, double& from);

private:
    bool outline(RowId agent, std::span<const Chunk> chunks);
    bool isSound(const Outline& outline);

    ChunkStore& m_chunks;
    OutlineTable& m_table;
};

}  // namespace plotix
