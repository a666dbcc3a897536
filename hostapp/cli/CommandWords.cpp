#include "hostapp/cli/CommandWords.h"

#include "hostapp/cli/ArgumentValues.h"

#include <CLI/CLI.hpp>

namespace plotix {

namespace {

void addOpen(CLI::App& app, CommandWords& words)
{
    CLI::App* open = app.add_subcommand("open", "Open a site in the site window; without SITE the demonstration site");
    open->add_option("SITE", words.site, "A site document, NAME.plotix");
    open->add_option("--screenshot", words.screenshot, "Save a picture of the window when the trend is drawn, and exit")
        ->type_name("FILE.png")
        ->check(checkPng);
    open->add_option("--size", words.size, "The window's size in points, for --screenshot")
        ->type_name("WxH")
        ->check(checkSize);
    open->footer(
        "Examples:\n  plotix open nyc.plotix\n  plotix open nyc.plotix --screenshot window.png --size 1280x800");
}

void addImport(CLI::App& app, CommandWords& words)
{
    CLI::App* import = app.add_subcommand("import", "Read a CSV file into a site; makes the site when it is not there");
    import->add_option("FILE", words.file, "A text file of measurements, one row a moment")->required();
    import->add_option("--site", words.site, "The site document, NAME.plotix")->required()->type_name("SITE");
    import->add_option("--agent", words.agent, "The source of the measurements; the file's name unless given")
        ->type_name("NAME");
    import->add_option("--time", words.time, "The column that holds the time")->type_name("COLUMN");
    import->add_option("--time-zone", words.zone, "Of times without a zone, such as Europe/Berlin; yours unless given")
        ->type_name("ZONE");
    import->add_option("--date-order", words.dateOrder, "Whether 3/4/2015 is the third of April (dmy) or March 4 (mdy)")
        ->type_name("dmy|mdy")
        ->check(CLI::IsMember({"dmy", "mdy"}));
    const auto addPairs = [import](const char* name, std::vector<std::string>& texts, const char* type,
                                   const char* help) {
        import->add_option(name, texts, help)->type_name(type)->check(checkPair)->allow_extra_args(false);
    };
    addPairs("--where", words.where, "COLUMN=VALUE", "Take only rows with this text in the column; repeatable");
    import->add_option("--only", words.only, "Take only these columns")->type_name("COLUMN,…");
    addPairs("--unit", words.units, "COLUMN=UNIT", "The column's unit; repeatable");
    addPairs("--name", words.names, "COLUMN=NAME", "The property's name; repeatable");
    import->add_flag("--skip-bad-rows", words.skipBadRows, "Pass over rows that do not parse, and count them");
    import->add_flag("--json", words.json, "Print the summary as JSON");
    import->footer("Example:\n  plotix import weather.csv --site nyc.plotix --agent EWR --where origin=EWR \\\n"
                   "    --time time_hour --unit temp=°F --name \"temp=Air Temperature\"");
}

void addInfo(CLI::App& app, CommandWords& words)
{
    CLI::App* info = app.add_subcommand("info", "Say what a site holds: agents, properties, counts and extremes");
    info->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    info->add_flag("--json", words.json, "Print it as JSON, numbers in full precision");
    info->footer("Example:\n  plotix info nyc.plotix --json");
}

void addChoice(CLI::App* command, CommandWords& words)
{
    command->add_option("--agent", words.agent, "Whose records; may be left out when there is only one agent")
        ->type_name("NAME");
    command->add_option("--properties", words.properties, "Names or keys; all unless given")->type_name("A,B,…");
    command->add_option("--from", words.from, "ISO 8601, such as 2013-07-01 or 2013-07-01T12:00:00Z")
        ->type_name("T")
        ->check(checkTime);
    command->add_option("--to", words.to, "As --from; inclusive")->type_name("T")->check(checkTime);
}

void addRender(CLI::App& app, CommandWords& words)
{
    CLI::App* render = app.add_subcommand("render", "Draw a trend into a PNG or PDF file, without a window");
    render->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    render->add_option("--output", words.output, "The file to write")
        ->required()
        ->type_name("FILE.png|FILE.pdf")
        ->check(checkPicture);
    addChoice(render, words);
    render->add_option("--range", words.range, "A quick range: today … last7Days … allTime, which is the default")
        ->type_name("NAME")
        ->check(checkRange)
        ->excludes("--from")
        ->excludes("--to");
    render->add_option("--size", words.size, "Size of the graph in points; 1200x600 unless given")
        ->type_name("WxH")
        ->check(checkSize);
    render->add_option("--title", words.title, "A title above the graph")->type_name("TEXT");
    render->add_flag("--bare", words.bare, "The plain graph that programs ask for: no date labels, no styling; PNG");
    render->footer("Examples:\n  plotix render nyc.plotix --agent EWR --properties airTemperature,pressure \\\n"
                   "    --size 1200x600 --title \"Newark 2013\" --output newark.png\n"
                   "  plotix render nyc.plotix --agent EWR --from 2013-07-01 --to 2013-07-08 --output july.pdf");
}

void addExport(CLI::App& app, CommandWords& words)
{
    CLI::App* exporting = app.add_subcommand("export", "Write records into a CSV file, every digit kept");
    exporting->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    exporting->add_option("--output", words.output, "The file to write")->required()->type_name("FILE.csv");
    addChoice(exporting, words);
    exporting->footer(
        "Example:\n  plotix export nyc.plotix --agent EWR --properties airTemperature --output newark.csv");
}

void addReport(CLI::App& app, CommandWords& words)
{
    CLI::App* report = app.add_subcommand("report", "Print a view's report into a PDF file, without a window");
    report->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    report->add_option("--output", words.output, "The file to write")
        ->required()
        ->type_name("FILE.pdf")
        ->check(checkPdf);
    report->add_option("--view", words.view, "The view's title; may be left out when there is only one view")
        ->type_name("TITLE");
    report->add_option("--paper", words.paper, "The sheet; what is usual in your country unless given")
        ->type_name("A4|Letter")
        ->check(CLI::IsMember({"A4", "Letter"}));
    report->footer("Example:\n  plotix report nyc.plotix --view \"Newark 2013\" --paper Letter --output newark.pdf");
}

void addRecord(CLI::App& app, CommandWords& words)
{
    CLI::App* record = app.add_subcommand(
        "record", "Record this computer's own measurements into a site; makes the site when it is not there");
    record->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    record->add_option("--interval", words.interval, "Seconds from one record to the next; 1 unless given")
        ->type_name("S")
        ->check(checkInterval);
    record->add_option("--for", words.duration, "End after this time; without it Ctrl-C ends")
        ->type_name("DURATION")
        ->check(checkDuration);
    record->add_flag("--print-times", words.printTimes,
                     "Print a record's time as soon as it is stored, in seconds since 1970-01-01 UTC");
    record->footer(
        "Examples:\n  plotix record computer.plotix\n  plotix record computer.plotix --interval 10 --for 8h");
}

void addServe(CLI::App& app, CommandWords& words)
{
    CLI::App* serve = app.add_subcommand("serve", "Show the views of sites to web browsers, without a window");
    serve->add_option("SITE", words.sites, "Site documents, NAME.plotix")->required();
    serve
        ->add_option("--bind", words.bind,
                     "Where to listen: 127.0.0.1, this machine only, unless given; any other "
                     "address lets other machines in and needs --token-file")
        ->type_name("ADDR");
    serve->add_option("--port", words.port, "8123 unless given; 0 takes any that is free")
        ->type_name("N")
        ->check(CLI::Range(0, 65'535));
    serve
        ->add_option("--token-file", words.tokenFile, "A file whose first line browsers must know: ADDRESS/?token=LINE")
        ->type_name("FILE");
    serve->footer("Ctrl-C ends it.\nExamples:\n  plotix serve nyc.plotix --port 8123\n"
                  "  plotix serve nyc.plotix plant.plotix --bind 0.0.0.0 --token-file token.txt");
}

void addCompact(CLI::App& app, CommandWords& words)
{
    CLI::App* compact = app.add_subcommand(
        "compact", "Store a site's records in the least space; with --before or --keep drop old ones");
    compact->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    compact->add_option("--before", words.before, "Drop the records before this time, for good; as 2013-07-01")
        ->type_name("DATE")
        ->check(checkTime);
    compact
        ->add_option("--keep", words.keep,
                     "Drop all but the last so much, such as 30d or 12h, counted back from the site's last record")
        ->type_name("DURATION")
        ->check(checkDuration)
        ->excludes("--before");
    compact->footer("Without --before or --keep no record is lost. Ctrl-C ends it and loses nothing.\n"
                    "Examples:\n  plotix compact nyc.plotix\n  plotix compact computer.plotix --keep 90d");
}

void addVerify(CLI::App& app, CommandWords& words)
{
    CLI::App* verify = app.add_subcommand("verify", "Read every record of a site and say whether it is undamaged");
    verify->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    verify->footer("Exit status: 0 no damage, 1 damage found, each piece on a line.\n"
                   "Example:\n  plotix verify nyc.plotix");
}

}  // namespace

void declareCommands(CLI::App& app, CommandWords& words)
{
    addOpen(app, words);
    addImport(app, words);
    addInfo(app, words);
    addRender(app, words);
    addExport(app, words);
    addRecord(app, words);
    addServe(app, words);
    addReport(app, words);
    addCompact(app, words);
    addVerify(app, words);
}

}  // namespace plotix
