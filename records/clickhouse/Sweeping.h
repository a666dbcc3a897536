#pragma once

#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/RecordBlock.h"

#include <cstdint>
#include <map>
#include <span>

/// Takes rows away that count for nothing any more: young records that chunks have taken in, chunks that others lie
/// over, and what came by batches that were never finished. Begun before everything is repacked, ended afterwards.
///
/// Whoever read what is there a while ago may still ask for it, so rows stay for two days after they lost their
/// meaning. A server writes whole parts of a table anew to take rows out of it: chunks go once they are a tenth of all.
///
/// Borrows the connection; one thread. Throws as it does; ended early, it has left more than it might, and nothing
/// else.
namespace plotix {

class Sweeping {
public:
    Sweeping(ServerConnection& server, const SiteTables& tables);

    /// Requires: all that these agents had when it began is in chunks, and nobody else has the turn.
    void sweep(std::span<const RowId> agents);

private:
    using Days = std::map<std::uint32_t, std::uint64_t>;
    Days oldYoungRows();
    void dropDays();
    void dropCovered(std::span<const RowId> agents);
    std::vector<std::uint64_t> unfinished(const std::string& table);
    void dropUnfinished();

    ServerConnection& m_server;
    const SiteTables& m_tables;
    const Days m_before;
    std::map<std::string, std::vector<std::uint64_t>> m_unfinished;  ///< batches, by table
};

}  // namespace plotix
