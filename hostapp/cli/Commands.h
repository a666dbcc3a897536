#pragma once

#include "hostapp/cli/CommandLine.h"

#include <QtCore/QByteArray>

#include <functional>
#include <optional>

namespace CLI {
class App;
}

/// The commands, one file each: its options stand there once, bound to what they fill, beside what it does with them.
///
/// Main thread only. Running throws ReportableError; whatever was being made is then not there, or as it was.
namespace plotix {

struct CommandContext {
    CommandServices& services;
    CommandStreams streams;
};

/// A command that has been added to the program's. It shares what its options fill, so that it outlives the parser.
struct Command {
    enum class Makes {
        Text,    ///< English everywhere
        Picture  ///< something to look at, in the user's language
    };

    CLI::App* words = nullptr;  ///< borrowed from the parser, while that lives
    Makes makes = Makes::Text;
    std::function<int(CommandContext)> run{};  ///< answers the exit status
    std::function<std::optional<QString>()>
        contradiction{};                  ///< what is wrong with several words together; may be empty
    std::function<bool()> wantsWindow{};  ///< on the screen; empty: never
};

Command addOpen(CLI::App& program);
Command addImport(CLI::App& program);
Command addInfo(CLI::App& program);
Command addRender(CLI::App& program);
Command addExport(CLI::App& program);
Command addRecord(CLI::App& program);
Command addServe(CLI::App& program);
Command addReport(CLI::App& program);
Command addCompact(CLI::App& program);
Command addVerify(CLI::App& program);

/// Writes the whole file or nothing; throws ReportableError.
void writeWholeFile(const QString& path, const QByteArray& bytes);

}  // namespace plotix
