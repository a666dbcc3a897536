#pragma once

#include "records/clickhouse/KnownRows.h"
#include "records/clickhouse/PackedCache.h"
#include "records/clickhouse/ServerConnection.h"
#include "records/clickhouse/SiteTables.h"
#include "records/store/RecordBlock.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/// The shards of a site, their tables and the connections to them. *Shared* by its store and everybody who writes; any
/// thread. The first shard is the site's home; a site on one server, or on replicas alone, has no other.
namespace plotix {

class SiteOnServer {
public:
    /// Whether the property is the agent's, in the site's catalogue.
    using Owns = std::function<bool(RowId agent, RowId property)>;

    static constexpr std::size_t kHome = 0;

    SiteOnServer(ServerAddress address, ServerCredentials credentials, Owns owns);

    const ServerAddress& address() const { return m_address; }
    std::size_t shards() const { return m_shards.size(); }
    const SiteTables& tables(std::size_t shard = kHome) const { return m_shards[shard].tables; }

    bool owns(RowId agent, RowId property) const { return m_owns(agent, property); }
    /// Throws ReportableError for a block that may not be stored.
    void requireStorable(RowId agent, const RecordBlock& block) const;

    /// Which shard has the agent's records; nothing: it was given none yet. Where there is but one, that one.
    std::optional<std::size_t> placeOf(RowId agent);
    /// The same; the home where it was given none.
    std::size_t shardOf(RowId agent) { return placeOf(agent).value_or(kHome); }

    /// Agents that have their records on the shard, ascending.
    std::vector<RowId> agentsOn(std::size_t shard);

    /// A connection to a shard for as long as it lives; it goes back afterwards. *Borrows* the site.
    class Lease {
    public:
        Lease(SiteOnServer& site, std::size_t shard, std::unique_ptr<ServerConnection> server)
            : m_site(&site), m_shard(shard), m_server(std::move(server))
        {
        }
        Lease(Lease&&) noexcept = default;
        Lease& operator=(Lease&&) = delete;
        ~Lease();

        ServerConnection& operator*() const { return *m_server; }
        ServerConnection* operator->() const { return m_server.get(); }
        const SiteTables& tables() const { return m_site->tables(m_shard); }  ///< of the shard

    private:
        SiteOnServer* m_site;
        std::size_t m_shard;
        std::unique_ptr<ServerConnection> m_server;
    };
    /// To the shard that has the agent's records. Throws for tables that are not what the address means; see
    /// ShardCheck.
    Lease lease(RowId agent) { return leaseOn(shardOf(agent)); }
    Lease leaseOn(std::size_t shard);

    /// One that does not wait long for a host that stands still, for what must be said in time.
    std::unique_ptr<ServerConnection> quickConnection(std::size_t shard) const;

    void closeIdle();

    PackedCache& packed() { return m_packed; }
    KnownRows& known() { return m_known; }

private:
    void lookAt(std::size_t shard, ServerConnection& server);

    struct Shard {
        explicit Shard(const ServerAddress& of) : address(of), tables(of) {}
        ServerAddress address;
        SiteTables tables;
        std::vector<std::unique_ptr<ServerConnection>> idle;  // under the mutex
    };

    const ServerAddress m_address;
    const ServerCredentials m_credentials;
    const Owns m_owns;
    PackedCache m_packed;
    KnownRows m_known;
    std::mutex m_mutex;
    std::vector<Shard> m_shards;            // their number, addresses and tables never change
    std::map<RowId, std::size_t> m_places;  // by agent, under the mutex; they never change
    bool m_knowsPlaces = false;             // under the mutex: those there were once
};

}  // namespace plotix
