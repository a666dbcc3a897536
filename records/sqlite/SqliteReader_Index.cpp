// The index of columns, as it is stored; what has none, or a damaged one, is worked out of the records.

#include "records/sqlite/SqliteReader.h"

#include <algorithm>

namespace plotix {

namespace {

using Source = RecordIndex::Source;

/// Indexes that are in memory in full at once.
constexpr std::size_t kChunksAtOnce = 64;

ColumnIndex asAsked(ColumnIndex index, bool withRuns)
{
    return withRuns ? std::move(index) : std::move(index).withoutRuns();
}

RecordIndex::Column ofTail(const RecordsView& tail, RowId property, bool withRuns)
{
    const RecordsView::Column* column = tail.find(property);
    return {property, Source::Records,
            column ? asAsked(indexOf(*column, tail.size), withRuns) : ColumnIndex::ofNothing(tail.size)};
}

}  // namespace

RecordIndex SqliteReader::index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                std::optional<double> to, RecordIndex::Detail detail)
{
    const Range range(from, to);
    const bool withRuns = detail == RecordIndex::Detail::Runs;
    const ReadTransaction transaction(m_connection->database);
    SegmentReader segments(*m_connection);
    RecordIndex found;
    const std::vector<Chunk> chunks = m_connection->chunks.chunksBetween(agent, range.from, range.to);
    const std::size_t ofAgent = propertiesOf(agent);
    for (std::size_t first = 0; first < chunks.size(); first += kChunksAtOnce) {
        const auto some = std::span(chunks).subspan(first, std::min(kChunksAtOnce, chunks.size() - first));
        std::vector<IndexStore::FoundChunk> stored = m_connection->index.find(some, properties, ofAgent, withRuns);
        for (std::size_t i = 0; i < some.size(); ++i) {
            const Chunk& chunk = some[i];
            RecordIndex::Piece& piece =
                found.pieces.emplace_back(RecordIndex::Piece{chunk.t0, chunk.t1, chunk.n, {}, {}});
            if (withRuns)
                piece.times = timesOf(segments, chunk, std::move(stored[i].times));
            for (std::size_t place = 0; place < properties.size(); ++place)
                piece.columns.push_back(
                    indexOfColumn(segments, chunk, properties[place], withRuns, std::move(stored[i].columns[place])));
        }
    }
    const TailExtent tail = m_connection->chunks.tailExtent(agent);
    if (tail.count == 0 || tail.last < range.from || tail.first > range.to)
        return found;
    const Records records = m_connection->chunks.tail(agent, tail.first, tail.last);
    const RecordsView view = records.view();
    RecordIndex::Piece& piece = found.pieces.emplace_back(RecordIndex::Piece{tail.first, tail.last, view.size, {}, {}});
    if (withRuns)
        piece.times = runTimesOf({view.times, view.size});
    for (const RowId property : properties)
        piece.columns.push_back(ofTail(view, property, withRuns));
    return found;
}

RecordIndex::Column SqliteReader::indexOfColumn(SegmentReader& segments, const Chunk& chunk, RowId property,
                                                bool withRuns, IndexStore::Found&& stored)
{
    if (stored.state == IndexStore::State::Sound)
        return {property, Source::Index, std::move(stored.index)};
    std::vector<double> values(chunk.n);
    if (!segments.read({chunk, 0, chunk.n, 0}, property, values.data()))
        return {property, Source::Index, ColumnIndex::ofNothing(chunk.n)};
    return {property, stored.state == IndexStore::State::Damaged ? Source::DamagedIndex : Source::Records,
            asAsked(indexOf({values.data(), segments.valid(), 0}, chunk.n), withRuns)};
}

RunTimes SqliteReader::timesOf(SegmentReader& segments, const Chunk& chunk, IndexStore::FoundTimes&& stored)
{
    if (stored.state == IndexStore::State::Sound)
        return std::move(stored.times);
    std::vector<double> times(chunk.n);
    segments.readTimes({chunk, 0, chunk.n, 0}, times.data());
    return runTimesOf(times);
}

}  // namespace plotix
