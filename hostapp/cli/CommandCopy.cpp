#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/TerminalText.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteCopying.h"

#include <QtCore/QFileInfo>

#include <ostream>

/// Copying a site between a file and a server, or between two of a kind.
namespace plotix {

namespace {

struct CopyCommand {
    QString from, to;
};

QString nameOf(const QString& place)
{
    return isServerAddress(place) ? place.section(QLatin1Char('/'), 2) : QFileInfo(place).fileName();
}

int runCommand(const CopyCommand& command, CommandContext context)
{
    const StopRequest interruption(StopRequest::From::Keyboard);
    std::optional<CopiedSite> copied;
    {
        const CommandProgress progress = makeCommandProgress(context.services, context.streams,
                                                             QStringLiteral("Copying %1").arg(nameOf(command.from)));
        copied = copySite(command.from, command.to, progress);
    }
    if (!copied)
        throw ReportableError(QStringLiteral("cancelled; the same command goes on where this one ended"));
    context.streams.output << nameOf(command.to).toStdString() << " has "
                           << countText(copied->records, "record", "records") << " of "
                           << countText(copied->properties, "property", "properties") << " of "
                           << countText(copied->agents, "agent", "agents")
                           << (copied->wentOn ? ", some of them copied before" : "") << "; all are the same.\n";
    if (copied->attached > 0)
        context.streams.output << countText(copied->attached, "agent shows", "agents show")
                               << " a table of another database: the copy shows the same table, and its records stay "
                                  "there.\n";
    return kCommandDone;
}

}  // namespace

Command addCopy(CLI::App& program)
{
    const auto command = std::make_shared<CopyCommand>();
    CLI::App* copy = program.add_subcommand("copy", "Copy a site to a server, from one, or into another file");
    const char* const kPlace = "FILE.plotix|clickhouse://HOST/DATABASE/SITE";
    addText(copy, "FROM", command->from, "The site")->required()->type_name(kPlace);
    addText(copy, "TO", command->to, "Where the copy shall stand: a new file, or a site made by “plotix store create”")
        ->required()
        ->type_name(kPlace);
    copy->footer(
        "Everything comes along but the steps that can be undone. An interrupted copy goes on where it ended when\n"
        "the same command is given again; what is there in the end is compared with what was copied.\n"
        "Examples:\n  plotix copy plant.plotix clickhouse://db1,db2/plotix/plant\n"
        "  plotix copy clickhouse://db1/plotix/plant backup.plotix");
    return {copy, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
