#pragma once

#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/clickhouse/StoredChunk.h"
#include "records/store/EncodedChunk.h"

#include <set>

/// Packs records into chunks and stores them. Borrows the connection; one thread. Throws as it does.
namespace plotix {

class ChunkInsert {
public:
    /// `batch`: what they belong to; 0: they count at once, which only a single chunk may.
    ChunkInsert(ServerConnection& server, const SiteTables& tables, RowId agent, std::uint64_t batch)
        : m_server(server), m_tables(tables), m_agent(agent), m_batch(batch)
    {
    }

    /// What the span [begin, end] holds from now on, in chunks of at most so many records, and which young records are
    /// among them. Requires: the records are ordered and lie in the span.
    void write(const RecordsView& records, double begin, double end, std::size_t longest, const WriterMarks& taken);
    /// The same in full chunks, but for the last one.
    void writeFull(const RecordsView& records, double begin, double end, const WriterMarks& taken);
    /// Each chunk says nothing but of its own records: for spans where nothing was.
    void writeApart(const RecordsView& records, const WriterMarks& taken);

    /// Stores what waits in memory.
    void flush();

    std::size_t chunks() const { return m_chunks; }  ///< written so far

private:
    void write(const std::vector<RecordsView>& pieces, double begin, double end, const WriterMarks& taken);
    void add(const EncodedChunk& chunk, double begin, double end, std::uint64_t version, const WriterMarks& taken);
    void addEmpty(double begin, double end, std::uint64_t version, const WriterMarks& taken);
    void beginRow(RowId property, double t0, double t1, double begin, double end, std::size_t n, std::uint64_t chunk,
                  std::uint64_t version, const WriterMarks& taken);
    void flushIfLong(double t0);

    ServerConnection& m_server;
    const SiteTables& m_tables;
    const RowId m_agent;
    const std::uint64_t m_batch;
    rowbinary::Writer m_rows;
    std::set<long long> m_months;  // that the rows in memory begin in
    std::size_t m_chunks = 0;
};

}  // namespace plotix
