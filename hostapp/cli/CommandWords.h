#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// The commands and their options: names, help, examples, and where the words of each go.
namespace plotix {

/// What stands behind the options of whichever command was given, as written; empty: the option is not there.
struct CommandWords {
    std::string site, file, output, screenshot, size, agent, time, zone, dateOrder, only, properties, from, to, range,
        title, view, paper, interval, duration, before, keep, bind = "127.0.0.1", tokenFile;
    std::vector<std::string> where, units, names, sites;
    int port = 8123;
    bool skipBadRows = false, json = false, bare = false, printTimes = false;
};

/// Parsing with `app` fills `words`, which must live until then. Single words are checked; what several say together
/// is not.
void declareCommands(CLI::App& app, CommandWords& words);

}  // namespace plotix
