#pragma once

#include "records/clickhouse/PackedCache.h"
#include "records/clickhouse/SiteOnServer.h"

#include <memory>
#include <span>
#include <vector>

/// Columns of chunks, from where they are nearest: this program's memory, else the program's
/// LocalColumns, else the server, over several connections at once where they are many. What comes stays in both.
///
/// Free functions; any thread.
namespace plotix {

using PackedColumns = std::vector<std::shared_ptr<const PackedCache::Column>>;

/// In the order of the chunks; null: there is no such column, or it is not there any more. Throws as a connection does.
PackedColumns fetchColumns(SiteOnServer& site, RowId agent, RowId property, std::span<const StoredChunk* const> chunks);

/// A column as it came, which stays in the site's PackedCache where it is as it was stored: a damaged one may be
/// mended.
std::shared_ptr<const PackedCache::Column> keepIfSound(SiteOnServer& site, const StoredChunk& chunk, RowId property,
                                                       const AgentReading::Segment& segment);

}  // namespace plotix
