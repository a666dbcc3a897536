#pragma once

#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/SiteOnServer.h"
#include "records/store/RecordMaintenance.h"

#include <optional>
#include <span>
#include <vector>

/// All records of some pieces, put together in memory: chunks come over several connections, and are unpacked where
/// they belong while others are on their way.
///
/// Free function; any thread.
namespace plotix {

/// Columns in the order of the properties. `progress` is called on this thread only, with fractions that never
/// decrease; nothing where it stopped the reading. Throws as connections do, and std::bad_alloc.
std::optional<RecordBlock> readBlock(SiteOnServer& site, RowId agent, const std::vector<RowId>& properties,
                                     std::span<const AgentReading::Piece> pieces, const ArchiveProgress& progress);

}  // namespace plotix
