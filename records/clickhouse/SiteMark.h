#pragma once

#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"

#include <chrono>
#include <cstdint>

/// What tells whether anything was stored into a site since, by one statement that reads no record.
namespace plotix {

struct SiteMark {
    std::uint64_t batches = 0;  ///< that count
    std::uint64_t parts = 0;    ///< differs once any table has other parts, which also merging gives it
    std::uint64_t rows = 0;     ///< that this replica may show

    /// As of a moment after the call began. Borrows the connection; throws as it does.
    static SiteMark askedOf(ServerConnection& server, const SiteTables& tables);

    friend bool operator==(const SiteMark&, const SiteMark&) = default;
};

}  // namespace plotix
