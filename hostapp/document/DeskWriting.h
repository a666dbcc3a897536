#pragma once

#include "records/store/RecordTransaction.h"

#include <memory>

/// Changing a site on a server from a desk: in the transaction begun on the desk's file, which is first made like the
/// server's rows. What the file's tables are changed to goes to the server with the records.
namespace plotix {

class Database;
class StoreServer;

/// It is the only writer of the site as long as it lives. `prepare` looks what else changed; then the file is
/// committed, and `commit` stores both on the server. Throws ReportableError. *Borrows* the file's connection, *shares*
/// the server.
std::unique_ptr<RecordTransaction> deskTransaction(Database& desk, std::shared_ptr<StoreServer> server);

}  // namespace plotix
