#include "hostapp/archive/ChunkStore.h"

#include "hostapp/archive/SiteSchema.h"
#include "hostapp/archive/ValidityBits.h"

#include <algorithm>
#include <cassert>
#include <cmath>

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

bool isAbsent(const RecordsView::Column& column, std::size_t count)
{
    const double absent = absentValue();
    for (std::size_t i = 0; i < count; ++i)
        if (bits::get(column.valid, column.firstValid + i, 1) != 0 ||
            std::memcmp(&column.values[i], &absent, sizeof absent) != 0)
            return false;
    return true;
}

}  // namespace

void Summary::add(const Summary& other)
{
    if (other.valid == 0)
        return;
    minimum = valid == 0 ? other.minimum : std::min(minimum, other.minimum);
    maximum = valid == 0 ? other.maximum : std::max(maximum, other.maximum);
    sum += other.sum;
    valid += other.valid;
}

Summary summaryOf(const RecordsView::Column& column, std::size_t count)
{
    Summary summary;
    long double sum = 0;
    const bool allValid = bits::allSet(column.valid, column.firstValid, count);
    for (std::size_t i = 0; i < count; ++i) {
        const double value = column.values[i];
        if (std::isnan(value) || (!allValid && bits::get(column.valid, column.firstValid + i, 1) == 0))
            continue;
        summary.minimum = summary.valid == 0 || value < summary.minimum ? value : summary.minimum;
        summary.maximum = summary.valid == 0 || value > summary.maximum ? value : summary.maximum;
        ++summary.valid;
        sum += static_cast<long double>(value);
    }
    summary.sum = static_cast<double>(sum);
    return summary;
}

ChunkStore::ChunkStore(Database& database)
    : m_database(database),
      m_first(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? ORDER BY t0 LIMIT 1"),
      m_last(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? ORDER BY t0 DESC LIMIT 1"),
      m_atOrBefore(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? AND t0 <= ? ORDER BY t0 DESC LIMIT 1"),
      m_after(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? AND t0 > ? ORDER BY t0 LIMIT 1"),
      m_between(database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ?1 AND t1 >= ?2 AND t0 <= ?3 ORDER BY t0"),
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
        if (chunk.n == 0 || chunk.n > schema::kRecordsPerChunk || !(chunk.t0 <= chunk.t1))
            m_database.failAsDamaged(QStringLiteral("chunk %1 is impossible").arg(chunk.id));
    return chunks;
}

Records ChunkStore::read(const Chunk& chunk)
{
    Records records;
    RecordsView view;
    std::vector<std::vector<double>> values;
    std::vector<std::vector<std::uint64_t>> valid;
    m_segments.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1));
    while (m_segments.step()) {
        const bool hasValid = !m_segments.isNothing(2);
        if (m_segments.integer(1) != static_cast<int>(schema::Codec::Raw) ||
            m_segments.byteCount(3) != chunk.n * sizeof(double) ||
            (hasValid && m_segments.byteCount(2) != (chunk.n + 7) / 8))
            m_database.failAsDamaged(QStringLiteral("chunk %1 has a segment of the wrong length").arg(chunk.id));
        values.emplace_back(chunk.n);
        std::memcpy(values.back().data(), m_segments.rawBytes(3), chunk.n * sizeof(double));
        valid.emplace_back(hasValid ? bits::wordsFor(chunk.n) : 0);
        if (hasValid)
            std::memcpy(valid.back().data(), m_segments.rawBytes(2), (chunk.n + 7) / 8);
        view.columns.push_back({m_segments.integer(0) - firstId(chunk.id), values.back().data(),
                                hasValid ? valid.back().data() : nullptr, 0});
    }
    m_segments.reset();
    if (view.columns.empty() || view.columns.front().property != schema::kTimes)
        m_database.failAsDamaged(QStringLiteral("chunk %1 has no times").arg(chunk.id));
    view.times = view.columns.front().values;
    view.size = chunk.n;
    view.columns.erase(view.columns.begin());
    records.append(view);
    return records;
}

void ChunkStore::write(RowId agent, const RecordsView& records)
{
    assert(records.size > 0 && records.size <= schema::kRecordsPerChunk);
    m_addChunk.bind(1, agent).bind(2, records.times[0]).bind(3, records.times[records.size - 1]);
    m_addChunk.bind(4, static_cast<qint64>(records.size)).run();
    const qint64 first = firstId(m_database.lastInsertedRow());
    writeSegment(first + schema::kTimes, records.times, records.size, nullptr, 0);
    // Segments of a chunk are written in the order of their ids: appending is what the tree does fastest.
    std::vector<RecordsView::Column> columns = records.columns;
    std::sort(columns.begin(), columns.end(), [](const auto& a, const auto& b) { return a.property < b.property; });
    for (const RecordsView::Column& column : columns) {
        if (isAbsent(column, records.size))
            continue;
        writeSegment(first + column.property, column.values, records.size, column.valid, column.firstValid);
        writeSummary(first + column.property, summaryOf(column, records.size));
    }
}

void ChunkStore::writeSegment(qint64 id, const double* values, std::size_t count, const std::uint64_t* valid,
                              std::size_t firstValid)
{
    std::vector<std::uint64_t> words;
    m_addSegment.bind(1, id).bind(2, qint64(schema::Codec::Raw)).bindNothing(3);
    if (!bits::allSet(valid, firstValid, count)) {
        words.assign(bits::wordsFor(count), 0);
        bits::copy(valid, firstValid, words.data(), 0, count);
        m_addSegment.bindBytes(3, words.data(), (count + 7) / 8);
    }
    m_addSegment.bindBytes(4, values, count * sizeof(double)).run();
}

void ChunkStore::writeSummary(qint64 id, const Summary& summary)
{
    m_addSummary.bind(1, id).bind(2, static_cast<qint64>(summary.valid));
    m_addSummary.bind(3, summary.minimum).bind(4, summary.maximum).bind(5, summary.sum).run();
}

void ChunkStore::remove(const Chunk& chunk)
{
    m_removeSegments.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1)).run();
    m_removeSummaries.bind(1, firstId(chunk.id)).bind(2, firstId(chunk.id + 1)).run();
    m_removeChunk.bind(1, chunk.id).run();
}

}  // namespace plotix
