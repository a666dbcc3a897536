#include "records/clickhouse/HomeRows.h"

#include "base/ReportableError.h"
#include "records/clickhouse/RowBinary.h"

namespace plotix {

std::map<RowId, std::size_t> placesOn(ServerConnection& home, const SiteTables& tables,
                                      const std::optional<RowId>& agent)
{
    // The first one counts, and never another.
    const std::vector<std::byte> rows = home.ask("SELECT agent, shard FROM " + tables.placement() +
                                                 (agent ? " WHERE agent = " + std::to_string(*agent) : std::string()) +
                                                 " ORDER BY agent, version, shard LIMIT 1 BY agent FORMAT RowBinary");
    std::map<RowId, std::size_t> places;
    for (rowbinary::Reader row(rows); !row.isAtEnd();) {
        const auto each = row.number<RowId>();
        const std::size_t number = row.number<std::uint32_t>();
        if (number == 0)
            throw ReportableError(
                QStringLiteral("The server “%1” has a shard 0, which there is not.").arg(home.address().title()));
        places[each] = number - 1;
    }
    return places;
}

namespace joint {

void note(ServerConnection& home, const SiteTables& tables, std::span<const std::uint64_t> batches,
          std::span<const std::size_t> shards, State state)
{
    rowbinary::Writer rows;
    for (const std::uint64_t batch : batches)
        for (const std::size_t shard : shards)
            rows.add(batch).add(static_cast<std::uint32_t>(shard + 1)).add(static_cast<std::uint8_t>(state));
    home.insert("INSERT INTO " + tables.joint() + " (batch, shard, state) FORMAT RowBinary", rows.bytes());
}

void confirm(ServerConnection& shard, const SiteTables& own, ServerConnection& home, const SiteTables& homes,
             std::span<const std::uint64_t> batches)
{
    rowbinary::Writer rows;
    for (const std::uint64_t batch : batches)
        rows.add(batch);
    shard.insert("INSERT INTO " + own.batches() + " (batch) FORMAT RowBinary", rows.bytes());
    const std::size_t number = own.shard();
    try {
        note(home, homes, batches, std::span(&number, 1), Confirmed);
    } catch (const ReportableError&) {  // then it is confirmed once more
    }
}

void confirmAll(ServerConnection& shard, const SiteTables& own, ServerConnection& home, const SiteTables& homes)
{
    const std::vector<std::byte> rows =
        home.ask("SELECT batch FROM " + homes.joint() + " WHERE shard = " + std::to_string(own.shard() + 1) +
                 " GROUP BY batch HAVING max(state) = 0 ORDER BY batch FORMAT RowBinary");
    std::vector<std::uint64_t> batches;
    for (rowbinary::Reader row(rows); !row.isAtEnd();)
        batches.push_back(row.number<std::uint64_t>());
    if (!batches.empty())
        confirm(shard, own, home, homes, batches);
}

}  // namespace joint

}  // namespace plotix
