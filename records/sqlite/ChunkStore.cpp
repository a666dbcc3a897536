#include "records/sqlite/ChunkStore.h"

#include "records/columns/ColumnFormat.h"
#include "records/columns/ValidityBits.h"
#include "records/sqlite/ChangedColumn.h"
#include "records/sqlite/ReaderMark.h"
#include "records/sqlite/RecordSchema.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace plotix {

namespace {

/// Columns of chunks that may become part of an outline before long: some ten megabytes. Others are read again.
constexpr std::size_t kMostFigures = 8192;

qint64 firstId(qint64 chunk)
{
    return chunk * schema::kPropertiesPerChunk;
}

Chunk chunkFrom(const Statement& row)
{
    return {row.integer(0), row.real(1), row.real(2), static_cast<std::size_t>(std::max<qint64>(row.integer(3), 0))};
}

}  // namespace

struct ChunkStore::Writing {
    explicit Writing(const Database& database)
        : addChunk(database, "INSERT INTO chunk(agent, t0, t1, n) VALUES(?, ?, ?, ?)"),
          addSegment(database, "INSERT INTO segment(id, codec, valid, data) VALUES(?, ?, ?, ?)"),
          addSummary(database, "INSERT INTO summary(id, valid, minimum, maximum, sum, whole) VALUES(?, ?, ?, ?, ?, ?)"),
          addRuns(database, "INSERT INTO run(id, data) VALUES(?, ?)"),
          removeChunk(database, "DELETE FROM chunk WHERE id = ?"),
          removeSegments(database, "DELETE FROM segment WHERE id >= ? AND id < ?"),
          removeSummaries(database, "DELETE FROM summary WHERE id >= ? AND id < ?"),
          removeRuns(database, "DELETE FROM run WHERE id >= ? AND id < ?"),
          retire(database, "INSERT INTO retired(chunk, last) VALUES(?, ?)"),
          retired(database, "SELECT chunk, last FROM retired ORDER BY chunk"),
          drop(database, "DELETE FROM retired WHERE chunk = ?")
    {
    }
    Statement addChunk, addSegment, addSummary, addRuns, removeChunk, removeSegments, removeSummaries, removeRuns;
    Statement retire, retired, drop;
};

ChunkStore::ChunkStore(Database& database)
    : m_database(database),
      m_tail(database),
      m_outlines(database),
      m_first(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? ORDER BY t0 LIMIT 1"),
      m_last(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? ORDER BY t0 DESC LIMIT 1"),
      m_atOrBefore(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? AND t0 <= ? ORDER BY t0 DESC LIMIT 1"),
      m_after(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? AND t0 > ? ORDER BY t0 LIMIT ?"),
      m_between(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ?1 AND t1 >= ?2 AND t0 <= ?3 ORDER BY t0"),
      m_nextAgent(database, "SELECT agent FROM chunk WHERE agent > ? ORDER BY agent LIMIT 1"),
      m_ids(database, "SELECT id FROM chunk WHERE id >= ? AND id <= ? ORDER BY id"),
      m_highestNumber(database, "SELECT seq FROM sqlite_sequence WHERE name = 'chunk'"),
      m_segments(database, "SELECT id, codec, valid, data FROM segment WHERE id >= ? AND id < ? ORDER BY id")
{
}

ChunkStore::~ChunkStore() = default;

ChunkStore::Writing& ChunkStore::writing()
{
    if (!m_writing)
        m_writing = std::make_unique<Writing>(m_database);
    return *m_writing;
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

// Rows whose times have changed are not looked at by those who ask for chunks alone.
Records ChunkStore::tail(RowId agent, double from, double to)
{
    const std::optional<Chunk> last = lastChunk(agent);
    return last && to <= last->t1 ? Records() : m_tail.read(agent, from, to);
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
    const std::vector<Chunk> chunk = firstChunksAfter(agent, time, 1);
    return chunk.empty() ? std::nullopt : std::optional(chunk.front().t0);
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

std::vector<Chunk> ChunkStore::firstChunksAfter(RowId agent, double time, std::size_t most)
{
    std::vector<Chunk> chunks;
    m_after.bind(1, agent).bind(2, time).bind(3, static_cast<qint64>(most));
    while (m_after.step())
        chunks.push_back(chunkFrom(m_after));
    m_after.reset();
    return chunks;
}

std::size_t ChunkStore::packedBytes(std::span<const Chunk> chunks)
{
    Statement lengths(m_database, "SELECT coalesce(sum(length(data) + coalesce(length(valid), 0)), 0) FROM segment "
                                  "WHERE id >= ? AND id < ?");
    std::size_t bytes = 0;
    for (const Chunk& chunk : chunks) {
        if (lengths.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1)).step())
            bytes += static_cast<std::size_t>(lengths.integer(0));
        lengths.reset();
    }
    return bytes;
}

bool ChunkStore::hasMoreBetween(RowId agent, double from, double to, std::size_t records)
{
    std::size_t counted = 0;
    m_between.bind(1, agent).bind(2, from).bind(3, to);
    while (counted <= records && m_between.step())
        counted += chunkFrom(m_between).n;
    m_between.reset();
    return counted > records;
}

bool ChunkStore::hasAll(std::vector<qint64> ids)
{
    if (ids.empty())
        return true;
    std::sort(ids.begin(), ids.end());
    auto next = ids.begin();
    m_ids.bind(1, ids.front()).bind(2, ids.back());
    while (next != ids.end() && m_ids.step() && m_ids.integer(0) <= *next)
        next += m_ids.integer(0) == *next ? 1 : 0;
    m_ids.reset();
    return next == ids.end();
}

void ChunkStore::requirePossible(const Chunk& chunk) const
{
    if (!chunk.isPossible())
        m_database.failAsDamaged(QStringLiteral("chunk %1 is impossible").arg(chunk.id));
}

Records ChunkStore::read(const Chunk& chunk)
{
    std::vector<RowId> changed;
    Records records = readUnchanged(chunk, changed);
    if (!changed.empty())
        failAsChanged(m_database, changed.front(), chunk);
    return records;
}

Records ChunkStore::readUnchanged(const Chunk& chunk, std::vector<RowId>& changed)
{
    requirePossible(chunk);
    std::vector<double> times;
    std::vector<Records::Column> columns;
    m_segments.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1));
    while (m_segments.step()) {
        Records::Column column;
        column.property = m_segments.integer(0) - firstId(chunk.id);
        const Segment read = readSegment(chunk, column);
        if (read == Segment::Unreadable) {
            m_segments.reset();
            m_database.failAsDamaged(QStringLiteral("chunk %1 has a segment that cannot be read").arg(chunk.id));
        }
        if (read == Segment::Changed)
            changed.push_back(column.property);
        else if (column.property == kTimes)
            times = std::move(column.values);
        else
            columns.push_back(std::move(column));
    }
    m_segments.reset();
    if (!changed.empty() && changed.front() == kTimes)
        return {};
    if (times.size() != chunk.n)
        m_database.failAsDamaged(QStringLiteral("chunk %1 has no times").arg(chunk.id));
    return {std::move(times), std::move(columns)};
}

/// The row the statement stands on.
ChunkStore::Segment ChunkStore::readSegment(const Chunk& chunk, Records::Column& column) const
{
    const std::span<const std::byte> valid{static_cast<const std::byte*>(m_segments.rawBytes(2)),
                                           m_segments.byteCount(2)};
    const std::span<const std::byte> bytes{static_cast<const std::byte*>(m_segments.rawBytes(3)),
                                           m_segments.byteCount(3)};
    const int stored = static_cast<int>(m_segments.integer(1));
    const bool hasValid = !m_segments.isNothing(2);
    if ((hasValid && valid.size() != (chunk.n + 7) / 8) ||
        (sealed::isSealed(stored) && bytes.size() < checksum::kBytes))
        return Segment::Unreadable;
    const auto opened = sealed::opened(stored, bytes, {static_cast<std::uint64_t>(column.property), chunk.n, valid});
    if (!opened)
        return Segment::Changed;
    column.valid.assign(bits::wordsFor(chunk.n), hasValid ? 0 : ~std::uint64_t{0});
    if (hasValid)
        std::memcpy(column.valid.data(), valid.data(), valid.size());
    if (chunk.n % 64 != 0)
        column.valid.back() &= bits::mask(chunk.n % 64);
    column.values.resize(chunk.n);
    const bool isRead = codec::decode(opened->codec, opened->bytes, chunk.n, hasValid ? column.valid.data() : nullptr,
                                      0, column.values);
    return isRead ? Segment::Sound : Segment::Unreadable;
}

Chunk ChunkStore::write(RowId agent, EncodedChunk&& chunk)
{
    noteTransaction();
    Statement& add = writing().addChunk;
    add.bind(1, agent).bind(2, chunk.t0).bind(3, chunk.t1).bind(4, static_cast<qint64>(chunk.n)).run();
    const qint64 id = m_database.lastInsertedRow();
    // Segments of a chunk are written in the order of their ids: appending is what the tree does fastest.
    for (const EncodedChunk::Segment& segment : chunk.segments)
        writeSegment(id, chunk.n, segment);
    if ((m_figures.size() + 1) * (chunk.segments.size() + 1) > kMostFigures)
        m_figures.clear();
    m_figures.insert_or_assign(id, std::move(chunk.figures));  // a number comes again after a rollback
    return {id, chunk.t0, chunk.t1, chunk.n};
}

std::optional<ChunkFigures> ChunkStore::takeFigures(const Chunk& chunk)
{
    auto known = m_figures.extract(chunk.id);
    return known ? std::optional(std::move(known.mapped())) : std::nullopt;
}

void ChunkStore::writeSegment(qint64 chunk, std::size_t count, const EncodedChunk::Segment& segment)
{
    const qint64 id = firstId(chunk) + segment.property;
    Statement& add = writing().addSegment;
    add.bind(1, id).bind(2, static_cast<qint64>(segment.storedCodec())).bindNothing(3);
    if (!segment.valid.empty())
        add.bindBytes(3, segment.valid.data(), (count + 7) / 8);
    add.bindBytes(4, segment.values.bytes.data(), segment.values.bytes.size()).run();
    if (!segment.runs.empty())
        writing().addRuns.bind(1, id).bindBytes(2, segment.runs.data(), segment.runs.size()).run();
    if (segment.property == kTimes)
        return;
    const Summary& summary = segment.summary;
    Statement& addSummary = writing().addSummary;
    addSummary.bind(1, id).bind(2, static_cast<qint64>(summary.valid)).bind(3, summary.minimum);
    addSummary.bind(4, summary.maximum).bind(5, summary.sum);
    addSummary.bindBytes(6, segment.whole.data(), segment.whole.size()).run();
}

// What this transaction made itself nobody can have seen.
void ChunkStore::remove(const Chunk& chunk)
{
    noteTransaction();
    m_outlines.removeThatOf(chunk);
    for (Statement* each : {&writing().removeSummaries, &writing().removeRuns})
        each->bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1)).run();
    writing().removeChunk.bind(1, chunk.id).run();
    if (chunk.id > m_numberBefore)
        removeSegments(chunk.id);
    else
        writing().retire.bind(1, chunk.id).bind(2, m_numberBefore).run();
}

void ChunkStore::removeSegments(qint64 chunk)
{
    writing().removeSegments.bind(1, firstId(chunk)).bind(2, firstId(chunk + 1)).run();
}

/// Once in each transaction, before it gives a number.
void ChunkStore::noteTransaction()
{
    const unsigned version = m_database.dataVersion();
    if (m_version == version)
        return;
    m_numberBefore = highestNumber();
    m_figures.clear();
    dropRetired();
    m_version = version;
}

qint64 ChunkStore::highestNumber()
{
    const qint64 number = m_highestNumber.step() ? m_highestNumber.integer(0) : 0;
    m_highestNumber.reset();
    return number;
}

// Only what is committed: whoever marks a state after the marks were looked at sees one without these chunks.
void ChunkStore::dropRetired()
{
    std::vector<qint64> unwanted;
    Statement& rows = writing().retired;
    std::optional<ReaderMarks> marks;
    while (rows.step()) {
        if (!marks)
            marks.emplace(m_database.file());
        if (!marks->areAnyIn(rows.integer(0), rows.integer(1)))
            unwanted.push_back(rows.integer(0));
    }
    rows.reset();
    for (const qint64 chunk : unwanted) {
        removeSegments(chunk);
        writing().drop.bind(1, chunk).run();
    }
}

}  // namespace plotix
