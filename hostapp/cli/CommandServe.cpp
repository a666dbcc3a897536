#include "hostapp/cli/Commands.h"
#include "hostapp/cli/SiteLookup.h"

#include <ostream>

/// Serving: the program does it, and ends when it is interrupted.
namespace plotix {

int runCommand(const ServeCommand& command, CommandContext context)
{
    ServeRequest request;
    for (const QString& site : command.sites)
        request.documents.push_back(openSite(site));
    request.address = command.address;
    request.port = command.port;
    request.tokenFile = command.tokenFile;
    // Whoever started it waits for these lines, often through a pipe.
    request.say = [&output = context.streams.output](const QString& line) {
        output << line.toStdString() << std::endl;
    };
    context.services.serve(request);
    return kCommandDone;
}

}  // namespace plotix
