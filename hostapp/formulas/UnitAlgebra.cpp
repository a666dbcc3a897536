#include "hostapp/formulas/UnitAlgebra.h"

#include "hostapp/core/UnitTable.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace plotix {

namespace {

struct TimeUnit {
    const char* text;
    const char* expression;
    double seconds;
};
constexpr std::array<TimeUnit, 4> kTimeUnits{
    {{"h", "hour", 3600}, {"s", "s", 1}, {"min", "min", 60}, {"d", "day", 86400}}};

const Units& units()
{
    return *Units::shared();
}

bool isKnown(const QString& unit)
{
    return units().normalise(unit).has_value();
}

/// In UDUNITS-2's language, which knows other texts for what people write.
QString expressionOf(const QString& unit)
{
    const QString text = units().normalise(unit).value_or(unit);
    for (const UnitRow& row : unitTable())
        if (text == QString::fromUtf8(row.text))
            return QString::fromUtf8(row.expression);
    return text;
}

QString bracketed(const QString& expression, int power)
{
    const QString brackets = QLatin1Char('(') + expression + QLatin1Char(')');
    return power == 1 ? brackets : brackets + QLatin1Char('^') + QString::number(power);
}

bool isOne(double factor)
{
    return std::abs(factor - 1) < 1e-12;
}

/// By the table's name for exactly this unit; nothing when it has none.
std::optional<QString> nameOf(const QString& expression)
{
    for (const UnitRow& row : unitTable()) {
        const QString text = QString::fromUtf8(row.text);
        if (!units().areCompatible(expression, text))
            continue;
        const KTVUnitModel::Map map = units().mapBetween(expression, text);
        if (map.isLinear && map.offset == 0 && isOne(map.scale))
            return text;
    }
    return std::nullopt;
}

QString powerText(const QString& unit, int power)
{
    const bool isCompound = unit.contains(QLatin1Char('/')) || unit.contains(QChar(0x00B7));
    const QString base = isCompound && power != 1 ? bracketed(unit, 1) : unit;
    if (power == 1)
        return base;
    if (power == 2)
        return base + QChar(0x00B2);
    return power == 3 ? base + QChar(0x00B3) : base + QLatin1Char('^') + QString::number(power);
}

QString productText(const QString& one, const QString& other, int power)
{
    const QString factor = powerText(other, std::abs(power));
    if (power > 0)
        return one + QChar(0x00B7) + factor;
    const bool isCompound = other.contains(QLatin1Char('/')) || other.contains(QChar(0x00B7));
    return (one.isEmpty() ? QStringLiteral("1") : one) + QLatin1Char('/') +
           (isCompound && power == -1 ? bracketed(other, 1) : factor);
}

/// The text where Units takes it for the same unit, else what it certainly understands.
QString understood(const QString& text, const QString& expression)
{
    const KTVUnitModel::Map map = units().mapBetween(expression, text);
    return units().areCompatible(expression, text) && map.isIdentity ? text : expression;
}

}  // namespace

bool hasArbitraryZero(const QString& unit)
{
    static const QString kelvin = QStringLiteral("K");
    return units().areCompatible(unit, kelvin) && units().mapBetween(unit, kelvin).offset != 0;
}

std::optional<double> plainNumberOf(const QString& unit)
{
    static const QString percent = QStringLiteral("%");
    if (unit.isEmpty())
        return 1;
    if (!units().areCompatible(unit, percent))
        return std::nullopt;
    const double hundredths = units().mapBetween(unit, percent).scale;
    return hundredths / 100;
}

std::optional<KTVUnitModel::Map> conversionBetween(const QString& from, const QString& to)
{
    if (from == to)
        return KTVUnitModel::Map{};
    if (from.isEmpty() || to.isEmpty()) {
        const std::optional<double> source = plainNumberOf(from), target = plainNumberOf(to);
        if (!source || !target)
            return std::nullopt;
        KTVUnitModel::Map map;
        map.scale = from.isEmpty() ? std::round(1 / *target * 1e12) / 1e12 : *source;
        map.isIdentity = map.scale == 1;
        return map;
    }
    if (!units().areCompatible(from, to))
        return std::nullopt;
    const KTVUnitModel::Map map = units().mapBetween(from, to);
    return map.isLinear ? std::optional(map) : std::nullopt;
}

ScaledUnit productOf(const QString& one, const QString& other, int power)
{
    // Shares and angles are numbers: 50 % of 8 kW is 4 kW.
    const std::optional<double> left = plainNumberOf(one), right = plainNumberOf(other);
    if (right)
        return {left ? QString() : one, left.value_or(1) * std::pow(*right, power)};
    if (left && power == 1)
        return {other, *left};
    if (!left && one == other && power == -1)
        return {QString(), 1};
    if ((!left && !isKnown(one)) || !isKnown(other))
        return {productText(left ? QString() : one, other, power), left.value_or(1)};
    const QString first = left ? QStringLiteral("1") : bracketed(expressionOf(one), 1);
    const QString expression = first + QLatin1Char('.') + bracketed(expressionOf(other), power);
    if (const std::optional<double> number = plainNumberOf(expression))
        return {QString(), *number * left.value_or(1)};
    const QString text =
        nameOf(expression).value_or(understood(productText(left ? QString() : one, other, power), expression));
    return {text, left.value_or(1)};
}

ScaledUnit powerOf(const QString& unit, int power)
{
    if (const std::optional<double> number = plainNumberOf(unit))
        return {QString(), std::pow(*number, power)};
    if (power == 0)
        return {QString(), 1};
    if (power == 1)
        return {unit, 1};
    if (power < 0)
        return productOf(QString(), unit, power);
    if (!isKnown(unit))
        return {powerText(unit, power), 1};
    const QString expression = bracketed(expressionOf(unit), power);
    return {nameOf(expression).value_or(understood(powerText(unit, power), expression)), 1};
}

std::optional<ScaledUnit> rootOf(const QString& unit)
{
    if (const std::optional<double> number = plainNumberOf(unit))
        return ScaledUnit{QString(), std::sqrt(*number)};
    std::optional<ScaledUnit> root;
    for (const UnitRow& row : unitTable()) {
        const QString text = QString::fromUtf8(row.text);
        const QString square = bracketed(QString::fromUtf8(row.expression), 2);
        if (hasArbitraryZero(text) || plainNumberOf(text) || !units().areCompatible(unit, square))
            continue;
        const double factor = std::sqrt(units().mapBetween(unit, square).scale);
        if (!root || isOne(factor))
            root = ScaledUnit{text, factor};
    }
    return root;
}

ScaledUnit integralOf(const QString& unit)
{
    const KTVUnitModel::Integral integral = units().integralOf(unit);
    return {integral.symbol, integral.scale};
}

ScaledUnit derivativeOf(const QString& unit)
{
    if (const std::optional<double> number = plainNumberOf(unit); number && unit.isEmpty())
        return {QStringLiteral("1/h"), kTimeUnits.front().seconds};
    if (isKnown(unit) && !plainNumberOf(unit))
        for (const TimeUnit& time : kTimeUnits) {
            const QString expression = bracketed(expressionOf(unit), 1) + QStringLiteral(".(") +
                                       QString::fromUtf8(time.expression) + QStringLiteral(")^-1");
            if (const std::optional<QString> name = nameOf(expression))
                return {*name, time.seconds};
        }
    const QString text = productText(unit, QStringLiteral("h"), -1);
    return {text, kTimeUnits.front().seconds};
}

}  // namespace plotix
