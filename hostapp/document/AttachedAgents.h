#pragma once

#include "records/store/TableServer.h"

#include <map>
#include <optional>

/// Which agents of a site have their records in a table of somebody else's, as the site keeps it. Free functions; any
/// one thread, in the caller's transaction.
namespace plotix {

class Database;

/// What the site says of such agents, by agent, as it is kept: it may be of a later version.
std::map<RowId, QByteArray> attachedAgents(Database& database);

/// From now on the agent's records are those of the table.
void keepAttached(Database& database, RowId agent, const QByteArray& table);
/// All of them.
void forgetAttached(Database& database);

/// Throws ReportableError where the agent's records are not the site's own, so that none are stored or changed.
void requireOwnRecords(Database& database, RowId agent, const QString& name);

/// "readings in db1:5432/plant", for people, without a user.
QString attachedTitle(const QByteArray& table);

}  // namespace plotix
