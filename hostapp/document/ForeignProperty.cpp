#include "hostapp/document/ForeignProperty.h"

#include "hostapp/formulas/FormulaParser.h"

#include <algorithm>

namespace plotix {

namespace {

QString freeName(const FormulaDirectory::Agent& agent, const QString& wanted)
{
    const auto isTaken = [&agent](const QString& name) {
        return std::any_of(agent.properties.begin(), agent.properties.end(), [&name](const auto& property) {
            return property.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    };
    QString name = wanted;
    for (int number = 2; isTaken(name); ++number)
        name = QStringLiteral("%1 %2").arg(wanted).arg(number);
    return name;
}

}  // namespace

std::optional<ForeignProperty> foreignProperty(const FormulaDirectory& directory, RowId agent, RowId property)
{
    const FormulaDirectory::Agent* own = directory.agentWithId(agent);
    const FormulaDirectory::Agent* other = directory.agentOf(property);
    const SiteProperty::Description* source = directory.propertyWithId(property);
    if (!own || !other || !source || own == other)
        return std::nullopt;
    ForeignProperty foreign;
    foreign.wanted.formula.text = quotedName(other->name) + QLatin1Char('.') + quotedName(source->name);
    foreign.wanted.name = freeName(*own, QStringLiteral("%1 (%2)").arg(source->name, other->name));
    for (const SiteProperty::Description& known : own->properties)
        if (known.formula && known.formula->text == foreign.wanted.formula.text && known.formula->unit.isEmpty())
            foreign.key = known.propertyName;
    return foreign;
}

}  // namespace plotix
