#pragma once

#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/ChunkInsert.h"

/// Changes what a server holds of one agent: rewrites the chunks that records fall into.
///
/// Borrows the connection; one thread. Throws as it does; nothing counts before its batch does.
namespace plotix {

class AgentWriting {
public:
    AgentWriting(ServerConnection& server, const SiteTables& tables, RowId agent, std::uint64_t batch)
        : m_reading(server, tables, agent, batch), m_insert(server, tables, agent, batch)
    {
    }

    /// Takes in blocks one after the other, each of which replaces the elements that it brings. Requires: each is
    /// ordered.
    void merge(const std::vector<Records>& blocks);
    /// Takes elements out of records with from ≤ time ≤ to, and records that are left without any.
    void remove(std::span<const RowId> properties, double from, double to);
    /// Takes all records out that are earlier; answers how many.
    std::size_t dropBefore(double time);
    /// The same records in full chunks, young ones among them. `goOn` is asked between two parts of the work.
    void repack(const std::function<bool()>& goOn);
    /// Young records behind all chunks, as far as they fill one chunk; false: they do not, and nothing was done.
    /// `beforeStoring` may throw to leave everything as it is. Requires: it is the caller's turn.
    bool sealOneChunk(const std::function<void()>& beforeStoring);

    std::size_t chunksWritten() const { return m_insert.chunks(); }

private:
    /// A span that is written anew as a whole.
    struct Region {
        double begin = 0, end = 0;
        std::size_t records = 0;  ///< about
        bool isShort = true;      ///< less than a full chunk
        bool isUntidy = true;     ///< not one chunk as it is stored
    };
    Records recordsIn(const AgentReading::Rows& rows, const Region& region);
    WriterMarks takenIn(const AgentReading::Rows& rows, const Region& region) const;
    std::vector<Region> regionsOf(const AgentReading::Rows& rows) const;

    AgentReading m_reading;
    ChunkInsert m_insert;
};

}  // namespace plotix
