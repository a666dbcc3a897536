#include "records/clickhouse/ChunkIndexes.h"

#include "records/clickhouse/RowBinary.h"

#include <algorithm>
#include <unordered_map>

namespace plotix {

namespace {

using Source = RecordIndex::Source;

ColumnIndex asAsked(ColumnIndex index, bool withRuns)
{
    return withRuns ? std::move(index) : std::move(index).withoutRuns();
}

indexcodec::Owner ownerOf(const StoredChunk& chunk, RowId property)
{
    return {static_cast<std::uint64_t>(property), chunk.n};
}

}  // namespace

void ChunkIndexes::eachRow(std::span<const StoredChunk* const> chunks, const std::vector<RowId>& properties,
                           bool withRuns, const TakeRow& take)
{
    if (chunks.empty() || properties.empty())
        return;
    std::unordered_map<std::uint64_t, std::size_t> places;
    double earliest = chunks[0]->begin, latest = chunks[0]->begin;
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        places.emplace(chunks[i]->id, i);
        earliest = std::min(earliest, chunks[i]->begin);
        latest = std::max(latest, chunks[i]->begin);
    }
    const std::vector<std::byte> rows = m_server.ask(
        std::string("SELECT chunk, property, count, minimum, maximum, sum, whole, ") + (withRuns ? "runs" : "''") +
        " FROM " + m_tables.chunks() + " WHERE agent = " + std::to_string(m_agent) + " AND property IN " +
        sqlList(properties) + " AND begin >= " + sqlNumber(earliest) + " AND begin <= " + sqlNumber(latest) +
        " FORMAT RowBinary");
    try {
        for (rowbinary::Reader row(rows); !row.isAtEnd();) {
            const auto chunk = places.find(row.number<std::uint64_t>());
            const RowId property = row.number<RowId>();
            Summary summary;
            summary.valid = row.number<std::uint32_t>();
            summary.minimum = row.number<double>();
            summary.maximum = row.number<double>();
            summary.sum = row.number<double>();
            const auto whole = row.bytes();
            const auto runs = row.bytes();
            if (chunk != places.end())
                take(chunk->second, property, summary, whole, runs);
        }
    } catch (const rowbinary::TooShort&) {
        m_reading.failAsDamaged(QStringLiteral("an answer ends early"));
    }
}

RecordIndex::Column ChunkIndexes::workedOut(const StoredChunk& chunk, RowId property, bool withRuns, Source source)
{
    const std::vector<RowId> asked{property};
    const Records records = m_reading.recordsOf(chunk, &asked);
    const RecordsView view = records.view();
    const RecordsView::Column* column = view.find(property);
    return {property, source, column ? asAsked(indexOf(*column, chunk.n), withRuns) : ColumnIndex::ofNothing(chunk.n)};
}

std::vector<RecordIndex::Piece> ChunkIndexes::of(std::span<const AgentReading::Piece> pieces,
                                                 const std::vector<RowId>& properties, RecordIndex::Detail detail,
                                                 Presence* present)
{
    Presence isThere(pieces.size(), std::vector<bool>(properties.size()));
    const bool withRuns = detail == RecordIndex::Detail::Runs;
    std::vector<RecordIndex::Piece> found(pieces.size());
    std::vector<const StoredChunk*> chunks;
    std::vector<std::size_t> pieceOf;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        found[i] = {pieces[i].t0, pieces[i].t1, pieces[i].n, {}, {}};
        const RecordsView view = pieces[i].records.view();
        for (const RowId property : properties) {
            const RecordsView::Column* column = view.find(property);
            found[i].columns.push_back(
                {property, pieces[i].chunk ? Source::Index : Source::Records,
                 column ? asAsked(indexOf(*column, view.size), withRuns) : ColumnIndex::ofNothing(pieces[i].n)});
        }
        if (!pieces[i].chunk) {
            if (withRuns)
                found[i].times = runTimesOf({view.times, view.size});
            continue;
        }
        chunks.push_back(pieces[i].chunk);
        pieceOf.push_back(i);
    }
    std::vector<RowId> asked = properties;
    if (withRuns)
        asked.push_back(kTimes);
    std::vector<std::pair<std::size_t, std::size_t>> damaged;  // piece and column
    std::vector<bool> hasTimes(pieces.size());
    eachRow(chunks, asked, withRuns,
            [&](std::size_t chunk, RowId property, const Summary& summary, std::span<const std::byte> whole,
                std::span<const std::byte> runs) {
                const indexcodec::Owner owner = ownerOf(*chunks[chunk], property);
                RecordIndex::Piece& piece = found[pieceOf[chunk]];
                if (property == kTimes) {
                    if (std::optional<RunTimes> times = indexcodec::readTimes(runs, owner)) {
                        piece.times = std::move(*times);
                        hasTimes[pieceOf[chunk]] = true;
                    }
                    return;
                }
                std::optional<indexcodec::Whole> read = indexcodec::readWhole(whole, summary, owner);
                const bool isSound =
                    read && (!withRuns || !read->hasRuns || indexcodec::readRuns(runs, owner, read->index));
                for (std::size_t place = 0; place < properties.size(); ++place)
                    if (properties[place] == property) {
                        isThere[pieceOf[chunk]][place] = true;
                        if (isSound)
                            piece.columns[place].index = read->index;
                        else
                            damaged.emplace_back(pieceOf[chunk], place);
                    }
            });
    for (const auto& [piece, place] : damaged)
        found[piece].columns[place] =
            workedOut(*pieces[piece].chunk, properties[place], withRuns, Source::DamagedIndex);
    for (const std::size_t piece : pieceOf) {
        if (!withRuns || hasTimes[piece])
            continue;
        const StoredChunk& chunk = *pieces[piece].chunk;
        found[piece].times = chunk.n <= ColumnKernels::kRun ? RunTimes{ColumnKernels::kRun, {chunk.t0}, {chunk.t1}}
                                                            : runTimesOf(m_reading.timesOf(chunk));
    }
    if (present)
        *present = std::move(isThere);
    return found;
}

std::vector<std::vector<Summary>> ChunkIndexes::summariesOf(std::span<const AgentReading::Piece> pieces,
                                                            const std::vector<RowId>& properties)
{
    std::vector<std::vector<Summary>> found(properties.size(), std::vector<Summary>(pieces.size()));
    std::vector<const StoredChunk*> chunks;
    std::vector<std::size_t> pieceOf;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (pieces[i].chunk) {
            chunks.push_back(pieces[i].chunk);
            pieceOf.push_back(i);
            continue;
        }
        const RecordsView view = pieces[i].records.view();
        for (std::size_t place = 0; place < properties.size(); ++place)
            if (const RecordsView::Column* column = view.find(properties[place]))
                found[place][i] = summaryOf(*column, view.size);
    }
    std::vector<std::pair<std::size_t, RowId>> damaged;
    eachRow(chunks, properties, false,
            [&](std::size_t chunk, RowId property, const Summary& summary, std::span<const std::byte> whole,
                std::span<const std::byte>) {
                if (!indexcodec::isIntact(whole, summary, ownerOf(*chunks[chunk], property)))
                    damaged.emplace_back(chunk, property);
                for (std::size_t place = 0; place < properties.size(); ++place)
                    if (properties[place] == property)
                        found[place][pieceOf[chunk]] = summary;
            });
    // What is said of a column no longer holds for sure: its values do.
    for (const auto& [chunk, property] : damaged) {
        const std::vector<RowId> asked{property};
        const Records records = m_reading.recordsOf(*chunks[chunk], &asked);
        const RecordsView view = records.view();
        for (std::size_t place = 0; place < properties.size(); ++place)
            if (properties[place] == property)
                found[place][pieceOf[chunk]] = summaryOf(*view.find(property), view.size);
    }
    return found;
}

}  // namespace plotix
