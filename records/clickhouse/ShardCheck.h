#pragma once

#include "records/clickhouse/ServerConnection.h"

#include <optional>

/// Whether the tables on a server are those that an address means, and of a version that this program knows.
///
/// Free functions; any thread. Nobody is asked more than once a minute by a process. They throw ReportableError, and as
/// the connection does.
namespace plotix {

/// What the home tells of the site.
struct SiteLayout {
    std::uint32_t version = 0;
    std::size_t shards = 1;
    std::string origin;  ///< the same in all shards; empty: made before there were any
};
/// Now. `home`: a connection to the home; nothing: there is no such site.
std::optional<SiteLayout> layoutOn(ServerConnection& home);

/// Throws where the tables are a later version's, or the site has not as many shards as the address.
void requireSuitable(const SiteLayout& layout, const ServerAddress& address);
/// The same of what a connection leads to, the home or another shard, unless that was looked at not long ago; then it
/// answers false. `address`: of the whole site.
bool requireSuitable(ServerConnection& server, const ServerAddress& address);
/// After tables were made or removed: they are looked at anew.
void forgetSuitable();

}  // namespace plotix
