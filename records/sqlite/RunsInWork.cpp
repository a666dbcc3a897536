#include "records/sqlite/RunsInWork.h"

#include "base/HugePages.h"
#include "records/columns/ColumnKernels.h"
#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <utility>

namespace plotix {

namespace {

using Found = IndexStore::FoundRuns;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kRun = ColumnKernels::kRun;
/// Runs longer than this are worked out anew, so that one column does not make those of all others longer.
constexpr std::size_t kLongestWelcome = 4 * kRun;

/// What stays of a stretch's figures.
struct Extremes {
    double least = kInfinity, greatest = -kInfinity, first = absentValue();
};

Extremes extremesOf(const RunFigures& figures)
{
    if (figures.valid == 0)
        return {};
    return {figures.least.value, figures.greatest.value, figures.first.at == 0 ? figures.first.value : absentValue()};
}

/// What its runs are a multiple of; 0: anything.
std::size_t lengthOfRuns(const Found& column, std::size_t count)
{
    if (column.runs.runs > 0)
        return column.runs.runLength;
    return isEverywhereTheSame(column.whole, count) ? 0 : count;
}

Extremes extremesOf(const Found& column, std::size_t begin, std::size_t end)
{
    const indexcodec::RunExtremes& runs = column.runs;
    if (runs.runs == 0)
        return extremesOf(column.whole);
    std::size_t run = begin / runs.runLength;
    Extremes extremes{runs.least[run], runs.greatest[run], runs.first[run]};
    for (++run; run * runs.runLength < end; ++run) {
        if (runs.least[run] < extremes.least)
            extremes.least = runs.least[run];
        if (runs.greatest[run] > extremes.greatest)
            extremes.greatest = runs.greatest[run];
    }
    return extremes;
}

template <class T>
void append(const std::vector<T>& next, std::vector<T>& to)
{
    to.insert(to.end(), next.begin(), next.end());
}

/// Room that is not needed, where that is worth a copy.
template <class T>
void giveBack(std::vector<T>& values)
{
    constexpr std::size_t kWorthACopy = 8;  // one part in so many
    if (values.capacity() - values.size() > values.size() / kWorthACopy)
        values.shrink_to_fit();
}

/// Of a column over the chunks of an outline, as it is stored.
class OutlinedRuns final : public KeptRuns {
public:
    OutlinedRuns(KeptBytes bytes, std::shared_ptr<const outlinecodec::Cut> cut, std::size_t count)
        : m_bytes(std::move(bytes)), m_cut(std::move(cut)), m_count(count)
    {
    }
    std::size_t count() const override { return m_count; }
    void inPieces(const Take& take) const override
    {
        const ValueRuns runs = outlinecodec::readRuns(m_bytes.span(), *m_cut);
        std::call_once(m_isLongRunKnown, [&] { m_longRun = outlinecodec::longRunOf(runs); });
        take(runs);
    }
    void inLongRuns(const Take& take) const override
    {
        std::call_once(m_isLongRunKnown, [this] { m_longRun = outlinecodec::readLongRun(m_bytes.span(), *m_cut); });
        take(m_longRun);
    }

private:
    const KeptBytes m_bytes;
    const std::shared_ptr<const outlinecodec::Cut> m_cut;
    const std::size_t m_count;
    mutable std::once_flag m_isLongRunKnown;
    mutable ValueRuns m_longRun;  // where somebody asked for it, or for all runs
};

std::shared_ptr<const KeptRuns> runsWithoutValues(std::size_t count)
{
    return KeptRuns::of({std::vector<double>(count, kInfinity), std::vector<double>(count, -kInfinity),
                         std::vector<double>(count, absentValue())});
}

}  // namespace

KnownRuns::KnownRuns(std::size_t properties, std::size_t records, std::size_t chunks) : columns(properties)
{
    const std::size_t most = records / kRun + chunks + 1;
    for (auto* each : {&times.first, &times.last})
        each->reserve(most);
    times.begin.reserve(most + 1);
    preferHugePages(times.first.data(), most * sizeof(double));
    preferHugePages(times.last.data(), most * sizeof(double));
    preferHugePages(times.begin.data(), most * sizeof(std::size_t));
}

void KnownRuns::append(KnownRuns&& next)
{
    plotix::append(next.times.begin, times.begin);
    plotix::append(next.times.first, times.first);
    plotix::append(next.times.last, times.last);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Column& column = columns[i];
        const Column& more = next.columns[i];
        plotix::append(more.runs, column.runs);
        plotix::append(more.absent, column.absent);
        column.isAllValid = column.isAllValid && more.isAllValid;
        column.total.valid += more.total.valid;
        column.total.sum.add(more.total.sum);
    }
}

void KnownRuns::finish(std::size_t records)
{
    times.begin.push_back(records);
    giveBack(times.begin);
    giveBack(times.first);
    giveBack(times.last);
}

RunsInWork::RunsInWork(ReadConnection& connection, std::span<const RowId> properties, std::size_t ofAgent,
                       bool worksOutLongRuns)
    : m_connection(connection),
      m_segments(connection),
      m_properties(properties.begin(), properties.end()),
      m_ofAgent(ofAgent),
      m_worksOutLongRuns(worksOutLongRuns),
      m_keepers(properties.size()),
      m_runs(properties.size())
{
}

/// What is known of a chunk, or of the tail.
void RunsInWork::add(const ChunkPart& part, const RunTimes& times, std::span<const Found> columns, KnownRuns& known)
{
    std::size_t length = kRun;
    for (const Found& column : columns)
        length = std::max(length, lengthOfRuns(column, part.count));
    length = (length + kRun - 1) / kRun * kRun;
    for (std::size_t begin = 0; begin < part.count; begin += length) {
        known.times.begin.push_back(part.target + begin);
        known.times.first.push_back(times.first[begin / kRun]);
        known.times.last.push_back(times.last[(std::min(begin + length, part.count) - 1) / kRun]);
    }
    for (std::size_t i = 0; i < columns.size(); ++i)
        for (std::size_t begin = 0; begin < part.count; begin += length) {
            const Extremes extremes = extremesOf(columns[i], begin, std::min(begin + length, part.count));
            m_runs[i].least.push_back(extremes.least);
            m_runs[i].greatest.push_back(extremes.greatest);
            m_runs[i].first.push_back(extremes.first);
        }
}

void RunsInWork::giveRuns(KnownRuns& known)
{
    for (std::size_t i = 0; i < m_runs.size(); ++i)
        known.columns[i].runs.push_back(KeptRuns::of(std::exchange(m_runs[i], {})));
}

KnownRuns RunsInWork::of(std::span<const ChunkPart> parts)
{
    std::size_t records = 0;
    for (const ChunkPart& part : parts)
        records += part.count;
    KnownRuns known(m_properties.size(), records, parts.size());
    find(parts, known);
    const std::size_t columns = m_properties.size();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::span<Found> found = std::span(m_found).subspan(i * columns, columns);
        workOutTimes(parts[i], m_times[i]);
        for (std::size_t place = 0; place < columns; ++place)
            complete(parts[i], m_properties[place], found[place], known.columns[place]);
        add(parts[i], m_times[i].times, found, known);
    }
    giveRuns(known);
    return known;
}

std::optional<KnownRuns> RunsInWork::of(const Outline& outline, std::span<const ChunkPart> parts)
{
    const std::optional<outlinecodec::Times> times = m_connection.outlines.times(outline);
    if (!times)
        return std::nullopt;
    const std::size_t records = parts.back().target + parts.back().count - parts.front().target;
    const std::size_t runs = times->first.size();
    KnownRuns known(m_properties.size(), records, parts.size());
    for (std::size_t chunk = 0; chunk < parts.size(); ++chunk)
        for (std::size_t run = 0; run < outline.cut.runsOf(chunk); ++run)
            known.times.begin.push_back(parts[chunk].target + run * outline.cut.runLength());
    known.times.first = times->first;
    known.times.last = times->last;
    const auto cut = std::make_shared<const outlinecodec::Cut>(outline.cut);
    for (std::size_t place = 0; place < m_properties.size(); ++place) {
        KnownRuns::Column& column = known.columns[place];
        if (!outline.has(m_properties[place])) {
            column.runs = {runsWithoutValues(runs)};
            column.absent.assign(parts.size(), true);
            column.isAllValid = false;
            continue;
        }
        std::optional<OutlineTable::Column> found =
            m_connection.outlines.column(outline, m_properties[place], m_keepers[place]);
        if (!found)
            return std::nullopt;
        column.runs = {std::make_shared<const OutlinedRuns>(std::move(found->bytes), cut, runs)};
        column.total = {found->totals.valid, found->totals.sum};
        column.absent = std::move(found->totals.absent);
        // Where NaNs are valid, there is a bitmap.
        column.isAllValid = column.total.valid == records;
    }
    return known;
}

KnownRuns RunsInWork::ofTail(const RecordsView& tail, std::size_t first)
{
    KnownRuns known(m_properties.size(), tail.size, 1);
    std::vector<Found> found(m_properties.size());
    for (std::size_t place = 0; place < m_properties.size(); ++place) {
        const RecordsView::Column* column = tail.find(m_properties[place]);
        const bool isAbsent = column == nullptr;
        known.columns[place].absent.push_back(isAbsent);
        known.columns[place].isAllValid = !isAbsent && bits::allSet(column->valid, column->firstValid, tail.size);
        if (!isAbsent)
            workOut(*column, tail.size, found[place], known.columns[place]);
    }
    add({{}, 0, tail.size, first}, runTimesOf({tail.times, tail.size}), found, known);
    giveRuns(known);
    return known;
}

/// Everything that is stored of the parts; totals of those that are whole.
void RunsInWork::find(std::span<const ChunkPart> parts, KnownRuns& known)
{
    m_chunks.clear();
    for (const ChunkPart& part : parts)
        m_chunks.push_back(part.chunk);
    m_found.resize(parts.size() * m_properties.size());
    m_times.resize(parts.size());
    const auto takeTotal = [&](std::size_t chunk, std::size_t place, const indexcodec::WholeFigures& whole) {
        if (!parts[chunk].isWhole())
            return;
        known.columns[place].total.valid += whole.figures.valid;
        whole.addSumTo(known.columns[place].total.sum);
    };
    m_connection.index.findExtremes(m_chunks, m_properties, m_ofAgent, m_found, m_times, takeTotal);
}

/// What is stored stays where it tells enough.
void RunsInWork::complete(const ChunkPart& part, RowId property, Found& column, KnownRuns::Column& known)
{
    const bool hasTotal = part.isWhole() && column.hasWhole;
    if (hasTotal && column.state == IndexStore::State::Sound && mayBeUsed(column, part.count)) {
        known.absent.push_back(false);
        // Where NaNs are valid, there is a bitmap.
        known.isAllValid = known.isAllValid && column.whole.valid == part.count;
        return;
    }
    m_values.resize(part.count);
    const bool isThere = m_segments.read(part, property, m_values.data());
    known.absent.push_back(!isThere);
    known.isAllValid = known.isAllValid && isThere && bits::allSet(m_segments.valid(), part.first, part.count);
    column.runs.runs = 0;
    if (!hasTotal)
        column.whole = {};
    if (!isThere)
        return;
    KnownRuns::Column unused;
    workOut({m_values.data(), m_segments.valid(), part.first}, part.count, column, hasTotal ? unused : known);
}

void RunsInWork::workOut(const ColumnView& column, std::size_t count, Found& found, KnownRuns::Column& known) const
{
    const ColumnIndex index = indexOf(column, count);
    found.whole = index.whole;
    indexcodec::RunExtremes& runs = found.runs;
    runs.runLength = index.runLength;
    runs.runs = index.runs.size();
    for (std::size_t run = 0; run < index.runs.size(); ++run) {
        const Extremes extremes = extremesOf(index.runs[run]);
        runs.least[run] = extremes.least;
        runs.greatest[run] = extremes.greatest;
        runs.first[run] = extremes.first;
    }
    known.total.valid += index.whole.valid;
    known.total.sum.add(index.sum);
}

void RunsInWork::workOutTimes(const ChunkPart& part, IndexStore::FoundTimes& times)
{
    if (part.isWhole() && times.state == IndexStore::State::Sound)
        return;
    m_values.resize(part.count);
    m_segments.readTimes(part, m_values.data());
    times.times = runTimesOf(m_values);
}

bool RunsInWork::mayBeUsed(const Found& stored, std::size_t count) const
{
    return !m_worksOutLongRuns || lengthOfRuns(stored, count) <= kLongestWelcome;
}

}  // namespace plotix
