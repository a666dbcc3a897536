#include "records/sqlite/SqliteReader.h"

#include "records/sqlite/AmendmentTable.h"
#include "records/sqlite/ChunkReading.h"
#include "records/sqlite/ResultColumns.h"

#include <algorithm>

namespace plotix {

std::vector<ChunkPart> SqliteReader::partsIn(SegmentReader& segments, RowId agent, const Range& range)
{
    std::vector<ChunkPart> parts;
    std::vector<double> times;
    std::size_t total = 0;
    for (const Chunk& chunk : m_connection->chunks.chunksBetween(agent, range.from, range.to)) {
        ChunkPart part{chunk, 0, chunk.n, total};
        if (!range.contains(chunk)) {
            times.resize(chunk.n);
            segments.readTimes(part, times.data());
            const auto first = std::lower_bound(times.begin(), times.end(), range.from);
            const auto end = std::upper_bound(first, times.end(), range.to);
            part.first = static_cast<std::size_t>(first - times.begin());
            part.count = static_cast<std::size_t>(end - first);
        }
        total += part.count;
        if (part.count > 0)
            parts.push_back(part);
    }
    return parts;
}

std::optional<RecordBlock> SqliteReader::read(RowId agent, std::span<const RowId> properties,
                                              std::optional<double> from, std::optional<double> to,
                                              const ArchiveProgress& progress)
{
    const Range range(from, to);
    const ReadTransaction transaction(m_connection->database);
    SegmentReader segments(*m_connection);
    const std::vector<ChunkPart> parts = partsIn(segments, agent, range);
    const Records tail = m_connection->chunks.tail(agent, range.from, range.to);
    const std::size_t inChunks = parts.empty() ? 0 : parts.back().target + parts.back().count;
    ResultColumns columns(properties, inChunks + tail.size());
    if (!parts.empty() && !ChunkReading(*m_lender, parts, columns).run(segments, progress))
        return std::nullopt;
    if (!tail.isEmpty()) {
        std::vector<ResultColumns::Gap> gaps;
        columns.fill(tail.view(), inChunks, gaps);
        columns.enter(gaps);
    }
    if (progress && !progress(1.0))
        return std::nullopt;
    return columns.block();
}

std::vector<Amendment> SqliteReader::amendments(std::span<const RowId> properties, std::optional<double> from,
                                                std::optional<double> to)
{
    const Range range(from, to);
    const ReadTransaction transaction(m_connection->database);
    return AmendmentTable(m_connection->database).between(properties, range.from, range.to);
}

std::optional<RecordExtent> SqliteReader::extent(RowId agent)
{
    const ReadTransaction transaction(m_connection->database);
    return m_connection->chunks.extent(agent);
}

std::optional<RecordExtent> SqliteReader::extent()
{
    const ReadTransaction transaction(m_connection->database);
    std::optional<RecordExtent> extent;
    for (const RowId agent : m_connection->chunks.agents())
        extent = united(extent, m_connection->chunks.extent(agent));
    return extent;
}

}  // namespace plotix
