#include "records/sqlite/RecordPlacement.h"

#include "records/columns/ColumnFormat.h"
#include "records/sqlite/Outlining.h"
#include "records/sqlite/RecordSchema.h"
#include "records/store/ChunkPipeline.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kChunk = schema::kRecordsPerChunk;

}  // namespace

RecordPlacement::End& RecordPlacement::endOf(RowId agent)
{
    const auto known = m_ends.find(agent);
    if (known != m_ends.end())
        return known->second;
    End end{m_chunks.lastChunk(agent), 0, {}, -kInfinity, 0};
    if (end.lastChunk)
        end.lastTime = end.lastChunk->t1;
    const TailExtent tail = m_chunks.tailExtent(agent);
    end.rows = tail.count;
    if (tail.count > 0)
        end.lastTime = tail.last;
    return m_ends.emplace(agent, std::move(end)).first->second;
}

void RecordPlacement::store(RowId agent, const RecordsView& records)
{
    if (records.size == 0)
        return;
    End& end = endOf(agent);
    if (records.times[0] > end.lastTime) {
        append(agent, end, records);
        return;
    }
    const auto* behind = std::partition_point(records.times, records.times + records.size,
                                              [&](double time) { return end.isInChunks(time); });
    const auto late = static_cast<std::size_t>(behind - records.times);
    if (late > 0)
        insert(agent, end, records.slice(0, late));
    const RecordsView rest = records.slice(late, records.size - late);
    if (rest.size > 0 && rest.times[0] > end.lastTime)
        append(agent, end, rest);
    else if (rest.size > 0)
        overlap(agent, end, rest);
}

void RecordPlacement::storeNow(RowId agent, const RecordsView& records)
{
    if (records.size == 0)
        return;
    End& end = endOf(agent);
    if (records.times[0] > end.lastTime && end.waiting.isEmpty() && records.size <= kMostRows &&
        end.rows + records.size < kChunk) {
        m_chunks.tailRows().append(agent, end.rows, records);
        end.rows += records.size;
        end.lastTime = records.times[records.size - 1];
        return;
    }
    store(agent, records);
    flush(agent, end);
}

void RecordPlacement::append(RowId agent, End& end, const RecordsView& records)
{
    const std::size_t coming = end.waiting.size() + records.size;
    if (coming > kMostRows || end.rows + coming >= kChunk)
        takeInTail(agent, end);
    if (coming > kMostRows)
        takeInShortChunks(agent, end, coming);
    // First what waits is filled up to a whole chunk; further whole chunks are written without copying them.
    std::size_t done = std::min(records.size, (kChunk - end.waiting.size() % kChunk) % kChunk);
    end.waiting.append(records.slice(0, done));
    writeFullChunks(agent, end);
    const std::size_t full = (records.size - done) / kChunk * kChunk;
    writeChunks(agent, end, records.slice(done, full));
    done += full;
    end.waiting.append(records.slice(done, records.size - done));
    end.lastTime = records.times[records.size - 1];
}

/// Records later than the last chunk, but not later than the tail and what waits.
void RecordPlacement::overlap(RowId agent, End& end, const RecordsView& records)
{
    if (end.waiting.size() + records.size <= kMostRows && end.rows + end.waiting.size() + records.size < kChunk) {
        m_chunks.tailRows().append(agent, end.rows, end.waiting.view());
        end.waiting = {};
        m_chunks.tailRows().put(agent, records);
        end.rows = m_chunks.tailExtent(agent).count;
    } else {
        takeInTail(agent, end);
        end.waiting = Records::merged(end.waiting.view(), records);
        writeFullChunks(agent, end);
    }
    end.lastTime = std::max(end.lastTime, records.times[records.size - 1]);
}

/// Each chunk takes the records up to where the next begins; the first also takes all earlier ones.
void RecordPlacement::insert(RowId agent, End& end, const RecordsView& records)
{
    for (std::size_t first = 0; first < records.size;) {
        std::optional<Chunk> chunk = m_chunks.lastChunkBeginningAt(agent, records.times[first]);
        if (!chunk)
            chunk = m_chunks.firstChunk(agent);
        const std::optional<double> next = m_chunks.firstBeginningAfter(agent, chunk->t0);
        const auto* until = next ? std::lower_bound(records.times + first, records.times + records.size, *next)
                                 : records.times + records.size;
        const auto count = static_cast<std::size_t>(until - records.times) - first;
        const Records merged = Records::merged(m_chunks.read(*chunk).view(), records.slice(first, count));
        m_chunks.remove(*chunk);
        // Chunks of about equal length, so that a full one that grows leaves room in both halves.
        const std::size_t pieces = (merged.size() + kChunk - 1) / kChunk;
        for (std::size_t piece = 0; piece < pieces; ++piece) {
            const std::size_t begin = merged.size() * piece / pieces;
            m_chunks.write(agent, merged.view().slice(begin, merged.size() * (piece + 1) / pieces - begin));
        }
        first += count;
    }
    end.lastChunk = m_chunks.lastChunk(agent);
}

void RecordPlacement::remove(RowId agent, std::span<const RowId> properties, double from, double to)
{
    flush(agent, endOf(agent));
    for (const Chunk& chunk : m_chunks.chunksBetween(agent, from, to)) {
        const std::optional<Records> left = Records::without(m_chunks.read(chunk).view(), properties, from, to);
        if (!left)
            continue;
        m_chunks.remove(chunk);
        if (!left->isEmpty())
            m_chunks.write(agent, left->view());
    }
    const Records tail = m_chunks.tail(agent, -kInfinity, kInfinity);
    if (const std::optional<Records> left = Records::without(tail.view(), properties, from, to)) {
        m_chunks.tailRows().clear(agent);
        m_chunks.tailRows().append(agent, 0, left->view());
    }
    m_ends.erase(agent);
}

void RecordPlacement::takeInTail(RowId agent, End& end)
{
    if (end.rows == 0)
        return;
    Records tail = m_chunks.tail(agent, -kInfinity, kInfinity);
    tail.append(end.waiting.view());
    end.waiting = std::move(tail);
    m_chunks.tailRows().clear(agent);
    end.rows = 0;
}

void RecordPlacement::takeInShortChunks(RowId agent, End& end, std::size_t coming)
{
    while (end.lastChunk && end.lastChunk->n < kChunk && end.lastChunk->n <= coming) {
        Records longer = m_chunks.read(*end.lastChunk);
        coming += longer.size();
        longer.append(end.waiting.view());
        end.waiting = std::move(longer);
        m_chunks.remove(*end.lastChunk);
        end.lastChunk = m_chunks.lastChunk(agent);
    }
}

void RecordPlacement::writeFullChunks(RowId agent, End& end)
{
    const std::size_t full = end.waiting.size() / kChunk * kChunk;
    if (full == 0)
        return;
    writeChunks(agent, end, end.waiting.view().slice(0, full));
    end.waiting.dropFirst(full);
}

void RecordPlacement::writeChunks(RowId agent, End& end, const RecordsView& records)
{
    std::vector<RecordsView> chunks;
    for (std::size_t first = 0; first < records.size; first += kChunk)
        chunks.push_back(records.slice(first, std::min(kChunk, records.size - first)));
    encodeInOrder(chunks, [&](EncodedChunk&& chunk) {
        end.lastChunk = m_chunks.write(agent, std::move(chunk));
        // Not at the very end, so that of many chunks in one go not everything must be kept in memory.
        if (++end.newChunks == 2 * outlinecodec::kMostChunks)
            Outlining(m_chunks).extend(agent, std::exchange(end.newChunks, 0));
    });
}

void RecordPlacement::flush()
{
    for (auto& [agent, end] : m_ends)
        flush(agent, end);
}

void RecordPlacement::flush(RowId agent, End& end)
{
    flushWaiting(agent, end);
    if (end.newChunks > 0)
        Outlining(m_chunks).extend(agent, std::exchange(end.newChunks, 0));
}

void RecordPlacement::flushWaiting(RowId agent, End& end)
{
    if (end.waiting.size() > kMostRows) {
        takeInTail(agent, end);
        takeInShortChunks(agent, end, end.waiting.size());
        writeFullChunks(agent, end);
    }
    if (end.waiting.isEmpty())
        return;
    if (end.waiting.size() > kMostRows)
        writeChunks(agent, end, end.waiting.view());
    else
        m_chunks.tailRows().append(agent, end.rows, end.waiting.view());
    end.rows += end.waiting.size() > kMostRows ? 0 : end.waiting.size();
    end.waiting = {};
}

}  // namespace plotix
