#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/ClockChoice.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/RecordChoice.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/exchange/formats/RecordExport.h"
#include "records/store/RecordStore.h"

/// Exporting: the records chosen, into a file that importing reads back to the same bits.
namespace plotix {

namespace {

struct ExportCommand {
    QString site, output;
    RecordChoice choice;
    std::optional<ExportForm::Clock> clock;
    ClockChoice zone;
    std::optional<char> delimiter;
    char decimalSign = '.';
    std::optional<bool> guardsFormulas;
    bool withQualities = false;
};

/// What is written where nothing else is asked for: a decimal comma goes with semicolons.
ExportForm formOf(const ExportCommand& command, const QTimeZone& zone)
{
    ExportForm form;
    form.clock = command.clock.value_or(ExportForm::Clock::Utc);
    if (zone.isValid())
        setClock(form, zone);
    form.decimalSign = command.decimalSign;
    form.delimiter = command.delimiter.value_or(command.decimalSign == ',' ? ';' : ',');
    form.guardsFormulas = command.guardsFormulas;
    form.withQualities = command.withQualities;
    return form;
}

int runCommand(const ExportCommand& command, CommandContext context)
{
    requireExportable(command.output);
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, command.choice.agent);
    RecordStore& store = *document->records();
    RecordExport what = exportOf(*agent, propertiesOf(*agent, command.choice.properties));
    const QTimeZone zone = zoneOf(command.zone, *document);
    const TimeSpan span = timeSpanOf(command.choice, store.extent(agent->id()), zone);
    what.from = span.from;
    what.to = span.to;
    what.form = formOf(command, zone);

    const StopRequest interruption(StopRequest::From::Keyboard);
    const CommandProgress progress =
        makeCommandProgress(context.services, context.streams, QStringLiteral("Exporting %1").arg(agent->name()));
    try {
        exportRecords(store, what, command.output, progress);
    } catch (const ExportFailure& failure) {
        throw ReportableError(QStringLiteral("%1 cannot be written: %2").arg(command.output, failure.systemError()));
    } catch (const ExportCancelled&) {
        throw ReportableError(QStringLiteral("cancelled; %1 was not written").arg(command.output));
    }
    return kCommandDone;
}

std::optional<QString> contradictionIn(const ExportCommand& command)
{
    if (command.delimiter == ',' && command.decimalSign == ',')
        return QStringLiteral("--decimal comma needs another --delimiter, such as semicolon");
    if (command.clock && !command.zone.isEmpty())
        return QStringLiteral("--clock and --zone both say by which clocks: give one of them");
    return contradictionIn(command.choice);
}

void addForm(CLI::App* command, ExportCommand& options)
{
    addChoice<char>(command, "--delimiter", options.delimiter, {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}},
                    "Between the columns of a .csv or .txt file; comma unless given");
    addChoice<char>(
        command, "--decimal", options.decimalSign, {{"point", '.'}, {"comma", ','}},
        "Before the decimals in such a file; point unless given. With comma columns are semicolon-separated");
    addChoice<ExportForm::Clock>(command, "--clock", options.clock,
                                 {{"utc", ExportForm::Clock::Utc}, {"local", ExportForm::Clock::Local}},
                                 "Times in UTC, or in your zone with their distance from UTC; UTC unless given");
    addZoneChoice(command, options.zone);
    addChoice<bool>(command, "--formulas", options.guardsFormulas, {{"guarded", true}, {"plain", false}},
                    "Whether names that begin with = + - or @ get an apostrophe; guarded in .xlsx, plain in text");
    command->add_flag("--quality", options.withQualities,
                      "Write a column of Good and Bad beside each, and the values that are not valid too; without it "
                      "those are left empty");
}

}  // namespace

Command addExport(CLI::App& program)
{
    const auto options = std::make_shared<ExportCommand>();
    CLI::App* exporting =
        program.add_subcommand("export", "Write records into a text file or a spreadsheet, every digit kept");
    addSite(exporting, options->site);
    addText(exporting, "--output", options->output, "The file to write")
        ->required()
        ->type_name("FILE.csv|FILE.xlsx")
        ->check(checkTable);
    addRecordChoice(exporting, options->choice);
    addRange(exporting, options->choice);
    addForm(exporting, *options);
    exporting->footer(
        "Examples:\n  plotix export nyc.plotix --agent EWR --properties airTemperature --output newark.csv\n"
        "  plotix export nyc.plotix --agent EWR --clock local --decimal comma --output newark.csv\n"
        "  plotix export nyc.plotix --agent EWR --zone America/New_York --from 2013-07-01 --to 2013-07-01 \\\n"
        "      --output independence.csv\n"
        "  plotix export nyc.plotix --agent EWR --range last7Days --output newark.xlsx");
    Command command{exporting};
    command.run = [options](CommandContext context) { return runCommand(*options, context); };
    command.contradiction = [options] { return contradictionIn(*options); };
    return command;
}

}  // namespace plotix
