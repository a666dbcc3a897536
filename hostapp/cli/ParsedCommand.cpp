#include "hostapp/cli/ParsedCommand.h"

#include "hostapp/core/QuickRanges.h"

#include <QtCore/QRegularExpression>

#include <CLI/CLI.hpp>

namespace plotix {

namespace {

using Texts = std::vector<std::string>;

constexpr double kShortestInterval = 0.01, kLongestInterval = 3600;  // seconds

QString toText(const std::string& text)
{
    return QString::fromStdString(text);
}

QStringList listFrom(const std::string& text)
{
    QStringList items;
    for (const QString& item : toText(text).split(QLatin1Char(','), Qt::SkipEmptyParts))
        if (!item.trimmed().isEmpty())
            items << item.trimmed();
    return items;
}

ImportOptions::ByColumn pairsFrom(const Texts& texts)
{
    ImportOptions::ByColumn pairs;
    for (const std::string& text : texts) {
        const QString pair = toText(text);
        const qsizetype sign = pair.indexOf(QLatin1Char('='));
        pairs.emplace_back(pair.left(sign).trimmed(), pair.mid(sign + 1));
    }
    return pairs;
}

/// What the library fills while it parses.
struct Words {
    std::string site, file, output, screenshot, size, agent, time, zone, dateOrder, only, properties, from, to, range,
        title, view, paper, interval, duration, bind = "127.0.0.1", tokenFile;
    Texts where, units, names, sites;
    int port = 8123;
    bool skipBadRows = false, json = false, bare = false, printTimes = false;
};

std::string checkPair(const std::string& text)
{
    const std::size_t sign = text.find('=');
    return sign == std::string::npos || sign == 0 ? "must be written COLUMN=TEXT, not " + text : std::string();
}

std::string checkSize(const std::string& text)
{
    return sizeFromArgument(toText(text)) ? std::string() : "must be written like 1200x600, not " + text;
}

std::string checkRange(const std::string& text)
{
    if (quickRangeNamed(toText(text)))
        return {};
    std::string names;
    for (int index = 0; index < kQuickRangeCount; ++index)
        names += (index == 0 ? "" : ", ") + quickRangeName(static_cast<KTVQuickRange>(index)).toStdString();
    return "must be one of " + names + ", not " + text;
}

std::string checkPicture(const std::string& text)
{
    const QString name = toText(text).toLower();
    return name.endsWith(QLatin1String(".png")) || name.endsWith(QLatin1String(".pdf")) ? std::string()
                                                                                        : "must end in .png or .pdf";
}

std::string checkPdf(const std::string& text)
{
    return toText(text).toLower().endsWith(QLatin1String(".pdf")) ? std::string() : "must end in .pdf";
}

std::string checkPng(const std::string& text)
{
    return toText(text).toLower().endsWith(QLatin1String(".png")) ? std::string() : "must end in .png";
}

CLI::App* addOpen(CLI::App& app, Words& words)
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
    return open;
}

CLI::App* addImport(CLI::App& app, Words& words)
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
    const auto addPairs = [import](const char* name, Texts& texts, const char* type, const char* help) {
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
    return import;
}

CLI::App* addInfo(CLI::App& app, Words& words)
{
    CLI::App* info = app.add_subcommand("info", "Say what a site holds: agents, properties, counts and extremes");
    info->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    info->add_flag("--json", words.json, "Print it as JSON, numbers in full precision");
    info->footer("Example:\n  plotix info nyc.plotix --json");
    return info;
}

void addChoice(CLI::App* command, Words& words)
{
    command->add_option("--agent", words.agent, "Whose records; may be left out when there is only one agent")
        ->type_name("NAME");
    command->add_option("--properties", words.properties, "Names or keys; all unless given")->type_name("A,B,…");
    command->add_option("--from", words.from, "ISO 8601, such as 2013-07-01 or 2013-07-01T12:00:00Z")->type_name("T");
    command->add_option("--to", words.to, "As --from; inclusive")->type_name("T");
}

CLI::App* addRender(CLI::App& app, Words& words)
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
    return render;
}

CLI::App* addExport(CLI::App& app, Words& words)
{
    CLI::App* exporting = app.add_subcommand("export", "Write records into a CSV file, every digit kept");
    exporting->add_option("SITE", words.site, "A site document, NAME.plotix")->required();
    exporting->add_option("--output", words.output, "The file to write")->required()->type_name("FILE.csv");
    addChoice(exporting, words);
    exporting->footer(
        "Example:\n  plotix export nyc.plotix --agent EWR --properties airTemperature --output newark.csv");
    return exporting;
}

CLI::App* addReport(CLI::App& app, Words& words)
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
    return report;
}

std::string checkDuration(const std::string& text)
{
    return durationFromArgument(toText(text)) ? std::string() : "must be written like 90, 10m, 2h or 1d, not " + text;
}

std::string checkInterval(const std::string& text)
{
    const std::optional<double> seconds = durationFromArgument(toText(text));
    return seconds && *seconds >= kShortestInterval && *seconds <= kLongestInterval
               ? std::string()
               : "must lie between 0.01 s and 1 h, not " + text;
}

CLI::App* addRecord(CLI::App& app, Words& words)
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
    return record;
}

CLI::App* addServe(CLI::App& app, Words& words)
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
    return serve;
}

ServeCommand serveFrom(const Words& words)
{
    ServeCommand command;
    for (const std::string& site : words.sites)
        command.sites << toText(site);
    command.address = toText(words.bind);
    command.port = words.port;
    command.tokenFile = toText(words.tokenFile);
    return command;
}

RecordCommand recordFrom(const Words& words)
{
    RecordCommand command{toText(words.site), 1, durationFromArgument(toText(words.duration)), words.printTimes};
    command.interval = durationFromArgument(toText(words.interval)).value_or(command.interval);
    return command;
}

std::optional<Paper> paperFrom(const Words& words)
{
    if (words.paper.empty())
        return std::nullopt;
    return words.paper == "A4" ? Paper::A4 : Paper::Letter;
}

RecordChoice choiceFrom(const Words& words)
{
    return {toText(words.agent), listFrom(words.properties), toText(words.from), toText(words.to), toText(words.range)};
}

ImportOptions importOptionsFrom(const Words& words)
{
    ImportOptions options;
    options.agentName = toText(words.agent);
    options.timeColumn = toText(words.time);
    options.timeZone = toText(words.zone);
    if (!words.dateOrder.empty())
        options.dateOrder = words.dateOrder == "dmy" ? DateOrder::DayFirst : DateOrder::MonthFirst;
    options.where = pairsFrom(words.where);
    options.only = listFrom(words.only);
    options.units = pairsFrom(words.units);
    options.names = pairsFrom(words.names);
    options.skipBadRows = words.skipBadRows;
    return options;
}

/// The library knows its own rules; these two concern several options at once.
std::optional<QString> contradiction(const Words& words, bool isOpen)
{
    if (words.bare && toText(words.output).toLower().endsWith(QLatin1String(".pdf")))
        return QStringLiteral("--bare draws PNG only; give an --output that ends in .png");
    if (isOpen && !words.size.empty() && words.screenshot.empty())
        return QStringLiteral("--size goes with --screenshot");
    return {};
}

Texts reversed(const QStringList& arguments)
{
    Texts words;
    for (const QString& argument : arguments)
        words.insert(words.begin(), argument.toStdString());
    return words;
}

QString oneLine(const std::string& text)
{
    return toText(text).simplified();
}

}  // namespace

std::optional<QSize> sizeFromArgument(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})[xX×](\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const auto fits = [](int side) { return side >= 16 && side <= 16'384; };
    return match.hasMatch() && fits(size.width()) && fits(size.height()) ? std::optional(size) : std::nullopt;
}

std::optional<double> durationFromArgument(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,9}(?:\\.\\d{1,9})?)([smhd]?)$"));
    const QRegularExpressionMatch match = form.match(text);
    const QString letter = match.captured(2);
    const double unit = letter == QLatin1String("d")   ? 86'400
                        : letter == QLatin1String("h") ? 3'600
                        : letter == QLatin1String("m") ? 60
                                                       : 1;
    const double seconds = match.captured(1).toDouble() * unit;
    return match.hasMatch() && seconds > 0 ? std::optional(seconds) : std::nullopt;
}

ParsedCommand parseCommandLine(const QStringList& arguments)
{
    CLI::App app("Plotix draws trends of measured properties.", "plotix");
    app.require_subcommand(0, 1);
    app.footer("Without a command the demonstration site is opened.\n"
               "\"plotix COMMAND --help\" explains a command with an example.\n"
               "Exit status: 0 done, 1 failed (one line says why), 2 wrong usage.");
    Words words;
    CLI::App* open = addOpen(app, words);
    CLI::App* import = addImport(app, words);
    CLI::App* info = addInfo(app, words);
    CLI::App* render = addRender(app, words);
    CLI::App* exporting = addExport(app, words);
    CLI::App* record = addRecord(app, words);
    CLI::App* serve = addServe(app, words);
    CLI::App* report = addReport(app, words);

    ParsedCommand parsed;
    try {
        app.parse(reversed(arguments));
    } catch (const CLI::CallForHelp&) {
        const auto asked = app.get_subcommands();
        parsed.help = toText(asked.empty() ? app.help() : asked.front()->help());
        return parsed;
    } catch (const CLI::ParseError& error) {
        parsed.wrongUsage = oneLine(error.what());
        return parsed;
    }
    parsed.wrongUsage = contradiction(words, open->parsed());
    const std::optional<QSize> size = sizeFromArgument(toText(words.size));
    if (import->parsed()) {
        parsed.command = ImportCommand{toText(words.file), toText(words.site), importOptionsFrom(words), words.json};
    } else if (info->parsed()) {
        parsed.command = InfoCommand{toText(words.site), words.json};
    } else if (render->parsed()) {
        parsed.command = RenderCommand{toText(words.site),  toText(words.output),
                                       choiceFrom(words),   size.value_or(QSize(1200, 600)),
                                       toText(words.title), words.bare};
    } else if (record->parsed()) {
        parsed.command = recordFrom(words);
    } else if (serve->parsed()) {
        parsed.command = serveFrom(words);
    } else if (exporting->parsed()) {
        parsed.command = ExportCommand{toText(words.site), toText(words.output), choiceFrom(words)};
    } else if (report->parsed()) {
        parsed.command = ReportCommand{toText(words.site), toText(words.output), toText(words.view), paperFrom(words)};
    } else {
        parsed.command = OpenCommand{toText(words.site), toText(words.screenshot), size.value_or(QSize(1280, 800))};
    }
    return parsed;
}

}  // namespace plotix
