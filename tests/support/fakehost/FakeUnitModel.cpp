#include "tests/support/fakehost/FakeUnitModel.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace fakehost {
namespace {

struct LinearUnit {
    const char* text;
    const char* symbol;
    const char* quantity;
    double scale;  // base value = value × scale + offset
    double offset;
};

constexpr std::array kLinearUnits{
    LinearUnit{"degC", "°C", "temperature", 1, 273.15},
    LinearUnit{"degF", "°F", "temperature", 5.0 / 9, 459.67 * 5 / 9},
    LinearUnit{"K", "K", "temperature", 1, 0},
    LinearUnit{"hPa", "hPa", "pressure", 1, 0},
    LinearUnit{"mbar", "mbar", "pressure", 1, 0},
    LinearUnit{"Pa", "Pa", "pressure", 0.01, 0},
};

const LinearUnit* find(const QString& text)
{
    const auto found = std::find_if(kLinearUnits.begin(), kLinearUnits.end(),
                                    [&](const LinearUnit& unit) { return text == QLatin1String(unit.text); });
    return found == kLinearUnits.end() ? nullptr : &*found;
}

bool isLogarithmicPair(const QString& fromUnit, const QString& toUnit)
{
    return (fromUnit == u"bel" && toUnit == u"ratio") || (fromUnit == u"ratio" && toUnit == u"bel");
}

}  // namespace

KTVUnitModel::Map FakeUnitModel::mapBetween(const QString& fromUnit, const QString& toUnit) const
{
    if (isLogarithmicPair(fromUnit, toUnit))
        return {.isIdentity = false, .isLinear = false};
    const LinearUnit* from = find(fromUnit);
    const LinearUnit* to = find(toUnit);
    if (!from || !to || from == to || QLatin1String(from->quantity) != QLatin1String(to->quantity))
        return {};
    const Map map{.scale = from->scale / to->scale, .offset = (from->offset - to->offset) / to->scale};
    const bool identity = map.scale == 1 && map.offset == 0;
    return {.isIdentity = identity, .isLinear = true, .scale = map.scale, .offset = map.offset};
}

void FakeUnitModel::convertValues(const QString& fromUnit, const QString& toUnit, const double* from, double* to,
                                  std::size_t count) const
{
    const Map map = mapBetween(fromUnit, toUnit);
    std::transform(from, from + count, to, [&](double value) {
        if (!map.isLinear)
            return fromUnit == u"bel" ? std::pow(10.0, value) : std::log10(value);
        return map.isIdentity ? value : value * map.scale + map.offset;
    });
}

QString FakeUnitModel::symbolForUnit(const QString& unit) const
{
    const LinearUnit* found = find(unit);
    return found ? QString::fromUtf8(found->symbol) : unit;
}

double FakeUnitModel::convert(double value, const QString& fromUnit, const QString& toUnit) const
{
    double converted = 0;
    convertValues(fromUnit, toUnit, &value, &converted, 1);
    return converted;
}

}  // namespace fakehost
