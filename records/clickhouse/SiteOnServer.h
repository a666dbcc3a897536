#pragma once

#include "records/clickhouse/KnownRows.h"
#include "records/clickhouse/PackedCache.h"
#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/RecordBlock.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// A site's tables and the connections to them. *Shared* by its store and everybody who writes; any thread.
namespace plotix {

class SiteOnServer {
public:
    /// Whether the property is the agent's, in the site's catalogue.
    using Owns = std::function<bool(RowId agent, RowId property)>;

    SiteOnServer(ServerAddress address, ServerCredentials credentials, Owns owns)
        : m_address(std::move(address)),
          m_credentials(std::move(credentials)),
          m_tables(m_address),
          m_owns(std::move(owns))
    {
    }

    const ServerAddress& address() const { return m_address; }
    const SiteTables& tables() const { return m_tables; }

    bool owns(RowId agent, RowId property) const { return m_owns(agent, property); }
    /// Throws ReportableError for a block that may not be stored.
    void requireStorable(RowId agent, const RecordBlock& block) const;

    /// A connection for as long as it lives; it goes back afterwards. *Borrows* the site.
    class Lease {
    public:
        Lease(SiteOnServer& site, std::unique_ptr<ServerConnection> server) : m_site(&site), m_server(std::move(server))
        {
        }
        Lease(Lease&&) noexcept = default;
        Lease& operator=(Lease&&) = delete;
        ~Lease();

        ServerConnection& operator*() const { return *m_server; }
        ServerConnection* operator->() const { return m_server.get(); }

    private:
        SiteOnServer* m_site;
        std::unique_ptr<ServerConnection> m_server;
    };
    Lease lease();

    /// One that does not wait long for a host that stands still, for what must be said in time.
    std::unique_ptr<ServerConnection> quickConnection() const;

    void closeIdle();

    PackedCache& packed() { return m_packed; }
    KnownRows& known() { return m_known; }

private:
    const ServerAddress m_address;
    const ServerCredentials m_credentials;
    const SiteTables m_tables;
    const Owns m_owns;
    PackedCache m_packed;
    KnownRows m_known;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<ServerConnection>> m_idle;  // under the mutex
};

}  // namespace plotix
