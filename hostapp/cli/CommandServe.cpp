#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"

#include <ostream>

/// Serving: the program does it, and ends when it is interrupted.
namespace plotix {

namespace {

struct ServeCommand {
    QStringList sites;
    QString address = QString::fromLatin1(kUsualWebAddress);
    int port = kUsualWebPort;  ///< 0: any that is free
    QString tokenFile;         ///< empty: without a token
};

int runCommand(const ServeCommand& command, CommandContext context)
{
    ServeRequest request;
    for (const QString& site : command.sites)
        request.documents.push_back(openSite(site));
    request.address = command.address;
    request.port = command.port;
    request.tokenFile = command.tokenFile;
    // The caller waits for these lines, often through a pipe.
    request.say = [&output = context.streams.output](const QString& line) {
        output << line.toStdString() << std::endl;
    };
    context.services.serve(request);
    return kCommandDone;
}

}  // namespace

Command addServe(CLI::App& program)
{
    const auto command = std::make_shared<ServeCommand>();
    CLI::App* serve = program.add_subcommand("serve", "Show the views of sites to web browsers, without a window");
    addTexts(serve, "SITE", command->sites, "Site documents, NAME.plotix")->required();
    addText(serve, "--bind", command->address,
            std::string("Where to listen: ") + kUsualWebAddress +
                ", this machine only, unless given; any other address lets other machines in and needs --token-file")
        ->type_name("ADDR");
    serve
        ->add_option("--port", command->port, std::to_string(kUsualWebPort) + " unless given; 0 takes any that is free")
        ->type_name("N")
        ->check(CLI::Range(0, 65'535));
    addText(serve, "--token-file", command->tokenFile,
            "A file whose first line browsers must know: ADDRESS/?token=LINE")
        ->type_name("FILE");
    serve->footer("Ctrl-C ends it.\nExamples:\n  plotix serve nyc.plotix --port 8123\n"
                  "  plotix serve nyc.plotix plant.plotix --bind 0.0.0.0 --token-file token.txt");
    return {serve, Command::Makes::Picture,
            [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
