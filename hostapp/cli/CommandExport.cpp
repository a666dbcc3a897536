#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/RecordChoice.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/exchange/formats/FileExchange.h"

/// Exporting: the records chosen, into a file that importing reads back to the same bits.
namespace plotix {

namespace {

struct ExportCommand {
    QString site, output;
    RecordChoice choice;
};

/// Reading is the first half of the work.
constexpr double kReadingPart = 0.5;

[[noreturn]] void failAsCancelled(const ExportCommand& command)
{
    throw ReportableError(QStringLiteral("cancelled; %1 was not written").arg(command.output));
}

void writeFile(const ExportCommand& command, const std::vector<std::shared_ptr<SiteProperty>>& properties,
               const RecordBlock& block, const CommandProgress& progress)
{
    ExportedRecords records{{}, block};
    for (const auto& property : properties)
        records.columns.push_back({property->name(), property->description().archivedUnit});
    try {
        exportFile(command.output, records,
                   [&progress](double fraction) { return progress(kReadingPart + (1 - kReadingPart) * fraction); });
    } catch (const ExportFailure& failure) {
        throw ReportableError(QStringLiteral("%1 cannot be written: %2").arg(command.output, failure.systemError()));
    } catch (const ExportCancelled&) {
        failAsCancelled(command);
    }
}

int runCommand(const ExportCommand& command, CommandContext context)
{
    requireWritable(FileKind::Text, command.output);
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, command.choice.agent);
    const auto properties = propertiesOf(*agent, command.choice.properties);
    std::vector<RowId> ids;
    for (const auto& property : properties)
        ids.push_back(property->description().id);

    const StopRequest interruption(StopRequest::From::Keyboard);
    const CommandProgress progress =
        makeCommandProgress(context.services, context.streams, QStringLiteral("Exporting %1").arg(agent->name()));
    RecordStore& store = *document->records();
    const TimeSpan span = timeSpanOf(command.choice, store.extent(agent->id()));
    const RecordOverview overview = store.overview(agent->id(), {}, span.from, span.to);
    if (const auto refusal = refusalOf({overview, ids.size(), span.from, span.to}, memoryBudget()))
        throw ReportableError(*refusal);
    const std::optional<RecordBlock> block =
        store.read(agent->id(), ids, span.from, span.to,
                   [&progress](double fraction) { return progress(kReadingPart * fraction); });
    if (!block)
        failAsCancelled(command);
    writeFile(command, properties, *block, progress);
    return kCommandDone;
}

}  // namespace

Command addExport(CLI::App& program)
{
    const auto options = std::make_shared<ExportCommand>();
    CLI::App* exporting = program.add_subcommand("export", "Write records into a CSV file, every digit kept");
    addSite(exporting, options->site);
    addText(exporting, "--output", options->output, "The file to write")
        ->required()
        ->type_name("FILE.csv")
        ->check(checkTable);
    addRecordChoice(exporting, options->choice);
    exporting->footer(
        "Example:\n  plotix export nyc.plotix --agent EWR --properties airTemperature --output newark.csv");
    Command command{exporting};
    command.run = [options](CommandContext context) { return runCommand(*options, context); };
    command.contradiction = [options] { return contradictionIn(options->choice); };
    return command;
}

}  // namespace plotix
