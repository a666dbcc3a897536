#include "records/clickhouse/JointBatches.h"

#include "base/ReportableError.h"
#include "records/clickhouse/RowBinary.h"

namespace plotix::joint {

namespace {

enum State : std::uint8_t { Decided = 0, Confirmed = 1 };

/// A row for each shard, all in one insert, which is stored as a whole or not at all.
void insert(ServerConnection& home, const SiteTables& tables, std::span<const std::uint64_t> batches,
            std::span<const std::size_t> shards, State state)
{
    rowbinary::Writer rows;
    for (const std::uint64_t batch : batches)
        for (const std::size_t shard : shards)
            rows.add(batch).add(static_cast<std::uint32_t>(shard + 1)).add(static_cast<std::uint8_t>(state));
    home.insert("INSERT INTO " + tables.joint() + " (batch, shard, state) FORMAT RowBinary", rows.bytes());
}

std::vector<std::uint64_t> unconfirmed(ServerConnection& home, const SiteTables& tables, std::size_t shard)
{
    const std::vector<std::byte> rows =
        home.ask("SELECT batch FROM " + tables.joint() + " WHERE shard = " + std::to_string(shard + 1) +
                 " GROUP BY batch HAVING max(state) = 0 ORDER BY batch FORMAT RowBinary");
    std::vector<std::uint64_t> batches;
    for (rowbinary::Reader row(rows); !row.isAtEnd();)
        batches.push_back(row.number<std::uint64_t>());
    return batches;
}

void confirm(SiteOnServer& site, std::size_t shard, std::span<const std::uint64_t> batches)
{
    rowbinary::Writer rows;
    for (const std::uint64_t batch : batches)
        rows.add(batch);
    const SiteOnServer::Lease server = site.leaseOn(shard);
    server->insert("INSERT INTO " + server.tables().batches() + " (batch) FORMAT RowBinary", rows.bytes());
    try {
        insert(*site.quickConnection(SiteOnServer::kHome), site.tables(), batches, std::span(&shard, 1), Confirmed);
    } catch (const ReportableError&) {  // then it is confirmed once more
    }
}

}  // namespace

void decide(const SiteOnServer& site, WritersTurn& home, std::uint64_t batch, std::span<const std::size_t> shards)
{
    home.commit(
        [&](ServerConnection& server) { insert(server, site.tables(), std::span(&batch, 1), shards, Decided); });
}

void confirm(SiteOnServer& site, std::size_t shard, std::uint64_t batch)
{
    confirm(site, shard, std::span(&batch, 1));
}

void confirmAll(SiteOnServer& site, std::size_t shard)
{
    if (site.shards() == 1)
        return;
    const std::vector<std::uint64_t> batches =
        unconfirmed(*site.quickConnection(SiteOnServer::kHome), site.tables(), shard);
    if (!batches.empty())
        confirm(site, shard, batches);
}

std::unique_ptr<WritersTurn> turnOf(const std::shared_ptr<SiteOnServer>& site, std::size_t shard, int patience,
                                    WritersTurn::Waits waits)
{
    auto turn = std::make_unique<WritersTurn>(site, shard, patience, waits);
    confirmAll(*site, shard);
    return turn;
}

}  // namespace plotix::joint
