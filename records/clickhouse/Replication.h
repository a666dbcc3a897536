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

    /// Asks with `ask`, which answers the rows of a statement. Nothing: the site's tables are not there, or what they
    /// agree by cannot be reached just now.
    using Ask = std::function<std::vector<std::byte>(const std::string& statement)>;
    static std::optional<Replication> learnt(const ServerAddress& address, const Ask& ask);
};

/// What is wrong, of a message that a server answers; 0: it does not say.
int errorCodeOf(const std::string& message);

/// Whether replicas that do not agree, or have lost each other, answer so: another one may know better, or this one
/// later. Whoever is answered so stored nothing that counts yet, and may store it again.
bool passes(int errorCode);

}  // namespace plotix
