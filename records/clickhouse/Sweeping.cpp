#include "records/clickhouse/Sweeping.h"

#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint64_t kDays = 2;  // for which somebody may still ask
constexpr std::uint64_t kMicroseconds = 86'400'000'000;
constexpr std::size_t kShare = 10;             // of all chunks, one in so many
constexpr std::size_t kMostInStatement = 500;  // which has the numbers as text

/// Chunks that others lie over altogether, and have done so for long.
std::vector<std::uint64_t> coveredChunks(const std::vector<StoredChunk>& chunks)
{
    const std::vector<ChunkStretch> stretches = stretchesOf(chunks);
    std::set<const StoredChunk*> shown;
    for (const ChunkStretch& stretch : stretches)
        shown.insert(stretch.chunk);
    std::vector<std::uint64_t> covered;
    const std::uint64_t before = stamps::version() - kDays * kMicroseconds;
    for (const StoredChunk& chunk : chunks) {
        if (shown.contains(&chunk))
            continue;
        const auto first = std::partition_point(stretches.begin(), stretches.end(),
                                                [&](const ChunkStretch& each) { return each.end < chunk.begin; });
        const bool isLong = std::all_of(first, stretches.end(), [&](const ChunkStretch& each) {
            return each.begin > chunk.end || each.chunk->version < before;
        });
        if (isLong)
            covered.push_back(chunk.id);
    }
    return covered;
}

}  // namespace

Sweeping::Sweeping(ServerConnection& server, const SiteTables& tables)
    : m_server(server), m_tables(tables), m_before(oldYoungRows())
{
    for (const std::string& table : {m_tables.chunks(), m_tables.young(), m_tables.amendments()})
        m_unfinished[table] = unfinished(table);
}

void Sweeping::sweep(std::span<const RowId> agents)
{
    dropDays();
    dropCovered(agents);
    dropUnfinished();
}

/// Young rows by the day they came, of days before yesterday.
Sweeping::Days Sweeping::oldYoungRows()
{
    const std::vector<std::byte> rows =
        m_server.ask("SELECT day, count() FROM " + m_tables.young() + " WHERE day + " + std::to_string(kDays - 1) +
                     " < " + std::to_string(stamps::day()) + " GROUP BY day FORMAT RowBinary");
    Days days;
    for (rowbinary::Reader row(rows); !row.isAtEnd();) {
        const auto day = row.number<std::uint32_t>();
        days[day] = row.number<std::uint64_t>();
    }
    return days;
}

/// All that were there before everything was repacked are in chunks. Where one more has come to such a day, by a clock
/// that stands wrong, the day stays.
void Sweeping::dropDays()
{
    // Replicas of 2018 answer nothing any more once a partition is gone that was inserted into: rows are deleted there.
    const std::string way = m_server.isReplicated() ? " DELETE WHERE day = " : " DROP PARTITION ";
    for (const auto& [day, count] : oldYoungRows())
        if (const auto known = m_before.find(day); known != m_before.end() && known->second == count)
            m_server.tell("ALTER TABLE " + m_tables.young() + way + std::to_string(day));
}

void Sweeping::dropCovered(std::span<const RowId> agents)
{
    std::size_t all = 0;
    std::map<RowId, std::vector<std::uint64_t>> covered;
    for (const RowId agent : agents) {
        const std::vector<StoredChunk> chunks =
            AgentReading(m_server, m_tables, agent).rows(-kInfinity, kInfinity).chunks;
        all += chunks.size();
        if (std::vector<std::uint64_t> of = coveredChunks(chunks); !of.empty())
            covered[agent] = std::move(of);
    }
    std::size_t many = 0;
    for (const auto& [agent, chunks] : covered)
        many += chunks.size();
    if (many * kShare < all)
        return;
    for (const auto& [agent, chunks] : covered)
        for (std::size_t first = 0; first < chunks.size(); first += kMostInStatement)
            m_server.tell("ALTER TABLE " + m_tables.chunks() + " DELETE WHERE agent = " + std::to_string(agent) +
                          " AND chunk IN " +
                          sqlList(std::span(chunks).subspan(first, std::min(kMostInStatement, chunks.size() - first))));
}

/// A batch's number begins with the second it was given in, by the clock of whoever gave it.
std::vector<std::uint64_t> Sweeping::unfinished(const std::string& table)
{
    const std::uint64_t before = stamps::number() - (kDays * (kMicroseconds / 1'000'000) << stamps::kRandomBits);
    const std::vector<std::byte> rows =
        m_server.ask("SELECT DISTINCT batch FROM " + table + " WHERE batch > 0 AND batch < " + std::to_string(before) +
                     " AND batch NOT IN (SELECT batch FROM " + m_tables.batches() + ") ORDER BY batch LIMIT " +
                     std::to_string(kMostInStatement) + " FORMAT RowBinary");
    std::vector<std::uint64_t> batches;
    for (rowbinary::Reader row(rows); !row.isAtEnd();)
        batches.push_back(row.number<std::uint64_t>());
    return batches;
}

/// Those that were unfinished when it began, too: whose clock stands days behind is not to lose what it has just begun.
void Sweeping::dropUnfinished()
{
    for (const auto& [table, before] : m_unfinished) {
        const std::vector<std::uint64_t> now = unfinished(table);
        std::vector<std::uint64_t> both;
        std::set_intersection(before.begin(), before.end(), now.begin(), now.end(), std::back_inserter(both));
        if (!both.empty())
            m_server.tell("ALTER TABLE " + table + " DELETE WHERE batch IN " + sqlList(both));
    }
}

}  // namespace plotix
