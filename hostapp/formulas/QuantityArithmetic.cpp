#include "hostapp/formulas/QuantityArithmetic.h"

#include "hostapp/formulas/UnitAlgebra.h"

#include <algorithm>
#include <cmath>

/// Arithmetic: numbers, sums, products, comparisons. Functions are in QuantityArithmetic_Functions.cpp.
namespace plotix {

namespace {

using Problem = FormulaProblem::Kind;

constexpr double kNearlyNone = 1e-9;

[[noreturn]] void fail(Problem kind, const QString& one = {}, const QString& other = {})
{
    throw FormulaFailure{{kind, -1, 0, one, other}};
}

double applied(FormulaStep::Do what, double one, double other)
{
    switch (what) {
    case FormulaStep::Do::Add: return one + other;
    case FormulaStep::Do::Subtract: return one - other;
    case FormulaStep::Do::Multiply: return one * other;
    case FormulaStep::Do::Divide: return one / other;
    default: return std::pow(one, other);
    }
}

/// Two numbers written in the formula are one.
std::optional<Quantity> folded(FormulaStep::Do what, const Quantity& one, const Quantity& other)
{
    if (!one.isWritten || !other.isWritten)
        return std::nullopt;
    Quantity number;
    number.literal = applied(what, *one.literal, *other.literal);
    number.isWritten = true;
    return number;
}

}  // namespace

int QuantityArithmetic::add(const FormulaStep& step)
{
    m_program.steps.push_back(step);
    return static_cast<int>(m_program.steps.size()) - 1;
}

int QuantityArithmetic::stepOf(const Quantity& value)
{
    return value.step >= 0 ? value.step : add({.what = Do::Constant, .number = value.literal.value_or(0)});
}

Quantity QuantityArithmetic::input(const FormulaInput& input, const QString& unit)
{
    auto& inputs = m_program.inputs;
    const auto known = std::find(inputs.begin(), inputs.end(), input);
    const auto position = static_cast<int>(known - inputs.begin());
    if (known == inputs.end())
        inputs.push_back(input);
    Quantity value;
    value.unit = unit;
    value.step = add({.what = Do::Input, .input = position});
    return value;
}

Quantity QuantityArithmetic::number(double number, const QString& unit)
{
    Quantity value;
    value.literal = number;
    value.unit = unit;
    value.isWritten = unit.isEmpty();
    return value;
}

Quantity QuantityArithmetic::linear(const Quantity& value, double scale, double offset, const QString& unit)
{
    Quantity result = value;
    result.unit = unit;
    if (scale == 1 && offset == 0)
        return result;
    if (value.literal)
        result.literal = *value.literal * scale + offset;
    else
        result.step = add({.what = Do::Linear, .arguments = {value.step, -1, -1}, .number = scale, .offset = offset});
    return result;
}

Quantity QuantityArithmetic::inUnit(const Quantity& value, const QString& unit, bool asDifference)
{
    if (value.unit == unit)
        return value;
    const std::optional<KTVUnitModel::Map> map = conversionBetween(value.unit, unit);
    if (!map)
        fail(Problem::NoFit, unit, value.unit);
    const double points = hasArbitraryZero(value.unit) ? value.points : 1;
    return linear(value, map->scale, asDifference ? 0 : map->offset * points, unit);
}

Quantity QuantityArithmetic::pair(FormulaStep step, const Quantity& one, const Quantity& other)
{
    step.arguments = {stepOf(one), stepOf(other), -1};
    Quantity result;
    result.step = add(step);
    result.unit = one.unit;
    result.points = one.points;
    result.isDifference = one.isDifference || other.isDifference;
    return result;
}

/// Both in the unit of the first, or of the one that has any: to be compared, or one chosen of them.
std::pair<Quantity, Quantity> QuantityArithmetic::alike(const Quantity& one, const Quantity& other)
{
    Quantity left = one, right = other;
    if (left.isWritten)
        left.unit = right.unit;
    else if (right.isWritten)
        right.unit = left.unit;
    if (left.unit != right.unit && hasArbitraryZero(right.unit) && !hasArbitraryZero(left.unit))
        left = inUnit(left, right.unit, left.isDifference);
    else
        right = inUnit(right, left.unit, right.isDifference);
    return {left, right};
}

Quantity QuantityArithmetic::scaled(const Quantity& value, double factor)
{
    Quantity result = linear(value, factor, 0, value.unit);
    result.points = value.points * factor;
    return hasArbitraryZero(value.unit) ? asDifference(result) : result;
}

/// What is the sum of no temperature is a difference, and has a unit whose zero means nothing.
Quantity QuantityArithmetic::asDifference(const Quantity& value)
{
    if (!hasArbitraryZero(value.unit) || std::abs(value.points) > kNearlyNone)
        return value;
    Quantity result = inUnit(value, QStringLiteral("K"), true);
    result.points = 1;
    result.isDifference = true;
    return result;
}

Quantity QuantityArithmetic::negative(const Quantity& value)
{
    if (value.isWritten)
        return number(-*value.literal, {});
    return scaled(value, -1);
}

Quantity QuantityArithmetic::sum(const Quantity& one, const Quantity& other, FormulaStep::Do what)
{
    if (const std::optional<Quantity> number = folded(what, one, other))
        return *number;
    const double sign = what == Do::Subtract ? -1 : 1;
    Quantity left = one, right = other;
    const bool leftIsPoint = !left.isWritten && hasArbitraryZero(left.unit);
    const bool rightIsPoint = !right.isWritten && hasArbitraryZero(right.unit);
    if (left.isWritten)
        left.unit = right.unit;
    if (right.isWritten)
        right.unit = left.unit;
    if (rightIsPoint && !leftIsPoint)
        left = inUnit(left, right.unit, true);
    else
        right = inUnit(right, left.unit, leftIsPoint && !rightIsPoint);
    Quantity result = pair({.what = what}, left, right);
    if (leftIsPoint || rightIsPoint) {
        result.points = (leftIsPoint ? left.points : 0) + sign * (rightIsPoint ? right.points : 0);
        result.isDifference = false;
        return asDifference(result);
    }
    return result;
}

Quantity QuantityArithmetic::requireFactor(const Quantity& value) const
{
    if (hasArbitraryZero(value.unit))
        fail(Problem::TemperatureInProduct, value.unit);
    return value;
}

Quantity QuantityArithmetic::product(const Quantity& one, const Quantity& other)
{
    if (const std::optional<Quantity> number = folded(Do::Multiply, one, other))
        return *number;
    if (other.isWritten)
        return scaled(one, *other.literal);
    if (one.isWritten)
        return scaled(other, *one.literal);
    const ScaledUnit unit = productOf(requireFactor(one).unit, requireFactor(other).unit);
    Quantity result = pair({.what = Do::Multiply}, one, other);
    result.isDifference = false;
    return linear(result, unit.factor, 0, unit.unit);
}

Quantity QuantityArithmetic::quotient(const Quantity& one, const Quantity& other)
{
    if (const std::optional<Quantity> number = folded(Do::Divide, one, other))
        return *number;
    if (other.isWritten && *other.literal != 0)
        return scaled(one, 1 / *other.literal);
    const ScaledUnit unit = productOf(requireFactor(one).unit, requireFactor(other).unit, -1);
    Quantity result = pair({.what = Do::Divide}, one, other);
    result.isDifference = false;
    return linear(result, unit.factor, 0, unit.unit);
}

Quantity QuantityArithmetic::power(const Quantity& base, const Quantity& exponent)
{
    if (const std::optional<Quantity> number = folded(Do::Power, base, exponent))
        return *number;
    const std::optional<double> exponentFactor = plainNumberOf(exponent.unit);
    if (!exponentFactor)
        fail(Problem::NotPlain, QStringLiteral("^"), exponent.unit);
    const Quantity plainExponent = linear(exponent, *exponentFactor, 0, {});
    if (const std::optional<double> factor = plainNumberOf(requireFactor(base).unit))
        return pair({.what = Do::Power}, linear(base, *factor, 0, {}), plainExponent);
    constexpr double kMost = 9;
    const double whole = plainExponent.literal.value_or(0.5);
    if (whole != std::round(whole) || std::abs(whole) > kMost)
        fail(Problem::PowerNotWhole);
    const ScaledUnit unit = powerOf(base.unit, static_cast<int>(whole));
    Quantity result = pair({.what = Do::Power}, base, plainExponent);
    result.isDifference = false;
    return linear(result, unit.factor, 0, unit.unit);
}

Quantity QuantityArithmetic::comparison(const Quantity& one, const Quantity& other, FormulaStep::Do what)
{
    const auto [left, right] = alike(one, other);
    Quantity result = pair({.what = what}, left, right);
    result.unit.clear();
    result.isDifference = false;
    return result;
}

Quantity QuantityArithmetic::plainValue(const Quantity& value, const QString& unit)
{
    if (hasArbitraryZero(value.unit) && std::abs(value.points - 1) > kNearlyNone)
        fail(Problem::SumOfTemperatures, value.unit);
    Quantity result = inUnit(value, unit, value.isDifference);
    result.unit.clear();
    result.isDifference = false;
    result.points = 1;
    return result;
}

Quantity QuantityArithmetic::result(const Quantity& value, const std::optional<QString>& unit)
{
    Quantity result = value;
    if (hasArbitraryZero(value.unit) && std::abs(value.points - 1) > kNearlyNone)
        fail(Problem::SumOfTemperatures, value.unit);
    if (unit && *unit != value.unit) {
        if (value.isDifference && hasArbitraryZero(*unit))
            fail(Problem::DifferenceAsTemperature, {}, *unit);
        // A number without a unit may be given any: the formula is how the user says what it counts.
        if (value.unit.isEmpty() && !plainNumberOf(*unit))
            result.unit = *unit;
        else if (!conversionBetween(value.unit, *unit))
            fail(Problem::ResultDoesNotFit, value.unit, *unit);
        else
            result = inUnit(value, *unit, false);
    }
    // The result is the last step, also where it is an earlier one's or a number.
    result.step = stepOf(result);
    if (result.step + 1 != static_cast<int>(m_program.steps.size()))
        result.step = add({.what = Do::Linear, .arguments = {result.step, -1, -1}, .number = 1});
    return result;
}

}  // namespace plotix
