#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/ImportWords.h"
#include "hostapp/cli/JsonWriter.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/exchange/ExactText.h"
#include "hostapp/exchange/formats/FileExchange.h"
#include "hostapp/site/NewTrend.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <ostream>

/// Importing: the file's records first, in one transaction, then the agent's first trend view.
namespace plotix {

namespace {

struct ImportCommand {
    QString file, site;
    ImportOptions options;
    bool json = false;
};

void addFirstTrend(const ImportSummary& summary, TrendOccasion occasion, CommandServices& services)
{
    const std::shared_ptr<SiteDocument> document = openSite(summary.site);
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, summary.agent);
    const std::pair imported(Date{*summary.first}, Date{*summary.last});
    std::vector<ValueExtent> extents;
    for (const ImportSummary::Column& column : summary.columns)
        extents.push_back({column.propertyName, column.lowest, column.highest});
    services.storeTrend(requestOf(document, agent, planFirstTrend(occasion, *agent, imported, extents)));
}

/// As a date; as seconds where the calendar has none.
void writeMoment(JsonWriter& json, const char* key, const std::optional<double>& seconds)
{
    if (!seconds)
        json.absent(key);
    else if (hasCalendarText(*seconds))
        json.text(key, QString::fromStdString(exactTime(*seconds)));
    else
        json.number(key, *seconds);
}

void writeColumn(JsonWriter& json, const ImportSummary::Column& column)
{
    json.beginObject();
    json.text("header", column.header);
    json.text("name", column.name);
    json.text("propertyName", column.propertyName);
    json.text("unit", column.unit);
    json.count("valid", column.valid);
    json.count("bad", column.bad);
    json.count("marked", column.marked);
    json.text("quality", column.quality);
    json.endObject();
}

QStringList printedTexts(const std::vector<ImportFinding>& findings)
{
    QStringList texts;
    for (const ImportFinding& finding : findings)
        texts << printedText(finding);
    return texts;
}

void writeJson(std::ostream& out, const ImportSummary& summary)
{
    JsonWriter json(out);
    json.beginObject();
    json.text("file", summary.file);
    json.text("site", summary.site);
    json.text("agent", summary.agent);
    json.text("timeColumn", summary.timeColumn);
    json.count("rows", summary.rows);
    json.count("records", summary.records);
    json.count("replaced", summary.replaced);
    json.count("otherRows", summary.otherRows);
    json.count("badRows", summary.badRows);
    json.count("unorderedTimes", summary.unorderedTimes);
    json.count("repeatedTimes", summary.repeatedTimes);
    writeMoment(json, "first", summary.first);
    writeMoment(json, "last", summary.last);
    json.beginArray("columns");
    for (const ImportSummary::Column& column : summary.columns)
        writeColumn(json, column);
    json.endArray();
    json.texts("leftOut", summary.leftOut);
    json.texts("notes", printedTexts(summary.notes));
    json.endObject();
}

ImportSummary importWithProgress(const ImportCommand& command, CommandContext context)
{
    const QString name = QFileInfo(QDir::cleanPath(command.file)).fileName();  // of a folder too, behind its last /
    const CommandProgress progress =
        makeCommandProgress(context.services, context.streams, QStringLiteral("Importing %1").arg(name));
    try {
        return importFile(command.file, command.site, command.options, [&](qint64 done, qint64 total) {
            return progress(total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 0.0);
        });
    } catch (const ImportFailure& failure) {
        throw ReportableError(QStringLiteral("%1: %2").arg(name, printedText(failure.finding())));
    } catch (const ImportCancelled&) {
        throw ReportableError(QStringLiteral("%1: cancelled; nothing was stored").arg(name));
    }
}

int runCommand(ImportCommand command, CommandContext context)
{
    command.site = siteFileOf(command.site);
    requireSiteName(command.site);
    const StopRequest interruption(StopRequest::From::Keyboard);
    const ImportSummary summary = importWithProgress(command, context);
    // The summary is printed first: the records are stored even if making the trend view fails.
    if (command.json)
        writeJson(context.streams.output, summary);
    else
        context.streams.output << printedText(summary).toStdString();
    if (summary.firstImport)
        addFirstTrend(summary, command.options.only.isEmpty() ? TrendOccasion::Imported : TrendOccasion::Selected,
                      context.services);
    return kCommandDone;
}

}  // namespace

Command addImport(CLI::App& program)
{
    const auto command = std::make_shared<ImportCommand>();
    ImportOptions& options = command->options;
    CLI::App* import = program.add_subcommand(
        "import", "Read a file of measurements into a site; makes the site when it is not there");
    addText(import, "FILE", command->file, "Text with columns (.csv, .txt, …; also .gz), or a spreadsheet (.xlsx)")
        ->required();
    addText(import, "--site", command->site, "The site document, NAME.plotix")->required()->type_name("SITE");
    addText(import, "--agent", options.agentName, "The source of the measurements; the file's name unless given")
        ->type_name("NAME");
    addText(import, "--time", options.timeColumn, "The column that holds the time, or Date+Time for two of them")
        ->type_name("COLUMN");
    addText(import, "--time-zone", options.timeZone,
            "Of times without a zone, such as Europe/Berlin, or a clock never changed, such as +01:00 or CET; what the "
            "file states, else "
            "yours, unless given")
        ->type_name("ZONE");
    addChoice<DateOrder>(import, "--date-order", options.dateOrder,
                         {{"dmy", DateOrder::DayFirst}, {"mdy", DateOrder::MonthFirst}, {"ymd", DateOrder::YearFirst}},
                         "Whether 3/4/15 is the third of April (dmy), March 4 (mdy) or 15 April 2003 (ymd)");
    addChoice<DecimalSign>(import, "--decimal", options.decimal,
                           {{"point", DecimalSign::Point}, {"comma", DecimalSign::Comma}},
                           "The sign before the decimals, where the file leaves it open");
    addText(import, "--delimiter", options.delimiter, "The sign between columns of text, or tab, or blank")
        ->type_name("SIGN");
    addText(import, "--sheet", options.sheet, "Of a spreadsheet; the first with measurements unless given")
        ->type_name("NAME");
    addChoice<Arrangement>(
        import, "--arrangement", options.arrangement,
        {{"columns", Arrangement::Columns}, {"names", Arrangement::Names}},
        "Whether each quantity has a column, also one called by a time of day, or each row names its "
        "quantity");
    addPairs(import, "--where", options.where, "VALUE", "Take only rows with this text in the column; repeatable");
    addList(import, "--only", options.only, "Take only these columns; the first trend shows them all")
        ->type_name("COLUMN,…");
    addPairs(import, "--unit", options.units, "UNIT", "The column's unit; repeatable");
    addPairs(import, "--name", options.names, "NAME", "The property's name; repeatable");
    addPairs(import, "--quality", options.quality, "COLUMN",
             "The column that says which values of the other are bad, such as Status=Temp, or Status=* for all of the "
             "row; recognised unless given; repeatable");
    addList(import, "--bad", options.badWords, "The words in such columns that mean bad; no others do then")
        ->type_name("WORD,…");
    import->add_flag("--ignore-quality", options.ignoreQuality,
                     "Take all values as good, whatever a column beside them says");
    import->add_flag("--replace", options.replace,
                     "Replace stored values that differ; without it such a file is refused and nothing changes");
    import->add_flag("--skip-bad-rows", options.skipBadRows, "Pass over rows without a time however many they are");
    import->add_flag("--keep-all-numbers", options.keepAllNumbers, "Take -999 and the like for values, not for gaps");
    import->add_flag_callback(
        "--keep-last", [command] { command->options.rowsAtOneTime = RowsAtOneTime::KeepLast;
},
        "Of rows at one time keep the last, however many they are; join the rows of several devices");
import->add_flag("--json", command->json, "Print the summary as JSON");
import->footer("plotix edit SITE --undo-import takes the last import back.\nExample:\n  plotix import weather.csv "
               "--site nyc.plotix --agent EWR --where origin=EWR \\\n"
               "    --time time_hour --unit temp=°F --name \"temp=Air Temperature\"");
return {import, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}  // namespace plotix

}  // namespace plotix
