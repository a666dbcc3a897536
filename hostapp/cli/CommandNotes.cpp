#include "hostapp/cli/Commands.h"
#include "hostapp/cli/JsonWriter.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/exchange/ExactText.h"

#include <algorithm>
#include <ostream>

/// Lists the notes of a site, all or those with certain words.
namespace plotix {

namespace {

struct NotesCommand {
    QString site, search;
    std::optional<double> from, to;  ///< seconds since 1970-01-01 UTC
    bool json = false;
};

QStringList propertiesIn(const SiteDocument& document, const SiteNote& note)
{
    QStringList names;
    for (const auto& agent : document.agents())
        for (const auto& property : agent->siteProperties())
            if (std::find(note.properties.begin(), note.properties.end(), property->description().id) !=
                note.properties.end())
                names << QStringLiteral("%1: %2").arg(agent->name(), property->name());
    return names;
}

/// Every word stands somewhere in the text, the author's or a property's name.
bool hasWords(const SiteDocument& document, const SiteNote& note, const QString& words)
{
    const QString all =
        note.text + QLatin1Char('\n') + note.author + QLatin1Char('\n') + propertiesIn(document, note).join(u'\n');
    const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return std::all_of(wanted.begin(), wanted.end(),
                       [&all](const QString& word) { return all.contains(word, Qt::CaseInsensitive); });
}

void writeText(std::ostream& out, const SiteDocument& document, const std::vector<SiteNote>& notes)
{
    for (const SiteNote& note : notes) {
        out << note.id << "  " << exactTime(note.from);
        if (note.to > note.from)
            out << " .. " << exactTime(note.to);
        if (!note.author.isEmpty())
            out << ", " << note.author.toStdString();
        if (const QStringList names = propertiesIn(document, note); !names.isEmpty())
            out << ", " << names.join(QStringLiteral(", ")).toStdString();
        out << '\n';
        for (const QString& line : note.text.split(QLatin1Char('\n')))
            out << "    " << line.toStdString() << '\n';
    }
    if (notes.empty())
        out << "No notes.\n";
}

void writeJson(std::ostream& out, const SiteDocument& document, const std::vector<SiteNote>& notes)
{
    JsonWriter json(out);
    json.beginObject();
    json.beginArray("notes");
    for (const SiteNote& note : notes) {
        json.beginObject();
        json.count("number", static_cast<std::size_t>(note.id));
        json.text("from", QString::fromStdString(exactTime(note.from)));
        json.text("to", QString::fromStdString(exactTime(note.to)));
        json.text("author", note.author);
        json.text("text", note.text);
        json.texts("properties", propertiesIn(document, note));
        json.text("created", QString::fromStdString(exactTime(note.created)));
        json.text("modified", QString::fromStdString(exactTime(note.modified)));
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

int runCommand(const NotesCommand& command, CommandContext context)
{
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    std::vector<SiteNote> notes = document->notes();
    std::erase_if(notes, [&](const SiteNote& note) {
        return !hasWords(*document, note, command.search) || (command.from && note.to < *command.from) ||
               (command.to && note.from > *command.to);
    });
    if (command.json)
        writeJson(context.streams.output, *document, notes);
    else
        writeText(context.streams.output, *document, notes);
    return kCommandDone;
}

}  // namespace

Command addNotes(CLI::App& program)
{
    const auto command = std::make_shared<NotesCommand>();
    CLI::App* notes = program.add_subcommand("notes", "List the notes of a site");
    addSite(notes, command->site);
    addText(notes, "--search", command->search, "Only those with all of these words in text, author or properties")
        ->type_name("WORDS");
    addTime(notes, "--from", command->from, "Only those at this time or later")->type_name("TIME");
    addTime(notes, "--to", command->to, "Only those at this time or before")->type_name("TIME");
    notes->add_flag("--json", command->json, "Print them as JSON");
    notes->footer("plotix edit --note writes one, --change-note and --remove-note change it by its number.\n"
                  "Example:\n  plotix notes plant.plotix --search pump");
    return {notes, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
