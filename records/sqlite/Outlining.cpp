#include "records/sqlite/Outlining.h"

#include "base/ReportableError.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kMostChunks = outlinecodec::kMostChunks;
/// Chunks at the end may be joined with those that follow: what many records in one go leave short.
constexpr std::size_t kAtWork = 16;
/// Fewer chunks between outlines are read as they are.
constexpr std::size_t kFewest = 8;
/// Of the packed bytes an outline may take one in so many; where columns hardly take any, this for each.
constexpr std::size_t kShare = 100;
constexpr std::size_t kLeastBytes = 256;

bool isSameNumber(double one, double other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

bool areSame(const ValueRuns& one, const ValueRuns& other)
{
    const auto isSame = [](const std::vector<double>& a, const std::vector<double>& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSameNumber);
    };
    return isSame(one.least, other.least) && isSame(one.greatest, other.greatest) && isSame(one.first, other.first);
}

}  // namespace

/// Of the chunks so far.
OutlineInWork::Column OutlineInWork::withoutValues() const
{
    Column column;
    const std::size_t runs = m_outline.cut.runs();
    column.runs.least.assign(runs, kInfinity);
    column.runs.greatest.assign(runs, -kInfinity);
    column.runs.first.assign(runs, absentValue());
    column.totals.absent.assign(m_outline.chunks.size(), true);
    return column;
}

void OutlineInWork::add(const Chunk& chunk, const ChunkFigures& figures)
{
    for (const ChunkFigures::Column& column : figures.columns) {
        const auto found = m_columns.find(column.property);
        Column& known = found != m_columns.end() ? found->second : m_columns[column.property] = withoutValues();
        known.runs.append(column.runs);
        known.totals.valid += column.valid;
        known.totals.sum.add(column.sum);
        known.totals.absent.push_back(false);
    }
    m_times.first.insert(m_times.first.end(), figures.times.first.begin(), figures.times.first.end());
    m_times.last.insert(m_times.last.end(), figures.times.last.begin(), figures.times.last.end());
    if (m_outline.chunks.empty())
        m_outline.t0 = chunk.t0;
    m_outline.t1 = chunk.t1;
    m_outline.chunks.push_back(chunk.id);
    m_outline.cut.records.push_back(chunk.n);
    for (auto& [property, known] : m_columns) {
        if (known.totals.absent.size() == m_outline.chunks.size())
            continue;
        known.totals.absent.push_back(true);
        known.runs.least.resize(m_times.first.size(), kInfinity);
        known.runs.greatest.resize(m_times.first.size(), -kInfinity);
        known.runs.first.resize(m_times.first.size(), absentValue());
    }
}

OutlineInWork::Written OutlineInWork::written(std::size_t packedBytes) const
{
    Written made{m_outline, {}};
    Outline& outline = made.outline;
    for (const auto& [property, column] : m_columns)
        outline.properties.push_back(property);
    const std::size_t most = std::max(packedBytes / kShare, kLeastBytes * (m_columns.size() + 1));
    outlinecodec::Times times = m_times;
    std::map<RowId, Column> columns = m_columns;
    for (;;) {
        made.rows = {outlinecodec::written(times, outline.owner(kTimes))};
        std::size_t bytes = made.rows.front().size();
        for (const auto& [property, column] : columns) {
            made.rows.push_back(
                outlinecodec::written(column.runs, column.totals, outline.cut, outline.owner(property)));
            bytes += made.rows.back().size();
        }
        if (bytes <= most || outline.cut.doublings == outlinecodec::kMostDoublings)
            return made;
        times = outlinecodec::coarser(times, outline.cut);
        for (auto& [property, column] : columns)
            column.runs = outlinecodec::coarser(column.runs, outline.cut);
        outline.cut = outline.cut.coarser();
    }
}

bool OutlineInWork::isToldBy(OutlineTable& table, const Outline& stored) const
{
    if (stored.chunks != m_outline.chunks || stored.cut.records != m_outline.cut.records ||
        stored.properties.size() != m_columns.size())
        return false;
    const auto atStored = [&](auto fine) {
        for (outlinecodec::Cut cut = m_outline.cut; cut.doublings < stored.cut.doublings; cut = cut.coarser())
            fine = outlinecodec::coarser(fine, cut);
        return fine;
    };
    const std::optional<outlinecodec::Times> times = table.times(stored);
    if (!times || !(*times == atStored(m_times)))
        return false;
    ByteKeeper keeper;
    return std::all_of(m_columns.begin(), m_columns.end(), [&](const auto& each) {
        const auto& [property, column] = each;
        const auto found = stored.has(property) ? table.column(stored, property, keeper) : std::nullopt;
        return found && found->totals.valid == column.totals.valid && found->totals.sum == column.totals.sum &&
               found->totals.absent == column.totals.absent &&
               areSame(outlinecodec::readRuns(found->bytes.span(), stored.cut), atStored(column.runs));
    });
}

void Outlining::extend(RowId agent, std::size_t written)
{
    for (std::size_t outlined = 0; outlined <= written; outlined += kMostChunks) {
        const double end = m_table.endOf(agent).value_or(-kInfinity);
        const std::vector<Chunk> chunks = m_chunks.firstChunksAfter(agent, end, kMostChunks + kAtWork);
        if (chunks.size() < kMostChunks + kAtWork || !outline(agent, std::span(chunks).first(kMostChunks)))
            return;
    }
}

void Outlining::removeDamaged(RowId agent)
{
    std::vector<qint64> damaged = m_table.ids(agent);
    for (const Outline& outline : m_table.between(agent, -kInfinity, kInfinity))
        if (isSound(agent, outline))
            std::erase(damaged, outline.id);
    for (const qint64 outline : damaged)
        m_table.remove(outline);
}

bool Outlining::isSound(RowId agent, const Outline& outline)
{
    const std::vector<Chunk> chunks = m_chunks.chunksBetween(agent, outline.t0, outline.t1);
    ByteKeeper keeper;
    return chunks.size() == outline.chunks.size() && outline.isOf(chunks) && m_table.times(outline) &&
           std::all_of(outline.properties.begin(), outline.properties.end(),
                       [&](RowId property) { return m_table.column(outline, property, keeper).has_value(); });
}

bool Outlining::completeSome(RowId agent, double& from)
{
    const std::vector<Chunk> chunks = m_chunks.chunksBetween(agent, from, kInfinity);
    const std::vector<Outline> outlines = m_table.between(agent, from, kInfinity);
    const auto outlineAt = [&](std::size_t chunk) -> const Outline* {
        const auto found = std::lower_bound(outlines.begin(), outlines.end(), chunks[chunk].t0,
                                            [](const Outline& each, double time) { return each.t0 < time; });
        return found != outlines.end() && found->isOf(std::span(chunks).subspan(chunk)) ? &*found : nullptr;
    };
    for (std::size_t first = 0; first < chunks.size();) {
        if (const Outline* known = outlineAt(first)) {
            first += known->chunks.size();
            continue;
        }
        std::size_t end = first + 1;
        while (end < chunks.size() && end - first < kMostChunks + kAtWork && !outlineAt(end))
            ++end;
        const bool isAtEnd = end == chunks.size();
        const std::size_t count = std::min(end - first, kMostChunks);
        if (isAtEnd && end - first < kMostChunks + kAtWork)
            return false;
        if (count >= kFewest) {
            outline(agent, std::span(chunks).subspan(first, count));
            from = std::nextafter(chunks[first + count - 1].t1, kInfinity);
            return true;
        }
        first = end;
    }
    return false;
}

/// In place of any that is of one of them. False: one of them cannot be read.
bool Outlining::outline(RowId agent, std::span<const Chunk> chunks)
{
    OutlineInWork work;
    try {
        for (const Chunk& chunk : chunks) {
            const std::optional<ChunkFigures> known = m_chunks.takeFigures(chunk);
            work.add(chunk, known ? *known : ChunkFigures::of(m_chunks.read(chunk).view()));
        }
    } catch (const ReportableError&) {
        return false;
    }
    for (const Chunk& chunk : chunks)
        m_table.removeThatOf(chunk);
    const OutlineInWork::Written made = work.written(m_chunks.packedBytes(chunks));
    m_table.add(agent, made.outline, made.rows);
    return true;
}

}  // namespace plotix
