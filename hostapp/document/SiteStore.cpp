#include "hostapp/document/SiteStore.h"

#include "base/ReportableError.h"
#include "hostapp/core/Units.h"
#include "hostapp/document/PropertyPalette.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "records/store/RecordBlock.h"

#include <QtCore/QUuid>

#include <algorithm>

namespace plotix {

namespace {

/// The key of the record dictionary's times; no property may have it.
constexpr const char* kReservedKey = "time";

bool isTaken(const std::vector<SiteProperty::Description>& properties, const QString& key)
{
    return key.isEmpty() || key == QLatin1String(kReservedKey) ||
           std::any_of(properties.begin(), properties.end(),
                       [&](const SiteProperty::Description& property) { return property.propertyName == key; });
}

QString uniqueName(const std::vector<SiteProperty::Description>& properties, const QString& name)
{
    QString unique = name;
    for (int number = 2; isTaken(properties, camelCaseString(unique)); ++number)
        unique = QStringLiteral("%1 %2").arg(name).arg(number).trimmed();
    return unique;
}

std::vector<QColor> colorsOf(const std::vector<SiteProperty::Description>& properties)
{
    std::vector<QColor> colors;
    for (const SiteProperty::Description& property : properties)
        colors.push_back(property.color);
    return colors;
}

}  // namespace

SiteStore::Site SiteStore::site() const
{
    Statement statement(m_database, "SELECT name, location FROM site WHERE id = 1");
    if (!statement.step())
        m_database.failAsDamaged(QStringLiteral("the site has no name"));
    return {statement.text(0), statement.text(1)};
}

void SiteStore::setSite(const Site& site)
{
    Statement(m_database, "UPDATE site SET name = ?, location = ? WHERE id = 1")
        .bind(1, site.name)
        .bind(2, site.location)
        .run();
}

std::vector<SiteStore::Agent> SiteStore::agents() const
{
    std::vector<Agent> agents;
    Statement statement(m_database, "SELECT id, identifier, name FROM agent ORDER BY id");
    while (statement.step())
        agents.push_back({statement.integer(0), statement.text(1), statement.text(2)});
    return agents;
}

std::optional<SiteStore::Agent> SiteStore::agentNamed(const QString& name) const
{
    for (const Agent& agent : agents())
        if (agent.name == name)
            return agent;
    return std::nullopt;
}

std::optional<SiteStore::Agent> SiteStore::agentOnceNamed(const QString& name) const
{
    if (const std::optional<Agent> agent = agentNamed(name))
        return agent;
    const std::optional<qint64> target = aliasTarget(0, name);
    for (const Agent& agent : agents())
        if (agent.id == target)
            return agent;
    return std::nullopt;
}

void SiteStore::requireFreeAgentName(const QString& name) const
{
    if (name.trimmed().isEmpty())
        throw ReportableError(QStringLiteral("An agent needs a name: give it one."));
    if (agentNamed(name))
        throw ReportableError(QStringLiteral("There is an agent “%1” already: choose another name.").arg(name));
}

void SiteStore::renameAgent(const Agent& agent, const QString& name)
{
    requireFreeAgentName(name.trimmed());
    Statement(m_database, "UPDATE agent SET name = ? WHERE id = ?").bind(1, name.trimmed()).bind(2, agent.id).run();
    addAlias(0, agent.name, agent.id);
}

SiteStore::Agent SiteStore::addAgent(const QString& name)
{
    return addAgentLike({0, QUuid::createUuid().toString(QUuid::WithoutBraces), name});
}

SiteStore::Agent SiteStore::addAgentLike(const Agent& other)
{
    requireFreeAgentName(other.name);
    Agent agent = other;
    Statement(m_database, "INSERT INTO agent(identifier, name) VALUES(?, ?)")
        .bind(1, agent.identifier)
        .bind(2, agent.name)
        .run();
    agent.id = m_database.lastInsertedRow();
    return agent;
}

std::vector<SiteProperty::Description> SiteStore::properties(qint64 agent) const
{
    std::vector<SiteProperty::Description> properties;
    Statement statement(m_database, "SELECT id, name, key, unit, archived_unit, color, type, visible FROM property "
                                    "WHERE agent = ? ORDER BY id");
    statement.bind(1, agent);
    while (statement.step()) {
        SiteProperty::Description property;
        property.id = statement.integer(0);
        property.name = statement.text(1);
        property.propertyName = statement.text(2);
        property.unit = statement.text(3);
        property.archivedUnit = statement.text(4);
        property.color = QColor::fromRgba(static_cast<QRgb>(statement.integer(5)));
        property.type = static_cast<std::uint32_t>(statement.integer(6));
        property.visible = statement.integer(7) != 0;
        properties.push_back(property);
    }
    statement.reset();
    readFormulas(properties);
    return properties;
}

bool SiteStore::hasTable(const char* name) const
{
    Statement table(m_database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?");
    return table.bind(1, QString::fromLatin1(name)).step();
}

void SiteStore::readFormulas(std::vector<SiteProperty::Description>& properties) const
{
    if (!hasTable("formula"))
        return;
    Statement rows(m_database, "SELECT property, text, unit, joins, longest_gap FROM formula");
    while (rows.step())
        for (SiteProperty::Description& property : properties)
            if (property.id == rows.integer(0))
                property.formula = PropertyFormula{rows.text(1), rows.text(2),
                                                   static_cast<PropertyFormula::Join>(rows.integer(3)), rows.real(4)};
}

void SiteStore::setFormula(qint64 property, const PropertyFormula& formula, const QString& unit)
{
    Statement(m_database, "INSERT OR REPLACE INTO formula(property, text, unit, joins, longest_gap) "
                          "VALUES(?, ?, ?, ?, ?)")
        .bind(1, property)
        .bind(2, formula.text)
        .bind(3, formula.unit)
        .bind(4, static_cast<qint64>(formula.join))
        .bind(5, formula.longestGap)
        .run();
    Statement(m_database, "UPDATE property SET archived_unit = ? WHERE id = ?").bind(1, unit).bind(2, property).run();
}

std::optional<SiteProperty::Description> SiteStore::propertyNamed(qint64 agent, const QString& name) const
{
    const std::vector<SiteProperty::Description> all = properties(agent);
    for (const SiteProperty::Description& property : all)
        if (property.name == name)
            return property;
    const QString key = camelCaseString(name);
    for (const SiteProperty::Description& property : all)
        if (property.propertyName == key)
            return property;
    return std::nullopt;
}

std::optional<SiteProperty::Description> SiteStore::propertyOnceNamed(qint64 agent, const QString& name) const
{
    if (const std::optional<SiteProperty::Description> property = propertyNamed(agent, name))
        return property;
    const std::optional<qint64> target = aliasTarget(agent, camelCaseString(name));
    for (const SiteProperty::Description& property : properties(agent))
        if (property.id == target)
            return property;
    return std::nullopt;
}

SiteProperty::Description SiteStore::addPropertyLike(qint64 agent, const SiteProperty::Description& other)
{
    SiteProperty::Description property = addProperty(agent, other.name, other.archivedUnit, other.type);
    property.unit = other.unit;
    property.archivedUnit = other.archivedUnit;
    property.color = other.color;
    property.visible = other.visible;
    updateProperty(property);
    Statement(m_database, "UPDATE property SET archived_unit = ? WHERE id = ?")
        .bind(1, property.archivedUnit)
        .bind(2, property.id)
        .run();
    if (other.formula)
        setFormula(property.id, *other.formula, property.archivedUnit);
    property.formula = other.formula;
    return property;
}

SiteProperty::Description SiteStore::renameProperty(qint64 agent, const SiteProperty::Description& property,
                                                    const QString& name)
{
    std::vector<SiteProperty::Description> others = properties(agent);
    std::erase_if(others, [&](const SiteProperty::Description& each) { return each.id == property.id; });
    SiteProperty::Description renamed = property;
    renamed.name = name.trimmed();
    renamed.propertyName = camelCaseString(renamed.name);
    if (isTaken(others, renamed.propertyName))
        throw ReportableError(
            renamed.name.isEmpty()
                ? QStringLiteral("A property needs a name: give it one.")
                : QStringLiteral("“%1” is taken: choose another name, or merge the two.").arg(renamed.name));
    Statement(m_database, "UPDATE property SET name = ?, key = ? WHERE id = ?")
        .bind(1, renamed.name)
        .bind(2, renamed.propertyName)
        .bind(3, renamed.id)
        .run();
    if (renamed.propertyName != property.propertyName)
        addAlias(agent, property.propertyName, property.id);
    return renamed;
}

void SiteStore::addAlias(qint64 agent, const QString& name, qint64 target)
{
    Statement(m_database, "INSERT OR REPLACE INTO alias(agent, name, target) VALUES(?, ?, ?)")
        .bind(1, agent)
        .bind(2, name)
        .bind(3, target)
        .run();
}

/// What led to the one that goes leads to its successor.
void SiteStore::moveAliases(qint64 agent, qint64 from, qint64 target)
{
    Statement(m_database, "UPDATE alias SET target = ? WHERE agent = ? AND target = ?")
        .bind(1, target)
        .bind(2, agent)
        .bind(3, from)
        .run();
}

void SiteStore::moveAliases(qint64 agent, qint64 from, qint64 toAgent, qint64 target)
{
    Statement(m_database, "UPDATE OR IGNORE alias SET agent = ?, target = ? WHERE agent = ? AND target = ?")
        .bind(1, toAgent)
        .bind(2, target)
        .bind(3, agent)
        .bind(4, from)
        .run();
}

void SiteStore::removeAliasesOf(qint64 agent, qint64 target)
{
    Statement(m_database, "DELETE FROM alias WHERE agent = ? AND target = ?").bind(1, agent).bind(2, target).run();
}

std::optional<qint64> SiteStore::aliasTarget(qint64 agent, const QString& name) const
{
    if (!hasTable("alias"))
        return std::nullopt;
    Statement alias(m_database, "SELECT target FROM alias WHERE agent = ? AND name = ?");
    alias.bind(1, agent).bind(2, name);
    return alias.step() ? std::optional(alias.integer(0)) : std::nullopt;
}

SiteProperty::Description SiteStore::addProperty(qint64 agent, const QString& name, const QString& unit,
                                                 std::uint32_t type)
{
    return addProperty(agent, name, unit, type, properties(agent));
}

SiteProperty::Description SiteStore::addProperty(qint64 agent, const QString& name, const QString& unit,
                                                 std::uint32_t type,
                                                 const std::vector<SiteProperty::Description>& before)
{
    SiteProperty::Description property;
    property.name = uniqueName(before, name.trimmed());
    property.propertyName = camelCaseString(property.name);
    property.unit = property.archivedUnit = Units::shared()->normalise(unit).value_or(unit.trimmed());
    property.color = freeColor(colorsOf(before));
    property.type = type;
    Statement insert(m_database, "INSERT INTO property(agent, name, key, unit, archived_unit, color, type, visible) "
                                 "VALUES(?, ?, ?, ?, ?, ?, ?, ?)");
    insert.bind(1, agent).bind(2, property.name).bind(3, property.propertyName).bind(4, property.unit);
    insert.bind(5, property.archivedUnit).bind(6, qint64(property.color.rgba())).bind(7, qint64(property.type));
    insert.bind(8, qint64(property.visible)).run();
    property.id = m_database.lastInsertedRow();
    if (property.id >= kPropertyLimit)
        throw ReportableError(QStringLiteral("The site has too many properties: begin a new site."));
    return property;
}

void SiteStore::updateProperty(const SiteProperty::Description& property, const SiteProperty::Description& since)
{
    // What is not bound is nothing, and leaves the column as it is.
    Statement update(m_database, "UPDATE property SET unit = coalesce(?1, unit), color = coalesce(?2, color), "
                                 "visible = coalesce(?3, visible) WHERE id = ?4");
    if (property.unit != since.unit)
        update.bind(1, property.unit);
    if (property.color != since.color)
        update.bind(2, qint64(property.color.rgba()));
    if (property.visible != since.visible)
        update.bind(3, qint64(property.visible));
    update.bind(4, property.id).run();
}

void SiteStore::updateProperty(const SiteProperty::Description& property)
{
    Statement(m_database, "UPDATE property SET unit = ?, color = ?, visible = ? WHERE id = ?")
        .bind(1, property.unit)
        .bind(2, qint64(property.color.rgba()))
        .bind(3, qint64(property.visible))
        .bind(4, property.id)
        .run();
}

}  // namespace plotix
