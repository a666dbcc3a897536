#include "base/ReportableError.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/cli/TerminalText.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/TableAttaching.h"
#include "hostapp/document/TableServers.h"

#include <ostream>

/// Tables of other people's databases as agents of a site, and letting go of them.
namespace plotix {

namespace {

struct AttachCommand {
    QString site;
    TableChoice choice;
    ImportOptions::ByColumn units;
    bool lists = false;
};

const char* wordOf(TableServer::Column::Kind kind)
{
    using Kind = TableServer::Column::Kind;
    switch (kind) {
    case Kind::Time: return "time";
    case Kind::Number: return "number";
    case Kind::Text: return "text";
    case Kind::Other: break;
    }
    return "not read";
}

void list(const AttachCommand& command, TableServer& server, std::ostream& out)
{
    const QStringList tables = command.choice.table.isEmpty() ? server.tables() : QStringList{command.choice.table};
    if (tables.isEmpty())
        out << "No tables that may be read.\n";
    for (const QString& table : tables) {
        const std::vector<TableServer::Column> columns = server.columns(table);
        if (columns.empty())
            throw ReportableError(QStringLiteral("There is no table “%1” in %2").arg(table, server.title()));
        out << table.toStdString() << '\n';
        for (const TableServer::Column& column : columns)
            out << "    " << column.name.toStdString() << "  " << column.type.toStdString() << ", "
                << wordOf(column.kind) << '\n';
    }
}

int runAttach(const AttachCommand& command, CommandContext context)
{
    const std::shared_ptr<TableServer> server = tableServer(command.choice.address);
    trustPlace(*server);
    if (command.lists) {
        list(command, *server, context.streams.output);
        return kCommandDone;
    }
    if (!isServerAddress(command.site))
        requireSiteName(command.site);
    TableChoice wanted = command.choice;
    for (const auto& [value, unit] : command.units)
        wanted.units[value] = unit;
    const TableChoice choice = completed(*server, wanted);
    attachTable(siteFileOf(command.site), choice);
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, choice.agent);
    const std::optional<RecordExtent> extent = document->records()->extent(agent->id());
    context.streams.output << agent->name().toStdString() << " shows the table "
                           << document->attachedTable(*agent).toStdString() << ": "
                           << countText(agent->siteProperties().size(), "property", "properties")
                           << (extent ? "" : ", no records yet") << ".\n";
    return kCommandDone;
}

struct DetachCommand {
    QString site, agent;
};

int runDetach(const DetachCommand& command, CommandContext context)
{
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, command.agent);
    const QString table = document->attachedTable(*agent), name = agent->name();
    if (table.isEmpty())
        throw ReportableError(
            QStringLiteral("“%1” has records of its own: plotix edit --agent NAME --delete removes it with them")
                .arg(name));
    deleteAgent(document->path(), agent->id());
    context.streams.output << name.toStdString() << " is gone from the site, with its trends; the table "
                           << table.toStdString() << " is as it was.\n";
    return kCommandDone;
}

}  // namespace

Command addAttach(CLI::App& program)
{
    const auto command = std::make_shared<AttachCommand>();
    CLI::App* attach = program.add_subcommand("attach", "Show a table of another database beside a site's own records");
    TableChoice& choice = command->choice;
    addSite(attach, command->site);
    addText(attach, "ADDRESS", choice.address, "The database")
        ->required()
        ->type_name("postgresql://[USER@]HOST[:PORT]/DATABASE|clickhouse://[USER@]HOST[:PORT]/DATABASE");
    attach->add_flag("--list", command->lists, "Print the tables and their columns instead");
    addText(attach, "--table", choice.table, "The table or view; default: the only one")->type_name("NAME");
    addText(attach, "--time", choice.timeColumn, "The column of times; default: the only one with dates")
        ->type_name("COLUMN");
    addChoice<AttachedTable::TimeUnit>(
        attach, "--time-unit", choice.timeUnit,
        {{"s", AttachedTable::TimeUnit::Seconds}, {"ms", AttachedTable::TimeUnit::Milliseconds}},
        "What numbers that are times count since 1970; default: s");
    addList(attach, "--values", choice.values,
            "The columns that become properties, or the names of --name; default: all numbers, all names");
    addText(attach, "--name", choice.nameColumn, "Each row names its property in this column")->type_name("COLUMN");
    addText(attach, "--value", choice.valueColumn, "The column of the values then; default: the only number")
        ->type_name("COLUMN");
    addText(attach, "--agent", choice.agent, "What the table is called in the site; default: its name")
        ->type_name("NAME");
    addPairs(attach, "--unit", command->units, "UNIT", "The unit of a column or name; repeatable");
    attach->footer(
        "Nothing is copied and nothing there is ever changed: whatever is looked at is asked for. NULL and NaN are no\n"
        "value; of several rows of one time the greatest value counts. Dates without a zone are UTC. A site\n"
        "keeps neither user nor password: PostgreSQL's come from PGUSER, and ~/.pgpass or PGPASSWORD, ClickHouse's\n"
        "from PLOTIX_CLICKHOUSE_USER and PLOTIX_CLICKHOUSE_PASSWORD_FILE. A user of the address is asked as this "
        "once.\n"
        "Examples:\n  plotix attach plant.plotix postgresql://db1/historian --list\n"
        "  plotix attach plant.plotix postgresql://reader@db1/historian --table boiler --unit temperature=°C\n"
        "  plotix attach plant.plotix clickhouse://db2/scada --table samples --name tag --value value --agent Scada");
    return {attach, Command::Makes::Text, [command](CommandContext context) { return runAttach(*command, context); }};
}

Command addDetach(CLI::App& program)
{
    const auto command = std::make_shared<DetachCommand>();
    CLI::App* detach = program.add_subcommand("detach", "Show an attached table no longer");
    addSite(detach, command->site);
    addText(detach, "AGENT", command->agent, "What the table is called in the site")->required();
    detach->footer("The table stays as it is. plotix edit --undo takes this back.\n"
                   "Example:\n  plotix detach plant.plotix boiler");
    return {detach, Command::Makes::Text, [command](CommandContext context) { return runDetach(*command, context); }};
}

}  // namespace plotix
