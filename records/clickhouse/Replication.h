#pragma once

#include "records/clickhouse/ServerAddress.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// How statements about a site agree with its other replicas: what is stored counts once a majority of them has it, and
/// what is read has everything that counts, whichever replica answers. A site on one server needs none of that.
///
/// Values and free functions; any thread.
namespace plotix {

struct Replication {
    bool isThere = false;
    std::string settings;  ///< of each statement, as a part of its address

    /// Asks with `ask`, which answers the rows of a statement, of the site's tables on one host.
    using Ask = std::function<std::vector<std::byte>(const std::string& statement)>;
    enum class Tables {
        None,     ///< the site is not there
        Single,   ///< it is there alone
        Known,    ///< it is one of several, and knows of how many
        Unknown,  ///< it is one of several, and has lost the keeper that tells of the others
    };
    struct Found {
        Tables tables = Tables::None;
        std::uint64_t replicas = 0;
        bool storesSeveralAtOnce = false;  ///< unless it is told not to
    };
    static Found foundOn(const ServerAddress& address, const Ask& ask);

    /// Of so many at least, whatever a host knows: others may be about to be made.
    static Replication among(const Found& found, std::size_t hosts);
};

/// What is wrong, of a message that a server answers; 0: it does not say.
int errorCodeOf(const std::string& message);

/// Whether replicas that do not agree, or have lost each other, answer so: another one may know better, or this one
/// later. Whoever is answered so stored nothing that counts yet, and may store it again.
bool passes(int errorCode);

}  // namespace plotix
