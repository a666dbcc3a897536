#include "hostapp/cli/ReadingChoice.h"

#include "base/TimeDistance.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/Options.h"

#include <optional>

namespace plotix {

namespace {

struct Marks {
    double a = 0, b = 0;
};

std::optional<Marks> marksFromArgument(const QString& text, const QTimeZone& clock = {})
{
    const QStringList ends = text.split(QLatin1Char('/'));
    if (ends.size() != 2)
        return std::nullopt;
    const auto a = timeFromArgument(ends[0], clock);
    const auto b = timeFromArgument(ends[1], clock);
    return a && b ? std::optional(Marks{*a, *b}) : std::nullopt;
}

/// With the dashes that a picture gets unless told otherwise: the choice takes the place of that one.
QVariantMap looksFrom(const ReadingChoice& choice)
{
    QVariantMap looks;
    if (!choice.look.isEmpty() && choice.look != QLatin1String("dark"))
        looks.insert(QStringLiteral("look"), choice.look);
    if (const auto size = fontSizeFromArgument(choice.fontSize))
        looks.insert(QStringLiteral("fontSize"), *size);
    if (choice.lineWidth > 0 && choice.lineWidth != 1)
        looks.insert(QStringLiteral("lineWidth"), choice.lineWidth);
    if (choice.isTransparent)
        looks.insert(QStringLiteral("ground"), QStringLiteral("transparent"));
    if (!looks.isEmpty())
        looks.insert(QStringLiteral("marks"), QStringLiteral("apart"));
    return looks;
}

QVariantMap legendFrom(const ReadingChoice& choice)
{
    QVariantMap legend;
    if (!choice.legend.isEmpty() && choice.legend != QLatin1String("none"))
        legend.insert(QStringLiteral("place"), choice.legend);
    if (!choice.axisTitles.isEmpty())
        legend.insert(QStringLiteral("axisTitles"), choice.axisTitles);
    return legend;
}

/// Nothing where nothing was said: then pictures show what they usually do.
std::optional<QVariantMap> qualityFrom(const ReadingChoice& choice)
{
    if (choice.quality.empty() && choice.lateBy.isEmpty())
        return std::nullopt;
    QVariantMap quality;
    for (const std::string& word :
         choice.quality.empty() ? std::vector<std::string>{"missing", "late"} : choice.quality)
        if (word == "missing")
            quality.insert(QStringLiteral("stretches"), true);
        else if (word == "late")
            quality.insert(QStringLiteral("amended"), true);
        else if (word == "strip")
            quality.insert(QStringLiteral("strip"), true);
    if (const std::optional<double> lateBy = durationFromArgument(choice.lateBy))
        quality.insert(QStringLiteral("lateBy"), *lateBy);
    return quality;
}

}  // namespace

void addReadingChoice(CLI::App* command, ReadingChoice& choice)
{
    addText(command, "--arrangement", choice.arrangement,
            "How the lines share the graph: all on one scale, in lanes, or as suits them, which is the default")
        ->type_name("one-scale|lane-per-unit|lane-per-property|automatic")
        ->check(CLI::IsMember({"one-scale", "lane-per-unit", "lane-per-property", "automatic"}));
    addText(command, "--look", choice.look, "Light lines on dark, dark ones on light, or as on white paper")
        ->type_name("dark|light|paper")
        ->check(CLI::IsMember({"dark", "light", "paper"}));
    addText(command, "--font-size", choice.fontSize, "Size of all texts in the graph, in points")
        ->type_name("Npt")
        ->check(checkFontSize);
    addText(command, "--legend", choice.legend, "Name the lines with their units below the graph or at its right")
        ->type_name("none|below|right")
        ->check(CLI::IsMember({"none", "below", "right"}));
    addText(command, "--axis-titles", choice.axisTitles,
            "Titles along the axes: none, name and unit along each value axis, or the time axis's too")
        ->type_name("none|values|all")
        ->check(CLI::IsMember({"none", "values", "all"}));
    command->add_option("--line-width", choice.lineWidth, "Lines this many times as wide as usual")
        ->type_name("TIMES")
        ->check(CLI::Range(0.2, 5.0));
    command->add_flag("--transparent", choice.isTransparent,
                      "Nothing beneath grid and lines, to lay on another ground");
    addText(command, "--at", choice.at, "Say what every line reads at this time, with a line through all of them")
        ->type_name("TIME")
        ->check(checkTime);
    addText(command, "--marks", choice.marks, "Set the marks A and B, and say what differs between them")
        ->type_name("TIME/TIME")
        ->check(checkMarks);
    command
        ->add_option("--compare", choice.compare,
                     "Draw beside every line what it was so long before, by the wall clock: 1d, 7d, 2w, 1mo, 1y; 36h "
                     "are hours that pass. May be given several times, or with commas")
        ->type_name("DISTANCE")
        ->allow_extra_args(false)
        ->delimiter(',')
        ->check(checkDistance);
    addClockChoice(command, choice.clock);
    command->add_option("--without", choice.without, "Leave out the limits of the lines, the notes, or both")
        ->type_name("limits,notes")
        ->allow_extra_args(false)
        ->delimiter(',')
        ->check(CLI::IsMember({"limits", "notes"}));
    command
        ->add_option(
            "--quality", choice.quality,
            "Hatch what is missing, mark what arrived late or was corrected, sum it up in a strip at the foot; "
            "missing and late unless given")
        ->type_name("missing,late,strip|none")
        ->allow_extra_args(false)
        ->delimiter(',')
        ->check(CLI::IsMember({"missing", "late", "strip", "none"}));
    addText(command, "--late-by", choice.lateBy, "What took no longer to arrive is not late, such as 10min")
        ->type_name("TIME")
        ->check(checkDuration);
}

QVariantMap readingFrom(const ReadingChoice& choice, const QTimeZone& clock)
{
    QVariantMap reading;
    if (!choice.arrangement.isEmpty())
        reading.insert(QStringLiteral("arrangement"), QVariantMap{{QStringLiteral("kind"), choice.arrangement}});
    if (const QVariantMap looks = looksFrom(choice); !looks.isEmpty())
        reading.insert(QStringLiteral("looks"), looks);
    if (const QVariantMap legend = legendFrom(choice); !legend.isEmpty())
        reading.insert(QStringLiteral("legend"), legend);
    if (const auto at = choice.at.isEmpty() ? std::nullopt : timeFromArgument(choice.at, clock))
        reading.insert(QStringLiteral("valueLine"), QVariantMap{{QStringLiteral("held"), *at}});
    if (const auto marks = marksFromArgument(choice.marks, clock))
        reading.insert(QStringLiteral("marks"),
                       QVariantMap{{QStringLiteral("a"), marks->a}, {QStringLiteral("b"), marks->b}});
    QStringList comparisons;
    for (const std::string& text : choice.compare)
        if (const auto distance = timeDistanceFrom(QString::fromStdString(text)))
            comparisons << textOf(*distance);
    if (!comparisons.isEmpty())
        reading.insert(QStringLiteral("comparing"), QVariantMap{{QStringLiteral("with"), comparisons}});
    if (const auto quality = qualityFrom(choice))
        reading.insert(QStringLiteral("missing"), *quality);
    if (const QVariantMap said = clockFrom(choice.clock); !said.isEmpty())
        reading.insert(QStringLiteral("clock"), said);
    for (const std::string& key : choice.without)
        reading.insert(QString::fromStdString(key), QVariantMap{{QStringLiteral("shown"), false}});
    return reading;
}

std::string checkDistance(const std::string& text)
{
    return timeDistanceFrom(QString::fromStdString(text))
               ? std::string()
               : "must be a distance like 7d, 2w, 1mo, 1y or 36h, not " + text;
}

std::string checkMarks(const std::string& text)
{
    return marksFromArgument(QString::fromStdString(text))
               ? std::string()
               : "must be two times like 2013-07-01/2013-07-02T12:00:00Z, not " + text;
}

}  // namespace plotix
