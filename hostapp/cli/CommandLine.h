#pragma once

#include "hostapp/cli/CommandServices.h"

#include <QtCore/QStringList>

#include <iosfwd>

/// The `plotix` command line: parses arguments, runs one command, answers its exit status.
///
/// Results go to `output`, the one line that says what went wrong to `error`. Main thread only, inside a QApplication
/// (offscreen will do for everything but a window).
namespace plotix {

struct CommandStreams {
    std::ostream& output;
    std::ostream& error;
    bool errorIsTerminal = false;      ///< a progress bar is drawn on `error` only when true
    std::ostream* terminal = nullptr;  ///< where it is drawn, when `error` lets no control characters through
};

/// Exit statuses. Stored in scripts everywhere: never change.
inline constexpr int kCommandDone = 0;
inline constexpr int kCommandFailed = 1;  ///< one line on `error` said why and what to do
inline constexpr int kCommandWrongUsage = 2;

/// `arguments` are the words after the program's name; none of them means `open` without a site: the demonstration.
int runCommandLine(const QStringList& arguments, CommandServices& services, CommandStreams streams);

/// Whether these arguments ask for a window on the screen, so that the caller can choose the platform before it makes
/// its QApplication: true for `open` without --screenshot, false for everything else, help and wrong usage included.
bool commandWantsWindow(const QStringList& arguments);

/// Whether these arguments make something to look at (windows, pages, drawings), whose texts are in the user's
/// language. What commands print is always English.
bool commandShowsTexts(const QStringList& arguments);

}  // namespace plotix
