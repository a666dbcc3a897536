#include "hostapp/formulas/FormulaPlan.h"

#include "hostapp/core/Units.h"
#include "hostapp/formulas/QuantityArithmetic.h"

#include <algorithm>
#include <map>
#include <set>

namespace plotix {

namespace {

using Kind = FormulaNode::Kind;
using Problem = FormulaProblem::Kind;
using Do = FormulaStep::Do;
using Description = SiteProperty::Description;

/// What is known of other computed properties while one is planned.
struct Planning {
    const FormulaDirectory& directory;
    std::set<qint64> underway;            // those whose formulas lead here
    std::map<qint64, FormulaPlan> plans;  // of those that are done
};

FormulaPlan planOf(Planning& planning, qint64 agent, const PropertyFormula& formula,
                   const std::optional<QString>& unit);

FormulaPlan planOfKept(Planning& planning, const Description& property)
{
    if (const auto done = planning.plans.find(property.id); done != planning.plans.end())
        return done->second;
    planning.underway.insert(property.id);
    const FormulaDirectory::Agent* agent = planning.directory.agentOf(property.id);
    FormulaPlan plan = planOf(planning, agent ? agent->id : 0, *property.formula, property.archivedUnit);
    planning.underway.erase(property.id);
    return planning.plans[property.id] = plan;
}

class Compiler {
public:
    Compiler(Planning& planning, qint64 agent, FormulaProgram& program)
        : m_planning(planning), m_agent(agent), m_program(program), m_arithmetic(program)
    {
    }

    Quantity compile(const FormulaNode& node)
    {
        try {
            return compileAt(node);
        } catch (FormulaFailure& failure) {
            if (failure.problem.position < 0) {
                failure.problem.position = node.position;
                failure.problem.length = node.length;
            }
            throw;
        }
    }

    Quantity result(const Quantity& value, const std::optional<QString>& unit)
    {
        return m_arithmetic.result(value, unit);
    }

private:
    Quantity compileAt(const FormulaNode& node);
    Quantity name(const FormulaNode& node);
    Quantity number(const FormulaNode& node);
    Quantity function(const FormulaNode& node);
    double span(const FormulaNode& function, const FormulaNode& argument);

    Planning& m_planning;
    qint64 m_agent;
    FormulaProgram& m_program;
    QuantityArithmetic m_arithmetic;
};

FormulaProblem problemAt(const FormulaNode& node, Problem kind, const QString& one, const QString& other = {})
{
    return {kind, node.position, node.length, one, other};
}

QString knownUnit(const FormulaNode& node)
{
    const std::optional<QString> unit = Units::shared()->normalise(node.text);
    if (!unit)
        throw FormulaFailure{problemAt(node, Problem::UnknownUnit, node.text)};
    return *unit;
}

Quantity Compiler::compileAt(const FormulaNode& node)
{
    if (node.kind == Kind::Name)
        return name(node);
    if (node.kind == Kind::Number)
        return number(node);
    if (node.kind == Kind::Function)
        return function(node);
    if (node.kind == Kind::Unit)
        throw FormulaFailure{problemAt(node, Problem::Unexpected, node.text)};
    const Quantity left = compile(node.arguments.front());
    if (node.kind == Kind::Negative)
        return m_arithmetic.negative(left);
    const Quantity right = compile(node.arguments.back());
    switch (node.kind) {
    case Kind::Sum: return m_arithmetic.sum(left, right, Do::Add);
    case Kind::Difference: return m_arithmetic.sum(left, right, Do::Subtract);
    case Kind::Product: return m_arithmetic.product(left, right);
    case Kind::Quotient: return m_arithmetic.quotient(left, right);
    case Kind::Power: return m_arithmetic.power(left, right);
    case Kind::Less: return m_arithmetic.comparison(left, right, Do::Less);
    case Kind::LessOrEqual: return m_arithmetic.comparison(left, right, Do::LessOrEqual);
    case Kind::Greater: return m_arithmetic.comparison(left, right, Do::Greater);
    case Kind::GreaterOrEqual: return m_arithmetic.comparison(left, right, Do::GreaterOrEqual);
    case Kind::Equal: return m_arithmetic.comparison(left, right, Do::Equal);
    default: return m_arithmetic.comparison(left, right, Do::Different);
    }
}

Quantity Compiler::name(const FormulaNode& node)
{
    const FormulaDirectory& directory = m_planning.directory;
    const FormulaDirectory::Agent* agent =
        node.agent ? directory.agentNamed(*node.agent) : directory.agentWithId(m_agent);
    if (!agent)
        throw FormulaFailure{problemAt(node, Problem::UnknownAgent, node.agent.value_or(QString()))};
    const Description* property = FormulaDirectory::propertyNamed(*agent, node.text);
    if (!property)
        throw FormulaFailure{problemAt(node, Problem::UnknownName, node.text, agent->name)};
    std::vector<qint64> agents{agent->id};
    if (property->formula) {
        if (m_planning.underway.contains(property->id))
            throw FormulaFailure{problemAt(node, Problem::Cycle, property->name)};
        const FormulaPlan plan = planOfKept(m_planning, *property);
        if (plan.problem && plan.problem->kind == Problem::Cycle)
            throw FormulaFailure{problemAt(node, Problem::Cycle, property->name)};
        if (plan.problem)
            throw FormulaFailure{problemAt(node, Problem::Broken, property->name, sentenceOf(*plan.problem))};
        agents = plan.program->agents;
    }
    for (const qint64 each : agents)
        if (std::find(m_program.agents.begin(), m_program.agents.end(), each) == m_program.agents.end())
            m_program.agents.push_back(each);
    return m_arithmetic.input({agent->id, property->id}, property->archivedUnit);
}

Quantity Compiler::number(const FormulaNode& node)
{
    return m_arithmetic.number(node.number, node.text.isEmpty() ? QString() : knownUnit(node));
}

double Compiler::span(const FormulaNode& function, const FormulaNode& argument)
{
    const auto refuse = [&] {
        throw FormulaFailure{problemAt(argument, Problem::NotASpan, QString::fromUtf8(function.function->signature))};
    };
    const QString second = QStringLiteral("s");
    if (argument.kind != Kind::Number || argument.text.isEmpty())
        refuse();
    const QString unit = knownUnit(argument);
    const double seconds = Units::shared()->convert(argument.number, unit, second);
    if (!Units::shared()->areCompatible(unit, second) || !(seconds > 0) || !std::isfinite(seconds))
        refuse();
    return seconds;
}

/// Whether the argument at this position is a span of time.
bool takesSpan(const FormulaFunction& function, std::size_t position)
{
    using enum FormulaOperation;
    return position == 1 &&
           (function.operation == Hold || function.operation == Earlier || function.operation == Window);
}

Quantity Compiler::function(const FormulaNode& node)
{
    const FormulaFunction& called = *node.function;
    if (called.operation == FormulaOperation::PlainValue) {
        const FormulaNode& unit = node.arguments.back();
        return m_arithmetic.plainValue(compile(node.arguments.front()), knownUnit(unit));
    }
    double seconds = called.operation == FormulaOperation::Hold ? m_program.longestGap : 0;
    std::vector<Quantity> arguments;
    for (std::size_t i = 0; i < node.arguments.size(); ++i)
        if (takesSpan(called, i))
            seconds = span(node, node.arguments[i]);
        else
            arguments.push_back(compile(node.arguments[i]));
    constexpr double kDay = 86400;
    if (called.span == WindowSpan::Slot && seconds > kDay)
        throw FormulaFailure{problemAt(node.arguments.back(), Problem::NotASpan, QString::fromUtf8(called.signature))};
    return m_arithmetic.call(called, arguments, seconds);
}

FormulaPlan planOf(Planning& planning, qint64 agent, const PropertyFormula& formula, const std::optional<QString>& unit)
{
    const ParsedFormula parsed = parseFormula(formula.text);
    if (parsed.problem)
        return {nullptr, parsed.problem};
    const auto program = std::make_shared<FormulaProgram>();
    program->join = formula.join;
    program->longestGap = formula.longestGap;
    Compiler compiler(planning, agent, *program);
    try {
        const Quantity value = compiler.compile(*parsed.tree);
        if (program->inputs.empty())
            return {nullptr, problemAt(*parsed.tree, Problem::NoProperty, {})};
        program->unit = compiler.result(value, unit).unit;
    } catch (FormulaFailure& failure) {
        if (failure.problem.position < 0) {
            failure.problem.position = parsed.tree->position;
            failure.problem.length = parsed.tree->length;
        }
        return {nullptr, failure.problem};
    }
    program->reach = reachOf(*program);
    return {program, std::nullopt};
}

/// The properties that its formula names and that are there.
std::vector<qint64> namedBy(const FormulaDirectory& directory, const Description& property)
{
    std::vector<qint64> named;
    if (!property.formula)
        return named;
    const FormulaDirectory::Agent* home = directory.agentOf(property.id);
    for (const FormulaName& name : namesIn(property.formula->text)) {
        const FormulaDirectory::Agent* agent = name.agent ? directory.agentNamed(*name.agent) : home;
        if (const Description* found = agent ? FormulaDirectory::propertyNamed(*agent, name.property) : nullptr)
            named.push_back(found->id);
    }
    return named;
}

}  // namespace

FormulaPlan planFormula(const FormulaDirectory& directory, qint64 agent, const PropertyFormula& formula,
                        qint64 property)
{
    Planning planning{directory, {property}, {}};
    std::optional<QString> unit;
    if (!formula.unit.trimmed().isEmpty())
        unit = Units::shared()->normalise(formula.unit).value_or(formula.unit.trimmed());
    return planOf(planning, agent, formula, unit);
}

FormulaPlan planProperty(const FormulaDirectory& directory, qint64 property)
{
    Planning planning{directory, {}, {}};
    const Description* kept = directory.propertyWithId(property);
    if (!kept || !kept->formula)
        return {nullptr, FormulaProblem{Problem::Empty}};
    return planOfKept(planning, *kept);
}

std::vector<PropertyFormula> formulasBeneath(const FormulaDirectory& directory, qint64 property)
{
    std::vector<qint64> found{property};
    std::vector<PropertyFormula> formulas;
    for (std::size_t i = 0; i < found.size(); ++i) {
        const Description* each = directory.propertyWithId(found[i]);
        if (!each || !each->formula)
            continue;
        formulas.push_back(*each->formula);
        for (const qint64 named : namedBy(directory, *each))
            if (std::find(found.begin(), found.end(), named) == found.end())
                found.push_back(named);
    }
    return formulas;
}

std::vector<qint64> dependentsOf(const FormulaDirectory& directory, qint64 property)
{
    std::vector<qint64> found{property};
    const auto isFound = [&found](qint64 id) { return std::find(found.begin(), found.end(), id) != found.end(); };
    for (bool isMore = true; isMore;) {
        isMore = false;
        for (const FormulaDirectory::Agent& agent : directory.agents)
            for (const Description& each : agent.properties) {
                const std::vector<qint64> named = namedBy(directory, each);
                if (isFound(each.id) || std::none_of(named.begin(), named.end(), isFound))
                    continue;
                found.push_back(each.id);
                isMore = true;
            }
    }
    found.erase(found.begin());
    return found;
}

}  // namespace plotix
