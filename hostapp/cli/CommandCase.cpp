#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/RecordChoice.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/cli/TerminalText.h"

#include <QtCore/QFileInfo>

#include <ostream>

/// Cases: a trend with what it shows as a site file of its own, written whole or not at all.
namespace plotix {

namespace {

struct CaseCommand {
    QString site, output, trend;
    RecordChoice choice;  ///< its span alone
};

std::string checkCase(const std::string& name)
{
    return QString::fromStdString(name).endsWith(QLatin1String(".plotix"), Qt::CaseInsensitive) ? std::string()
                                                                                                : "must end in .plotix";
}

int runCommand(const CaseCommand& command, CommandContext context)
{
    const CasePlan plan =
        context.services.planCase({openSite(command.site), command.trend, command.choice.from, command.choice.to});
    const StopRequest interruption(StopRequest::From::Keyboard);
    std::optional<CaseContents> contents;
    {
        const CommandProgress progress = makeCommandProgress(
            context.services, context.streams, QStringLiteral("Saving %1").arg(QFileInfo(command.output).fileName()));
        contents = writeCase(plan, command.output, progress);
    }
    if (!contents)
        throw ReportableError(QStringLiteral("cancelled; %1 was not written").arg(command.output));
    context.streams.output << command.output.toStdString() << " has "
                           << countText(contents->records, "record", "records") << " of "
                           << countText(contents->properties, "property", "properties") << ", "
                           << countText(contents->notes, "note", "notes") << ", " << sizeText(contents->bytes) << ".\n";
    return kCommandDone;
}

}  // namespace

Command addCase(CLI::App& program)
{
    const auto command = std::make_shared<CaseCommand>();
    CLI::App* made = program.add_subcommand(
        "case", "Save a trend with its records and notes as a site of its own, to send to somebody");
    addSite(made, command->site);
    addText(made, "--output", command->output, "The file to write")
        ->required()
        ->type_name("FILE.plotix")
        ->check(checkCase);
    addText(made, "--trend", command->trend, "The trend's title; may be left out when there is only one trend")
        ->type_name("TITLE");
    addSpan(made, command->choice);
    made->footer("Without --from and --to the case has the span that the trend shows.\n"
                 "Examples:\n  plotix case nyc.plotix --trend \"Newark 2013\" --output newark.plotix\n"
                 "  plotix case nyc.plotix --trend Week --from 2013-07-01 --to 2013-07-02 --output july.plotix");
    Command answer{made, Command::Makes::Text,
                   [command](CommandContext context) { return runCommand(*command, context); }};
    answer.contradiction = [command] { return contradictionIn(command->choice); };
    return answer;
}

}  // namespace plotix
