#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/TerminalText.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/HandingOver.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/exchange/ExactText.h"

#include <ostream>

/// Sites on a server: making, upgrading, describing and removing them, and storing what waits for them here.
namespace plotix {

namespace {

struct StoreCommand {
    enum class Work { Create, Info, Forward, Upgrade, Drop };
    Work work = Work::Info;
    QString address;
    bool prints = false;   ///< statements, instead of telling the server
    QString confirmation;  ///< the site's name again, to remove it
};

void printStatements(const std::vector<StoreServer::Statements>& all, std::ostream& out)
{
    for (const StoreServer::Statements& host : all) {
        if (!host.host.isEmpty())
            out << "-- on " << host.host.toStdString() << '\n';
        for (const std::string& statement : host.statements)
            out << statement << ";\n";
    }
}

void create(const StoreCommand& command, StoreServer& server, std::ostream& out)
{
    if (command.prints)
        return printStatements(server.creation(), out);
    const std::optional<StoreServer::Layout> before = server.layout();
    server.create();
    const std::size_t shards = server.layout().value_or(StoreServer::Layout{}).shards;
    if (!before)
        out << "There is a new site: ";
    else if (before->shards == shards)
        out << "There was a site already, which stays as it is: ";
    else
        out << "There are " << shards << " shards instead of " << before->shards << " now: ";
    out << server.title().toStdString() << ".\n";
}

void upgrade(const StoreCommand& command, StoreServer& server, std::ostream& out)
{
    if (command.prints)
        return printStatements(server.creation(), out);
    const std::uint32_t before = server.layout().value_or(StoreServer::Layout{}).version;
    server.upgrade();
    if (before == StoreServer::kVersion)
        out << server.title().toStdString() << " is of version " << before << " already.\n";
    else
        out << server.title().toStdString() << " is of version " << StoreServer::kVersion << " now, and was of "
            << before << ". Earlier versions of this program refuse it.\n";
}

void describe(const StoreServer::Shard& shard, std::ostream& out)
{
    if (!shard.failure.isEmpty()) {
        out << "  " << shard.failure.toStdString() << '\n';
        return;
    }
    if (shard.replicas > 0)
        out << "Replicas         " << shard.replicasAlive << " of " << shard.replicas << " live\n";
    out << "Agents           " << shard.agents << '\n'
        << "Chunks           " << shard.chunks << '\n'
        << "Young records    " << shard.youngRecords << '\n'
        << "On disk          " << sizeText(static_cast<qint64>(shard.bytes)) << '\n';
}

/// What this desk has for the server; said also where the server cannot be reached.
void describeWaiting(const QString& address, std::ostream& out)
{
    for (const WaitingFile& file : waitingBeside(deskFileNameOf(address)))
        out << "Waiting here     " << file.records << (file.records == 1 ? " record of " : " records of ")
            << file.agentName.toStdString()
            << (file.extent ? " from " + exactTime(file.extent->first) + " to " + exactTime(file.extent->last)
                            : std::string())
            << " in " << file.path.toStdString() << '\n'
            << (file.problem.isEmpty() ? std::string() : "                 " + file.problem.toStdString() + '\n');
}

void forward(const StoreCommand& command, CommandContext context)
{
    const StopRequest interruption(StopRequest::From::Keyboard);
    const QString desk = deskFileOf(command.address);
    const HandingOver::Done done = handOverLeft(
        desk, makeCommandProgress(context.services, context.streams, QStringLiteral("Storing what waited")));
    std::ostream& out = context.streams.output;
    out << done.records << (done.records == 1 ? " record" : " records") << " that waited here "
        << (done.records == 1 ? "is" : "are") << " on the server now.\n";
    if (done.others > 0)
        out << done.others << " of them had times at which the site has others, and were left out.\n";
    std::size_t left = 0;
    for (const WaitingFile& file : waitingBeside(desk))
        left += file.records;
    if (left > 0)
        throw ReportableError(
            QStringLiteral(
                "Records that wait on: %1. A recorder is at work and stores them itself, or this was cancelled.")
                .arg(left));
}

void describe(StoreServer& server, std::ostream& out)
{
    const StoreServer::Description found = server.description();
    out << "Server version   " << found.serverVersion.toStdString() << '\n';
    if (!found.exists)
        throw ReportableError(
            QStringLiteral("there is no site %1: “plotix store create” makes one").arg(server.title()));
    out << "Tables           version " << found.version << '\n';
    for (std::size_t shard = 0; shard < found.shards.size(); ++shard) {
        if (found.shards.size() > 1)
            out << "\nShard " << shard + 1 << "          " << found.shards[shard].title.toStdString() << '\n';
        describe(found.shards[shard], out);
    }
    if (found.version < StoreServer::kVersion)
        out << "\n“plotix store upgrade” makes the tables those of version " << StoreServer::kVersion
            << ", which may have shards.\n";
}

void drop(const StoreCommand& command, StoreServer& server, std::ostream& out)
{
    if (command.prints)
        return printStatements(server.dropping(), out);
    const QString site = server.title().section(QLatin1Char('/'), -1);
    if (command.confirmation != site)
        throw ReportableError(
            QStringLiteral(
                "this removes %1 with all its records for good: add --yes-remove %2 if that is what you want")
                .arg(server.title(), site));
    server.drop();
    out << server.title().toStdString() << " is removed.\n";
}

int runCommand(const StoreCommand& command, CommandContext context)
{
    const std::shared_ptr<StoreServer> server = storeServer(command.address);
    switch (command.work) {
    case StoreCommand::Work::Create: create(command, *server, context.streams.output); break;
    case StoreCommand::Work::Info:
        describeWaiting(command.address, context.streams.output);
        describe(*server, context.streams.output);
        break;
    case StoreCommand::Work::Forward: forward(command, context); break;
    case StoreCommand::Work::Upgrade: upgrade(command, *server, context.streams.output); break;
    case StoreCommand::Work::Drop: drop(command, *server, context.streams.output); break;
    }
    return kCommandDone;
}

}  // namespace

Command addStore(CLI::App& program)
{
    const auto command = std::make_shared<StoreCommand>();
    CLI::App* store = program.add_subcommand(
        "store", "Make, upgrade, describe or remove a site on a server, or store what waits for it here");
    addChoice<StoreCommand::Work>(store, "WORK", command->work,
                                  {{"create", StoreCommand::Work::Create},
                                   {"info", StoreCommand::Work::Info},
                                   {"forward", StoreCommand::Work::Forward},
                                   {"upgrade", StoreCommand::Work::Upgrade},
                                   {"drop", StoreCommand::Work::Drop}},
                                  "What to do")
        ->required();
    addText(store, "ADDRESS", command->address,
            "The site's place; hosts with commas between are replicas, each with all of the same, and those with + "
            "between shards, each with the records of some sources")
        ->required()
        ->type_name("clickhouse://[USER@]HOST[:PORT][,HOST…][+HOST…]/DATABASE/SITE[?secure=1]");
    store->add_flag("--print", command->prints, "Print the statements instead, for whoever administers the server");
    addText(store, "--yes-remove", command->confirmation, "The site's name again, to remove it")->type_name("SITE");
    store->footer(
        "The user and the password come from PLOTIX_CLICKHOUSE_USER and PLOTIX_CLICKHOUSE_PASSWORD, or the\n"
        "password from the file that PLOTIX_CLICKHOUSE_PASSWORD_FILE names, which nobody else may read.\n"
        "Examples:\n  plotix store create clickhouse://localhost/plotix/plant\n"
        "  plotix store create clickhouse://db1/plotix/plant --print > plant.sql\n"
        "  plotix store create clickhouse://db1,db2,db3/plotix/plant\n"
        "  plotix store info clickhouse://db1,db2,db3/plotix/plant\n"
        "  plotix store create clickhouse://db1,db2+db3,db4/plotix/plant\n"
        "  plotix store upgrade clickhouse://localhost/plotix/plant\n"
        "What a recorder could not store waits on this machine: “info” says what, “forward” stores it.\n"
        "With three replicas one may be lost: what is stored is on two of them. They need a keeper in common.\n"
        "A shard is added by creating the site again with + and its hosts behind the others: it takes sources\n"
        "that are new, and nothing moves. End what records there before, and begin it with the new address.\n"
        "Upgrading brings the tables of an earlier version up to date; with --print, create's statements do.");
    return {store, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
