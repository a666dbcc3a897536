#pragma once

#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/clickhouse/StoredChunk.h"

#include <functional>
#include <span>

/// What a server says of one agent's records, at one moment: see StoredChunk.
///
/// Borrows the connection; one thread. Throws as the connection does, and for answers that do not fit together.
namespace plotix {

class AgentReading {
public:
    /// `own`: a batch that counts already; 0: none.
    AgentReading(ServerConnection& server, const SiteTables& tables, RowId agent, std::uint64_t own = 0)
        : m_server(server), m_tables(tables), m_agent(agent), m_own(own)
    {
    }

    /// What stands in the tables of [from, to], and all young records of the chunks there.
    struct Rows {
        std::vector<StoredChunk> chunks;
        std::vector<YoungRecord> young;
    };
    Rows rows(double from, double to);
    /// The same in two statements, which may see two states.
    Rows rowsNow(double from, double to);

    /// Successive records: those of a chunk as it is stored, or some in memory.
    struct Piece {
        const StoredChunk* chunk = nullptr;  ///< null: `records` has them
        Records records;
        double t0 = 0, t1 = 0;
        std::size_t n = 0;

        bool overlaps(double from, double to) const { return t0 <= to && t1 >= from; }
    };
    /// Of at most as many records as a chunk has, in time order, those that share a time with [from, to]. Columns in
    /// memory: these properties, where they occur; null: all. Borrows the rows.
    std::vector<Piece> pieces(const Rows& rows, double from, double to, const std::vector<RowId>* properties);

    /// A column of a chunk as it is stored; property 0: its times.
    struct Segment {
        int codec = 0;
        std::span<const std::byte> valid, data;
    };
    using TakeSegment = std::function<void(std::size_t chunk, RowId property, const Segment& segment)>;
    /// Hands out each column once, in any order. `properties`: null for all; the times come in any case. False when
    /// `progress` answered so, which is asked now and then.
    bool segments(std::span<const StoredChunk* const> chunks, const std::vector<RowId>* properties,
                  const TakeSegment& take, const std::function<bool()>& goOn = {});

    /// Hands out this column alone of the chunks that have it; answers of how many.
    std::size_t column(std::span<const StoredChunk* const> chunks, RowId property, const TakeSegment& take);

    /// See decodeColumn.
    void decode(const StoredChunk& chunk, RowId property, const Segment& segment, std::size_t first,
                std::span<double> values, std::vector<std::uint64_t>& words) const;

    /// All its records. As `pieces` for the columns.
    Records recordsOf(const StoredChunk& chunk, const std::vector<RowId>* properties);
    std::vector<double> timesOf(const StoredChunk& chunk);

    [[noreturn]] void failAsDamaged(const QString& what) const;
    void requireTimes(const StoredChunk& chunk, std::span<const double> times) const;

private:
    Rows rowsOfTables(double from, double to);
    std::vector<StoredChunk> chunksNow(double from, double to);
    std::uint64_t batches();
    bool stream(std::span<const StoredChunk* const> chunks, const std::string& condition, const TakeSegment& take,
                const std::function<bool()>& goOn);
    std::string ofAgent() const { return "agent = " + std::to_string(m_agent); }

    ServerConnection& m_server;
    const SiteTables& m_tables;
    const RowId m_agent;
    const std::uint64_t m_own;
};

/// Elements [first, first + values.size()) of a column; `words`: room for the validity of the whole chunk, which is
/// set. Throws ReportableError where they do not fit the chunk; `from` is where they came from.
void decodeColumn(const ServerAddress& from, const StoredChunk& chunk, RowId property,
                  const AgentReading::Segment& segment, std::size_t first, std::span<double> values,
                  std::vector<std::uint64_t>& words);

/// Agents that have rows, ascending.
std::vector<RowId> agentsOn(ServerConnection& server, const SiteTables& tables);

}  // namespace plotix
