#include "records/tables/TablePages.h"

#include "base/ReportableError.h"
#include "records/columns/ColumnView.h"
#include "records/columns/ValidityBits.h"
#include "records/tables/GatheredRows.h"

#include <algorithm>
#include <limits>

namespace plotix {

namespace {

constexpr double kStretches = 16384;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kMostFetched = 8;
constexpr std::size_t kBefore = 3, kFigures = 5;  // numbers of a stretch, and of each property in it

}  // namespace

void TableSpan::failAsChanged() const
{
    throw ReportableError(
        QStringLiteral("The table “%1” was changed while it is shown: show it again.").arg(statements->table().table));
}

std::shared_ptr<const GatheredRows> TableSpan::rows(std::size_t first, std::size_t end) const
{
    {
        const std::lock_guard lock(m_mutex);
        for (const Fetched& each : m_fetched)
            if (each.first == first && each.end == end)
                return each.rows;
    }
    const bool isLong = statements->table().isLong();
    const auto rows = std::make_shared<GatheredRows>(properties.size(), isLong);
    database->select(
        statements->rows(properties, {runs.first[first], runs.last[end - 1]}), isLong ? 3 : properties.size() + 1,
        [&] { rows->clear(); },
        [&](std::span<const std::vector<double>> some) {
            rows->add(some);
            return true;
        });
    if (rows->size() != runs.begin[end] - runs.begin[first])
        failAsChanged();
    const std::lock_guard lock(m_mutex);
    m_fetched.push_front({first, end, rows});
    if (m_fetched.size() > kMostFetched)
        m_fetched.pop_back();
    return rows;
}

TablePages::TablePages(std::shared_ptr<PageCache> cache, std::shared_ptr<const TableSpan> span, RowId property,
                       bool isAllValid)
    : PagedMemory(std::move(cache), span->runs.begin.back()),
      m_span(std::move(span)),
      m_property(property),
      m_values(reserve<double>()),
      m_words(isAllValid ? nullptr : reserve<std::uint64_t>(64))
{
}

ValidityBitmap TablePages::validity() const
{
    if (!m_words)
        return {};
    return ValidityBitmap(PagedArray<std::uint64_t>(shared_from_this(), m_words, bits::wordsFor(elements()), 64));
}

bool TablePages::fill(std::size_t first, std::size_t end) const noexcept
{
    if (m_words)
        std::fill(m_words + first / 64, m_words + bits::wordsFor(end), ~std::uint64_t{0});
    try {
        fetch(first, end);
        return true;
    } catch (const std::exception& error) {
        m_span->failure->report(QString::fromUtf8(error.what()));
    }
    standIn(first, end);
    return false;
}

void TablePages::fetch(std::size_t first, std::size_t end) const
{
    const TimeRuns& runs = m_span->runs;
    const auto firstRun =
        static_cast<std::size_t>(std::upper_bound(runs.begin.begin(), runs.begin.end(), first) - runs.begin.begin()) -
        1;
    const auto endRun = static_cast<std::size_t>(
        std::lower_bound(runs.begin.begin() + static_cast<std::ptrdiff_t>(firstRun) + 1, runs.begin.end(), end) -
        runs.begin.begin());
    const std::shared_ptr<const GatheredRows> rows = m_span->rows(firstRun, endRun);
    const std::size_t skipped = first - runs.begin[firstRun];
    if (m_property == kTimes) {
        std::copy_n(rows->times().data() + skipped, end - first, m_values + first);
        return;
    }
    const std::vector<RowId>& all = m_span->properties;
    const auto place = static_cast<std::size_t>(std::find(all.begin(), all.end(), m_property) - all.begin());
    const std::span<const double> values = std::span(rows->column(place)).subspan(skipped, end - first);
    std::copy(values.begin(), values.end(), m_values + first);
    const std::vector<std::uint64_t> valid = validWords(values);
    if (!valid.empty() && !m_words)
        m_span->failAsChanged();
    if (!valid.empty())
        bits::copy(valid.data(), 0, m_words, first, end - first);
}

/// No values; times that rise evenly in each run.
void TablePages::standIn(std::size_t first, std::size_t end) const
{
    if (m_property != kTimes) {
        std::fill(m_values + first, m_values + end, absentValue());
        if (m_words)
            bits::clear(m_words, first, end - first);
        return;
    }
    const TimeRuns& runs = m_span->runs;
    auto run =
        static_cast<std::size_t>(std::upper_bound(runs.begin.begin(), runs.begin.end(), first) - runs.begin.begin()) -
        1;
    for (std::size_t i = first; i < end; ++i) {
        while (i >= runs.begin[run + 1])
            ++run;
        const std::size_t count = runs.begin[run + 1] - runs.begin[run];
        const double step = count > 1 ? (runs.last[run] - runs.first[run]) / static_cast<double>(count - 1) : 0;
        m_values[i] = std::min(runs.first[run] + step * static_cast<double>(i - runs.begin[run]), runs.last[run]);
    }
}

std::optional<RecordColumns> pagedColumns(const std::shared_ptr<TableDatabase>& database,
                                          const std::shared_ptr<const TableStatements>& statements,
                                          std::span<const RowId> properties, const TableStatements::Range& range,
                                          const RecordExtent& extent, const std::shared_ptr<PageCache>& cache,
                                          const ArchiveProgress& progress)
{
    const auto span = std::make_shared<TableSpan>();
    span->database = database;
    span->statements = statements;
    span->properties.assign(properties.begin(), properties.end());
    std::vector<ValueRuns> runs(properties.size());
    std::vector<RecordColumns::Total> totals(properties.size());
    const auto begin = [&] {
        span->runs = {};
        runs.assign(properties.size(), {});
        totals.assign(properties.size(), {});
        span->runs.begin.push_back(0);
    };
    const double seconds = std::max((extent.last - extent.first) / kStretches, 1e-6);
    const bool isDone = database->select(
        statements->stretches(properties, range, {extent.first, seconds}, TableStatements::First::Wanted),
        kBefore + kFigures * properties.size(), begin, [&](std::span<const std::vector<double>> rows) {
            for (std::size_t i = 0; i < rows[0].size(); ++i) {
                span->runs.first.push_back(rows[0][i]);
                span->runs.last.push_back(rows[1][i]);
                span->runs.begin.push_back(span->runs.begin.back() + static_cast<std::size_t>(rows[2][i]));
                for (std::size_t place = 0; place < properties.size(); ++place) {
                    const auto figures = rows.subspan(kBefore + kFigures * place, kFigures);
                    const auto valid = static_cast<std::size_t>(figures[0][i]);
                    runs[place].least.push_back(valid > 0 ? figures[1][i] : kInfinity);
                    runs[place].greatest.push_back(valid > 0 ? figures[2][i] : -kInfinity);
                    runs[place].first.push_back(figures[4][i]);
                    totals[place].valid += valid;
                    totals[place].sum.add(valid > 0 ? figures[3][i] : 0);
                }
            }
            return !progress || progress(0.5);
        });
    if (!isDone || (progress && !progress(1)))
        return std::nullopt;
    RecordColumns columns;
    columns.failure = span->failure;
    columns.runs = std::make_shared<const TimeRuns>(span->runs);
    columns.times = std::make_shared<const TablePages>(cache, span, kTimes, true)->values();
    for (std::size_t place = 0; place < properties.size(); ++place) {
        const bool isAllValid = totals[place].valid == span->runs.begin.back();
        const auto pages = std::make_shared<const TablePages>(cache, span, properties[place], isAllValid);
        columns.columns.push_back({properties[place], pages->values(), pages->validity(),
                                   KeptRuns::of(std::move(runs[place])), totals[place]});
    }
    return columns;
}

}  // namespace plotix
