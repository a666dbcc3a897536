#include "records/clickhouse/AgentReading.h"

#include "base/ReportableError.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/columns/SealedColumn.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace plotix {

namespace {

constexpr std::size_t kMostNamed = 1000;  // chunks; more are asked for by their span
constexpr int kMostAttempts = 20;
constexpr std::size_t kRecords = schema::kRecordsPerChunk;

WriterMarks marksOf(const std::vector<std::uint64_t>& writers, const std::vector<std::uint64_t>& upto)
{
    WriterMarks marks;
    for (std::size_t i = 0; i < std::min(writers.size(), upto.size()); ++i)
        marks[writers[i]] = upto[i];
    return marks;
}

[[noreturn]] void failAsDamaged(const ServerAddress& address, const QString& what)
{
    throw ReportableError(QStringLiteral("The records on “%1” are damaged: %2. Take them back from a backup.")
                              .arg(address.title(), what));
}

AgentReading::Piece pieceOf(Records records)
{
    AgentReading::Piece piece;
    piece.n = records.size();
    piece.t0 = records.view().times[0];
    piece.t1 = records.view().times[piece.n - 1];
    piece.records = std::move(records);
    return piece;
}

/// In pieces that are not too long.
void addPieces(const RecordsView& records, std::vector<AgentReading::Piece>& to)
{
    for (std::size_t first = 0; first < records.size; first += kRecords) {
        Records part;
        part.append(records.slice(first, std::min(kRecords, records.size - first)));
        to.push_back(pieceOf(std::move(part)));
    }
}

/// A condition that leaves out most young records that the chunks have taken in. They are known to be taken in anyway;
/// a day of them need not come, that is all.
std::string notTaken(const std::vector<StoredChunk>& chunks)
{
    constexpr std::size_t kMostStretches = 64, kMostWriters = 8;
    const std::vector<ChunkStretch> stretches = stretchesOf(chunks);
    std::string condition;
    for (std::size_t i = stretches.size(); i > 0 && stretches.size() - i < kMostStretches; --i) {
        const ChunkStretch& stretch = stretches[i - 1];
        std::string writers;
        std::size_t count = 0;
        for (const auto& [writer, number] : stretch.chunk->taken)
            if (++count <= kMostWriters)
                writers += (writers.empty() ? "" : " OR ") + ("writer = " + std::to_string(writer)) +
                           " AND number <= " + std::to_string(number);
        if (!writers.empty())
            condition += " AND NOT (time >= " + sqlNumber(stretch.begin) + " AND time <= " + sqlNumber(stretch.end) +
                         " AND (" + writers + "))";
    }
    return condition;
}

}  // namespace

AgentReading::Rows AgentReading::rows(double from, double to)
{
    if (!(from <= to))
        return {};
    // Two statements may see two states: then again, so that nobody sees half a batch.
    for (int attempt = 1;; ++attempt) {
        const std::uint64_t before = batches();
        Rows rows = rowsNow(from, to);
        if (batches() == before || attempt == kMostAttempts)
            return rows;
    }
}

std::uint64_t AgentReading::batches()
{
    const std::vector<std::byte> answer =
        m_server.ask("SELECT uniqExact(batch) FROM " + m_tables.batches() + " FORMAT RowBinary");
    return rowbinary::Reader(answer).number<std::uint64_t>();
}

AgentReading::Rows AgentReading::rowsNow(double from, double to)
{
    try {
        return rowsOfTables(from, to);
    } catch (const rowbinary::TooShort&) {
        failAsDamaged(QStringLiteral("an answer ends early"));
    }
}

AgentReading::Rows AgentReading::rowsOfTables(double from, double to)
{
    Rows rows;
    // Chunks first: a young record that is taken in meanwhile is found then, and known to be taken in where its chunk
    // is. And all that overlap those found, however far that reaches: one of them may say what is there of the others.
    for (;;) {
        rows.chunks = chunksNow(from, to);
        double earliest = from, latest = to;
        for (const StoredChunk& chunk : rows.chunks) {
            earliest = std::min(earliest, chunk.begin);
            latest = std::max(latest, chunk.end);
        }
        if (earliest == from && latest == to)
            break;
        from = earliest;
        to = latest;
    }
    const std::vector<std::byte> young =
        m_server.ask("SELECT time, writer, number, place, version, properties, values, valid FROM " + m_tables.young() +
                     " WHERE " + ofAgent() + " AND time >= " + sqlNumber(from) + " AND time <= " + sqlNumber(to) +
                     " AND " + m_tables.counts(m_own) + notTaken(rows.chunks) + " FORMAT RowBinary");
    for (rowbinary::Reader row(young); !row.isAtEnd();) {
        YoungRecord record;
        record.time = row.number<double>();
        record.writer = row.number<std::uint64_t>();
        record.number = row.number<std::uint64_t>();
        record.place = row.number<std::uint32_t>();
        record.version = row.number<std::uint64_t>();
        record.properties = row.list<RowId>();
        record.values = row.list<double>();
        record.valid = row.list<std::uint8_t>();
        if (record.values.size() != record.properties.size() || record.valid.size() != record.properties.size())
            failAsDamaged(QStringLiteral("a record has more properties than values"));
        stamps::saw(record.version);
        rows.young.push_back(std::move(record));
    }
    std::sort(rows.young.begin(), rows.young.end(),
              [](const YoungRecord& one, const YoungRecord& other) { return one.time < other.time; });
    return rows;
}

std::vector<StoredChunk> AgentReading::chunksNow(double from, double to)
{
    const std::vector<std::byte> answer = m_server.ask(
        "SELECT chunk, version, t0, t1, begin, end, n, writers, upto FROM " + m_tables.chunks() + " WHERE " +
        ofAgent() + " AND property = 0 AND begin <= " + sqlNumber(to) + " AND end >= " + sqlNumber(from) + " AND " +
        m_tables.counts(m_own) + " ORDER BY begin, chunk LIMIT 1 BY chunk FORMAT RowBinary");
    std::vector<StoredChunk> chunks;
    for (rowbinary::Reader row(answer); !row.isAtEnd();) {
        StoredChunk chunk;
        chunk.id = row.number<std::uint64_t>();
        chunk.version = row.number<std::uint64_t>();
        chunk.t0 = row.number<double>();
        chunk.t1 = row.number<double>();
        chunk.begin = row.number<double>();
        chunk.end = row.number<double>();
        chunk.n = row.number<std::uint32_t>();
        const auto writers = row.list<std::uint64_t>();
        chunk.taken = marksOf(writers, row.list<std::uint64_t>());
        if (chunk.n > kRecords || !(chunk.begin <= chunk.end) ||
            (chunk.n > 0 && !(chunk.begin <= chunk.t0 && chunk.t0 <= chunk.t1 && chunk.t1 <= chunk.end)))
            failAsDamaged(QStringLiteral("chunk %1 cannot be as it says").arg(chunk.id));
        stamps::saw(chunk.version);
        chunks.push_back(std::move(chunk));
    }
    return chunks;
}

std::vector<AgentReading::Piece> AgentReading::pieces(const Rows& rows, double from, double to,
                                                      const std::vector<RowId>* properties)
{
    std::vector<Piece> pieces;
    if (!(from <= to))
        return pieces;
    std::vector<const YoungRecord*> loose;  // that lie in no chunk
    const auto endLoose = [&] {
        const Records records = joined({}, std::exchange(loose, {}), properties);
        addPieces(records.view(), pieces);
    };
    auto young = rows.young.begin();
    const auto takeLoose = [&](const auto& isBefore) {
        for (; young != rows.young.end() && isBefore(young->time); ++young)
            if (young->time >= from && young->time <= to)
                loose.push_back(&*young);
    };
    for (const ChunkStretch& stretch : stretchesOf(rows.chunks)) {
        takeLoose([&](double time) { return time < stretch.begin; });
        std::vector<const YoungRecord*> onIt;
        for (; young != rows.young.end() && young->time <= stretch.end; ++young)
            if (!stretch.chunk->hasTaken(young->writer, young->number))
                onIt.push_back(&*young);
        if (stretch.end < from || stretch.begin > to)
            continue;
        const StoredChunk& chunk = *stretch.chunk;
        if (stretch.isWhole() && onIt.empty()) {
            if (chunk.n == 0)
                continue;
            endLoose();
            pieces.push_back({&chunk, {}, chunk.t0, chunk.t1, chunk.n});
            continue;
        }
        endLoose();
        const Records all = chunk.n > 0 ? recordsOf(chunk, properties) : Records();
        const Records now = joined(all.view().between(stretch.begin, stretch.end), std::move(onIt), properties);
        addPieces(now.view(), pieces);
    }
    takeLoose([](double) { return true; });
    endLoose();
    std::erase_if(pieces, [&](const Piece& piece) { return !piece.overlaps(from, to); });
    return pieces;
}

bool AgentReading::segments(std::span<const StoredChunk* const> chunks, const std::vector<RowId>* properties,
                            const TakeSegment& take, const std::function<bool()>& goOn)
{
    std::string asked;
    if (properties) {
        std::vector<RowId> all{kTimes};
        all.insert(all.end(), properties->begin(), properties->end());
        asked = " AND property IN " + sqlList(all);
    }
    std::size_t times = 0;
    const bool isDone = stream(
        chunks, asked,
        [&](std::size_t chunk, RowId property, const Segment& segment) {
            times += property == kTimes ? 1 : 0;
            take(chunk, property, segment);
        },
        goOn);
    if (isDone && times != chunks.size())
        throw ReportableError(
            QStringLiteral("Some of the records shown are no longer on the server: show them again."));
    return isDone;
}

std::size_t AgentReading::column(std::span<const StoredChunk* const> chunks, RowId property, const TakeSegment& take)
{
    std::size_t count = 0;
    stream(chunks, " AND property = " + std::to_string(property),
           [&](std::size_t chunk, RowId which, const Segment& segment) {
               ++count;
               take(chunk, which, segment);
           },
           {});
    return count;
}

/// Each column once; false: `goOn` answered so.
bool AgentReading::stream(std::span<const StoredChunk* const> chunks, const std::string& condition,
                          const TakeSegment& take, const std::function<bool()>& goOn)
{
    if (chunks.empty())
        return true;
    std::unordered_map<std::uint64_t, std::size_t> places;
    double earliest = chunks[0]->begin, latest = chunks[0]->begin;
    std::string named;
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        places.emplace(chunks[i]->id, i);
        earliest = std::min(earliest, chunks[i]->begin);
        latest = std::max(latest, chunks[i]->begin);
        if (chunks.size() <= kMostNamed)
            named += (named.empty() ? " AND chunk IN (" : ",") + std::to_string(chunks[i]->id);
    }
    named += named.empty() ? "" : ")";
    // Chunks that take no more part have rows too, and a row that was sent twice stands twice.
    std::unordered_map<RowId, std::vector<bool>> seen;
    std::vector<std::byte> waiting;
    bool isStopped = false;
    m_server.stream(
        "SELECT chunk, property, codec, valid, data FROM " + m_tables.chunks() + " WHERE " + ofAgent() + condition +
            " AND begin >= " + sqlNumber(earliest) + " AND begin <= " + sqlNumber(latest) + named + " FORMAT RowBinary",
        [&] { waiting.clear(); },
        [&](std::span<const std::byte> bytes) {
            waiting.insert(waiting.end(), bytes.begin(), bytes.end());
            std::size_t done = 0;
            try {
                for (rowbinary::Reader row(waiting); !row.isAtEnd(); done = row.at()) {
                    const auto chunk = places.find(row.number<std::uint64_t>());
                    const RowId property = row.number<RowId>();
                    Segment segment;
                    segment.codec = row.number<std::uint8_t>();
                    segment.valid = row.bytes();
                    segment.data = row.bytes();
                    if (chunk == places.end())
                        continue;
                    std::vector<bool>& ofProperty = seen[property];
                    ofProperty.resize(chunks.size());
                    if (ofProperty[chunk->second])
                        continue;
                    ofProperty[chunk->second] = true;
                    take(chunk->second, property, segment);
                }
            } catch (const rowbinary::TooShort&) {
            }
            waiting.erase(waiting.begin(), waiting.begin() + static_cast<std::ptrdiff_t>(done));
            isStopped = goOn && !goOn();
            return !isStopped;
        });
    if (!isStopped && !waiting.empty())
        failAsDamaged(QStringLiteral("an answer ends early"));
    return !isStopped;
}

void decodeColumn(const ServerAddress& from, const StoredChunk& chunk, RowId property,
                  const AgentReading::Segment& segment, std::size_t first, std::span<double> values,
                  std::vector<std::uint64_t>& words)
{
    const auto failAsDamaged = [&](const QString& what) { plotix::failAsDamaged(from, what); };
    words.assign(bits::wordsFor(chunk.n), ~std::uint64_t{0});
    if (!segment.valid.empty()) {
        if (segment.valid.size() != (chunk.n + 7) / 8)
            failAsDamaged(QStringLiteral("chunk %1 has a column that cannot be read").arg(chunk.id));
        std::memcpy(words.data(), segment.valid.data(), segment.valid.size());
    }
    const std::uint64_t* valid = segment.valid.empty() ? nullptr : words.data();
    const auto opened =
        sealed::opened(segment.codec, segment.data, {static_cast<std::uint64_t>(property), chunk.n, segment.valid});
    if (!opened)
        failAsDamaged(QStringLiteral("a column of chunk %1 is not as it was stored").arg(chunk.id));
    if (!codec::decode(opened->codec, opened->bytes, chunk.n, valid, first, values))
        failAsDamaged(QStringLiteral("chunk %1 has a column that cannot be read").arg(chunk.id));
}

void AgentReading::decode(const StoredChunk& chunk, RowId property, const Segment& segment, std::size_t first,
                          std::span<double> values, std::vector<std::uint64_t>& words) const
{
    decodeColumn(m_server.address(), chunk, property, segment, first, values, words);
}

Records AgentReading::recordsOf(const StoredChunk& chunk, const std::vector<RowId>* properties)
{
    std::vector<double> times(chunk.n);
    std::vector<Records::Column> columns;
    const StoredChunk* const one = &chunk;
    std::vector<std::uint64_t> words;
    segments(std::span(&one, 1), properties, [&](std::size_t, RowId property, const Segment& segment) {
        std::vector<double> values(chunk.n);
        decode(chunk, property, segment, 0, values, words);
        if (property == kTimes) {
            times = std::move(values);
            return;
        }
        if (chunk.n % 64 != 0)
            words.back() &= bits::mask(chunk.n % 64);
        columns.push_back({property, std::move(values), words});
    });
    requireTimes(chunk, times);
    return Records(std::move(times), std::move(columns));
}

std::vector<double> AgentReading::timesOf(const StoredChunk& chunk)
{
    const std::vector<RowId> none;
    const Records records = recordsOf(chunk, &none);
    return {records.view().times, records.view().times + records.size()};
}

void AgentReading::requireTimes(const StoredChunk& chunk, std::span<const double> times) const
{
    if (times.size() != chunk.n || (chunk.n > 0 && (times.front() != chunk.t0 || times.back() != chunk.t1)))
        failAsDamaged(QStringLiteral("chunk %1 has other times than it says").arg(chunk.id));
}

void AgentReading::failAsDamaged(const QString& what) const
{
    plotix::failAsDamaged(m_server.address(), what);
}

std::vector<RowId> agentsOn(ServerConnection& server, const SiteTables& tables)
{
    const std::vector<std::byte> rows = server.ask("SELECT DISTINCT agent FROM (SELECT agent FROM " + tables.chunks() +
                                                   " WHERE property = 0 UNION ALL SELECT agent FROM " + tables.young() +
                                                   ") ORDER BY agent FORMAT RowBinary");
    std::vector<RowId> agents;
    for (rowbinary::Reader row(rows); !row.isAtEnd();)
        agents.push_back(row.number<RowId>());
    return agents;
}

}  // namespace plotix
