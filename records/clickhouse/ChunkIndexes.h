#pragma once

#include "records/clickhouse/AgentReading.h"
#include "records/columns/IndexCodec.h"
#include "records/store/RecordIndex.h"

#include <optional>

/// What a server keeps of packed columns beside them, and the same of records in memory.
///
/// Borrows the connection; one thread. Throws as it does.
namespace plotix {

class ChunkIndexes {
public:
    ChunkIndexes(ServerConnection& server, const SiteTables& tables, RowId agent)
        : m_server(server), m_tables(tables), m_agent(agent), m_reading(server, tables, agent)
    {
    }

    /// By piece, then by property: whether there is such a column.
    using Presence = std::vector<std::vector<bool>>;

    /// Of the pieces, in their order; columns in the order of the properties. `present`: filled where it is not null.
    std::vector<RecordIndex::Piece> of(std::span<const AgentReading::Piece> pieces,
                                       const std::vector<RowId>& properties, RecordIndex::Detail detail,
                                       Presence* present = nullptr);
    /// By property, then by piece.
    std::vector<std::vector<Summary>> summariesOf(std::span<const AgentReading::Piece> pieces,
                                                  const std::vector<RowId>& properties);

private:
    using TakeRow = std::function<void(std::size_t chunk, RowId property, const Summary& summary,
                                       std::span<const std::byte> whole, std::span<const std::byte> runs)>;
    void eachRow(std::span<const StoredChunk* const> chunks, const std::vector<RowId>& properties, bool withRuns,
                 const TakeRow& take);
    RecordIndex::Column workedOut(const StoredChunk& chunk, RowId property, bool withRuns, RecordIndex::Source source);

    ServerConnection& m_server;
    const SiteTables& m_tables;
    const RowId m_agent;
    AgentReading m_reading;
};

}  // namespace plotix
