#include "hostapp/document/AttachedAgents.h"

#include "base/ReportableError.h"
#include "hostapp/document/TableServers.h"
#include "storage/Database.h"

namespace plotix {

namespace {

// Stored: never change. A site without such agents has no table of them, so that programs of all versions open it.
constexpr const char* kCreate = "CREATE TABLE IF NOT EXISTS attached(agent INTEGER PRIMARY KEY, source BLOB NOT NULL)";

bool hasTable(Database& database)
{
    return Statement(database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'attached'").step();
}

}  // namespace

std::map<RowId, QByteArray> attachedAgents(Database& database)
{
    std::map<RowId, QByteArray> found;
    if (!hasTable(database))
        return found;
    // An agent that was removed keeps its row: whoever takes that back has its records again.
    Statement rows(database, "SELECT attached.agent, source FROM attached JOIN agent ON agent.id = attached.agent");
    while (rows.step())
        found[rows.integer(0)] = rows.bytes(1);
    return found;
}

void keepAttached(Database& database, RowId agent, const QByteArray& table)
{
    database.execute(kCreate);
    Statement(database, "INSERT OR REPLACE INTO attached(agent, source) VALUES(?, ?)")
        .bind(1, agent)
        .bind(2, table)
        .run();
}

void forgetAttached(Database& database)
{
    if (hasTable(database))
        database.execute("DELETE FROM attached");
}

void requireOwnRecords(Database& database, RowId agent, const QString& name)
{
    const std::map<RowId, QByteArray> attached = attachedAgents(database);
    if (const auto found = attached.find(agent); found != attached.end())
        throw ReportableError(QStringLiteral("“%1” is read only: its records are the table %2, which is somebody "
                                             "else's. Choose another agent.")
                                  .arg(name, attachedTitle(found->second)));
}

QString attachedTitle(const QByteArray& table)
{
    try {
        const AttachedTable read = AttachedTable::of(table);
        return QStringLiteral("%1 in %2").arg(read.table, tableServer(read.address)->title());
    } catch (const ReportableError&) {
        return QStringLiteral("of another program's version");
    }
}

}  // namespace plotix
