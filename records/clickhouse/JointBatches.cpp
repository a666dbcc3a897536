#include "records/clickhouse/JointBatches.h"

#include "records/clickhouse/HomeRows.h"

namespace plotix::joint {

void decide(const SiteOnServer& site, WritersTurn& home, std::uint64_t batch, std::span<const std::size_t> shards)
{
    home.commit([&](ServerConnection& server) { note(server, site.tables(), std::span(&batch, 1), shards, Decided); });
}

void confirm(SiteOnServer& site, std::size_t shard, std::uint64_t batch)
{
    const SiteOnServer::Lease server = site.leaseOn(shard);
    confirm(*server, server.tables(), *site.quickConnection(SiteOnServer::kHome), site.tables(), std::span(&batch, 1));
}

void confirmAll(SiteOnServer& site, std::size_t shard)
{
    if (site.shards() == 1)
        return;
    const SiteOnServer::Lease server = site.leaseOn(shard);
    confirmAll(*server, server.tables(), *site.quickConnection(SiteOnServer::kHome), site.tables());
}

std::unique_ptr<WritersTurn> turnOf(const std::shared_ptr<SiteOnServer>& site, std::size_t shard, int patience,
                                    WritersTurn::Waits waits)
{
    auto turn = std::make_unique<WritersTurn>(site, shard, patience, waits);
    confirmAll(*site, shard);
    return turn;
}

}  // namespace plotix::joint
