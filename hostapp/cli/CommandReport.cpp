#include "hostapp/cli/Commands.h"
#include "hostapp/cli/SiteLookup.h"

/// Reports: the program lays out and prints, the file is written whole or not at all.
namespace plotix {

int runCommand(const ReportCommand& command, CommandContext context)
{
    const ReportRequest request{openSite(command.site), command.view, command.paper};
    writeWholeFile(command.output, context.services.report(request));
    return kCommandDone;
}

}  // namespace plotix
