#pragma once

#include "base/ReportableError.h"
#include "records/clickhouse/SiteOnServer.h"

#include <cstdint>
#include <functional>
#include <memory>

/// One transaction at a time on a shard: a claim in a table there, which everybody sees, and renews while it is held.
///
/// Whoever writes chunks has it: one made of what was there before another one came would lie over that one. Which
/// claim is still renewed is told by the own clock of whoever waits, so that clocks may differ. *Shares* the site.
namespace plotix {

class WritersTurn {
public:
    struct TakenByOthers : ReportableError {
        using ReportableError::ReportableError;
    };
    enum class Waits {
        ForAll,     ///< for servers that have to agree, too
        ForWriters  ///< not long for a server
    };
    /// Waits for whoever has it; throws TakenByOthers when that takes longer than `patience` milliseconds.
    WritersTurn(std::shared_ptr<SiteOnServer> site, std::size_t shard, int patience, Waits waits = Waits::ForAll);
    ~WritersTurn();
    WritersTurn(const WritersTurn&) = delete;
    WritersTurn& operator=(const WritersTurn&) = delete;

    /// Throws ReportableError when somebody else took it meanwhile, because this process stood still for long.
    void requireHeld();

    /// Stores what makes the work count, as long as the turn is held; throws when it cannot be known that it was.
    void commit(const std::function<void(ServerConnection& server)>& store);

    /// Waits until nobody has it; throws as the constructor does.
    static void waitUntilFree(const SiteOnServer::Lease& server, int patience);

private:
    class Renewing;
    void noticeElsewhere();
    bool isHeld(ServerConnection& server);
    void giveBack() noexcept;
    const SiteTables& tables() const { return m_site->tables(m_shard); }
    const std::shared_ptr<SiteOnServer> m_site;
    const std::size_t m_shard;
    std::uint64_t m_claim = 0;
    std::unique_ptr<Renewing> m_renewing;
};

}  // namespace plotix
