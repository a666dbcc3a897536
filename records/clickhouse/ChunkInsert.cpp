#include "records/clickhouse/ChunkInsert.h"

#include "records/clickhouse/ServerStamps.h"
#include "records/store/ChunkPipeline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr std::size_t kLongestInsert = 16 << 20;  // bytes
constexpr std::size_t kMostMonths = 50;           // servers refuse inserts into more than a hundred parts
constexpr double kMonth = 2'592'000;

std::vector<RecordsView> cut(const RecordsView& records, std::size_t pieces)
{
    std::vector<RecordsView> cut;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        const std::size_t first = records.size * piece / pieces;
        cut.push_back(records.slice(first, records.size * (piece + 1) / pieces - first));
    }
    return cut;
}

std::vector<RecordsView> fullPieces(const RecordsView& records)
{
    std::vector<RecordsView> pieces;
    for (std::size_t first = 0; first < records.size; first += schema::kRecordsPerChunk)
        pieces.push_back(records.slice(first, std::min(schema::kRecordsPerChunk, records.size - first)));
    return pieces;
}

}  // namespace

void ChunkInsert::write(const RecordsView& records, double begin, double end, std::size_t longest,
                        const WriterMarks& taken)
{
    // Of about equal length, so that a full one that grew leaves room in both halves.
    write(cut(records, (records.size + longest - 1) / longest), begin, end, taken);
}

void ChunkInsert::writeFull(const RecordsView& records, double begin, double end, const WriterMarks& taken)
{
    write(fullPieces(records), begin, end, taken);
}

/// What the span holds from now on.
void ChunkInsert::write(const std::vector<RecordsView>& pieces, double begin, double end, const WriterMarks& taken)
{
    const std::uint64_t version = stamps::version();
    if (pieces.empty()) {
        addEmpty(begin, end, version, taken);
        return;
    }
    std::size_t piece = 0;
    double next = begin;
    encodeInOrder(pieces, [&](EncodedChunk&& chunk) {
        ++piece;
        const bool isLast = piece == pieces.size();
        const double last =
            isLast ? end : std::nextafter(pieces[piece].times[0], -std::numeric_limits<double>::infinity());
        add(chunk, std::exchange(next, isLast ? end : pieces[piece].times[0]), last, version, taken);
    });
}

void ChunkInsert::writeApart(const RecordsView& records, const WriterMarks& taken)
{
    const std::uint64_t version = stamps::version();
    const std::vector<RecordsView> pieces = fullPieces(records);
    encodeInOrder(pieces, [&](EncodedChunk&& chunk) { add(chunk, chunk.t0, chunk.t1, version, taken); });
}

void ChunkInsert::beginRow(RowId property, double t0, double t1, double begin, double end, std::size_t n,
                           std::uint64_t chunk, std::uint64_t version, const WriterMarks& taken)
{
    std::vector<std::uint64_t> writers, upto;
    if (property == kTimes)
        for (const auto& [writer, number] : taken) {
            writers.push_back(writer);
            upto.push_back(number);
        }
    m_rows.add(m_agent).add(property).add(t0).add(t1).add(begin).add(end).add(static_cast<std::uint32_t>(n));
    m_rows.add(chunk).add(version).add(m_batch).addList(std::span<const std::uint64_t>(writers));
    m_rows.addList(std::span<const std::uint64_t>(upto));
}

void ChunkInsert::add(const EncodedChunk& chunk, double begin, double end, std::uint64_t version,
                      const WriterMarks& taken)
{
    flushIfLong(chunk.t0);
    const std::uint64_t id = stamps::number();
    for (const EncodedChunk::Segment& segment : chunk.segments) {
        beginRow(segment.property, chunk.t0, chunk.t1, begin, end, chunk.n, id, version, taken);
        const auto valid = std::as_bytes(std::span(segment.valid));
        m_rows.add(static_cast<std::uint8_t>(segment.storedCodec()));
        m_rows.addBytes(valid.empty() ? valid : valid.first((chunk.n + 7) / 8)).addBytes(segment.values.bytes);
        m_rows.add(static_cast<std::uint32_t>(segment.summary.valid)).add(segment.summary.minimum);
        m_rows.add(segment.summary.maximum).add(segment.summary.sum).addBytes(segment.whole).addBytes(segment.runs);
    }
    ++m_chunks;
}

void ChunkInsert::addEmpty(double begin, double end, std::uint64_t version, const WriterMarks& taken)
{
    flushIfLong(begin);
    beginRow(kTimes, begin, begin, begin, end, 0, stamps::number(), version, taken);
    m_rows.add(std::uint8_t{0}).addBytes({}).addBytes({});
    m_rows.add(std::uint32_t{0}).add(0.0).add(0.0).add(0.0).addBytes({}).addBytes({});
    ++m_chunks;
}

void ChunkInsert::flushIfLong(double t0)
{
    m_months.insert(static_cast<long long>(std::clamp(std::floor(t0 / kMonth), -100'000.0, 100'000.0)));
    if (m_rows.size() < kLongestInsert && m_months.size() <= kMostMonths)
        return;
    flush();
    m_months = {static_cast<long long>(std::clamp(std::floor(t0 / kMonth), -100'000.0, 100'000.0))};
}

void ChunkInsert::flush()
{
    if (m_rows.isEmpty())
        return;
    m_server.insert("INSERT INTO " + m_tables.chunks() +
                        " (agent, property, t0, t1, begin, end, n, chunk, version, batch, writers, upto, codec, valid, "
                        "data, count, minimum, maximum, sum, whole, runs) FORMAT RowBinary",
                    m_rows.bytes());
    m_rows.clear();
    m_months.clear();
}

}  // namespace plotix
