#include "records/clickhouse/ClickHouseRecordStore.h"

#include "base/ReportableError.h"
#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/AmendmentRows.h"
#include "records/clickhouse/BlockReading.h"
#include "records/clickhouse/ChunkIndexes.h"
#include "records/clickhouse/ClickHouseWriting.h"
#include "records/clickhouse/ServerPages.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>

namespace plotix {

namespace {

using Piece = AgentReading::Piece;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Absent bounds are open.
struct Bounds {
    Bounds(std::optional<double> lower, std::optional<double> upper)
        : from(lower.value_or(-kInfinity)), to(upper.value_or(kInfinity))
    {
    }
    double from, to;
};

std::vector<RowId> listOf(std::span<const RowId> properties)
{
    return {properties.begin(), properties.end()};
}

/// What an agent has in a span at one moment. Columns in memory are those asked for.
struct Look {
    Look(SiteOnServer& of, RowId ofAgent, const Bounds& bounds, const std::vector<RowId>& asked)
        : site(of),
          agent(ofAgent),
          server(of.lease(ofAgent)),
          reading(*server, server.tables(), ofAgent),
          rows(of.known().rows(*server, server.tables(), ofAgent, bounds.from, bounds.to)),
          pieces(reading.pieces(*rows, bounds.from, bounds.to, &asked))
    {
    }
    ChunkIndexes indexes() const { return {*server, server.tables(), agent}; }

    SiteOnServer& site;
    RowId agent;
    SiteOnServer::Lease server;
    AgentReading reading;
    std::shared_ptr<const AgentReading::Rows> rows;
    std::vector<Piece> pieces;  ///< of the rows
};

/// The pieces without their records outside [from, to].
void cut(AgentReading& reading, const Bounds& bounds, const std::vector<RowId>& properties, std::vector<Piece>& pieces)
{
    for (Piece& piece : pieces) {
        if (piece.t0 >= bounds.from && piece.t1 <= bounds.to)
            continue;
        const Records all = piece.chunk ? reading.recordsOf(*piece.chunk, &properties) : std::move(piece.records);
        Records left;
        left.append(all.view().between(bounds.from, bounds.to));
        piece = {};
        piece.n = left.size();
        if (piece.n > 0) {
            piece.t0 = left.view().times[0];
            piece.t1 = left.view().times[piece.n - 1];
        }
        piece.records = std::move(left);
    }
    std::erase_if(pieces, [](const Piece& piece) { return piece.n == 0; });
}

}  // namespace

std::optional<RecordExtent> ClickHouseRecordStore::extent(RowId agent)
{
    const Look look(*m_site, agent, Bounds({}, {}), {});
    if (look.pieces.empty())
        return std::nullopt;
    return RecordExtent{look.pieces.front().t0, look.pieces.back().t1};
}

std::optional<RecordExtent> ClickHouseRecordStore::extent()
{
    std::optional<RecordExtent> found;
    std::exception_ptr failure;
    std::size_t answered = 0;
    for (std::size_t shard = 0; shard < m_site->shards(); ++shard)
        try {
            for (const RowId agent : m_site->agentsOn(shard))
                found = united(found, extent(agent));
            ++answered;
        } catch (const ReportableError&) {
            failure = std::current_exception();
        }
    if (answered == 0)
        std::rethrow_exception(failure);
    return found;
}

RecordOverview ClickHouseRecordStore::overview(RowId agent, std::span<const RowId> properties,
                                               std::optional<double> from, std::optional<double> to)
{
    const Bounds bounds(from, to);
    const std::vector<RowId> asked = listOf(properties);
    const Look look(*m_site, agent, bounds, asked);
    const auto summaries = look.indexes().summariesOf(look.pieces, asked);
    RecordOverview overview;
    for (const Piece& piece : look.pieces)
        overview.runs.push_back({piece.t0, piece.t1, piece.n});
    for (std::size_t i = 0; i < asked.size(); ++i) {
        RecordOverview::Column& column = overview.columns.emplace_back(RecordOverview::Column{asked[i], {}});
        for (const Summary& each : summaries[i])
            column.summaries.push_back({each.valid, each.minimum, each.maximum, each.sum});
    }
    return overview;
}

RecordIndex ClickHouseRecordStore::index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                         std::optional<double> to, RecordIndex::Detail detail)
{
    const Bounds bounds(from, to);
    const std::vector<RowId> asked = listOf(properties);
    const Look look(*m_site, agent, bounds, asked);
    return {look.indexes().of(look.pieces, asked, detail)};
}

std::optional<RecordBlock> ClickHouseRecordStore::read(RowId agent, std::span<const RowId> properties,
                                                       std::optional<double> from, std::optional<double> to,
                                                       const ArchiveProgress& progress)
{
    if (progress && !progress(0))
        return std::nullopt;
    const Bounds bounds(from, to);
    const std::vector<RowId> asked = listOf(properties);
    Look look(*m_site, agent, bounds, asked);
    cut(look.reading, bounds, asked, look.pieces);
    return readBlock(*m_site, agent, asked, look.pieces, progress);
}

std::optional<RecordColumns> ClickHouseRecordStore::columns(RowId agent, std::span<const RowId> properties,
                                                            std::optional<double> from, std::optional<double> to,
                                                            const std::shared_ptr<PageCache>& cache,
                                                            const ArchiveProgress& progress)
{
    if (progress && !progress(0))
        return std::nullopt;
    const Bounds bounds(from, to);
    const std::vector<RowId> asked = listOf(properties);
    const auto span = std::make_shared<ServerSpan>();
    span->site = m_site;
    span->agent = agent;
    {
        Look look(*m_site, agent, bounds, asked);
        cut(look.reading, bounds, asked, look.pieces);
        span->rows = look.rows;
        span->pieces = std::move(look.pieces);
    }
    span->begin.push_back(0);
    for (const Piece& piece : span->pieces)
        span->begin.push_back(span->begin.back() + piece.n);
    if (!cache || span->size() <= PagedMemory::kPage) {
        const std::optional<RecordBlock> block = read(agent, properties, from, to, progress);
        return block ? std::optional(RecordColumns::resident(*block)) : std::nullopt;
    }
    RecordColumns columns = pagedColumns(span, asked, cache);
    if (progress && !progress(1))
        return std::nullopt;
    return columns;
}

ColumnStatistics ClickHouseRecordStore::statistics(RowId agent, RowId property, std::optional<double> from,
                                                   std::optional<double> to, StatisticsFrom source)
{
    const Bounds bounds(from, to);
    const std::vector<RowId> asked{property};
    Look look(*m_site, agent, bounds, asked);
    cut(look.reading, bounds, asked, look.pieces);
    if (source == StatisticsFrom::Values)
        for (Piece& piece : look.pieces)
            if (piece.chunk)
                piece.records = look.reading.recordsOf(*std::exchange(piece.chunk, nullptr), &asked);
    const auto summaries = look.indexes().summariesOf(look.pieces, asked);
    Summary sum;
    for (const Summary& each : summaries[0])
        sum.add(each);
    if (sum.valid == 0)
        return {};
    return {sum.valid, sum.minimum, sum.maximum, sum.sum / static_cast<double>(sum.valid)};
}

std::vector<Amendment> ClickHouseRecordStore::amendments(RowId agent, std::span<const RowId> properties,
                                                         std::optional<double> from, std::optional<double> to)
{
    const Bounds bounds(from, to);
    const SiteOnServer::Lease server = m_site->lease(agent);
    const auto known = m_site->known().amendments(*server, server.tables());
    const KnownRows::Amendments& all = *known;
    std::vector<Amendment> found;
    for (const RowId property : properties) {
        const auto ofProperty = all.find(property);
        if (ofProperty == all.end())
            continue;
        std::vector<Amendment> some = ofProperty->second;
        std::erase_if(some, [&](const Amendment& each) { return each.from > bounds.to || each.to < bounds.from; });
        std::stable_sort(some.begin(), some.end(), [](const Amendment& one, const Amendment& other) {
            return std::pair(one.from, one.to) < std::pair(other.from, other.to);
        });
        found.insert(found.end(), some.begin(), some.end());
    }
    return found;
}

std::unique_ptr<RecordTransaction> ClickHouseRecordStore::begin()
{
    return transactionOn({m_site, std::make_shared<ClickHouseRecordStore>(m_site)});
}

std::unique_ptr<RecordAppender> ClickHouseRecordStore::appender()
{
    return appenderTo({m_site, std::make_shared<ClickHouseRecordStore>(m_site)});
}

CompactionResult ClickHouseRecordStore::compact(const CompactionRequest& request, const ArchiveProgress& progress)
{
    return compacted({m_site, std::make_shared<ClickHouseRecordStore>(m_site)}, request, progress);
}

VerificationResult ClickHouseRecordStore::verify(const ArchiveProgress& progress, std::uint64_t)
{
    VerificationResult result;
    result.stopped = progress && !progress(0);
    if (result.stopped)
        return result;
    const auto note = [&](const QString& finding) {
        if (result.findings.size() < VerificationResult::kMostFindings)
            result.findings.append(finding);
        else
            result.moreFindings = true;
    };
    std::vector<RowId> agents;
    for (std::size_t shard = 0; shard < m_site->shards(); ++shard)
        for (const RowId agent : m_site->agentsOn(shard))
            agents.push_back(agent);
    for (std::size_t place = 0; place < agents.size(); ++place) {
        const SiteOnServer::Lease server = m_site->lease(agents[place]);
        AgentReading reading(*server, server.tables(), agents[place]);
        const AgentReading::Rows rows = reading.rows(-kInfinity, kInfinity);
        const std::vector<Piece> pieces = reading.pieces(rows, -kInfinity, kInfinity, nullptr);
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const double fraction =
                (static_cast<double>(place) + static_cast<double>(i) / static_cast<double>(pieces.size())) /
                static_cast<double>(agents.size());
            result.stopped = progress && !progress(fraction);
            if (result.stopped)
                return result;
            const Piece& piece = pieces[i];
            result.records += piece.n;
            result.chunks += piece.chunk ? 1 : 0;
            try {
                const Records read = piece.chunk ? reading.recordsOf(*piece.chunk, nullptr) : Records();
                const RecordsView view = piece.chunk ? read.view() : piece.records.view();
                std::vector<RowId> properties;
                for (const RecordsView::Column& column : view.columns) {
                    properties.push_back(column.property);
                    for (std::size_t record = 0; record < view.size; ++record)
                        result.values += bits::get(column.valid, column.firstValid + record, 1);
                }
                const auto indexes = ChunkIndexes(*server, server.tables(), agents[place])
                                         .of(std::span(&piece, 1), properties, RecordIndex::Detail::Runs);
                for (std::size_t column = 0; column < properties.size(); ++column)
                    if (const RecordIndex::Column& told = indexes[0].columns[column];
                        told.source == RecordIndex::Source::DamagedIndex ||
                        !told.index.agreesWith(indexOf(view.columns[column], view.size)))
                        note(QStringLiteral("The index of property %1 in chunk %2 says something else than its values.")
                                 .arg(properties[column])
                                 .arg(piece.chunk ? piece.chunk->id : 0));
            } catch (const ReportableError& error) {
                note(error.message());
            }
        }
    }
    if (progress)
        progress(1);
    return result;
}

}  // namespace plotix
