#include "records/clickhouse/ShardPlaces.h"

#include "base/ReportableError.h"
#include "records/clickhouse/HomeRows.h"
#include "records/clickhouse/RowBinary.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/clickhouse/ShardCheck.h"

#include <algorithm>

namespace plotix {

namespace {

std::uint64_t numberOf(ServerConnection& server, const std::string& statement)
{
    const std::vector<std::byte> answer = server.ask(statement + " FORMAT RowBinary");
    return rowbinary::Reader(answer).number<std::uint64_t>();
}

double bytesOn(SiteOnServer& site, std::size_t shard)
{
    const SiteTables& tables = site.tables(shard);
    const std::string statement = QStringLiteral("SELECT toUInt64(sum(bytes_on_disk)) FROM system.parts WHERE active "
                                                 "AND database = '%1' AND table IN ('%2', '%3')")
                                      .arg(site.address().database, tables.bareName("chunk"), tables.bareName("young"))
                                      .toStdString();
    const std::unique_ptr<ServerConnection> server = site.quickConnection(shard);
    requireSuitable(*server, site.address());  // one that was set up anew looks empty
    return static_cast<double>(numberOf(*server, statement));
}

/// A shard that does not answer is given nothing new.
std::vector<ShardFill> fillOf(SiteOnServer& site, const std::map<RowId, std::size_t>& places)
{
    std::vector<ShardFill> fills;
    QString why;
    for (std::size_t shard = 0; shard < site.shards(); ++shard)
        try {
            const auto agents = std::count_if(places.begin(), places.end(),
                                              [shard](const auto& place) { return place.second == shard; });
            fills.push_back({shard, bytesOn(site, shard), static_cast<std::size_t>(agents)});
        } catch (const ReportableError& error) {
            why = error.message();
        }
    if (fills.empty())
        throw ReportableError(why);
    return fills;
}

}  // namespace

std::size_t leastFilled(const std::vector<ShardFill>& shards)
{
    double each = 1;
    for (const ShardFill& shard : shards)
        if (shard.agents > 0)
            each = std::max(each, shard.bytes / static_cast<double>(shard.agents));
    const auto weight = [each](const ShardFill& shard) {
        return shard.bytes + each * static_cast<double>(shard.agents);
    };
    return std::min_element(shards.begin(), shards.end(),
                            [&](const ShardFill& one, const ShardFill& other) { return weight(one) < weight(other); })
        ->shard;
}

std::size_t givePlace(SiteOnServer& site, WritersTurn& turn, RowId agent)
{
    const SiteTables& tables = site.tables();
    const std::string id = "toInt64(" + std::to_string(agent) + ")";
    std::size_t shard = SiteOnServer::kHome;
    {
        const SiteOnServer::Lease home = site.leaseOn(SiteOnServer::kHome);
        const std::map<RowId, std::size_t> places = placesOn(*home, tables, std::nullopt);
        if (const auto found = places.find(agent); found != places.end())
            return found->second;
        // What somebody stored there who knew no other shard.
        const bool isHome =
            numberOf(*home, "SELECT count() FROM (SELECT agent FROM " + tables.young() + " WHERE agent = " + id +
                                " LIMIT 1 UNION ALL SELECT agent FROM " + tables.chunks() + " WHERE agent = " + id +
                                " AND property = 0 LIMIT 1)") > 0;
        if (!isHome)
            shard = leastFilled(fillOf(site, places));
    }
    // The server itself looks once more: this program may stand still before it is asked.
    turn.commit([&](ServerConnection& home) {
        home.tell("INSERT INTO " + tables.placement() + " SELECT " + id + ", toUInt32(" + std::to_string(shard + 1) +
                  "), toUInt64(" + std::to_string(stamps::version()) + ") FROM system.one WHERE " + id +
                  " NOT IN (SELECT agent FROM " + tables.placement() + ")");
    });
    return placesOn(*site.leaseOn(SiteOnServer::kHome), tables, agent).at(agent);
}

}  // namespace plotix
