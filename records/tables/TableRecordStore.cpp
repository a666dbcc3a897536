#include "records/tables/TableRecordStore.h"

#include "base/ReportableError.h"
#include "records/columns/ColumnView.h"
#include "records/store/Records.h"
#include "records/tables/GatheredRows.h"
#include "records/tables/TablePages.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kPiece = 16384;  // records of an index's piece
constexpr auto kCountedFor = std::chrono::seconds(1);
constexpr double kStretches = 256;  // of an overview

}  // namespace

void TableRecordStore::refuse() const
{
    throw ReportableError(
        QStringLiteral("“%1” is read only: it is a table of somebody else's, in %2. Store records under another agent.")
            .arg(m_table.table, m_database->title()));
}

/// What the columns are is asked once: whoever changes a table has it attached anew.
std::shared_ptr<const TableStatements> TableRecordStore::statements()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_statements)
            return m_statements;
    }
    const std::vector<TableServer::Column> columns = m_database->columns(m_table.table);
    const bool isUnique = !columns.empty() && m_database->isUnique(m_table.table, m_table.timeColumn);
    const auto made = std::make_shared<const TableStatements>(m_database, m_table, columns, isUnique);
    const std::lock_guard lock(m_mutex);
    return m_statements = made;
}

/// Of the first row of an answer; empty: there is none.
std::vector<double> TableRecordStore::numbers(const std::string& statement, std::size_t count)
{
    std::vector<double> found;
    m_database->select(
        statement, count, [&] { found.clear(); },
        [&](std::span<const std::vector<double>> rows) {
            if (found.empty() && !rows[0].empty())
                for (const std::vector<double>& column : rows)
                    found.push_back(column[0]);
            return true;
        });
    return found;
}

std::optional<RecordExtent> TableRecordStore::extent(RowId)
{
    const auto table = statements();
    if (const std::vector<double> any = numbers(table->anyRow(), 1); any.empty() || any[0] == 0)
        return std::nullopt;
    const std::vector<double> quick = numbers(table->quickExtent(), 2);
    if (!quick.empty() && std::isfinite(quick[0]) && std::isfinite(quick[1]))
        return RecordExtent{quick[0], quick[1]};
    const std::vector<double> exact = numbers(table->extent({}, {}), 3);
    if (exact.empty() || exact[0] == 0)
        return std::nullopt;
    return RecordExtent{exact[1], exact[2]};
}

RecordOverview TableRecordStore::overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                          std::optional<double> to)
{
    const Range range{from, to};
    RecordOverview overview;
    for (const RowId property : properties)
        overview.columns.push_back({property, {}});
    const std::optional<RecordExtent> all = range.isEmpty() ? std::nullopt : extent(agent);
    if (!all)
        return overview;
    const RecordOverview empty = overview;
    const double start = std::max(all->first, from.value_or(all->first));
    const double end = std::min(all->last, to.value_or(all->last));
    const double seconds = std::max((end - start) / kStretches, 1e-6);
    constexpr std::size_t kBefore = 3, kFigures = 4;
    m_database->select(
        statements()->stretches(properties, range, {start, seconds}, TableStatements::First::NotWanted),
        kBefore + kFigures * properties.size(), [&] { overview = empty; },
        [&](std::span<const std::vector<double>> rows) {
            for (std::size_t i = 0; i < rows[0].size(); ++i) {
                overview.runs.push_back({rows[0][i], rows[1][i], static_cast<std::size_t>(rows[2][i])});
                for (std::size_t place = 0; place < properties.size(); ++place) {
                    const auto figures = rows.subspan(kBefore + kFigures * place, kFigures);
                    const auto valid = static_cast<std::size_t>(figures[0][i]);
                    overview.columns[place].summaries.push_back(
                        valid > 0 ? RecordOverview::Summary{valid, figures[1][i], figures[2][i], figures[3][i]}
                                  : RecordOverview::Summary{});
                }
            }
            return true;
        });
    return overview;
}

bool TableRecordStore::hasMoreThan(std::size_t records, RowId, std::optional<double> from, std::optional<double> to)
{
    const Range range{from, to};
    if (range.isEmpty())
        return false;
    using Clock = std::chrono::steady_clock;
    const auto wanted = static_cast<double>(records);
    {
        const std::lock_guard lock(m_mutex);
        const bool isSame = m_counted.range == range && Clock::now() < m_counted.until;
        if (isSame && (records < m_counted.most || m_counted.rows < static_cast<double>(m_counted.most)))
            return m_counted.rows > wanted;
    }
    const std::size_t most = std::max(records, m_little) + 1;
    const std::vector<double> count = numbers(statements()->countUpTo(most, range), 1);
    const double rows = count.empty() ? 0 : count[0];
    const std::lock_guard lock(m_mutex);
    m_counted = {range, rows, most, Clock::now() + kCountedFor};
    return rows > wanted;
}

RecordIndex TableRecordStore::index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                    std::optional<double> to, RecordIndex::Detail detail)
{
    const RecordBlock block = *read(agent, properties, from, to, {});
    const RecordsView all = RecordsView::of(block);
    RecordIndex index;
    for (std::size_t begin = 0; begin < all.size; begin += kPiece) {
        const RecordsView records = all.slice(begin, std::min(kPiece, all.size - begin));
        RecordIndex::Piece& piece = index.pieces.emplace_back(
            RecordIndex::Piece{records.times[0], records.times[records.size - 1], records.size, {}, {}});
        if (detail == RecordIndex::Detail::Runs)
            piece.times = runTimesOf({records.times, records.size});
        for (const RecordsView::Column& column : records.columns) {
            ColumnIndex known = indexOf(column, records.size);
            piece.columns.push_back(
                {column.property, RecordIndex::Source::Records,
                 detail == RecordIndex::Detail::Runs ? std::move(known) : std::move(known).withoutRuns()});
        }
    }
    return index;
}

std::optional<RecordBlock> TableRecordStore::read(RowId agent, std::span<const RowId> properties,
                                                  std::optional<double> from, std::optional<double> to,
                                                  const ArchiveProgress& progress)
{
    if (progress && !progress(0))
        return std::nullopt;
    const Range range{from, to};
    const auto table = statements();
    std::vector<RowId> asked(properties.begin(), properties.end());
    const bool isLong = table->table().isLong();
    // The times alone are those of all names.
    if (isLong && asked.empty())
        for (const auto& [property, name] : table->table().columns)
            asked.push_back(property);
    GatheredRows rows(asked.size(), isLong);
    if (!range.isEmpty()) {
        std::optional<RecordExtent> span;
        if (progress)
            span = extent(agent);
        const double start = span ? std::max(span->first, from.value_or(span->first)) : 0;
        const double length = span ? std::min(span->last, to.value_or(span->last)) - start : 0;
        double done = 0;
        const bool isDone = m_database->select(
            table->rows(asked, range), isLong ? 3 : asked.size() + 1, [&] { rows.clear(); },
            [&](std::span<const std::vector<double>> some) {
                rows.add(some);
                if (rows.size() > 0 && length > 0)
                    done = std::clamp((rows.lastTime() - start) / length, done, 1.0);
                return !progress || progress(done);
            });
        if (!isDone)
            return std::nullopt;
    }
    if (progress && !progress(1))
        return std::nullopt;
    RecordBlock block = rows.taken(asked);
    block.columns.resize(properties.size());
    return block;
}

std::optional<RecordColumns> TableRecordStore::columns(RowId agent, std::span<const RowId> properties,
                                                       std::optional<double> from, std::optional<double> to,
                                                       const std::shared_ptr<PageCache>& cache,
                                                       const ArchiveProgress& progress)
{
    const Range range{from, to};
    constexpr std::size_t kFewProperties = 4;
    const std::size_t little = m_little / std::max<std::size_t>(1, properties.size() / kFewProperties);
    if (!cache || range.isEmpty() || properties.empty() || !hasMoreThan(little, agent, from, to))
        return RecordStore::columns(agent, properties, from, to, cache, progress);
    if (progress && !progress(0))
        return std::nullopt;
    const std::optional<RecordExtent> all = extent(agent);
    if (!all)
        return RecordStore::columns(agent, properties, from, to, cache, progress);
    const RecordExtent cut{std::max(all->first, from.value_or(all->first)),
                           std::min(all->last, to.value_or(all->last))};
    return pagedColumns(m_database, statements(), properties, range, cut, cache, progress);
}

ColumnStatistics TableRecordStore::statistics(RowId, RowId property, std::optional<double> from,
                                              std::optional<double> to, StatisticsFrom)
{
    const Range range{from, to};
    if (range.isEmpty())
        return {};
    const std::vector<double> found = numbers(statements()->statistics(property, range), 4);
    if (found.empty() || found[0] == 0)
        return {};
    return {static_cast<std::size_t>(found[0]), found[1], found[2], found[3] / found[0]};
}

VerificationResult TableRecordStore::verify(const ArchiveProgress& progress, std::uint64_t)
{
    VerificationResult result;
    result.stopped = progress && !progress(0);
    if (result.stopped)
        return result;
    std::vector<RowId> properties;
    for (const auto& [property, column] : m_table.columns)
        properties.push_back(property);
    const RecordOverview overview = this->overview(0, properties, {}, {});
    result.records = overview.records();
    for (const RecordOverview::Column& column : overview.columns)
        for (const RecordOverview::Summary& summary : column.summaries)
            result.values += summary.valid;
    if (progress)
        progress(1);
    return result;
}

}  // namespace plotix
