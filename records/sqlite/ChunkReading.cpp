#include "records/sqlite/ChunkReading.h"

#include "base/ReportableError.h"
#include "records/sqlite/HelpingThreads.h"

#include <algorithm>
#include <exception>
#include <iterator>

namespace plotix {

namespace {

/// Chunks taken at once. They fill about one huge page of each column, so that two threads seldom fault in the same
/// page.
constexpr std::size_t kPartsTaken = 16;

}  // namespace

ChunkReading::ChunkReading(ReadConnections& lender, const std::vector<ChunkPart>& parts, ResultColumns& columns)
    : m_lender(lender), m_parts(parts), m_columns(columns)
{
}

bool ChunkReading::run(SegmentReader& own, const ArchiveProgress& progress)
{
    {
        const HelpingThreads helpers(helpersFor(m_lender, m_columns.values(), m_parts.size() / kPartsTaken),
                                     [this] { help(); });
        try {
            decode(own, progress);
        } catch (...) {
            keepFailure();
        }
    }
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (m_stopped)
        return false;
    m_columns.enter(m_gaps);
    return true;
}

void ChunkReading::help()
{
    try {
        const ReadConnections::Lease connection = m_lender.lease();
        const ReadTransaction transaction(connection->database);
        if (!showsEveryPart(*connection, m_parts))
            return;
        try {
            SegmentReader segments(*connection);
            decode(segments, {});
        } catch (...) {
            keepFailure();
        }
    } catch (const ReportableError&) {  // no connection available: the others do the work
    } catch (const std::bad_alloc&) {
    }
}

void ChunkReading::decode(SegmentReader& segments, const ArchiveProgress& progress)
{
    std::vector<ResultColumns::Gap> gaps;
    while (!m_stopped) {
        const std::size_t first = m_next.fetch_add(kPartsTaken);
        const std::size_t end = std::min(first + kPartsTaken, m_parts.size());
        for (std::size_t i = first; i < end && !m_stopped; ++i) {
            if (progress && !progress(fractionDone()))
                m_stopped = true;
            else
                m_columns.fill(segments, m_parts[i], gaps);
            m_done += m_parts[i].count;
        }
        if (end <= first || end == m_parts.size())
            break;
    }
    const std::lock_guard lock(m_mutex);
    std::move(gaps.begin(), gaps.end(), std::back_inserter(m_gaps));
}

double ChunkReading::fractionDone() const
{
    return static_cast<double>(m_done) / static_cast<double>(m_columns.records());
}

void ChunkReading::keepFailure()
{
    m_stopped = true;
    const std::lock_guard lock(m_mutex);
    if (!m_failure)
        m_failure = std::current_exception();
}

}  // namespace plotix
