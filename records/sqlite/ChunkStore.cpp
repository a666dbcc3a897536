#include "records/sqlite/ChunkStore.h"

#include "records/columns/ColumnFormat.h"
#include "records/columns/ValidityBits.h"
#include "records/sqlite/RecordSchema.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace plotix {

namespace {

qint64 firstId(qint64 chunk)
{
    return chunk * schema::kPropertiesPerChunk;
}

Chunk chunkFrom(const Statement& row)
{
    return {row.integer(0), row.real(1), row.real(2), static_cast<std::size_t>(std::max<qint64>(row.integer(3), 0))};
}

}  // namespace

ChunkStore::ChunkStore(Database& database)
    : m_database(database),
      m_tail(database),
      m_first(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? ORDER BY t0 LIMIT 1"),
      m_last(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? ORDER BY t0 DESC LIMIT 1"),
      m_atOrBefore(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? AND t0 <= ? ORDER BY t0 DESC LIMIT 1"),
      m_after(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? AND t0 > ? ORDER BY t0 LIMIT 1"),
      m_between(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ?1 AND t1 >= ?2 AND t0 <= ?3 ORDER BY t0"),
      m_nextAgent(database, "SELECT agent FROM chunk WHERE agent > ? ORDER BY agent LIMIT 1"),
      m_segments(database, "SELECT id, codec, valid, data FROM segment WHERE id >= ? AND id < ? ORDER BY id"),
      m_addChunk(database, "INSERT INTO chunk(agent, t0, t1, n) VALUES(?, ?, ?, ?)"),
      m_addSegment(database, "INSERT INTO segment(id, codec, valid, data) VALUES(?, ?, ?, ?)"),
      m_addSummary(database, "INSERT INTO summary(id, valid, minimum, maximum, sum) VALUES(?, ?, ?, ?, ?)"),
      m_removeChunk(database, "DELETE FROM chunk WHERE id = ?"),
      m_removeSegments(database, "DELETE FROM segment WHERE id >= ? AND id < ?"),
      m_removeSummaries(database, "DELETE FROM summary WHERE id >= ? AND id < ?")
{
}

std::optional<Chunk> ChunkStore::one(Statement& statement)
{
    std::optional<Chunk> chunk;
    if (statement.step())
        chunk = chunkFrom(statement);
    statement.reset();
    return chunk;
}

std::optional<Chunk> ChunkStore::firstChunk(RowId agent)
{
    return one(m_first.bind(1, agent));
}

std::optional<Chunk> ChunkStore::lastChunk(RowId agent)
{
    return one(m_last.bind(1, agent));
}

std::optional<RecordExtent> ChunkStore::extent(RowId agent)
{
    const std::optional<Chunk> first = firstChunk(agent);
    const TailExtent tail = tailExtent(agent);
    if (!first && tail.count == 0)
        return std::nullopt;
    return RecordExtent{first ? first->t0 : tail.first, tail.count > 0 ? tail.last : lastChunk(agent)->t1};
}

std::vector<RowId> ChunkStore::agents()
{
    std::vector<RowId> agents = m_tail.agents();
    for (m_nextAgent.bind(1, std::numeric_limits<qint64>::min()); m_nextAgent.step();) {
        const RowId agent = m_nextAgent.integer(0);
        agents.push_back(agent);
        m_nextAgent.reset();
        m_nextAgent.bind(1, agent);
    }
    m_nextAgent.reset();
    std::sort(agents.begin(), agents.end());
    agents.erase(std::unique(agents.begin(), agents.end()), agents.end());
    return agents;
}

std::optional<Chunk> ChunkStore::lastChunkBeginningAt(RowId agent, double time)
{
    return one(m_atOrBefore.bind(1, agent).bind(2, time));
}

std::optional<double> ChunkStore::firstBeginningAfter(RowId agent, double time)
{
    const std::optional<Chunk> chunk = one(m_after.bind(1, agent).bind(2, time));
    return chunk ? std::optional(chunk->t0) : std::nullopt;
}

std::vector<Chunk> ChunkStore::chunksBetween(RowId agent, double from, double to)
{
    std::vector<Chunk> chunks;
    m_between.bind(1, agent).bind(2, from).bind(3, to);
    while (m_between.step())
        chunks.push_back(chunkFrom(m_between));
    m_between.reset();
    for (const Chunk& chunk : chunks)
        requirePossible(chunk);
    return chunks;
}

void ChunkStore::requirePossible(const Chunk& chunk) const
{
    if (chunk.n == 0 || chunk.n > schema::kRecordsPerChunk || !(chunk.t0 <= chunk.t1))
        m_database.failAsDamaged(QStringLiteral("chunk %1 is impossible").arg(chunk.id));
}

Records ChunkStore::read(const Chunk& chunk)
{
    requirePossible(chunk);
    std::vector<double> times;
    std::vector<Records::Column> columns;
    m_segments.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1));
    while (m_segments.step()) {
        Records::Column column;
        column.property = m_segments.integer(0) - firstId(chunk.id);
        if (!readSegment(chunk, column)) {
            m_segments.reset();
            m_database.failAsDamaged(QStringLiteral("chunk %1 has a segment that cannot be read").arg(chunk.id));
        }
        if (column.property == kTimes)
            times = std::move(column.values);
        else
            columns.push_back(std::move(column));
    }
    m_segments.reset();
    if (times.size() != chunk.n)
        m_database.failAsDamaged(QStringLiteral("chunk %1 has no times").arg(chunk.id));
    return {std::move(times), std::move(columns)};
}

/// The row the statement stands on.
bool ChunkStore::readSegment(const Chunk& chunk, Records::Column& column) const
{
    const bool hasValid = !m_segments.isNothing(2);
    if (hasValid && m_segments.byteCount(2) != (chunk.n + 7) / 8)
        return false;
    column.valid.assign(bits::wordsFor(chunk.n), hasValid ? 0 : ~std::uint64_t{0});
    if (hasValid)
        std::memcpy(column.valid.data(), m_segments.rawBytes(2), m_segments.byteCount(2));
    if (chunk.n % 64 != 0)
        column.valid.back() &= bits::mask(chunk.n % 64);
    column.values.resize(chunk.n);
    return codec::decode(static_cast<int>(m_segments.integer(1)),
                         {static_cast<const std::byte*>(m_segments.rawBytes(3)), m_segments.byteCount(3)}, chunk.n,
                         hasValid ? column.valid.data() : nullptr, 0, column.values);
}

Chunk ChunkStore::write(RowId agent, const EncodedChunk& chunk)
{
    m_addChunk.bind(1, agent).bind(2, chunk.t0).bind(3, chunk.t1).bind(4, static_cast<qint64>(chunk.n)).run();
    const qint64 id = m_database.lastInsertedRow();
    // Segments of a chunk are written in the order of their ids: appending is what the tree does fastest.
    for (const EncodedChunk::Segment& segment : chunk.segments)
        writeSegment(id, chunk.n, segment);
    return {id, chunk.t0, chunk.t1, chunk.n};
}

void ChunkStore::writeSegment(qint64 chunk, std::size_t count, const EncodedChunk::Segment& segment)
{
    const qint64 id = firstId(chunk) + segment.property;
    m_addSegment.bind(1, id).bind(2, static_cast<qint64>(segment.values.codec)).bindNothing(3);
    if (!segment.valid.empty())
        m_addSegment.bindBytes(3, segment.valid.data(), (count + 7) / 8);
    m_addSegment.bindBytes(4, segment.values.bytes.data(), segment.values.bytes.size()).run();
    if (segment.property == kTimes)
        return;
    const Summary& summary = segment.summary;
    m_addSummary.bind(1, id).bind(2, static_cast<qint64>(summary.valid)).bind(3, summary.minimum);
    m_addSummary.bind(4, summary.maximum).bind(5, summary.sum).run();
}

void ChunkStore::remove(const Chunk& chunk)
{
    m_removeSegments.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1)).run();
    m_removeSummaries.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1)).run();
    m_removeChunk.bind(1, chunk.id).run();
}

}  // namespace plotix
