#include "hostapp/cli/CommandLine.h"

#include "base/ReportableError.h"
#include "hostapp/cli/ImportWords.h"
#include "hostapp/cli/ParsedCommand.h"
#include "hostapp/cli/TerminalText.h"
#include "hostapp/document/MemoryBudget.h"

#include <ostream>

namespace plotix {

namespace {

int fail(CommandStreams streams, const QString& message, int status)
{
    streams.error << "plotix: " << message.simplified().toStdString() << std::endl;
    return status;
}

/// The machine's own zone may be one that nobody knows; a typed time then cannot be read.
ParsedCommand parsedOrWrong(const QStringList& arguments)
{
    try {
        return parseCommandLine(arguments);
    } catch (const ImportFailure& failure) {
        ParsedCommand wrong;
        wrong.wrongUsage = printedText(failure.finding());
        return wrong;
    }
}

}  // namespace

int runCommandLine(const QStringList& arguments, CommandServices& services, CommandStreams given)
{
    // Names in files and sites are other people's: whatever is printed goes through here.
    HarmlessStream output(given.output), error(given.error);
    CommandStreams streams{output, error, given.errorIsTerminal, &given.error};
    if (const auto problem = memoryBudgetProblem())
        fail(streams, *problem, kCommandDone);
    const ParsedCommand parsed = parsedOrWrong(arguments);
    if (parsed.help) {
        streams.output << parsed.help->toStdString() << std::flush;
        return kCommandDone;
    }
    if (parsed.wrongUsage)
        return fail(streams, *parsed.wrongUsage + QStringLiteral("; see plotix --help"), kCommandWrongUsage);
    try {
        const int status = parsed.command.run({services, streams});
        streams.output << std::flush;
        return status;
    } catch (const ReportableError& failure) {
        return fail(streams, failure.message(), kCommandFailed);
    } catch (const std::bad_alloc&) {
        return fail(streams, QStringLiteral("there is not enough memory for this; choose a shorter span of time"),
                    kCommandFailed);
    } catch (const std::exception& failure) {
        return fail(streams, QString::fromUtf8(failure.what()), kCommandFailed);
    }
}

bool commandWantsWindow(const QStringList& arguments)
{
    const ParsedCommand parsed = parsedOrWrong(arguments);
    const Command& command = parsed.command;
    return !parsed.help && !parsed.wrongUsage && command.wantsWindow && command.wantsWindow();
}

bool commandShowsTexts(const QStringList& arguments)
{
    return parsedOrWrong(arguments).command.makes == Command::Makes::Picture;
}

}  // namespace plotix
