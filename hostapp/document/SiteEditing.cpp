#include "hostapp/document/SiteEditing.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/AgentLock.h"
#include "hostapp/document/ArchivedReferences.h"
#include "hostapp/document/ElementMoving.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace plotix {

namespace {

using Description = SiteProperty::Description;
using Kind = EditStep::Kind;

/// One change of a site, in one transaction.
class SiteEdit {
public:
    explicit SiteEdit(const QString& site)
        : m_database(QFileInfo(site).absoluteFilePath(), siteSchema(), Database::Access::ReadWrite),
          m_tables(m_database),
          m_stored(recordsOfSite(m_database.file()))
    {
        m_database.beginWriting();
        m_records = recordKeeping().join(m_database);
    }
    ~SiteEdit()
    {
        m_records.reset();
        m_database.rollBack();
    }
    SiteEdit(const SiteEdit&) = delete;
    SiteEdit& operator=(const SiteEdit&) = delete;

    Database& database() { return m_database; }
    SiteStore& tables() { return m_tables; }
    RecordStore& stored() { return *m_stored; }
    RecordTransaction& records() { return *m_records; }
    EditStepBuilder& step() { return *m_step; }

    SiteStore::Agent agent(RowId id) const
    {
        for (const SiteStore::Agent& agent : m_tables.agents())
            if (agent.id == id)
                return agent;
        throw ReportableError(QStringLiteral("This agent is not there any more: open the site again."));
    }
    SiteStore::Agent agentOf(RowId property) const
    {
        for (const SiteStore::Agent& agent : m_tables.agents())
            for (const Description& description : m_tables.properties(agent.id))
                if (description.id == property)
                    return agent;
        throw ReportableError(QStringLiteral("This property is not there any more: open the site again."));
    }
    Description property(RowId id) const
    {
        for (const Description& description : m_tables.properties(agentOf(id).id))
            if (description.id == id)
                return description;
        throw ReportableError(QStringLiteral("This property is not there any more: open the site again."));
    }
    std::vector<RowId> propertyIds(RowId agent) const
    {
        std::vector<RowId> ids;
        for (const Description& description : m_tables.properties(agent))
            ids.push_back(description.id);
        return ids;
    }

    /// A recorder goes on with the numbers of the properties it found when it began.
    void requireNotRecorded(const SiteStore::Agent& agent) const
    {
        const AgentLock lock(m_database.file(), agent.id, agent.name);
    }

    void begin(Kind kind, const QString& subject)
    {
        m_outcome.subject = subject;
        m_step = std::make_unique<EditStepBuilder>(m_database, kind, subject);
        m_outcome.step = m_step->id();
    }
    void count(const ElementsMoved& moved)
    {
        m_outcome.values += moved.values;
        m_outcome.conflicts += moved.conflicts;
    }
    /// Keeps the elements for undo and takes them out.
    void takeOut(RowId agent, const std::vector<RowId>& properties, std::optional<double> from = {},
                 std::optional<double> to = {})
    {
        m_step->keepRecords(*m_stored, agent, properties, from, to);
        m_records->remove(agent, properties, from, to);
    }
    void countValues(RowId agent, const std::vector<RowId>& properties, std::optional<double> from = {},
                     std::optional<double> to = {})
    {
        for (const RowId property : properties)
            m_outcome.values += m_stored->statistics(agent, property, from, to).valid;
    }
    /// Stored views go on with what took the place of what they show.
    void moveReferences(const std::vector<MovedProperty>& moved, const QString& fromAgent = {},
                        const QString& toAgent = {})
    {
        for (const ArchivedPlugIn& plugIn : plugIns())
            if (const auto state = withMoved(plugIn.state, moved, fromAgent, toAgent)) {
                m_step->keepPlugIn(plugIn);
                Statement(m_database, "UPDATE plugin SET state = ? WHERE id = ?")
                    .bind(1, *state)
                    .bind(2, plugIn.id)
                    .run();
            }
    }
    void removeViewsOf(const QString& agentIdentifier)
    {
        for (const ArchivedPlugIn& plugIn : plugIns())
            if (namesAgent(plugIn.state, agentIdentifier)) {
                m_step->keepPlugIn(plugIn);
                Statement(m_database, "DELETE FROM plugin WHERE id = ?").bind(1, plugIn.id).run();
            }
    }
    void removeProperty(RowId id) { Statement(m_database, "DELETE FROM property WHERE id = ?").bind(1, id).run(); }
    void removeAgent(RowId id) { Statement(m_database, "DELETE FROM agent WHERE id = ?").bind(1, id).run(); }

    EditOutcome finish()
    {
        m_step->finish();
        commit();
        return m_outcome;
    }
    void commit()
    {
        m_records->prepare();
        m_database.commit();
        m_records->commit();
    }

private:
    std::vector<ArchivedPlugIn> plugIns() const
    {
        std::vector<ArchivedPlugIn> found;
        Statement rows(m_database, "SELECT id, class_name, state FROM plugin ORDER BY id");
        while (rows.step())
            found.push_back({rows.integer(0), rows.text(1), rows.bytes(2)});
        return found;
    }

    Database m_database;
    SiteStore m_tables;
    std::shared_ptr<RecordStore> m_stored;  // as they were before this transaction
    std::unique_ptr<RecordTransaction> m_records;
    std::unique_ptr<EditStepBuilder> m_step;
    EditOutcome m_outcome;
};

QString subjectOf(const SiteStore::Agent& agent, const Description& property)
{
    return QStringLiteral("%1: %2").arg(agent.name, property.name);
}

QString subjectOf(const QString& before, const QString& after)
{
    return before + QStringLiteral(" → ") + after;
}

/// What a merge says to the values; throws where units do not convert.
std::function<double(double)> conversion(const Description& from, const Description& into)
{
    if (from.archivedUnit == into.archivedUnit || from.archivedUnit.isEmpty())
        return {};
    const std::shared_ptr<const Units> units = Units::shared();
    if (!units->areCompatible(from.archivedUnit, into.archivedUnit))
        throw ReportableError(
            QStringLiteral("“%1” is in %2 and “%3” in %4, which do not convert: they cannot be merged.")
                .arg(from.name, from.archivedUnit, into.name, into.archivedUnit));
    return [units, source = from.archivedUnit, target = into.archivedUnit](double value) {
        double converted = value;
        units->convertValues(source, target, &value, &converted, 1);
        return converted;
    };
}

/// The first one's values go into the other; both are kept as they were.
void absorb(SiteEdit& edit, RowId agent, const Description& from, RowId intoAgent, const Description& into)
{
    const auto converted = conversion(from, into);
    if (const std::optional<RecordExtent> extent = edit.stored().extent(agent))
        edit.step().keepRecords(edit.stored(), intoAgent, {into.id}, extent->first, extent->last);
    edit.count(moveElements(edit.stored(), edit.records(), {agent, from.id, intoAgent, into.id, converted}));
}

EditStep undo(SiteEdit& edit, const EditStep& step)
{
    EditJournal(edit.database()).undo(step, edit.records());
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

EditOutcome mergeProperties(const QString& site, RowId id, RowId intoId)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agentOf(id);
    const Description from = edit.property(id), into = edit.property(intoId);
    if (id == intoId || edit.agentOf(intoId).id != agent.id)
        throw ReportableError(QStringLiteral("Choose two properties of one agent to merge."));
    edit.requireNotRecorded(agent);
    edit.begin(Kind::Merge, subjectOf(subjectOf(agent, from), into.name));
    absorb(edit, agent.id, from, agent.id, into);
    edit.takeOut(agent.id, {from.id});
    edit.removeProperty(from.id);
    edit.tables().moveAliases(agent.id, from.id, into.id);
    edit.tables().addAlias(agent.id, from.propertyName, into.id);
    edit.moveReferences(
        {{agent.identifier, from.propertyName, from.name, agent.identifier, into.propertyName, into.name}});
    return edit.finish();
}

EditOutcome mergeAgents(const QString& site, RowId id, RowId intoId)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agent(id), into = edit.agent(intoId);
    if (id == intoId)
        throw ReportableError(QStringLiteral("Choose two agents to merge."));
    edit.requireNotRecorded(agent);
    edit.begin(Kind::Merge, subjectOf(agent.name, into.name));
    const std::vector<RowId> all = edit.propertyIds(id);
    std::vector<MovedProperty> moved;
    for (const Description& property : edit.tables().properties(id)) {
        const std::optional<Description> other = edit.tables().propertyNamed(intoId, property.name);
        const bool isOne = other && Units::shared()->areCompatible(property.archivedUnit, other->archivedUnit);
        const Description target = isOne || (other && property.archivedUnit == other->archivedUnit)
                                       ? *other
                                       : edit.tables().addPropertyLike(intoId, property);
        if (!other || target.id != other->id)
            edit.step().madeProperty(target.id);
        absorb(edit, id, property, intoId, target);
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

EditOutcome deleteProperty(const QString& site, RowId id)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agentOf(id);
    edit.requireNotRecorded(agent);
    edit.begin(Kind::Delete, subjectOf(agent, edit.property(id)));
    edit.countValues(agent.id, {id});
    edit.takeOut(agent.id, {id});
    edit.removeProperty(id);
    edit.tables().removeAliasesOf(agent.id, id);
    return edit.finish();
}

EditOutcome deleteAgent(const QString& site, RowId id)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agent(id);
    edit.requireNotRecorded(agent);
    edit.begin(Kind::Delete, agent.name);
    const std::vector<RowId> all = edit.propertyIds(id);
    edit.countValues(id, all);
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

EditOutcome removeValues(const QString& site, RowId id, const std::vector<RowId>& properties,
                         std::optional<double> from, std::optional<double> to)
{
    SiteEdit edit(site);
    const SiteStore::Agent agent = edit.agent(id);
    edit.begin(Kind::RemoveValues,
               properties.size() == 1 ? subjectOf(agent, edit.property(properties.front())) : agent.name);
    edit.countValues(id, properties, from, to);
    // Records that go with their last value may have no value at all; they are kept too.
    edit.takeOut(id, properties, from, to);
    return edit.finish();
}

std::vector<EditStep> editSteps(const QString& site)
{
    Database database(QFileInfo(site).absoluteFilePath(), siteSchema(), Database::Access::ReadOnly);
    return EditJournal(database).steps();
}

EditStep undoLastEdit(const QString& site)
{
    SiteEdit edit(site);
    const std::vector<EditStep> steps = EditJournal(edit.database()).steps();
    if (steps.empty())
        throw ReportableError(QStringLiteral("There is nothing to undo."));
    return undo(edit, steps.back());
}

EditStep undoLastImport(const QString& site)
{
    SiteEdit edit(site);
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
