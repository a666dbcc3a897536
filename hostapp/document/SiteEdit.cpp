#include "hostapp/document/SiteEdit.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/AgentLock.h"
#include "hostapp/document/AttachedAgents.h"
#include "hostapp/document/ElementMoving.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteAnnotations.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/formulas/FormulaPlan.h"
#include "hostapp/formulas/FormulaRenaming.h"

#include <QtCore/QFileInfo>

#include <array>

namespace plotix {

namespace {

using Description = SiteProperty::Description;

QString inUnit(const Description& property)
{
    return property.archivedUnit.isEmpty() ? QStringLiteral("without a unit")
                                           : QStringLiteral("in %1").arg(property.archivedUnit);
}

/// What a merge says to the values; throws where units do not convert.
std::function<double(double)> conversion(const Description& from, const Description& into)
{
    if (from.archivedUnit == into.archivedUnit || from.archivedUnit.isEmpty())
        return {};
    const std::shared_ptr<const Units> units = Units::shared();
    if (!units->areCompatible(from.archivedUnit, into.archivedUnit))
        throw ReportableError(QStringLiteral("“%1” is %2 and “%3” %4, which do not convert: they cannot be merged.")
                                  .arg(from.name, inUnit(from), into.name, inUnit(into)));
    return [units, source = from.archivedUnit, target = into.archivedUnit](double value) {
        double converted = value;
        units->convertValues(source, target, &value, &converted, 1);
        return converted;
    };
}

}  // namespace

SiteEdit::SiteEdit(const QString& site, const EditProgress& progress)
    : m_database(QFileInfo(site).absoluteFilePath(), siteSchema(), Database::Access::ReadWrite),
      m_tables(m_database),
      m_stored(recordsOfSite(m_database.file())),
      m_meter(progress)
{
    m_database.beginWriting();
    m_records = recordKeeping().join(m_database);
}

SiteEdit::~SiteEdit()
{
    m_records.reset();
    m_database.rollBack();
}

SiteStore::Agent SiteEdit::agent(RowId id) const
{
    for (const SiteStore::Agent& agent : m_tables.agents())
        if (agent.id == id)
            return agent;
    throw ReportableError(QStringLiteral("This agent is not there any more: open the site again."));
}

SiteStore::Agent SiteEdit::agentOf(RowId property) const
{
    for (const SiteStore::Agent& agent : m_tables.agents())
        for (const Description& description : m_tables.properties(agent.id))
            if (description.id == property)
                return agent;
    throw ReportableError(QStringLiteral("This property is not there any more: open the site again."));
}

Description SiteEdit::property(RowId id) const
{
    for (const Description& description : m_tables.properties(agentOf(id).id))
        if (description.id == id)
            return description;
    throw ReportableError(QStringLiteral("This property is not there any more: open the site again."));
}

std::vector<RowId> SiteEdit::propertyIds(RowId agent) const
{
    std::vector<RowId> ids;
    for (const Description& description : m_tables.properties(agent))
        ids.push_back(description.id);
    return ids;
}

FormulaDirectory SiteEdit::directory() const
{
    FormulaDirectory directory;
    for (const SiteStore::Agent& agent : m_tables.agents())
        directory.agents.push_back({agent.id, agent.name, m_tables.properties(agent.id)});
    return directory;
}

void SiteEdit::requireNotRecorded(const SiteStore::Agent& agent) const
{
    const AgentLock lock(m_database.file(), agent.id, agent.name);
}

void SiteEdit::requireOwnRecords(const SiteStore::Agent& agent)
{
    plotix::requireOwnRecords(m_database, agent.id, agent.name);
}

void SiteEdit::begin(EditStep::Kind kind, const QString& subject)
{
    m_outcome.subject = subject;
    m_before = directory();
    m_step = std::make_unique<EditStepBuilder>(m_database, kind, subject);
    m_outcome.step = m_step->id();
}

void SiteEdit::absorb(RowId agent, const Description& from, RowId intoAgent, const Description& into)
{
    m_moved[from.id] = into.id;
    moveAnnotations(m_database, from.id, into.id);
    if (from.formula)
        return;
    const auto converted = conversion(from, into);
    if (const std::optional<RecordExtent> extent = m_stored->extent(agent))
        m_step->keepRecords(*m_stored, intoAgent, {into.id}, extent->first, extent->last, m_meter);
    const ElementsMoved moved =
        moveElements(*m_stored, *m_records, {agent, from.id, intoAgent, into.id, converted}, m_meter);
    for (Amendment each : m_stored->amendments(agent, std::array{from.id})) {
        each.property = into.id;
        m_records->addAmendment(intoAgent, each);
    }
    m_outcome.values += moved.values;
    m_outcome.conflicts += moved.conflicts;
}

void SiteEdit::expectToAbsorb(RowId agent, RowId intoAgent, std::size_t properties)
{
    if (const std::optional<RecordExtent> extent = m_stored->extent(agent))
        m_meter.expect(properties *
                       (partsOf(*m_stored, intoAgent, extent->first, extent->last) + partsOf(*m_stored, agent)));
}

void SiteEdit::takeOut(RowId agent, const std::vector<RowId>& properties, std::optional<double> from,
                       std::optional<double> to)
{
    m_step->keepRecords(*m_stored, agent, properties, from, to, m_meter);
    removeInParts(*m_stored, *m_records, agent, properties, from, to, m_meter);
}

void SiteEdit::expectToTakeOut(RowId agent, std::optional<double> from, std::optional<double> to)
{
    m_meter.expect(2 * partsOf(*m_stored, agent, from, to));
}

void SiteEdit::countValues(RowId agent, const std::vector<RowId>& properties, std::optional<double> from,
                           std::optional<double> to)
{
    for (const RowId property : properties)
        m_outcome.values += m_stored->statistics(agent, property, from, to).valid;
}

void SiteEdit::moveReferences(const std::vector<MovedProperty>& moved, const QString& fromAgent, const QString& toAgent)
{
    for (const ArchivedPlugIn& plugIn : plugIns())
        if (const auto state = withMoved(plugIn.state, moved, fromAgent, toAgent)) {
            m_step->keepPlugIn(plugIn);
            Statement(m_database, "UPDATE plugin SET state = ? WHERE id = ?").bind(1, *state).bind(2, plugIn.id).run();
        }
}

void SiteEdit::removeViewsOf(const QString& agentIdentifier)
{
    for (const ArchivedPlugIn& plugIn : plugIns())
        if (namesAgent(plugIn.state, agentIdentifier)) {
            m_step->keepPlugIn(plugIn);
            Statement(m_database, "DELETE FROM plugin WHERE id = ?").bind(1, plugIn.id).run();
        }
}

void SiteEdit::removeProperty(RowId id)
{
    Statement(m_database, "DELETE FROM property WHERE id = ?").bind(1, id).run();
    Statement(m_database, "DELETE FROM formula WHERE property = ?").bind(1, id).run();
    Statement(m_database, "DELETE FROM value_limit WHERE property = ?").bind(1, id).run();
}

void SiteEdit::removeAgent(RowId id)
{
    Statement(m_database, "DELETE FROM agent WHERE id = ?").bind(1, id).run();
}

void SiteEdit::followNames()
{
    const FormulaDirectory renamed = directory();
    const NamesChanged changed{m_before, renamed, m_moved};
    std::map<qint64, qint64> origins;  // of computed properties that were moved
    for (const auto& [from, into] : m_moved)
        if (const Description* origin = m_before.propertyWithId(from); origin && origin->formula)
            origins[into] = from;
    for (const FormulaDirectory::Agent& agent : renamed.agents)
        for (const Description& property : agent.properties) {
            const qint64 origin = origins.contains(property.id) ? origins[property.id] : property.id;
            const FormulaDirectory::Agent* home = m_before.agentOf(origin);
            if (!property.formula || !home)
                continue;
            PropertyFormula formula = *property.formula;
            formula.text = followed(formula.text, home->id, agent.id, changed);
            if (formula == *property.formula)
                continue;
            m_tables.setFormula(property.id, formula, property.archivedUnit);
            m_outcome.followed.push_back(property.name);
        }
    const FormulaDirectory after = directory();
    for (const FormulaDirectory::Agent& agent : after.agents)
        for (const Description& property : agent.properties) {
            if (!property.formula)
                continue;
            const qint64 origin = origins.contains(property.id) ? origins[property.id] : property.id;
            const FormulaPlan plan = planProperty(after, property.id);
            if (plan.problem && !planProperty(m_before, origin).problem)
                m_outcome.broken.emplace_back(property.name, sentenceOf(*plan.problem));
        }
}

EditOutcome SiteEdit::finish()
{
    followNames();
    m_step->finish();
    commit();
    return m_outcome;
}

void SiteEdit::commit()
{
    m_records->prepare();
    m_database.commit();
    m_records->commit();
}

std::vector<ArchivedPlugIn> SiteEdit::plugIns() const
{
    std::vector<ArchivedPlugIn> found;
    Statement rows(m_database, "SELECT id, class_name, state FROM plugin ORDER BY id");
    while (rows.step())
        found.push_back({rows.integer(0), rows.text(1), rows.bytes(2)});
    return found;
}

}  // namespace plotix
