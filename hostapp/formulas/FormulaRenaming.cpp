#include "hostapp/formulas/FormulaRenaming.h"

#include "hostapp/formulas/FormulaParser.h"

namespace plotix {

namespace {

const SiteProperty::Description* meantBy(const FormulaName& name, qint64 home, const FormulaDirectory& directory)
{
    const FormulaDirectory::Agent* agent = name.agent ? directory.agentNamed(*name.agent) : directory.agentWithId(home);
    return agent ? FormulaDirectory::propertyNamed(*agent, name.property) : nullptr;
}

}  // namespace

QString followed(const QString& text, qint64 home, qint64 homeAfter, const NamesChanged& changed)
{
    return withNames(text, [&](const FormulaName& name) -> std::optional<FormulaName> {
        const SiteProperty::Description* before = meantBy(name, home, changed.before);
        if (!before)
            return std::nullopt;
        const auto moved = changed.moved.find(before->id);
        const qint64 id = moved == changed.moved.end() ? before->id : moved->second;
        const SiteProperty::Description* meantNow = meantBy(name, homeAfter, changed.after);
        const SiteProperty::Description* wanted = changed.after.propertyWithId(id);
        if (!wanted || (meantNow && meantNow->id == id))
            return std::nullopt;
        const FormulaDirectory::Agent* agent = changed.after.agentOf(id);
        FormulaName renamed{std::nullopt, wanted->name};
        if (agent->id != homeAfter)
            renamed.agent = agent->name;
        return renamed;
    });
}

}  // namespace plotix
