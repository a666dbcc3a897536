#pragma once

#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/RecordBlock.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>

/// What the home has of a site's shards: which of them has an agent, and which batches were decided for several of
/// them. See ShardPlaces and JointBatches, which write it. Shards count from 0.
///
/// Free functions; any thread. They borrow the connections, and throw as these do.
namespace plotix {

/// As the home has them, of this agent or of all.
std::map<RowId, std::size_t> placesOn(ServerConnection& home, const SiteTables& tables,
                                      const std::optional<RowId>& agent);

namespace joint {

enum State : std::uint8_t { Decided = 0, Confirmed = 1 };
/// A row for each shard, all in one insert, which is stored as a whole or not at all.
void note(ServerConnection& home, const SiteTables& tables, std::span<const std::uint64_t> batches,
          std::span<const std::size_t> shards, State state);

/// Has batches that were decided count on a shard, whose tables `own` are. Where the home does not take the note of it,
/// they are confirmed once more.
void confirm(ServerConnection& shard, const SiteTables& own, ServerConnection& home, const SiteTables& homes,
             std::span<const std::uint64_t> batches);
/// Whatever was decided and the shard does not know yet.
void confirmAll(ServerConnection& shard, const SiteTables& own, ServerConnection& home, const SiteTables& homes);

}  // namespace joint

}  // namespace plotix
