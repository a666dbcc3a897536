// What is known of records without reading them: per chunk and property the archive keeps count, extremes and sum.

#include "records/sqlite/ChunkRows.h"
#include "records/sqlite/SqliteReader.h"

#include <algorithm>
#include <unordered_map>

namespace plotix {

namespace {

/// Of all columns of the tail, by their property.
std::unordered_map<RowId, Summary> tailSummaries(const Records& tail)
{
    std::unordered_map<RowId, Summary> summaries;
    for (const RecordsView::Column& column : tail.view().columns)
        summaries.try_emplace(column.property, summaryOf(column, tail.size()));
    return summaries;
}

Summary tailSummary(const Records& tail, RowId property)
{
    for (const RecordsView::Column& column : tail.view().columns)
        if (column.property == property)
            return summaryOf(column, tail.size());
    return {};
}

RecordOverview::Summary published(const Summary& summary)
{
    return {summary.valid, summary.minimum, summary.maximum, summary.sum};
}

ColumnStatistics statisticsFrom(const Summary& summary)
{
    if (summary.valid == 0)
        return {};
    return {summary.valid, summary.minimum, summary.maximum, summary.sum / static_cast<double>(summary.valid)};
}

/// Decodes the part and summarises its valid elements.
Summary decodedSummary(SegmentReader& segments, const ChunkPart& part, RowId property)
{
    static_assert(codec::kPiece % ColumnKernels::kRun == 0, "a summary is added up run by run");
    SummaryInWork summary;
    std::size_t done = 0;
    const bool isThere = segments.readInPieces(part, property, [&](std::span<const double> piece) {
        summary.add({piece.data(), segments.valid(), part.first + done}, piece.size());
        done += piece.size();
    });
    return isThere ? summary.finished() : Summary();
}

}  // namespace

bool SqliteReader::hasMoreThan(std::size_t records, RowId agent, std::optional<double> from, std::optional<double> to)
{
    return hasMoreThan(records, agent, Range(from, to));
}

/// Counting all records of the chunks that the range cuts, and of the tail.
bool SqliteReader::hasMoreThan(std::size_t records, RowId agent, const Range& range)
{
    const ReadTransaction transaction(m_connection->database);
    const TailExtent tail = m_connection->chunks.tailExtent(agent);
    const std::size_t inTail = tail.count > 0 && tail.first <= range.to && tail.last >= range.from ? tail.count : 0;
    return inTail > records || m_connection->chunks.hasMoreBetween(agent, range.from, range.to, records - inTail);
}

std::vector<std::vector<Summary>> SqliteReader::summariesOf(RowId agent, const std::vector<Chunk>& of,
                                                            std::span<const RowId> properties)
{
    std::vector<std::vector<Summary>> found(properties.size(), std::vector<Summary>(of.size()));
    if (properties.empty() || of.empty())
        return found;
    std::vector<std::pair<std::size_t, std::size_t>> damaged;
    RowScan& rows = m_connection->index.summaries();
    ChunkRows(properties, propertiesOf(agent))
        .each(rows, of, [&](std::size_t chunk, std::size_t property, const ScannedRow& row) {
            Summary& summary = found[property][chunk] = IndexStore::summaryFrom(row);
            if (!IndexStore::isIntact(row, summary, {static_cast<std::uint64_t>(properties[property]), of[chunk].n}))
                damaged.emplace_back(chunk, property);
        });
    // What is said of a column no longer holds for sure: its values do.
    for (const auto& [chunk, property] : damaged)
        found[property][chunk] = summaryOfRecords(of[chunk], properties[property]);
    return found;
}

std::size_t SqliteReader::propertiesOf(RowId agent)
{
    Statement& count = m_connection->propertyCount;
    count.bind(1, agent).step();
    const auto all = static_cast<std::size_t>(count.integer(0));
    count.reset();
    return all;
}

Summary SqliteReader::summaryOfRecords(const Chunk& chunk, RowId property)
{
    SegmentReader segments(*m_connection);
    return decodedSummary(segments, {chunk, 0, chunk.n, 0}, property);
}

RecordOverview SqliteReader::overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                      std::optional<double> to)
{
    const Range range(from, to);
    const ReadTransaction transaction(m_connection->database);
    const std::vector<Chunk> chunks = m_connection->chunks.chunksBetween(agent, range.from, range.to);
    const std::vector<std::vector<Summary>> summaries = summariesOf(agent, chunks, properties);
    const TailExtent tail = m_connection->chunks.tailExtent(agent);
    const bool hasTail = tail.count > 0 && tail.last >= range.from && tail.first <= range.to;
    const Records tailRecords =
        hasTail && !properties.empty() ? m_connection->chunks.tail(agent, tail.first, tail.last) : Records();

    const std::unordered_map<RowId, Summary> ofTail = tailSummaries(tailRecords);
    RecordOverview overview;
    overview.runs.reserve(chunks.size() + 1);
    for (const Chunk& chunk : chunks)
        overview.runs.push_back({chunk.t0, chunk.t1, chunk.n});
    if (hasTail)
        overview.runs.push_back({tail.first, tail.last, tail.count});
    for (std::size_t i = 0; i < properties.size(); ++i) {
        RecordOverview::Column& column = overview.columns.emplace_back(RecordOverview::Column{properties[i], {}});
        column.summaries.reserve(overview.runs.size());
        std::transform(summaries[i].begin(), summaries[i].end(), std::back_inserter(column.summaries), published);
        if (!hasTail)
            continue;
        const auto inTail = ofTail.find(properties[i]);
        column.summaries.push_back(inTail == ofTail.end() ? RecordOverview::Summary() : published(inTail->second));
    }
    return overview;
}

ColumnStatistics SqliteReader::statistics(RowId agent, RowId property, std::optional<double> from,
                                          std::optional<double> to, StatisticsFrom source)
{
    const Range range(from, to);
    const ReadTransaction transaction(m_connection->database);
    SegmentReader segments(*m_connection);
    const std::vector<ChunkPart> parts = partsIn(segments, agent, range);
    std::vector<Chunk> whole;
    if (source == StatisticsFrom::Summaries)
        for (const ChunkPart& part : parts)
            if (part.isWhole())
                whole.push_back(part.chunk);
    const std::vector<std::vector<Summary>> stored = summariesOf(agent, whole, std::span(&property, 1));

    Summary sum;
    auto next = stored.front().begin();
    for (const ChunkPart& part : parts)
        sum.add(part.isWhole() && source == StatisticsFrom::Summaries ? *next++
                                                                      : decodedSummary(segments, part, property));
    sum.add(tailSummary(m_connection->chunks.tail(agent, range.from, range.to), property));
    return statisticsFrom(sum);
}

}  // namespace plotix
