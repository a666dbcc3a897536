#pragma once

#include "records/clickhouse/WritersTurn.h"

#include <vector>

/// Which shard has an agent's records: all of an agent are on one, which it is given when its first ones are stored,
/// and stays on. So shards that are added later take new agents, and nothing moves.
///
/// Free functions; any thread. They throw as connections do.
namespace plotix {

/// Gives a shard to an agent that has none; the one with least on it. `turn`: the home's, so that no two give it one at
/// once. Answers which it has.
std::size_t givePlace(SiteOnServer& site, WritersTurn& turn, RowId agent);

/// How full a shard is.
struct ShardFill {
    std::size_t shard = 0;
    double bytes = 0;
    std::size_t agents = 0;
};
/// Where a new agent goes. What an agent will have counts too, as much as others have on an average, lest a hundred new
/// ones all go to the same. Requires: one at least.
std::size_t leastFilled(const std::vector<ShardFill>& shards);

}  // namespace plotix
