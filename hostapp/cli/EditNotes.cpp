#include "hostapp/cli/EditNotes.h"

#include "base/ReportableError.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/core/PersonName.h"

#include <algorithm>

namespace plotix {

namespace {

struct NoteSpan {
    double from, to;
};

/// "TIME" or "TIME .. TIME", whose end may be a time of day alone.
std::optional<NoteSpan> spanFromArgument(const QString& text)
{
    const QStringList ends = text.split(QStringLiteral(".."));
    const QString first = ends.first().trimmed();
    const auto from = timeFromArgument(first);
    if (!from || ends.size() > 2)
        return std::nullopt;
    if (ends.size() == 1)
        return NoteSpan{*from, *from};
    QString second = ends.last().trimmed();
    constexpr int kDateLetters = 10;
    if (second.indexOf(QLatin1Char(':')) > 0 && second.indexOf(QLatin1Char('-')) != 4)
        second = first.left(kDateLetters) + QLatin1Char('T') + second;
    const auto to = endFromArgument(second);
    return to ? std::optional(NoteSpan{*from, *to}) : std::nullopt;
}

SiteNote noteNumbered(const SiteDocument& document, qint64 number)
{
    for (const SiteNote& note : document.notes())
        if (note.id == number)
            return note;
    throw ReportableError(QStringLiteral("there is no note %1; plotix notes lists them").arg(number));
}

}  // namespace

void addNoteOptions(CLI::App* command, NoteWish& wish)
{
    const auto addTwo = [command](const char* name, QStringList& into, const char* help) {
        return command
            ->add_option_function<std::vector<std::string>>(
                name,
                [&into](const std::vector<std::string>& given) {
                    for (const std::string& text : given)
                        into << QString::fromStdString(text);
                },
                help)
            ->expected(2);
    };
    addTwo("--note", wish.note,
           "Write a note about a time or a span; about the property that --property says, else about all")
        ->type_name("'TIME [.. TIME]' TEXT");
    addTwo("--change-note", wish.changed, "Give a note another text; its number is what plotix notes says")
        ->type_name("NUMBER TEXT");
    command->add_option("--remove-note", wish.removed, "Remove a note")
        ->type_name("NUMBER")
        ->check(CLI::PositiveNumber);
    addText(command, "--author", wish.author, "Of --note: who writes it; you unless given")->type_name("NAME");
}

std::optional<QString> contradictionIn(const NoteWish& wish)
{
    if (!wish.author.isEmpty() && wish.note.isEmpty())
        return QStringLiteral("--author belongs to --note");
    if (!wish.note.isEmpty() && !spanFromArgument(wish.note.first()))
        return QStringLiteral("--note needs a time or a span such as '2024-05-06 14:00 .. 15:00', not %1")
            .arg(wish.note.first());
    if (!wish.changed.isEmpty() && wish.changed.first().toLongLong() <= 0)
        return QStringLiteral("--change-note needs the number of a note, not %1").arg(wish.changed.first());
    return std::nullopt;
}

EditOutcome editNotes(const NoteWish& wish, const SiteDocument& document, const QString& site, const QString& agent,
                      const QString& property)
{
    if (wish.removed != 0)
        return removeNotes(site, {noteNumbered(document, wish.removed).id});
    if (!wish.changed.isEmpty()) {
        SiteNote note = noteNumbered(document, wish.changed.first().toLongLong());
        note.text = wish.changed.last();
        return writeNote(site, note);
    }
    const NoteSpan span = spanFromArgument(wish.note.first()).value_or(NoteSpan{});
    SiteNote note{0, span.from, span.to, wish.author.isEmpty() ? personName() : wish.author, wish.note.last(), {}};
    if (!property.isEmpty())
        note.properties = {propertiesOf(*agentOf(document, agent), {property}).front()->description().id};
    return writeNote(site, note);
}

}  // namespace plotix
