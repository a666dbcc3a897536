#include "records/sqlite/RunsReading.h"

#include "base/ReportableError.h"
#include "records/sqlite/HelpingThreads.h"

#include <algorithm>

namespace plotix {

namespace {

/// Chunks taken at once; what is stored of them is in memory in full.
constexpr std::size_t kPartsTaken = 64;
/// In more chunks than this long runs stay: reading so many columns would take longer than all else, and in a picture
/// of so many chunks they are short enough. In all or in none, so that no part of a span is slower than the others.
constexpr std::size_t kMostWorkedOut = 4096;
/// Values of a chunk are decoded in the time that so many chunks' index takes.
constexpr std::size_t kIndexesToValues = 8;

}  // namespace

RunsReading::RunsReading(ReadConnections& lender, const std::vector<ChunkPart>& parts,
                         std::span<const RowId> properties, std::size_t ofAgent)
    : m_lender(lender),
      m_parts(parts),
      m_properties(properties),
      m_ofAgent(ofAgent),
      m_worksOutLongRuns(parts.size() <= kMostWorkedOut)
{
}

bool RunsReading::run(ReadConnection& own, const ArchiveProgress& progress, KnownRuns& known)
{
    {
        const std::size_t values = m_parts.empty() ? 0 : (m_parts.back().target + m_parts.back().count);
        const HelpingThreads helpers(
            helpersFor(m_lender, values * m_properties.size() / kIndexesToValues, m_parts.size() / kPartsTaken),
            [this] { help(); });
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
    const std::span<const ChunkPart> all(m_parts);
    while (!m_stopped) {
        const std::size_t first = m_next.fetch_add(kPartsTaken);
        if (first >= all.size())
            break;
        if (progress && !progress(static_cast<double>(m_added) / static_cast<double>(all.size()))) {
            m_stopped = true;
            break;
        }
        KnownRuns found = runs.of(all.subspan(first, std::min(kPartsTaken, all.size() - first)));
        {
            const std::lock_guard lock(m_mutex);
            m_ready.emplace(first, std::move(found));
        }
        if (known)
            addReady(*known);
    }
}

void RunsReading::addReady(KnownRuns& known)
{
    std::unique_lock lock(m_mutex);
    for (auto next = m_ready.find(m_added); next != m_ready.end(); next = m_ready.find(m_added)) {
        const auto ready = m_ready.extract(next);
        lock.unlock();
        known.append(ready.mapped());
        m_added += kPartsTaken;
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
