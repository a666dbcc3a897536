#pragma once

#include "records/clickhouse/AgentReading.h"
#include "records/clickhouse/AmendmentRows.h"
#include "records/clickhouse/SiteMark.h"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

/// What was read of a site, as long as nothing is stored there: many questions that follow each other at once cost one
/// statement, not several each.
///
/// What this program stores is seen at once; what others store, kFresh later at most. *Shared* by whoever reads the
/// site; any thread.
namespace plotix {

class KnownRows {
public:
    /// Less than anybody notices, and more than the way to a server in another building and back.
    static constexpr std::chrono::milliseconds kFresh{100};

    /// What stands in the tables of [from, to] at least. Throws as AgentReading does.
    std::shared_ptr<const AgentReading::Rows> rows(ServerConnection& server, const SiteTables& tables, RowId agent,
                                                   double from, double to);

    /// By property, in the order they were made: all that there are.
    using Amendments = std::map<RowId, std::vector<Amendment>>;
    std::shared_ptr<const Amendments> amendments(ServerConnection& server, const SiteTables& tables);

    /// The next question sees what others have stored until then.
    void forget();

private:
    struct Known {
        double from = 0, to = 0;
        std::shared_ptr<const AgentReading::Rows> rows;
    };
    /// Of one server, or of several that are replicas.
    struct OfServer {
        std::optional<SiteMark> mark;  // of what follows
        std::chrono::steady_clock::time_point asked;
        std::uint64_t changes = 0;  // of this program, before it was asked
        std::map<RowId, Known> agents;
        std::shared_ptr<const Amendments> amendments;
    };
    SiteMark markOf(ServerConnection& server, const SiteTables& tables);
    template <class Keep>
    void keep(ServerConnection& server, const SiteTables& tables, const SiteMark& of, const Keep& keep);

    std::mutex m_mutex;
    std::map<std::string, OfServer> m_servers;  // under the mutex, by tables and address
};

}  // namespace plotix
