#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/cli/TerminalText.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/exchange/ExactText.h"

#include <QtCore/QFileInfo>

#include <cctype>
#include <ostream>

/// Compacting: the same records in less space, or without those that are older than wanted.
namespace plotix {

namespace {

/// At most one of the two says what to drop; neither: nothing.
struct CompactCommand {
    QString site;
    std::optional<double> before;  ///< seconds since 1970-01-01 UTC
    std::optional<double> keep;    ///< seconds back from the site's last record
};

/// Records before this time are dropped; nothing: none are. A site without records has no time to count back from. What
/// would leave not a single record is taken for a slip: it cannot be undone.
std::optional<double> dropBefore(const CompactCommand& command)
{
    if (!command.keep && !command.before)
        return {};
    const auto extent = openSite(command.site)->recordExtent();
    if (!extent)
        return {};
    const double last = extent->second.seconds;
    if (command.before && *command.before > last)
        throw ReportableError(QStringLiteral("that would drop every record of %1, of which the last is of %2; nothing "
                                             "was changed. plotix edit deletes an agent as a whole")
                                  .arg(command.site, QString::fromStdString(exactTime(last))));
    return command.before ? command.before : std::optional(last - *command.keep);
}

/// What is kept is for good: 90 might be meant as days, and would be seconds.
std::string checkUnitOfTime(const std::string& text)
{
    const bool hasUnit = !text.empty() && std::isalpha(static_cast<unsigned char>(text.back())) != 0;
    return hasUnit ? std::string() : "needs a unit, such as " + text + "d for days or " + text + "h for hours";
}

void describe(std::ostream& out, const CompactionResult& result, const std::optional<double>& before)
{
    out << result.records << (result.records == 1 ? " record" : " records") << " kept, " << result.dropped
        << " dropped";
    if (before)
        out << " from before " << (hasCalendarText(*before) ? exactTime(*before) : exactNumber(*before) + " s");
    out << ".\nChunks: " << result.chunksBefore << " before, " << result.chunksAfter
        << " now.\nSize: " << sizeText(result.bytesBefore) << " before, " << sizeText(result.bytesAfter) << " now.\n";
}

int runCommand(const CompactCommand& command, CommandContext context)
{
    // The document is closed here: an open one would keep the file from being shortened at once.
    const std::shared_ptr<RecordStore> records = openSite(command.site)->records();
    CompactionRequest request{dropBefore(command)};
    request.memory = memoryBudget();
    const StopRequest interruption(StopRequest::From::Keyboard);
    const CommandProgress progress = makeCommandProgress(
        context.services, context.streams, QStringLiteral("Compacting %1").arg(QFileInfo(command.site).fileName()));
    const CompactionResult result = records->compact(request, progress);
    describe(context.streams.output, result, request.dropBefore);
    if (result.stopped)
        throw ReportableError(QStringLiteral("cancelled; %1 is whole, and may be compacted further").arg(command.site));
    return kCommandDone;
}

}  // namespace

Command addCompact(CLI::App& program)
{
    const auto command = std::make_shared<CompactCommand>();
    CLI::App* compact = program.add_subcommand(
        "compact", "Store a site's records in the least space; with --before or --keep drop old ones");
    addSite(compact, command->site);
    addTime(compact, "--before", command->before, "Drop the records before this time, for good; as 2013-07-01")
        ->type_name("DATE");
    addDuration(compact, "--keep", command->keep,
                "Drop all but the last so much, such as 30d or 12h, counted back from the site's last record")
        ->excludes("--before")
        ->check(checkUnitOfTime);
    compact->footer("Without --before or --keep no record is lost. Ctrl-C ends it and loses nothing.\n"
                    "Examples:\n  plotix compact nyc.plotix\n  plotix compact computer.plotix --keep 90d");
    return {compact, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
