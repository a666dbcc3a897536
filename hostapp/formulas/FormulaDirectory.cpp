#include "hostapp/formulas/FormulaDirectory.h"

namespace plotix {

namespace {

template <class List, class Fits>
auto* found(const List& list, const Fits& fits)
{
    for (const auto& each : list)
        if (fits(each))
            return &each;
    return static_cast<const typename List::value_type*>(nullptr);
}

bool isSame(const QString& one, const QString& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

}  // namespace

const FormulaDirectory::Agent* FormulaDirectory::agentWithId(qint64 id) const
{
    return found(agents, [id](const Agent& agent) { return agent.id == id; });
}

const FormulaDirectory::Agent* FormulaDirectory::agentNamed(const QString& name) const
{
    const Agent* exact = found(agents, [&](const Agent& agent) { return agent.name == name; });
    return exact ? exact : found(agents, [&](const Agent& agent) { return isSame(agent.name, name); });
}

const SiteProperty::Description* FormulaDirectory::propertyWithId(qint64 id) const
{
    for (const Agent& agent : agents)
        if (const auto* property = found(agent.properties, [id](const auto& each) { return each.id == id; }))
            return property;
    return nullptr;
}

const SiteProperty::Description* FormulaDirectory::propertyNamed(const Agent& agent, const QString& name)
{
    using Description = SiteProperty::Description;
    if (const auto* exact = found(agent.properties, [&](const Description& each) { return each.name == name; }))
        return exact;
    if (const auto* key = found(agent.properties, [&](const Description& each) { return each.propertyName == name; }))
        return key;
    return found(agent.properties,
                 [&](const Description& each) { return isSame(each.name, name) || isSame(each.propertyName, name); });
}

const FormulaDirectory::Agent* FormulaDirectory::agentOf(qint64 property) const
{
    return found(agents, [property](const Agent& agent) {
        return found(agent.properties, [property](const auto& each) { return each.id == property; }) != nullptr;
    });
}

}  // namespace plotix
