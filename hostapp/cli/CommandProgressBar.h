#pragma once

#include "hostapp/cli/CommandLine.h"

/// Shows a command's progress and tells it when the user wants it to stop. Main thread only.
namespace plotix {

/// A handler that shows progress in the program's own display if it has one, else in a bar if there is a terminal. It
/// answers false once the user cancels or the command's StopRequest has come. The bar disappears with the last copy of
/// the handler.
CommandProgress makeCommandProgress(CommandServices& services, CommandStreams streams, const QString& title);

/// The bar's line: `Importing weather.csv  [==========          ]  50 %`. A fraction outside 0 … 1 counts as the nearer
/// end, NaN as 0.
std::string progressLine(const QString& title, double fraction);

}  // namespace plotix
