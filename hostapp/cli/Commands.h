#pragma once

#include "hostapp/cli/CommandLine.h"

#include <functional>
#include <optional>

namespace CLI {
class App;
}

/// The commands, one file each, which holds the command's options, bound to the values they fill, and its work.
///
/// Main thread only. Running throws ReportableError; then no new file exists, and existing ones are as they were.
namespace plotix {

struct CommandContext {
    CommandServices& services;
    CommandStreams streams;
};

/// A command that has been added to the parser. It *shares* the values its options fill, so that it can outlive the
/// parser.
struct Command {
    enum class Makes {
        Text,    ///< English everywhere
        Picture  ///< something to look at, in the user's language
    };

    CLI::App* words = nullptr;  ///< borrowed from the parser, while that lives
    Makes makes = Makes::Text;
    std::function<int(CommandContext)> run{};  ///< answers the exit status
    std::function<std::optional<QString>()>
        contradiction{};                  ///< what is wrong with several options together; may be empty
    std::function<bool()> wantsWindow{};  ///< on the screen; empty: never
};

Command addOpen(CLI::App& program);
Command addImport(CLI::App& program);
Command addInfo(CLI::App& program);
Command addNotes(CLI::App& program);
Command addRender(CLI::App& program);
Command addExport(CLI::App& program);
Command addCase(CLI::App& program);
Command addRecord(CLI::App& program);
Command addServe(CLI::App& program);
Command addReport(CLI::App& program);
Command addEdit(CLI::App& program);
Command addCompact(CLI::App& program);
Command addVerify(CLI::App& program);
Command addCopy(CLI::App& program);
Command addStore(CLI::App& program);
Command addAttach(CLI::App& program);
Command addDetach(CLI::App& program);

}  // namespace plotix
