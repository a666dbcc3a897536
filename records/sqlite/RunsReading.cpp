#include "records/sqlite/RunsReading.h"

#include "base/ReportableError.h"
#include "records/sqlite/HelpingThreads.h"

#include <algorithm>

namespace plotix {

namespace {

/// Whether the outline is of these parts, the first ones of them, whole.
bool isOf(const Outline& outline, std::span<const ChunkPart> parts)
{
    if (parts.size() < outline.chunks.size())
        return false;
    for (std::size_t i = 0; i < outline.chunks.size(); ++i)
        if (parts[i].chunk.id != outline.chunks[i] || parts[i].chunk.n != outline.cut.records[i] || !parts[i].isWhole())
            return false;
    return true;
}

/// Chunks taken at once; what is stored of them is in memory in full.
constexpr std::size_t kPartsTaken = 64;
/// In more chunks than this long runs stay: reading so many columns would take longer than all else, and in a picture
/// of so many chunks they are short enough. In all or in none, so that no part of a span is slower than the others.
constexpr std::size_t kMostWorkedOut = 4096;
/// Values of a chunk are decoded in the time that so many chunks' index takes.
constexpr std::size_t kIndexesToValues = 8;

}  // namespace

RunsReading::RunsReading(ReadConnections& lender, const std::vector<ChunkPart>& parts,
                         std::span<const RowId> properties, std::size_t ofAgent, std::vector<Outline> outlines,
                         const NotedOutlines& noted)
    : m_lender(lender),
      m_parts(parts),
      m_properties(properties),
      m_ofAgent(ofAgent),
      m_outlines(std::move(outlines)),
      m_noted(noted)
{
    cut();
}

void RunsReading::cut()
{
    const std::span<const ChunkPart> all(m_parts);
    const auto outlineAt = [&](std::size_t part) -> const Outline* {
        const auto found = std::lower_bound(m_outlines.begin(), m_outlines.end(), all[part].chunk.t0,
                                            [](const Outline& each, double time) { return each.t0 < time; });
        return found != m_outlines.end() && isOf(*found, all.subspan(part)) ? &*found : nullptr;
    };
    std::size_t withoutOutline = 0;
    for (std::size_t part = 0; part < all.size();) {
        if (const Outline* outline = outlineAt(part)) {
            m_pieces.push_back({part, outline->chunks.size(), outline});
        } else if (!m_pieces.empty() && !m_pieces.back().outline && m_pieces.back().count < kPartsTaken) {
            ++m_pieces.back().count;
            ++withoutOutline;
        } else {
            m_pieces.push_back({part, 1, nullptr});
            ++withoutOutline;
        }
        part = m_pieces.back().first + m_pieces.back().count;
    }
    m_worksOutLongRuns = withoutOutline <= kMostWorkedOut;
}

KnownRuns RunsReading::of(RunsInWork& runs, const Piece& piece) const
{
    const auto parts = std::span<const ChunkPart>(m_parts).subspan(piece.first, piece.count);
    if (piece.outline) {
        if (std::optional<KnownRuns> noted = m_noted.of(*piece.outline, parts, m_properties))
            return std::move(*noted);
        if (std::optional<KnownRuns> outlined = runs.of(*piece.outline, parts)) {
            m_noted.keep(*piece.outline, parts, m_properties, *outlined);
            return std::move(*outlined);
        }
    }
    return runs.of(parts);
}

bool RunsReading::run(ReadConnection& own, const ArchiveProgress& progress, KnownRuns& known)
{
    {
        const std::size_t values = m_parts.empty() ? 0 : (m_parts.back().target + m_parts.back().count);
        const HelpingThreads helpers(
            helpersFor(m_lender, values * m_properties.size() / kIndexesToValues, m_pieces.size()), [this] { help(); });
        try {
            work(own, progress, &known);
        } catch (...) {
            keepFailure();
        }
    }
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (!m_stopped)
        addReady(known);
    return !m_stopped;
}

void RunsReading::help()
{
    try {
        const ReadConnections::Lease connection = m_lender.lease();
        const ReadTransaction transaction(connection->database);
        if (!showsEveryPart(*connection, m_parts))
            return;
        try {
            work(*connection, {}, nullptr);
        } catch (...) {
            keepFailure();
        }
    } catch (const ReportableError&) {  // no connection available: the others do the work
    } catch (const std::bad_alloc&) {
    }
}

/// `known`: null for helpers.
void RunsReading::work(ReadConnection& connection, const ArchiveProgress& progress, KnownRuns* known)
{
    RunsInWork runs(connection, m_properties, m_ofAgent, m_worksOutLongRuns);
    while (!m_stopped) {
        const std::size_t piece = m_next.fetch_add(1);
        if (piece >= m_pieces.size())
            break;
        if (progress && !progress(static_cast<double>(m_added) / static_cast<double>(m_pieces.size()))) {
            m_stopped = true;
            break;
        }
        KnownRuns found = of(runs, m_pieces[piece]);
        {
            const std::lock_guard lock(m_mutex);
            m_ready.emplace(piece, std::move(found));
        }
        if (known)
            addReady(*known);
    }
}

void RunsReading::addReady(KnownRuns& known)
{
    std::unique_lock lock(m_mutex);
    for (auto next = m_ready.find(m_added); next != m_ready.end(); next = m_ready.find(m_added)) {
        auto ready = m_ready.extract(next);
        lock.unlock();
        known.append(std::move(ready.mapped()));
        ++m_added;
        lock.lock();
    }
}

void RunsReading::keepFailure()
{
    m_stopped = true;
    const std::lock_guard lock(m_mutex);
    if (!m_failure)
        m_failure = std::current_exception();
}

}  // namespace plotix
