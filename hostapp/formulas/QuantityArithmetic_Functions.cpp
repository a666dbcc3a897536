#include "hostapp/formulas/QuantityArithmetic.h"
#include "hostapp/formulas/UnitAlgebra.h"

#include <cmath>

/// Functions: which units they take, and which they give.
namespace plotix {

namespace {

using Problem = FormulaProblem::Kind;
using enum FormulaOperation;

[[noreturn]] void fail(Problem kind, const QString& one = {}, const QString& other = {})
{
    throw FormulaFailure{{kind, -1, 0, one, other}};
}

constexpr double kNearlyNone = 1e-9;

}  // namespace

Quantity QuantityArithmetic::applied(const FormulaFunction& function, const Quantity& value, double seconds)
{
    Quantity result = value;
    result.literal.reset();
    result.isWritten = false;
    result.step = add({.what = Do::Call,
                       .operation = function.operation,
                       .span = function.span,
                       .aggregate = function.aggregate,
                       .arguments = {stepOf(value), -1, -1},
                       .number = seconds});
    return result;
}

Quantity QuantityArithmetic::plain(const FormulaFunction& function, const Quantity& value)
{
    const std::optional<double> factor = plainNumberOf(value.unit);
    if (!factor)
        fail(Problem::NotPlain, QString::fromUtf8(function.name), value.unit);
    return applied(function, linear(value, *factor, 0, {}));
}

Quantity QuantityArithmetic::window(const FormulaFunction& function, const Quantity& value, double seconds)
{
    FormulaFunction row = function;
    if (row.aggregate == WindowAggregate::Sum || row.aggregate == WindowAggregate::Integral)
        requireFactor(value);
    if (row.aggregate != WindowAggregate::Integral)
        return applied(row, value, seconds);
    if (row.span == WindowSpan::Everything && seconds > 0)
        row.span = WindowSpan::Trailing;
    const ScaledUnit unit = integralOf(value.unit);
    Quantity result = linear(applied(row, value, seconds), unit.factor, 0, unit.unit);
    result.isDifference = false;
    return result;
}

/// min, max and if: values of one kind, one of which is taken.
Quantity QuantityArithmetic::choice(const FormulaFunction& function, const std::vector<Quantity>& arguments)
{
    FormulaStep step{.what = Do::Call, .operation = function.operation};
    if (function.operation == Choice) {
        const Quantity& condition = arguments[0];
        if (!plainNumberOf(condition.unit))
            fail(Problem::NotPlain, QString::fromUtf8(function.name), condition.unit);
        const auto [yes, no] = alike(arguments[1], arguments[2]);
        if (hasArbitraryZero(yes.unit) && std::abs(yes.points - no.points) > kNearlyNone)
            fail(Problem::SumOfTemperatures, yes.unit);
        Quantity result = pair(step, yes, no);
        FormulaStep& made = m_program.steps.back();
        const std::array<int, 3> branches = made.arguments;
        m_program.steps.pop_back();
        step.arguments = {stepOf(condition), branches[0], branches[1]};
        result.step = add(step);
        return result;
    }
    Quantity result = arguments.front();
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const auto [one, other] = alike(result, arguments[i]);
        if (hasArbitraryZero(one.unit) && std::abs(one.points - other.points) > kNearlyNone)
            fail(Problem::SumOfTemperatures, one.unit);
        result = pair(step, one, other);
    }
    return result;
}

Quantity QuantityArithmetic::dewPoint(const FormulaFunction& function, const std::vector<Quantity>& arguments)
{
    Quantity temperature = arguments[0], humidity = arguments[1];
    const QString celsius = QStringLiteral("°C"), percent = QStringLiteral("%");
    if (temperature.isWritten)
        temperature.unit = celsius;
    // A humidity without a unit is in percent, as nearly every logger has it.
    if (humidity.unit.isEmpty())
        humidity.unit = percent;
    if (temperature.isDifference || std::abs(temperature.points - 1) > kNearlyNone)
        fail(Problem::DifferenceAsTemperature, {}, celsius);
    Quantity result = pair({.what = Do::Call, .operation = function.operation}, inUnit(temperature, celsius, false),
                           inUnit(humidity, percent, false));
    result.unit = celsius;
    return result;
}

Quantity QuantityArithmetic::call(const FormulaFunction& function, const std::vector<Quantity>& arguments,
                                  double seconds)
{
    const Quantity& value = arguments.front();
    switch (function.operation) {
    case Sine:
    case Cosine:
    case Tangent:
    case Exponential:
    case Logarithm:
    case Logarithm10: return plain(function, value);
    case Least:
    case Greatest:
    case Choice: return choice(function, arguments);
    case DewPoint: return dewPoint(function, arguments);
    case Window: return window(function, value, seconds);
    case SquareRoot: {
        const std::optional<ScaledUnit> unit = rootOf(requireFactor(value).unit);
        if (!unit)
            fail(Problem::RootOfUnit, value.unit);
        return linear(applied(function, value), unit->factor, 0, unit->unit);
    }
    case Derivative: {
        const Quantity base = hasArbitraryZero(value.unit) ? inUnit(value, QStringLiteral("K"), true) : value;
        const ScaledUnit unit = derivativeOf(base.unit);
        Quantity result = linear(applied(function, base), unit.factor, 0, unit.unit);
        result.points = 1;
        result.isDifference = false;
        return result;
    }
    default: break;
    }
    if (hasArbitraryZero(value.unit) && function.operation != Hold && function.operation != Earlier &&
        std::abs(value.points - 1) > kNearlyNone)
        fail(Problem::SumOfTemperatures, value.unit);
    return applied(function, value, seconds);
}

}  // namespace plotix
