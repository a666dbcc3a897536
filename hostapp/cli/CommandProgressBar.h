#pragma once

#include "hostapp/cli/CommandLine.h"

/// How a command shows that something long runs, and how it hears that the user wants it stopped. Main thread only.
namespace plotix {

/// The program's own display where it has one, a bar on a terminal, or nothing to see. Answers false once the user
/// cancels, or a StopRequest of the command's has come. The bar vanishes with the last copy of the handler.
CommandProgress makeCommandProgress(CommandServices& services, CommandStreams streams, const QString& title);

/// The bar's line: `Importing weather.csv  [==========          ]  50 %`. A fraction outside 0 … 1 counts as the nearer
/// end, NaN as 0.
std::string progressLine(const QString& title, double fraction);

}  // namespace plotix
