#include "records/clickhouse/ServerPages.h"

#include "base/ReportableError.h"
#include "records/clickhouse/ChunkIndexes.h"
#include "records/columns/ColumnKernels.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <exception>
#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kRun = ColumnKernels::kRun;

/// What the column's runs are a multiple of; 0: anything.
std::size_t lengthOfRuns(const ColumnIndex& index)
{
    if (!index.runs.empty())
        return index.runLength;
    return isEverywhereTheSame(index.whole, index.count) ? 0 : index.count;
}

/// Of elements [begin, end), where runs may begin.
void addRun(const ColumnIndex& index, std::size_t begin, std::size_t end, ValueRuns& to)
{
    double least = kInfinity, greatest = -kInfinity, first = absentValue();
    const auto take = [&](const RunFigures& run, bool isFirst) {
        if (run.valid == 0)
            return;
        least = std::min(least, run.least.value);
        greatest = std::max(greatest, run.greatest.value);
        if (isFirst && run.first.at == 0)
            first = run.first.value;
    };
    if (index.runs.empty())
        take(index.whole, begin == 0 || index.whole.valid == index.count);
    else
        for (std::size_t run = begin / index.runLength; run * index.runLength < end; ++run)
            take(index.runs[run], run * index.runLength == begin);
    to.least.push_back(least);
    to.greatest.push_back(greatest);
    to.first.push_back(first);
}

/// Whoever shows a span looks at its first and at its last records, of each property: in one statement.
void bringEnds(const SiteOnServer::Lease& server, const ServerSpan& span, const std::vector<RowId>& properties)
{
    std::vector<const StoredChunk*> ends;
    for (const AgentReading::Piece& piece : {span.pieces.front(), span.pieces.back()})
        if (piece.chunk && !span.site->packed().find(piece.chunk->id, kTimes) &&
            (ends.empty() || ends[0] != piece.chunk))
            ends.push_back(piece.chunk);
    AgentReading(*server, server.tables(), span.agent)
        .segments(ends, &properties, [&](std::size_t chunk, RowId property, const AgentReading::Segment& segment) {
            keepIfSound(*span.site, *ends[chunk], property, segment);
        });
}

}  // namespace

ServerPages::ServerPages(std::shared_ptr<PageCache> cache, std::shared_ptr<const ServerSpan> span, RowId property,
                         std::vector<bool> present, bool isAllValid)
    : PagedMemory(std::move(cache), span->size()),
      m_span(std::move(span)),
      m_property(property),
      m_present(std::move(present)),
      m_values(reserve<double>()),
      m_words(isAllValid ? nullptr : reserve<std::uint64_t>(64))
{
}

ValidityBitmap ServerPages::validity() const
{
    if (!m_words)
        return {};
    return ValidityBitmap(PagedArray<std::uint64_t>(shared_from_this(), m_words, bits::wordsFor(elements()), 64));
}

bool ServerPages::fill(std::size_t first, std::size_t end) const noexcept
{
    if (m_words)
        std::fill(m_words + first / 64, m_words + bits::wordsFor(end), ~std::uint64_t{0});
    try {
        fillOrThrow(first, end);
        return true;
    } catch (const std::exception& error) {
        m_span->failure->report(QString::fromUtf8(error.what()));
    }
    const std::vector<std::size_t>& begin = m_span->begin;
    for (std::size_t piece = 0; piece + 1 < begin.size(); ++piece) {
        const std::size_t from = std::max(first, begin[piece]), to = std::min(end, begin[piece + 1]);
        if (from >= to)
            continue;
        if (m_span->pieces[piece].chunk)
            standIn(piece, from, to);
        else
            copy(piece, from, to);
    }
    return false;
}

std::size_t ServerPages::pieceAt(std::size_t element) const
{
    const std::vector<std::size_t>& begin = m_span->begin;
    return static_cast<std::size_t>(std::upper_bound(begin.begin(), begin.end(), element) - begin.begin()) - 1;
}

void ServerPages::expect(std::size_t first, std::size_t end) const
{
    if (first >= end)
        return;
    // Pages are filled whole.
    first = first / kPage * kPage;
    end = std::min(elements(), (end + kPage - 1) / kPage * kPage);
    const std::lock_guard lock(m_mutex);
    m_ahead.expect(pieceAt(first), pieceAt(end - 1) + 1);
}

/// Whether the piece has a column on the server alone.
bool ServerPages::isAbsent(std::size_t piece) const
{
    const StoredChunk* chunk = m_span->pieces[piece].chunk;
    return chunk && m_present[piece] && !m_span->site->packed().find(chunk->id, m_property);
}

/// Of the pieces [first, end); null for those without one. Fetches some that follow as well; what another thread is
/// fetching is waited for.
PackedColumns ServerPages::columnsOf(std::size_t first, std::size_t end) const
{
    PackedColumns columns(end - first);
    std::vector<std::size_t> missing;
    std::unique_lock lock(m_mutex);
    for (;;) {
        missing.clear();
        bool isOnTheWay = false;
        for (std::size_t piece = first; piece < end; ++piece) {
            const StoredChunk* chunk = m_span->pieces[piece].chunk;
            if (!chunk || !m_present[piece] || columns[piece - first])
                continue;
            columns[piece - first] = m_span->site->packed().find(chunk->id, m_property);
            if (columns[piece - first])
                continue;
            missing.push_back(piece);
            isOnTheWay = isOnTheWay || m_onTheWay.contains(piece);
        }
        if (!isOnTheWay)
            break;
        m_arrived.wait(lock);
    }
    if (missing.empty())
        return columns;
    std::vector<std::size_t> pieces = missing;
    for (const std::size_t piece :
         m_ahead.besides(missing.front(), end, m_span->pieces.size(),
                         [this](std::size_t each) { return !m_onTheWay.contains(each) && isAbsent(each); }))
        if (std::find(missing.begin(), missing.end(), piece) == missing.end())
            pieces.push_back(piece);
    std::vector<const StoredChunk*> chunks;
    for (const std::size_t each : pieces)
        chunks.push_back(m_span->pieces[each].chunk);
    m_onTheWay.insert(pieces.begin(), pieces.end());
    lock.unlock();

    PackedColumns fetched;
    std::exception_ptr failure;
    try {
        fetched = fetchColumns(*m_span->site, m_span->agent, m_property, chunks);
    } catch (...) {
        failure = std::current_exception();
    }
    lock.lock();
    for (const std::size_t each : pieces)
        m_onTheWay.erase(each);
    m_arrived.notify_all();
    if (failure)
        std::rethrow_exception(failure);
    for (const auto& column : fetched)
        if (column)
            m_ahead.fetched(1, column->bytes());
    for (std::size_t i = 0; i < missing.size(); ++i) {
        if (!fetched[i])
            throw ReportableError(
                QStringLiteral("Some of the records shown are no longer on the server: show them again."));
        columns[missing[i] - first] = fetched[i];
    }
    return columns;
}

void ServerPages::fillOrThrow(std::size_t first, std::size_t end) const
{
    const std::size_t firstPiece = pieceAt(first), endPiece = pieceAt(end - 1) + 1;
    const PackedColumns columns = columnsOf(firstPiece, endPiece);
    for (std::size_t piece = firstPiece; piece < endPiece; ++piece) {
        const std::size_t from = std::max(first, m_span->begin[piece]), to = std::min(end, m_span->begin[piece + 1]);
        if (!m_span->pieces[piece].chunk)
            copy(piece, from, to);
        else if (!m_present[piece])
            standIn(piece, from, to);
        else
            unpack(piece, *columns[piece - firstPiece], from, to);
    }
}

void ServerPages::unpack(std::size_t piece, const PackedCache::Column& column, std::size_t first, std::size_t end) const
{
    const std::size_t skipped = first - m_span->begin[piece];
    std::vector<std::uint64_t> valid;
    decodeColumn(m_span->site->address(), *m_span->pieces[piece].chunk, m_property, column.segment(), skipped,
                 {m_values + first, end - first}, valid);
    if (bits::allSet(valid.data(), skipped, end - first))
        return;
    if (!m_words)
        throw ReportableError(
            QStringLiteral("An index on the server says that values are valid which are not: compact the site."));
    bits::copy(valid.data(), skipped, m_words, first, end - first);
}

/// Of records in memory.
void ServerPages::copy(std::size_t piece, std::size_t first, std::size_t end) const
{
    const std::size_t skipped = first - m_span->begin[piece];
    const RecordsView records = m_span->pieces[piece].records.view();
    if (m_property == kTimes) {
        std::copy_n(records.times + skipped, end - first, m_values + first);
        return;
    }
    const RecordsView::Column* column = records.find(m_property);
    if (!column)
        return standIn(piece, first, end);
    std::copy_n(column->values + skipped, end - first, m_values + first);
    if (m_words)
        bits::copy(column->valid, column->firstValid + skipped, m_words, first, end - first);
}

/// No values; times that rise evenly.
void ServerPages::standIn(std::size_t piece, std::size_t first, std::size_t end) const
{
    if (m_property != kTimes) {
        std::fill(m_values + first, m_values + end, absentValue());
        if (m_words)
            bits::clear(m_words, first, end - first);
        return;
    }
    const AgentReading::Piece& of = m_span->pieces[piece];
    const double step = of.n > 1 ? (of.t1 - of.t0) / static_cast<double>(of.n - 1) : 0;
    for (std::size_t i = first; i < end; ++i)
        m_values[i] = std::min(of.t0 + step * static_cast<double>(i - m_span->begin[piece]), of.t1);
}

RecordColumns pagedColumns(const std::shared_ptr<const ServerSpan>& span, const std::vector<RowId>& properties,
                           const std::shared_ptr<PageCache>& cache)
{
    ChunkIndexes::Presence present;
    std::vector<RecordIndex::Piece> known;
    {
        const SiteOnServer::Lease server = span->site->lease(span->agent);
        known = ChunkIndexes(*server, server.tables(), span->agent)
                    .of(span->pieces, properties, RecordIndex::Detail::Runs, &present);
        bringEnds(server, *span, properties);
    }
    TimeRuns times;
    std::vector<ValueRuns> runs(properties.size());
    std::vector<RecordColumns::Total> totals(properties.size());
    std::vector<bool> isAllValid(properties.size(), true);
    for (std::size_t i = 0; i < known.size(); ++i) {
        const RecordIndex::Piece& piece = known[i];
        std::size_t length = kRun;
        for (const RecordIndex::Column& column : piece.columns)
            length = std::max(length, lengthOfRuns(column.index));
        length = (length + kRun - 1) / kRun * kRun;
        for (std::size_t begin = 0; begin < piece.records; begin += length) {
            const std::size_t end = std::min(begin + length, piece.records);
            times.begin.push_back(span->begin[i] + begin);
            times.first.push_back(piece.times.first[begin / kRun]);
            times.last.push_back(piece.times.last[(end - 1) / kRun]);
            for (std::size_t place = 0; place < properties.size(); ++place)
                addRun(piece.columns[place].index, begin, end, runs[place]);
        }
        for (std::size_t place = 0; place < properties.size(); ++place) {
            const ColumnIndex& index = piece.columns[place].index;
            totals[place].valid += index.whole.valid;
            totals[place].sum.add(index.sum);
            // Where NaNs are valid, there is a bitmap.
            isAllValid[place] = isAllValid[place] && index.whole.valid == piece.records;
        }
    }
    times.begin.push_back(span->size());

    RecordColumns columns;
    columns.failure = span->failure;
    columns.runs = std::make_shared<const TimeRuns>(std::move(times));
    columns.times =
        std::make_shared<const ServerPages>(cache, span, kTimes, std::vector<bool>(known.size(), true), true)->values();
    for (std::size_t place = 0; place < properties.size(); ++place) {
        std::vector<bool> ofPieces;
        for (const std::vector<bool>& piece : present)
            ofPieces.push_back(piece[place]);
        const auto pages =
            std::make_shared<const ServerPages>(cache, span, properties[place], std::move(ofPieces), isAllValid[place]);
        columns.columns.push_back({properties[place], pages->values(), pages->validity(),
                                   KeptRuns::of(std::move(runs[place])), totals[place]});
    }
    return columns;
}

}  // namespace plotix
