#pragma once

#include "records/clickhouse/WritersTurn.h"

#include <cstdint>
#include <memory>
#include <span>

/// Batches with rows on several shards. One insert in the home decides that a batch counts, on all of them; each shard
/// has it confirmed then, in its own table of batches, which is what its readers ask. Whoever decided confirms before
/// anything is acknowledged; where that one was killed, whoever takes the turn of a shard next, or opens the site.
///
/// Free functions; any thread. They throw as connections do. Confirming again, and by several at once, spoils nothing.
namespace plotix::joint {

/// Requires: the turns of the home and of all these shards. Where it throws, the batch may count or not.
void decide(const SiteOnServer& site, WritersTurn& home, std::uint64_t batch, std::span<const std::size_t> shards);
/// Requires: it was decided.
void confirm(SiteOnServer& site, std::size_t shard, std::uint64_t batch);
/// Confirms whatever was decided and the shard does not know yet. Does not wait long for the home.
void confirmAll(SiteOnServer& site, std::size_t shard);

/// The turn of a shard that knows all that was decided. See there.
std::unique_ptr<WritersTurn> turnOf(const std::shared_ptr<SiteOnServer>& site, std::size_t shard, int patience,
                                    WritersTurn::Waits waits = WritersTurn::Waits::ForAll);

}  // namespace plotix::joint
