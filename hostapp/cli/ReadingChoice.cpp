#include "hostapp/cli/ReadingChoice.h"

#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/Options.h"

#include <optional>

namespace plotix {

namespace {

struct Marks {
    double a = 0, b = 0;
};

std::optional<Marks> marksFromArgument(const QString& text)
{
    const QStringList ends = text.split(QLatin1Char('/'));
    if (ends.size() != 2)
        return std::nullopt;
    const auto a = timeFromArgument(ends[0]);
    const auto b = timeFromArgument(ends[1]);
    return a && b ? std::optional(Marks{*a, *b}) : std::nullopt;
}

}  // namespace

void addReadingChoice(CLI::App* command, ReadingChoice& choice)
{
    addText(command, "--at", choice.at, "Say what every line reads at this time, with a line through all of them")
        ->type_name("TIME")
        ->check(checkTime);
    addText(command, "--marks", choice.marks, "Set the marks A and B, and say what differs between them")
        ->type_name("TIME/TIME")
        ->check(checkMarks);
}

QVariantMap readingFrom(const ReadingChoice& choice)
{
    QVariantMap reading;
    if (const auto at = choice.at.isEmpty() ? std::nullopt : timeFromArgument(choice.at))
        reading.insert(QStringLiteral("valueLine"), QVariantMap{{QStringLiteral("held"), *at}});
    if (const auto marks = marksFromArgument(choice.marks))
        reading.insert(QStringLiteral("marks"),
                       QVariantMap{{QStringLiteral("a"), marks->a}, {QStringLiteral("b"), marks->b}});
    return reading;
}

std::string checkMarks(const std::string& text)
{
    return marksFromArgument(QString::fromStdString(text))
               ? std::string()
               : "must be two times like 2013-07-01/2013-07-02T12:00:00Z, not " + text;
}

}  // namespace plotix
