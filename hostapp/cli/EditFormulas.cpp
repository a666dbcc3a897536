#include "hostapp/cli/EditFormulas.h"

#include "base/ReportableError.h"
#include "hostapp/cli/Options.h"
#include "hostapp/formulas/FormulaPlan.h"

#include <ostream>

namespace plotix {

namespace {

struct Definition {
    QString name, formula;
};

/// NAME = FORMULA, the name perhaps in quotation marks; nothing for anything else.
std::optional<Definition> definitionFrom(const QString& text)
{
    bool isQuoted = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text.at(at) == QLatin1Char('"'))
            isQuoted = !isQuoted;
        if (isQuoted || text.at(at) != QLatin1Char('='))
            continue;
        QString name = text.left(at).trimmed();
        if (name.size() > 1 && name.startsWith(QLatin1Char('"')) && name.endsWith(QLatin1Char('"')))
            name = name.mid(1, name.size() - 2).replace(QLatin1String("\"\""), QLatin1String("\""));
        const QString formula = text.mid(at + 1).trimmed();
        if (name.isEmpty())
            return std::nullopt;
        return Definition{name, formula};
    }
    return std::nullopt;
}

const SiteProperty* computedNamed(const SiteAgent& agent, const QString& name)
{
    for (const auto& property : agent.siteProperties())
        if (property->isComputed() && property->name().compare(name, Qt::CaseInsensitive) == 0)
            return property.get();
    return nullptr;
}

ComputedProperty wanted(const FormulaWish& wish, const Definition& definition, const SiteProperty* before)
{
    ComputedProperty property;
    property.name = before ? before->name() : definition.name;
    if (before)
        property.formula = *before->description().formula;
    property.formula.text = definition.formula;
    if (!wish.unit.isEmpty())
        property.formula.unit = wish.unit;
    if (!wish.color.isEmpty())
        property.color = QColor(wish.color);
    property.formula.join = wish.join.value_or(property.formula.join);
    property.formula.longestGap = wish.longestGap.value_or(property.formula.longestGap);
    return property;
}

}  // namespace

void addFormulaOptions(CLI::App* command, FormulaWish& wish)
{
    addText(command, "--compute", wish.text,
            "Make a property that is computed from others, or change it; names with blanks or signs go into \"…\", "
            "another agent's are AGENT.NAME")
        ->type_name("'NAME = FORMULA'");
    addText(command, "--unit", wish.unit,
            "Of --compute: the unit of the result; unless given, what follows from the formula")
        ->type_name("UNIT");
    addText(command, "--color", wish.color, "Of --compute: its colour")->type_name("#RRGGBB");
    addChoice<PropertyFormula::Join>(
        command, "--join", wish.join,
        {{"hold", PropertyFormula::Join::HoldLast}, {"line", PropertyFormula::Join::Straight}},
        "Of --compute: what stands where only another agent has a time, the last value or a straight line; hold unless "
        "given");
    addDuration(command, "--longest-gap", wish.longestGap,
                "Of --compute: how long a stretch without a value is bridged at most; 1h unless given");
    command->add_flag("--computed", wish.lists, "List what is computed");
}

std::optional<QString> contradictionIn(const FormulaWish& wish)
{
    if (wish.text.isEmpty())
        return wish.isPlain()
                   ? std::nullopt
                   : std::optional(QStringLiteral("--unit, --color, --join and --longest-gap belong to --compute"));
    if (!definitionFrom(wish.text))
        return QStringLiteral("--compute needs a name, = and a formula, such as 'Spread = Supply - Return'");
    if (!wish.color.isEmpty() && !QColor(wish.color).isValid())
        return QStringLiteral("--color %1 is no colour; write it as #56b4e9").arg(wish.color);
    return std::nullopt;
}

EditOutcome compute(const FormulaWish& wish, const QString& site, const SiteDocument& document, const SiteAgent& agent,
                    std::ostream& errors)
{
    const Definition definition = definitionFrom(wish.text).value_or(Definition{});
    const SiteProperty* before = computedNamed(agent, definition.name);
    const ComputedProperty property = wanted(wish, definition, before);
    const std::optional<RowId> id = before ? std::optional(before->description().id) : std::nullopt;
    const FormulaPlan plan = planFormula(*document.formulaDirectory(), agent.id(), property.formula, id.value_or(0));
    if (plan.problem) {
        errors << markedText(property.formula.text, *plan.problem).toStdString() << '\n';
        throw ReportableError(sentenceOf(*plan.problem));
    }
    return computeProperty(site, agent.id(), property, id);
}

void listFormulas(const SiteDocument& document, std::ostream& out)
{
    bool isAny = false;
    for (const auto& agent : document.agents())
        for (const auto& property : agent->siteProperties()) {
            if (!property->isComputed())
                continue;
            isAny = true;
            const SiteProperty::Description& known = property->description();
            const FormulaPlan plan = planProperty(*document.formulaDirectory(), known.id);
            const QString unit =
                known.archivedUnit.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(known.archivedUnit);
            out << agent->name().toStdString() << ": " << known.name.toStdString() << unit.toStdString() << " = "
                << known.formula->text.toStdString();
            if (plan.problem)
                out << "\n  cannot be computed: " << sentenceOf(*plan.problem).toStdString();
            out << '\n';
        }
    if (!isAny)
        out << "Nothing is computed.\n";
}

}  // namespace plotix
