#include "hostapp/cli/ParsedCommand.h"

#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/CommandWords.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

namespace plotix {

namespace {

using Command = decltype(ParsedCommand::command);

QString toText(const std::string& text)
{
    return QString::fromStdString(text);
}

RecordChoice choiceFrom(const CommandWords& words)
{
    return {toText(words.agent), listFromArgument(toText(words.properties)), timeFromArgument(toText(words.from)),
            timeFromArgument(toText(words.to)), toText(words.range)};
}

Command openFrom(const CommandWords& words)
{
    OpenCommand command{toText(words.site), toText(words.screenshot)};
    command.size = sizeFromArgument(toText(words.size)).value_or(command.size);
    return command;
}

Command importFrom(const CommandWords& words)
{
    ImportCommand command{toText(words.file), toText(words.site), {}, words.json};
    ImportOptions& options = command.options;
    options.agentName = toText(words.agent);
    options.timeColumn = toText(words.time);
    options.timeZone = toText(words.zone);
    if (!words.dateOrder.empty())
        options.dateOrder = words.dateOrder == "dmy" ? DateOrder::DayFirst : DateOrder::MonthFirst;
    options.where = pairsFromArguments(words.where);
    options.only = listFromArgument(toText(words.only));
    options.units = pairsFromArguments(words.units);
    options.names = pairsFromArguments(words.names);
    options.skipBadRows = words.skipBadRows;
    return command;
}

Command infoFrom(const CommandWords& words)
{
    return InfoCommand{toText(words.site), words.json};
}

Command renderFrom(const CommandWords& words)
{
    RenderCommand command{toText(words.site), toText(words.output), choiceFrom(words),
                          {1200, 600},        toText(words.title),  words.bare};
    command.size = sizeFromArgument(toText(words.size)).value_or(command.size);
    return command;
}

Command exportFrom(const CommandWords& words)
{
    return ExportCommand{toText(words.site), toText(words.output), choiceFrom(words)};
}

Command recordFrom(const CommandWords& words)
{
    RecordCommand command{toText(words.site), 1, durationFromArgument(toText(words.duration)), words.printTimes};
    command.interval = durationFromArgument(toText(words.interval)).value_or(command.interval);
    return command;
}

Command serveFrom(const CommandWords& words)
{
    ServeCommand command;
    for (const std::string& site : words.sites)
        command.sites << toText(site);
    command.address = toText(words.bind);
    command.port = words.port;
    command.tokenFile = toText(words.tokenFile);
    return command;
}

Command reportFrom(const CommandWords& words)
{
    ReportCommand command{toText(words.site), toText(words.output), toText(words.view), {}};
    if (!words.paper.empty())
        command.paper = words.paper == "A4" ? Paper::A4 : Paper::Letter;
    return command;
}

Command compactFrom(const CommandWords& words)
{
    return CompactCommand{toText(words.site), timeFromArgument(toText(words.before)),
                          durationFromArgument(toText(words.keep))};
}

Command verifyFrom(const CommandWords& words)
{
    return VerifyCommand{toText(words.site)};
}

Command commandFrom(const std::string& name, const CommandWords& words)
{
    static const std::map<std::string, Command (*)(const CommandWords&)> readers = {
        {"open", openFrom},       {"import", importFrom}, {"info", infoFrom},   {"render", renderFrom},
        {"export", exportFrom},   {"record", recordFrom}, {"serve", serveFrom}, {"report", reportFrom},
        {"compact", compactFrom}, {"verify", verifyFrom}};
    return readers.at(name)(words);
}

/// The library knows its own rules; these concern several options at once.
std::optional<QString> contradiction(const CommandWords& words, const std::string& command)
{
    if (words.bare && toText(words.output).toLower().endsWith(QLatin1String(".pdf")))
        return QStringLiteral("--bare draws PNG only; give an --output that ends in .png");
    if (command == "open" && !words.size.empty() && words.screenshot.empty())
        return QStringLiteral("--size goes with --screenshot");
    const std::optional<double> from = timeFromArgument(toText(words.from)), to = timeFromArgument(toText(words.to));
    if (from && to && *to < *from)
        return QStringLiteral("--to %1 lies before --from %2").arg(toText(words.to), toText(words.from));
    return {};
}

/// What the library wants: the last word first.
std::vector<std::string> reversed(const QStringList& arguments)
{
    std::vector<std::string> words;
    for (const QString& argument : arguments)
        words.push_back(argument.toStdString());
    std::reverse(words.begin(), words.end());
    return words;
}

/// The library's own line names the words that nobody takes from the last to the first.
QString unknownWords(const CLI::App& app)
{
    QStringList words;
    for (const std::string& word : app.remaining(true))
        words << toText(word);
    const bool isOption = words.value(0).startsWith(QLatin1Char('-'));
    return (isOption ? QStringLiteral("unknown option: %1") : QStringLiteral("not understood: %1"))
        .arg(words.join(QLatin1Char(' ')));
}

}  // namespace

ParsedCommand parseCommandLine(const QStringList& arguments)
{
    CLI::App app("Plotix draws trends of measured properties.", "plotix");
    app.require_subcommand(0, 1);
    app.footer("Without a command the demonstration site is opened.\n"
               "\"plotix COMMAND --help\" explains a command with an example.\n"
               "Exit status: 0 done, 1 failed (one line says why), 2 wrong usage.");
    CommandWords words;
    declareCommands(app, words);

    ParsedCommand parsed;
    const auto given = [&app] {
        const auto commands = app.get_subcommands();
        return commands.empty() ? nullptr : commands.front();
    };
    try {
        app.parse(reversed(arguments));
    } catch (const CLI::CallForHelp&) {
        parsed.help = toText(given() ? given()->help() : app.help());
        return parsed;
    } catch (const CLI::ExtrasError&) {
        parsed.wrongUsage = unknownWords(app).simplified();
        return parsed;
    } catch (const CLI::ParseError& error) {
        parsed.wrongUsage = toText(error.what()).simplified();
        return parsed;
    }
    const std::string command = given() ? given()->get_name() : "open";
    parsed.wrongUsage = contradiction(words, command);
    parsed.command = commandFrom(command, words);
    return parsed;
}

}  // namespace plotix
