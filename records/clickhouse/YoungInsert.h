#pragma once

#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/Records.h"

#include <cstdint>

/// Stores records one row each, for those of a few. One thread; throws as the connection does.
namespace plotix {

class YoungInsert {
public:
    explicit YoungInsert(std::uint64_t writer) : m_writer(writer) {}

    /// In one insert; of blocks with elements of one time, those of the later block count. `batch` 0: they count at
    /// once. When it throws, the same may be stored again.
    void store(ServerConnection& server, const SiteTables& tables, RowId agent, std::span<const RecordsView> blocks,
               std::uint64_t batch);

private:
    const std::uint64_t m_writer;
    std::uint64_t m_number = 0;  // of the last insert
};

}  // namespace plotix
