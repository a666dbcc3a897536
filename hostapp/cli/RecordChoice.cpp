#include "hostapp/cli/RecordChoice.h"

#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/Options.h"

namespace plotix {

namespace {

using Reading = std::optional<double> (*)(const QString&, const QTimeZone&);

void addBound(CLI::App* command, const char* name, std::optional<double>& time, QString& word, const char* help,
              Reading read)
{
    const auto take = [&time, &word, read](const std::string& given) {
        word = QString::fromStdString(given);
        time = read(word, {});
    };
    command->add_option_function<std::string>(name, take, help)->type_name("T")->check(checkTime);
}

}  // namespace

void addRecordChoice(CLI::App* command, RecordChoice& choice)
{
    addText(command, "--agent", choice.agent, "Whose records; may be left out when there is only one agent")
        ->type_name("NAME");
    addList(command, "--properties", choice.properties, "Names or keys; all unless given")->type_name("A,B,…");
    addSpan(command, choice);
}

void addSpan(CLI::App* command, RecordChoice& choice)
{
    addBound(command, "--from", choice.from, choice.fromWord, "ISO 8601, such as 2013-07-01 or 2013-07-01T12:00:00Z",
             timeFromArgument);
    addBound(command, "--to", choice.to, choice.toWord, "As --from; inclusive, and a date alone means the whole day",
             endFromArgument);
}

void addRange(CLI::App* command, RecordChoice& choice)
{
    addText(command, "--range", choice.range, "A quick range: today … last7Days … allTime, which is the default")
        ->type_name("NAME")
        ->check(checkRange)
        ->excludes("--from")
        ->excludes("--to");
}

std::optional<QString> contradictionIn(const RecordChoice& choice)
{
    if (!choice.from || !choice.to || *choice.to >= *choice.from)
        return {};
    return QStringLiteral("--to %1 lies before --from %2").arg(choice.toWord, choice.fromWord);
}

}  // namespace plotix
