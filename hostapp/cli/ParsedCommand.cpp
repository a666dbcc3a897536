#include "hostapp/cli/ParsedCommand.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <CLI/CLI.hpp>

#include <algorithm>

namespace plotix {

namespace {

/// In the order of the help.
std::vector<Command> addCommands(CLI::App& program)
{
    std::vector<Command> commands;
    for (const auto add : {addOpen, addImport, addInfo, addNotes, addRender, addExport, addCase, addRecord, addServe,
                           addReport, addEdit, addCompact, addVerify, addCopy, addStore, addAttach, addDetach})
        commands.push_back(add(program));
    return commands;
}

/// The library wants the last argument first.
std::vector<std::string> reversed(const QStringList& arguments)
{
    std::vector<std::string> words;
    for (const QString& argument : arguments)
        words.push_back(argument.toStdString());
    std::reverse(words.begin(), words.end());
    return words;
}

/// The library's own message names unknown arguments from the last to the first.
QString unknownWords(const CLI::App& program)
{
    QStringList words;
    for (const std::string& word : program.remaining(true))
        words << QString::fromStdString(word);
    const bool isOption = words.value(0).startsWith(QLatin1Char('-'));
    return (isOption ? QStringLiteral("unknown option: %1") : QStringLiteral("not understood: %1"))
        .arg(words.join(QLatin1Char(' ')));
}

/// What the library finds wrong with the arguments; `help` is filled when that is asked for.
std::optional<QString> parse(CLI::App& program, const QStringList& arguments, std::optional<QString>& help)
{
    try {
        program.parse(reversed(arguments));
    } catch (const CLI::CallForHelp&) {
        const auto given = program.get_subcommands();
        help = QString::fromStdString((given.empty() ? &program : given.front())->help());
    } catch (const CLI::CallForVersion&) {
        help = QStringLiteral("plotix %1\n").arg(QCoreApplication::applicationVersion());
    } catch (const CLI::ExtrasError&) {
        return unknownWords(program).simplified();
    } catch (const CLI::ParseError& error) {
        return QString::fromStdString(error.what()).simplified();
    }
    return {};
}

/// Files named without a command, as a desktop names them that starts the program with them, are opened. What is no
/// file and looks like none is a misspelt command.
QStringList withCommand(const QStringList& arguments, const std::vector<Command>& commands)
{
    const QString first = arguments.value(0);
    if (first.isEmpty() || first.startsWith(QLatin1Char('-')))
        return arguments;
    for (const Command& command : commands)
        if (command.words->get_name() == first.toStdString())
            return arguments;
    const bool looksLikeAFile = first.contains(QLatin1Char('/')) || first.contains(QLatin1Char('.'));
    return looksLikeAFile || QFileInfo(first).isFile() ? QStringList("open") + arguments : arguments;
}

}  // namespace

ParsedCommand parseCommandLine(const QStringList& arguments)
{
    CLI::App program("Plotix draws trends of measured properties.", "plotix");
    program.require_subcommand(0, 1);
    program.set_version_flag("--version", "");  // the text is ours
    program.footer(
        "Without a command the demonstration site is opened; \"plotix FILE\" opens a site, and asks where to\n"
        "import a file of measurements.\n"
        "\"plotix COMMAND --help\" explains a command with an example.\n"
        "Exit status: 0 done, 1 failed (one line says why), 2 wrong usage.");
    const std::vector<Command> commands = addCommands(program);
    ParsedCommand parsed;
    parsed.wrongUsage = parse(program, withCommand(arguments, commands), parsed.help);
    parsed.command = commands.front();
    if (parsed.help || parsed.wrongUsage)
        return parsed;
    for (const Command& command : commands)
        if (command.words->parsed())
            parsed.command = command;
    if (parsed.command.contradiction)
        parsed.wrongUsage = parsed.command.contradiction();
    parsed.command.words = nullptr;  // it ends with the parser
    return parsed;
}

}  // namespace plotix
