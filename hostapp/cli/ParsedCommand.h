#pragma once

#include "hostapp/cli/Commands.h"

#include <QtCore/QStringList>

#include <optional>

/// What a command line asks for. Nothing is opened, and no clock is read; a time without a zone is in the user's. Main
/// thread only.
namespace plotix {

struct ParsedCommand {
    Command command;                    ///< `open` when none is named, or the arguments are wrong
    std::optional<QString> help;        ///< asked for: print it and do nothing else
    std::optional<QString> wrongUsage;  ///< one line
};

/// `arguments` are the words after the program's name.
ParsedCommand parseCommandLine(const QStringList& arguments);

}  // namespace plotix
