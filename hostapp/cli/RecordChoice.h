#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace CLI {
class App;
}

/// Which records a command is about: of which agent and properties, and from when to when. Values; any one thread.
namespace plotix {

struct RecordChoice {
    QString agent;                   ///< empty: the only one
    QStringList properties;          ///< names or keys; empty: all
    std::optional<double> from, to;  ///< seconds since 1970-01-01 UTC; absent: open
    QString fromWord, toWord;        ///< the same as written
    QString range;                   ///< a quick range's name; empty: all time
};

/// The options --from and --to; the choice must live until the words are parsed.
void addSpan(CLI::App* command, RecordChoice& choice);

/// These, --agent and --properties.
void addRecordChoice(CLI::App* command, RecordChoice& choice);

/// The option --range, which excludes --from and --to.
void addRange(CLI::App* command, RecordChoice& choice);

/// What is wrong with these options together; nothing: they fit.
std::optional<QString> contradictionIn(const RecordChoice& choice);

}  // namespace plotix
