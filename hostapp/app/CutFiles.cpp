#include "hostapp/app/CutFiles.h"

#include <unistd.h>

#include <csignal>

namespace plotix {

namespace {

constexpr char kMessage[] = "plotix: a file beside an open site was cut short by somebody else, and the program has to "
                            "end; what was stored is kept: open the site again.\n";

/// Only what may be called in a signal handler.
void endWithMessage(int)
{
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, kMessage, sizeof kMessage - 1);
    ::_exit(1);
}

}  // namespace

void explainCutFiles()
{
    struct sigaction action {};
    action.sa_handler = endWithMessage;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGBUS, &action, nullptr);
}

}  // namespace plotix
