#include "hostapp/cli/CommandLine.h"

#include "base/ReportableError.h"
#include "hostapp/cli/Commands.h"

#include <QtCore/QSaveFile>

#include <ostream>

namespace plotix {

namespace {

int fail(CommandStreams streams, const QString& message, int status)
{
    streams.error << "plotix: " << message.simplified().toStdString() << std::endl;
    return status;
}

}  // namespace

int runCommandLine(const QStringList& arguments, CommandServices& services, CommandStreams streams)
{
    const ParsedCommand parsed = parseCommandLine(arguments);
    if (parsed.help) {
        streams.output << parsed.help->toStdString() << std::flush;
        return kCommandDone;
    }
    if (parsed.wrongUsage)
        return fail(streams, *parsed.wrongUsage + QStringLiteral("; see plotix --help"), kCommandWrongUsage);
    try {
        const CommandContext context{services, streams};
        const int status =
            std::visit([&](const auto& command) { return runCommand(command, context); }, parsed.command);
        streams.output << std::flush;
        return status;
    } catch (const ReportableError& error) {
        return fail(streams, error.message(), kCommandFailed);
    } catch (const std::bad_alloc&) {
        return fail(streams, QStringLiteral("there is not enough memory for this; choose a shorter span of time"),
                    kCommandFailed);
    } catch (const std::exception& error) {
        return fail(streams, QString::fromUtf8(error.what()), kCommandFailed);
    }
}

bool commandWantsWindow(const QStringList& arguments)
{
    const ParsedCommand parsed = parseCommandLine(arguments);
    const auto* open = std::get_if<OpenCommand>(&parsed.command);
    return open != nullptr && !parsed.help && !parsed.wrongUsage && open->screenshot.isEmpty();
}

bool commandShowsTexts(const QStringList& arguments)
{
    const ParsedCommand parsed = parseCommandLine(arguments);
    return std::visit(
        [](const auto& command) {
            using Command = std::decay_t<decltype(command)>;
            return std::is_same_v<Command, OpenCommand> || std::is_same_v<Command, RenderCommand> ||
                   std::is_same_v<Command, ReportCommand> || std::is_same_v<Command, ServeCommand>;
        },
        parsed.command);
}

void writeWholeFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw ReportableError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

}  // namespace plotix
