#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/EditFormulas.h"
#include "hostapp/cli/EditLimits.h"
#include "hostapp/cli/EditNotes.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/exchange/ExactText.h"

#include <QtCore/QFileInfo>

#include <cmath>
#include <ostream>

/// Editing: agents and properties renamed, merged, deleted, values taken out, and what can be undone.
namespace plotix {

namespace {

struct EditCommand {
    QString site, agent, property;
    QString newName, mergeInto;
    bool deletes = false, removes = false, undoes = false, undoesImport = false, lists = false;
    std::optional<double> from, to;  ///< seconds since 1970-01-01 UTC; of --remove
    FormulaWish formula;
    LimitWish limit;
    NoteWish note;

    bool namesWhat() const { return !agent.isEmpty() || !property.isEmpty(); }
    int wishes() const
    {
        return int{!newName.isEmpty()} + int{!mergeInto.isEmpty()} + int{deletes} + int{removes} + int{undoes} +
               int{undoesImport} + int{lists} + int{!formula.text.isEmpty()} + int{formula.lists} +
               int{!limit.text.isEmpty()} + int{!limit.removed.isEmpty()} + note.wishes();
    }
};

const char* wordFor(EditStep::Kind kind)
{
    switch (kind) {
    case EditStep::Kind::Import: return "import";
    case EditStep::Kind::Rename: return "rename";
    case EditStep::Kind::Merge: return "merge";
    case EditStep::Kind::Delete: return "delete";
    case EditStep::Kind::RemoveValues: return "remove values of";
    case EditStep::Kind::Compute: return "compute";
    case EditStep::Kind::Limits: return "limits of";
    case EditStep::Kind::Notes: return "note";
    }
    return "";
}

std::string described(const EditStep& step)
{
    return std::string(wordFor(step.kind)) + " “" + step.subject.toStdString() + "”";
}

std::string counted(std::size_t values)
{
    return std::to_string(values) + (values == 1 ? " value" : " values");
}

/// The property asked for; null: the whole agent is meant.
std::shared_ptr<SiteProperty> propertyMeant(const SiteAgent& agent, const QString& name)
{
    return name.isEmpty() ? nullptr : propertiesOf(agent, {name}).front();
}

EditOutcome merge(const EditCommand& command, const SiteDocument& document, const SiteAgent& agent,
                  const SiteProperty* property, const EditProgress& progress)
{
    if (!property)
        return mergeAgents(command.site, agent.id(), agentOf(document, command.mergeInto)->id(), progress);
    const auto into = propertiesOf(agent, {command.mergeInto}).front();
    return mergeProperties(command.site, property->description().id, into->description().id, progress);
}

EditOutcome remove(const EditCommand& command, const SiteAgent& agent, const SiteProperty* property,
                   const EditProgress& progress)
{
    std::vector<RowId> properties;
    for (const auto& each : agent.siteProperties())
        if (!property || each.get() == property)
            properties.push_back(each->description().id);
    return removeValues(command.site, agent.id(), properties, command.from, command.to, progress);
}

EditStep::Kind edit(const EditCommand& command, EditOutcome& outcome, const EditProgress& progress,
                    std::ostream& errors)
{
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    if (command.note.wishes() > 0) {
        outcome = editNotes(command.note, *document, command.site, command.agent, command.property);
        return EditStep::Kind::Notes;
    }
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, command.agent);
    if (!command.formula.text.isEmpty()) {
        outcome = compute(command.formula, command.site, *document, *agent, errors);
        return EditStep::Kind::Compute;
    }
    if (command.limit.isWished()) {
        outcome = editLimits(command.limit, command.site, *agent, command.property);
        return EditStep::Kind::Limits;
    }
    const std::shared_ptr<SiteProperty> property = propertyMeant(*agent, command.property);
    if (!command.newName.isEmpty()) {
        outcome = property ? renameProperty(command.site, property->description().id, command.newName)
                           : renameAgent(command.site, agent->id(), command.newName);
        return EditStep::Kind::Rename;
    }
    if (!command.mergeInto.isEmpty()) {
        outcome = merge(command, *document, *agent, property.get(), progress);
        return EditStep::Kind::Merge;
    }
    if (command.removes) {
        outcome = remove(command, *agent, property.get(), progress);
        return EditStep::Kind::RemoveValues;
    }
    outcome = property ? deleteProperty(command.site, property->description().id, progress)
                       : deleteAgent(command.site, agent->id(), progress);
    return EditStep::Kind::Delete;
}

void list(const QString& site, std::ostream& out)
{
    openSite(site);
    const std::vector<EditStep> steps = editSteps(site);
    for (auto step = steps.rbegin(); step != steps.rend(); ++step)
        out << exactTime(std::floor(step->time)) << "  " << described(*step) << '\n';
    if (steps.empty())
        out << "Nothing can be undone.\n";
}

void undo(const EditCommand& command, std::ostream& out, const EditProgress& progress)
{
    openSite(command.site);
    const EditStep step =
        command.undoes ? undoLastEdit(command.site, progress) : undoLastImport(command.site, progress);
    out << "Undone: " << described(step) << ".\n";
}

void change(const EditCommand& command, const CommandStreams& streams, const EditProgress& progress)
{
    std::ostream& out = streams.output;
    EditOutcome outcome;
    const EditStep::Kind kind = edit(command, outcome, progress, streams.error);
    out << "Done: " << described({0, kind, outcome.subject, 0});
    if (kind == EditStep::Kind::Merge)
        out << ", " << counted(outcome.values) << " moved, " << outcome.conflicts
            << " left out where there was another one";
    else if (kind == EditStep::Kind::Delete || kind == EditStep::Kind::RemoveValues)
        out << ", " << counted(outcome.values);
    out << ".\n";
    for (const QString& name : outcome.followed)
        out << "The formula of “" << name.toStdString() << "” has the new name in it.\n";
    for (const auto& [name, sentence] : outcome.broken)
        out << "“" << name.toStdString() << "” can be computed no longer: " << sentence.toStdString() << '\n';
    out << "plotix edit " << command.site.toStdString() << " --undo takes it back.\n";
}

int runCommand(EditCommand command, CommandContext context)
{
    command.site = siteFileOf(command.site);
    std::ostream& out = context.streams.output;
    if (command.lists || command.formula.lists) {
        if (command.lists)
            list(command.site, out);
        else
            listFormulas(*openSite(command.site), out);
        return kCommandDone;
    }
    const StopRequest interruption(StopRequest::From::Keyboard);
    const CommandProgress progress = makeCommandProgress(
        context.services, context.streams, QStringLiteral("Editing %1").arg(QFileInfo(command.site).fileName()));
    try {
        if (command.undoes || command.undoesImport)
            undo(command, out, progress);
        else
            change(command, context.streams, progress);
    } catch (const EditCancelled&) {
        throw ReportableError(QStringLiteral("cancelled; %1 is as it was").arg(command.site));
    }
    return kCommandDone;
}

std::optional<QString> contradictionIn(const EditCommand& command)
{
    if (command.wishes() != 1)
        return QStringLiteral(
            "say one of --rename, --merge-into, --delete, --remove, --compute, --computed, --limit, --remove-limit, "
            "--note, --change-note, --remove-note, --undo, --undo-import and --list");
    if (command.removes ? !command.from && !command.to : command.from || command.to)
        return QStringLiteral("--from and --to belong to --remove, which needs one of them or both");
    if (command.deletes && !command.namesWhat())
        return QStringLiteral("--delete needs --agent or --property, so that nothing is deleted by mistake");
    if (!command.formula.text.isEmpty() && !command.property.isEmpty())
        return QStringLiteral("--compute says the name itself, without --property");
    if (const auto wrong = contradictionIn(command.limit, command.property))
        return wrong;
    if (const auto wrong = contradictionIn(command.note))
        return wrong;
    return contradictionIn(command.formula);
}

}  // namespace

Command addEdit(CLI::App& program)
{
    const auto command = std::make_shared<EditCommand>();
    CLI::App* edit = program.add_subcommand(
        "edit", "Rename, merge, delete or compute properties and agents, set their limits, write notes, take out wrong "
                "values, undo that or an import");
    addSite(edit, command->site);
    addText(edit, "--agent", command->agent, "The agent; needless when the site has one alone")->type_name("NAME");
    addText(edit, "--property", command->property, "The property; without it the whole agent is meant")
        ->type_name("NAME");
    addText(edit, "--rename", command->newName, "Give it this name")->type_name("NAME");
    addText(edit, "--merge-into", command->mergeInto,
            "Add its values to this one's, which keeps its own where both have some; then it is gone")
        ->type_name("NAME");
    edit->add_flag("--delete", command->deletes, "Delete it with its values");
    edit->add_flag("--remove", command->removes, "Take out its values between --from and --to");
    addTime(edit, "--from", command->from, "The first time of --remove")->type_name("TIME");
    addTime(edit, "--to", command->to, "The last time of --remove")->type_name("TIME");
    addFormulaOptions(edit, command->formula);
    addLimitOptions(edit, command->limit);
    addNoteOptions(edit, command->note);
    edit->add_flag("--undo", command->undoes, "Undo the last of these changes, or an import if that was later");
    edit->add_flag("--undo-import", command->undoesImport, "Undo the last import");
    edit->add_flag("--list", command->lists, "List what can be undone, the latest first");
    edit->footer(
        "A site keeps what is needed to undo its last " + std::to_string(EditJournal::kMostSteps) +
        " changes.\nExamples:\n  plotix edit plant.plotix --property temp --rename \"Outdoor Air\"\n"
        "  plotix edit plant.plotix --agent Roof --property Wind --remove --from 2024-03-01T10:00 "
        "--to 2024-03-01T10:12\n  plotix edit plant.plotix --compute 'Spread = \"Supply temperature\" - Return'\n"
        "  plotix edit plant.plotix --compute 'Heat = integral(Power)' --unit MWh --longest-gap 30m\n"
        "  plotix edit plant.plotix --limit 'Supply temperature > 60 °C' --limit-name 'too hot' --severity alarm\n"
        "  plotix edit plant.plotix --note '2024-05-06T14:00 .. 15:00' 'Pump replaced'\n"
        "  plotix edit plant.plotix --undo");
    return {edit, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); },
            [command] { return contradictionIn(*command); }};
}

}  // namespace plotix
