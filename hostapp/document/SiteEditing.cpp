#include "hostapp/document/SiteEditing.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/ChangedMeanwhile.h"
#include "hostapp/document/SiteEdit.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/formulas/FormulaPlan.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace plotix {

namespace {

using Description = SiteProperty::Description;
using Kind = EditStep::Kind;

QString subjectOf(const SiteStore::Agent& agent, const Description& property)
{
    return QStringLiteral("%1: %2").arg(agent.name, property.name);
}

QString subjectOf(const QString& before, const QString& after)
{
    return before + QStringLiteral(" → ") + after;
}

void requireRecorded(const Description& property)
{
    if (property.formula)
        throw ReportableError(
            QStringLiteral("“%1” is computed and has no values of its own: change its formula, or delete it.")
                .arg(property.name));
}

/// The numbers of those that are recorded; throws when that is none of them.
std::vector<RowId> recordedOnes(const SiteEdit& edit, const std::vector<RowId>& properties)
{
    const FormulaDirectory directory = edit.directory();
    std::vector<RowId> recorded;
    for (const RowId id : properties) {
        const Description* property = directory.propertyWithId(id);
        if (property && property->formula && properties.size() == 1)
            requireRecorded(*property);
        if (!property || !property->formula)
            recorded.push_back(id);
    }
    return recorded;
}

EditStep undo(SiteEdit& edit, const EditStep& step)
{
    EditJournal(edit.database()).undo(step, edit.stored(), edit.records(), edit.meter());
    edit.commit();
    return step;
}

}  // namespace

EditOutcome renameAgent(const QString& site, RowId id, const QString& name)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agent(id);
    edit.begin(Kind::Rename, subjectOf(agent.name, name.trimmed()));
    edit.tables().renameAgent(agent, name);
    return edit.finish();
}

EditOutcome renameProperty(const QString& site, RowId id, const QString& name)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agentOf(id);
    const Description before = edit.property(id);
    edit.begin(Kind::Rename, subjectOf(subjectOf(agent, before), name.trimmed()));
    const Description after = edit.tables().renameProperty(agent.id, before, name);
    edit.moveReferences(
        {{agent.identifier, before.propertyName, before.name, agent.identifier, after.propertyName, after.name}});
    return edit.finish();
}

EditOutcome mergeProperties(const QString& site, RowId id, RowId intoId, const EditProgress& progress)
{
    SiteEdit edit(site, progress);
    const SiteStore::Agent agent = edit.agentOf(id);
    const Description from = edit.property(id), into = edit.property(intoId);
    if (id == intoId || edit.agentOf(intoId).id != agent.id)
        throw ReportableError(QStringLiteral("Choose two properties of one agent to merge."));
    requireRecorded(from);
    requireRecorded(into);
    edit.requireNotRecorded(agent);
    edit.requireOwnRecords(agent);
    edit.begin(Kind::Merge, subjectOf(subjectOf(agent, from), into.name));
    edit.expectToAbsorb(agent.id, agent.id, 1);
    edit.expectToTakeOut(agent.id);
    edit.absorb(agent.id, from, agent.id, into);
    edit.takeOut(agent.id, {from.id});
    edit.removeProperty(from.id);
    edit.tables().moveAliases(agent.id, from.id, into.id);
    edit.tables().addAlias(agent.id, from.propertyName, into.id);
    edit.moveReferences(
        {{agent.identifier, from.propertyName, from.name, agent.identifier, into.propertyName, into.name}});
    return edit.finish();
}

EditOutcome mergeAgents(const QString& site, RowId id, RowId intoId, const EditProgress& progress)
{
    SiteEdit edit(site, progress);
    const SiteStore::Agent agent = edit.agent(id), into = edit.agent(intoId);
    if (id == intoId)
        throw ReportableError(QStringLiteral("Choose two agents to merge."));
    edit.requireNotRecorded(agent);
    edit.requireOwnRecords(agent);
    edit.requireOwnRecords(into);
    edit.begin(Kind::Merge, subjectOf(agent.name, into.name));
    const std::vector<RowId> all = edit.propertyIds(id);
    edit.expectToAbsorb(id, intoId, all.size());
    edit.expectToTakeOut(id);
    std::vector<MovedProperty> moved;
    for (const Description& property : edit.tables().properties(id)) {
        std::optional<Description> other = edit.tables().propertyNamed(intoId, property.name);
        if (property.formula || (other && other->formula))
            other.reset();  // a computed one has no values that could become another's
        const bool isOne = other && Units::shared()->areCompatible(property.archivedUnit, other->archivedUnit);
        const Description target = isOne || (other && property.archivedUnit == other->archivedUnit)
                                       ? *other
                                       : edit.tables().addPropertyLike(intoId, property);
        if (!other || target.id != other->id)
            edit.step().madeProperty(target.id);
        edit.absorb(id, property, intoId, target);
        edit.tables().addAlias(intoId, property.propertyName, target.id);
        moved.push_back({agent.identifier, property.propertyName, property.name, into.identifier, target.propertyName,
                         target.name});
        edit.tables().moveAliases(id, property.id, intoId, target.id);
    }
    edit.takeOut(id, all);
    for (const RowId property : all)
        edit.removeProperty(property);
    edit.removeAgent(id);
    edit.tables().moveAliases(0, id, intoId);
    edit.tables().addAlias(0, agent.name, intoId);
    edit.moveReferences(moved, agent.identifier, into.identifier);
    return edit.finish();
}

namespace {

EditOutcome compute(SiteEdit& edit, RowId agentId, const ComputedProperty& wanted, std::optional<RowId> id)
{
    const SiteStore::Agent agent = edit.agent(agentId);
    const QString name = wanted.name.trimmed();
    const FormulaPlan plan = planFormula(edit.directory(), agentId, wanted.formula, id.value_or(0));
    if (plan.problem)
        throw ReportableError(sentenceOf(*plan.problem));
    const QString unit = plan.program->unit;
    std::optional<Description> property = id ? std::optional(edit.property(*id)) : std::nullopt;
    if (name.isEmpty())
        throw ReportableError(QStringLiteral("A property needs a name: give it one."));
    if (!property && edit.tables().propertyNamed(agentId, name))
        throw ReportableError(QStringLiteral("“%1” is taken: choose another name.").arg(name));
    edit.begin(Kind::Compute, QStringLiteral("%1: %2").arg(agent.name, name));
    if (!property) {
        property = edit.tables().addProperty(agentId, name, unit, 0);
        edit.step().madeProperty(property->id);
    } else if (name != property->name) {
        const Description before = *property;
        property = edit.tables().renameProperty(agentId, before, name);
        edit.moveReferences({{agent.identifier, before.propertyName, before.name, agent.identifier,
                              property->propertyName, property->name}});
    }
    edit.tables().setFormula(property->id, wanted.formula, unit);
    if (!Units::shared()->areCompatible(property->unit, unit))
        property->unit = unit;
    if (!wanted.formula.unit.isEmpty())
        property->unit = unit;
    property->color = wanted.color.value_or(property->color);
    edit.tables().updateProperty(*property);
    return edit.finish();
}

}  // namespace

EditOutcome computeProperty(const QString& site, RowId agent, const ComputedProperty& wanted, std::optional<RowId> id)
{
    SiteEdit edit(site);
    return compute(edit, agent, wanted, id);
}

EditOutcome changeComputed(const QString& site, RowId agent, const ComputedProperty& wanted, const Description& before)
{
    SiteEdit edit(site);
    const FormulaDirectory directory = edit.directory();
    const Description* theirs = directory.propertyWithId(before.id);
    if (!theirs)
        throw ChangedMeanwhile({});
    if (theirs->name != before.name || theirs->formula != before.formula)
        throw ChangedMeanwhile(*theirs);
    return compute(edit, agent, wanted, before.id);
}

EditOutcome deleteProperty(const QString& site, RowId id, const EditProgress& progress)
{
    SiteEdit edit(site, progress);
    const SiteStore::Agent agent = edit.agentOf(id);
    const bool isRecorded = !edit.property(id).formula;
    if (isRecorded)
        edit.requireNotRecorded(agent);
    edit.begin(Kind::Delete, subjectOf(agent, edit.property(id)));
    if (isRecorded) {
        edit.countValues(agent.id, {id});
        edit.expectToTakeOut(agent.id);
        edit.takeOut(agent.id, {id});
    }
    edit.removeProperty(id);
    edit.tables().removeAliasesOf(agent.id, id);
    return edit.finish();
}

EditOutcome deleteAgent(const QString& site, RowId id, const EditProgress& progress)
{
    SiteEdit edit(site, progress);
    const SiteStore::Agent agent = edit.agent(id);
    edit.requireNotRecorded(agent);
    edit.begin(Kind::Delete, agent.name);
    const std::vector<RowId> all = edit.propertyIds(id);
    edit.countValues(id, all);
    edit.expectToTakeOut(id);
    edit.takeOut(id, all);
    edit.removeViewsOf(agent.identifier);
    for (const RowId property : all) {
        edit.removeProperty(property);
        edit.tables().removeAliasesOf(id, property);
    }
    edit.removeAgent(id);
    edit.tables().removeAliasesOf(0, id);
    return edit.finish();
}

EditOutcome removeValues(const QString& site, RowId id, const std::vector<RowId>& chosen, std::optional<double> from,
                         std::optional<double> to, const EditProgress& progress)
{
    SiteEdit edit(site, progress);
    const SiteStore::Agent agent = edit.agent(id);
    const std::vector<RowId> properties = recordedOnes(edit, chosen);
    edit.requireOwnRecords(agent);
    edit.begin(Kind::RemoveValues,
               properties.size() == 1 ? subjectOf(agent, edit.property(properties.front())) : agent.name);
    edit.countValues(id, properties, from, to);
    edit.expectToTakeOut(id, from, to);
    // Records that go with their last value may have no value at all; they are kept too.
    edit.takeOut(id, properties, from, to);
    return edit.finish();
}

std::vector<EditStep> editSteps(const QString& site)
{
    Database database(QFileInfo(site).absoluteFilePath(), siteSchema(), Database::Access::ReadOnly);
    return EditJournal(database).steps();
}

EditStep undoLastEdit(const QString& site, const EditProgress& progress)
{
    SiteEdit edit(site, progress);
    const std::vector<EditStep> steps = EditJournal(edit.database()).steps();
    if (steps.empty())
        throw ReportableError(QStringLiteral("There is nothing to undo."));
    return undo(edit, steps.back());
}

EditStep undoLastImport(const QString& site, const EditProgress& progress)
{
    SiteEdit edit(site, progress);
    const std::vector<EditStep> steps = EditJournal(edit.database()).steps();
    const auto import =
        std::find_if(steps.rbegin(), steps.rend(), [](const EditStep& s) { return s.kind == Kind::Import; });
    if (import == steps.rend())
        throw ReportableError(QStringLiteral("There is no import that can be undone."));
    if (import != steps.rbegin())
        throw ReportableError(QStringLiteral("“%1” was changed after the import of “%2”: undo that first.")
                                  .arg(steps.back().subject, import->subject));
    return undo(edit, *import);
}

}  // namespace plotix
