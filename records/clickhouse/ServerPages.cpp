#include "records/clickhouse/ServerPages.h"

#include "base/ReportableError.h"
#include "records/clickhouse/ChunkIndexes.h"
#include "records/columns/ColumnKernels.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kRun = ColumnKernels::kRun;
constexpr std::size_t kFewestAhead = 4, kMostAhead = 32, kMostSkipped = 8;  // chunks

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
        fetch(first, end);
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

/// Pieces to be fetched with those asked for, which are at `asked`, before `next`: the more of them the longer somebody
/// goes on from where the last ones ended, or from a few pieces behind: several threads each take the next page. A
/// single look fetches what it needs.
std::vector<std::size_t> ServerPages::behind(std::size_t asked, std::size_t next) const
{
    const std::lock_guard lock(m_mutex);
    const bool goesOn = asked >= m_next && asked <= m_next + kMostSkipped;
    m_ahead = goesOn ? std::clamp(2 * m_ahead, kFewestAhead, kMostAhead) : 0;
    std::vector<std::size_t> ahead;
    const auto add = [&](std::size_t piece) {
        const StoredChunk* chunk = m_span->pieces[piece].chunk;
        if (chunk && m_present[piece] && !m_span->site->packed().find(chunk->id, m_property))
            ahead.push_back(piece);
    };
    for (std::size_t skipped = m_next; goesOn && skipped < asked; ++skipped)
        add(skipped);
    for (; next < m_span->pieces.size() && ahead.size() < m_ahead; ++next)
        add(next);
    m_next = next;
    return ahead;
}

/// The columns of all chunks that are not here yet in one answer, and some of those that follow.
void ServerPages::fetch(std::size_t first, std::size_t end) const
{
    const std::vector<std::size_t>& begin = m_span->begin;
    const SiteOnServer::Lease server = m_span->site->lease(m_span->agent);
    AgentReading reading(*server, server.tables(), m_span->agent);
    std::vector<std::uint64_t> valid;
    const auto unpack = [&](std::size_t piece, const AgentReading::Segment& segment) {
        const std::size_t start = begin[piece];
        const std::size_t from = std::max(first, start), to = std::min(end, begin[piece + 1]);
        reading.decode(*m_span->pieces[piece].chunk, m_property, segment, from - start, {m_values + from, to - from},
                       valid);
        if (bits::allSet(valid.data(), from - start, to - from))
            return;
        if (!m_words)
            throw ReportableError(
                QStringLiteral("An index on the server says that values are valid which are not: compact the site."));
        bits::copy(valid.data(), from - start, m_words, from, to - from);
    };
    std::vector<std::size_t> missing;
    const auto at = std::upper_bound(begin.begin(), begin.end(), first);
    auto piece = static_cast<std::size_t>(at - begin.begin()) - 1;
    for (; piece < m_span->pieces.size() && begin[piece] < end; ++piece) {
        const StoredChunk* chunk = m_span->pieces[piece].chunk;
        const std::size_t from = std::max(first, begin[piece]), to = std::min(end, begin[piece + 1]);
        if (!chunk)
            copy(piece, from, to);
        else if (!m_present[piece])
            standIn(piece, from, to);
        else if (const auto known = m_span->site->packed().find(chunk->id, m_property))
            unpack(piece, known->segment());
        else
            missing.push_back(piece);
    }
    if (missing.empty())
        return;
    std::vector<std::size_t> pieces = missing;
    const std::vector<std::size_t> ahead = behind(missing.front(), piece);
    pieces.insert(pieces.end(), ahead.begin(), ahead.end());
    std::vector<const StoredChunk*> chunks;
    for (const std::size_t each : pieces)
        chunks.push_back(m_span->pieces[each].chunk);
    std::size_t found = 0;
    reading.column(chunks, m_property, [&](std::size_t i, RowId, const AgentReading::Segment& segment) {
        m_span->site->packed().keep(chunks[i]->id, m_property, segment);
        if (i >= missing.size())
            return;
        ++found;
        unpack(pieces[i], segment);
    });
    if (found != missing.size())
        throw ReportableError(
            QStringLiteral("Some of the records shown are no longer on the server: show them again."));
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
