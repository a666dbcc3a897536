#include "records/sqlite/ChunkReading.h"

#include "base/CoresAllowed.h"
#include "base/ReportableError.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <thread>

namespace plotix {

namespace {

constexpr std::size_t kMostThreads = 4;
/// Starting a thread takes as long as decoding about a tenth of this.
constexpr std::size_t kValuesPerThread = std::size_t{1} << 20;
/// Chunks taken at once. They fill about one huge page of each column, so that two threads seldom fault in the same
/// page.
constexpr std::size_t kPartsTaken = 16;

}  // namespace

ChunkReading::ChunkReading(ReadConnections& lender, RowId agent, const std::vector<ChunkPart>& parts,
                           ResultColumns& columns)
    : m_lender(lender), m_agent(agent), m_parts(parts), m_columns(columns)
{
}

bool ChunkReading::run(SegmentReader& own, const ArchiveProgress& progress)
{
    std::vector<std::thread> helpers;
    try {
        for (std::size_t missing = helpersDeserved(); missing > 0; --missing)
            helpers.emplace_back([this] { help(); });
    } catch (const std::exception&) {  // no thread available: the others do the work
    }
    try {
        decode(own, progress);
    } catch (...) {
        keepFailure();
    }
    for (std::thread& helper : helpers)
        helper.join();
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (m_stopped)
        return false;
    m_columns.enter(m_gaps);
    return true;
}

std::size_t ChunkReading::helpersDeserved() const
{
    const std::size_t cores = std::min(coresAllowed(), kMostThreads);
    const auto busy = static_cast<std::size_t>(m_lender.inUse());  // this read among them
    const std::size_t free = cores > busy ? cores - busy : 0;
    const std::size_t worth = std::min(m_columns.values() / kValuesPerThread, m_parts.size() / kPartsTaken);
    return std::min(free, worth > 0 ? worth - 1 : 0);
}

void ChunkReading::help()
{
    try {
        const ReadConnections::Lease connection = m_lender.lease();
        const ReadTransaction transaction(connection->database);
        if (!showsEveryPart(*connection))
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

bool ChunkReading::showsEveryPart(ReadConnection& connection) const
{
    const std::vector<Chunk> seen =
        connection.chunks.chunksBetween(m_agent, m_parts.front().chunk.t0, m_parts.back().chunk.t1);
    auto next = seen.begin();
    return std::all_of(m_parts.begin(), m_parts.end(), [&](const ChunkPart& part) {
        next = std::find_if(next, seen.end(), [&](const Chunk& each) { return each.id == part.chunk.id; });
        return next != seen.end();
    });
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
