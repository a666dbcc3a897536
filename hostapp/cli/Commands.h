#pragma once

#include "hostapp/cli/CommandLine.h"
#include "hostapp/cli/ParsedCommand.h"

#include <QtCore/QByteArray>

/// The commands, one function each: they do what was parsed, print what there is to print, and answer the exit status.
///
/// Main thread only. They throw ReportableError; whatever they were making is then not there, or as it was.
namespace plotix {

struct CommandContext {
    CommandServices& services;
    CommandStreams streams;
};

int runCommand(const OpenCommand& command, CommandContext context);
int runCommand(const ImportCommand& command, CommandContext context);
int runCommand(const InfoCommand& command, CommandContext context);
int runCommand(const RenderCommand& command, CommandContext context);
int runCommand(const ExportCommand& command, CommandContext context);
int runCommand(const RecordCommand& command, CommandContext context);
int runCommand(const ReportCommand& command, CommandContext context);
int runCommand(const ServeCommand& command, CommandContext context);
int runCommand(const CompactCommand& command, CommandContext context);
int runCommand(const VerifyCommand& command, CommandContext context);

/// Writes the whole file or nothing; throws ReportableError.
void writeWholeFile(const QString& path, const QByteArray& bytes);

}  // namespace plotix
