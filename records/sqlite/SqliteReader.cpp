#include "records/sqlite/SqliteReader.h"
#include "records/sqlite/ChunkReading.h"
#include "records/sqlite/ResultColumns.h"

#include <algorithm>

namespace plotix {

std::vector<ChunkPart> RecordReader::Impl::parts(SegmentReader& segments, RowId agent, const Range& range)
{
    std::vector<ChunkPart> parts;
    std::vector<double> times;
    std::size_t total = 0;
    for (const Chunk& chunk : connection->chunks.chunksBetween(agent, range.from, range.to)) {
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

RecordReader::RecordReader(const QString& file) : RecordReader(ReadConnections::ofFile(file)) {}
RecordReader::RecordReader(std::shared_ptr<ReadConnections> connections)
    : m_impl(std::make_unique<Impl>(std::move(connections)))
{
}
RecordReader::~RecordReader() = default;

std::optional<RecordBlock> RecordReader::read(RowId agent, std::span<const RowId> properties,
                                              std::optional<double> from, std::optional<double> to,
                                              const ArchiveProgress& progress)
{
    const Impl::Range range(from, to);
    const ReadTransaction transaction(m_impl->connection->database);
    SegmentReader segments(*m_impl->connection);
    const std::vector<ChunkPart> parts = m_impl->parts(segments, agent, range);
    const std::size_t inChunks = parts.empty() ? 0 : parts.back().target + parts.back().count;
    const Records tail = m_impl->connection->chunks.tail(agent, range.from, range.to);

    ResultColumns columns(properties, inChunks + tail.size());
    if (!parts.empty() && !ChunkReading(*m_impl->lender, agent, parts, columns).run(segments, progress))
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

ArchiveSummary RecordReader::summary(RowId agent)
{
    const ReadTransaction transaction(m_impl->connection->database);
    ArchiveSummary summary;
    Statement chunks(m_impl->connection->database,
                     "SELECT count(*), sum(n), min(t0), max(t1) FROM chunk WHERE agent = ?");
    chunks.bind(1, agent);
    if (chunks.step() && chunks.integer(0) > 0)
        summary = {static_cast<std::size_t>(chunks.integer(1)), chunks.real(2), chunks.real(3)};
    const TailExtent tail = m_impl->connection->chunks.tailExtent(agent);
    if (tail.count > 0)
        summary = {summary.records + tail.count, summary.first.value_or(tail.first), tail.last};
    return summary;
}

}  // namespace plotix
