#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/ServerSites.h"

#include <QtCore/QFileInfo>

#include <ostream>

/// Verifying: every record is read and compared with what is stored about it; nothing is changed.
namespace plotix {

namespace {

struct VerifyCommand {
    QString site;
};

int runCommand(const VerifyCommand& command, CommandContext context)
{
    if (!isServerAddress(command.site) && !QFileInfo::exists(command.site))
        throw ReportableError(QStringLiteral("there is no site %1").arg(command.site));
    const StopRequest interruption(StopRequest::From::Keyboard);
    const CommandProgress progress = makeCommandProgress(
        context.services, context.streams, QStringLiteral("Verifying %1").arg(QFileInfo(command.site).fileName()));
    const VerificationResult result =
        recordsOfSite(isServerAddress(command.site) ? deskFileOf(command.site) : command.site)
            ->verify(progress, memoryBudget());
    std::ostream& out = context.streams.output;
    for (const QString& finding : result.findings)
        out << finding.toStdString() << '\n';
    if (!result.findings.isEmpty())
        throw ReportableError(QStringLiteral("%1 is damaged (%2%3 findings); restore it from a copy")
                                  .arg(command.site, result.moreFindings ? QStringLiteral("more than ") : QString())
                                  .arg(result.findings.size()));
    if (result.stopped)
        throw ReportableError(QStringLiteral("cancelled; no damage was found up to then"));
    out << "No damage found. " << result.records << (result.records == 1 ? " record, " : " records, ") << result.values
        << (result.values == 1 ? " value and " : " values and ") << result.chunks
        << (result.chunks == 1 ? " chunk were checked.\n" : " chunks were checked.\n");
    return kCommandDone;
}

}  // namespace

Command addVerify(CLI::App& program)
{
    const auto command = std::make_shared<VerifyCommand>();
    CLI::App* verify = program.add_subcommand("verify", "Read every record of a site and say whether it is undamaged");
    addSite(verify, command->site);
    verify->footer("Exit status: 0 no damage, 1 damage found, each piece on a line.\n"
                   "Example:\n  plotix verify nyc.plotix");
    return {verify, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
