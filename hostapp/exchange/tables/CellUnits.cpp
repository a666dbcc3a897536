#include "hostapp/exchange/tables/CellUnits.h"

#include "hostapp/core/Units.h"
#include "hostapp/exchange/DecodedText.h"

#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kLongestUnit = 16;  // bytes
constexpr std::size_t kMostUnits = 200;   // different ones in a column; more are no units

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// A divisor leaves fewer errors of rounding than its inverse: 950 W are 0.95 kW.
bool isWhole(double number)
{
    return number > 1 && number < 1e15 && std::floor(number) == number;
}

}  // namespace

std::optional<UnitConversion> UnitConversion::between(const QString& from, const QString& to)
{
    const std::shared_ptr<const Units> units = Units::shared();
    UnitConversion conversion;
    if (from == to)
        return conversion;
    const QStringList angles = units->compatibleUnits(QStringLiteral("°"));
    if (!units->areCompatible(from, to) || angles.contains(from) != angles.contains(to))
        return {};
    const Units::Map map = units->mapBetween(from, to);
    const double back = units->mapBetween(to, from).scale;
    if (!map.isLinear) {
        conversion.m_from = from;
        conversion.m_to = to;
    } else if (map.offset == 0 && isWhole(back)) {
        conversion.m_divisor = back;
    } else {
        conversion.m_factor = map.scale;
        conversion.m_offset = map.offset;
    }
    return conversion;
}

double UnitConversion::operator()(double value) const
{
    return m_from.isEmpty() ? value * m_factor / m_divisor + m_offset : Units::shared()->convert(value, m_from, m_to);
}

bool isUnitOfCell(std::string_view text)
{
    // Signs and most digits stand in times and in texts, not in units: "-01-14T21", "Jan 2024".
    constexpr std::string_view kBegins = "+-.:,;/()*^_#&'\"=0123456789";
    constexpr std::string_view kNever = ":;,_#&='0145678";
    if (text.empty() || text.size() > kLongestUnit || kBegins.find(text.front()) != std::string_view::npos ||
        text.find_first_of(kNever) != std::string_view::npos)
        return false;
    return Units::shared()->normalise(decodedText(text)).has_value();
}

CellUnits::CellUnits(const QString& unit, const std::string& usual) : m_unit(unit), m_usual(usual)
{
    const QString known = Units::shared()->normalise(decodedText(usual)).value_or(QString());
    if (m_unit.isEmpty())
        m_unit = known;
    m_agree = known.isEmpty() || UnitConversion::between(known, m_unit);
    m_takesBare = known.isEmpty() || known == m_unit;
    if (!m_usual.empty() && known.isEmpty())
        m_conversions.emplace(m_usual, UnitConversion());  // money
}

NumberWithUnit CellUnits::split(std::string_view field)
{
    if ((m_unit.isEmpty() && m_usual.empty()) || field.empty() || isDigit(field.back()))
        return {field, {}};
    const NumberWithUnit split = splitUnitOff(field);
    return !split.unit.empty() && conversionOf(split.unit) ? split : NumberWithUnit{field, {}};
}

bool CellUnits::convert(std::string_view unit, double& value)
{
    if (unit.empty())
        return m_takesBare;
    value = (*conversionOf(unit))(value);
    return true;
}

const std::optional<UnitConversion>& CellUnits::conversionOf(std::string_view unit)
{
    static const std::optional<UnitConversion> none;
    if (const auto found = m_conversions.find(unit); found != m_conversions.end())
        return found->second;
    if (m_conversions.size() >= kMostUnits || !isUnitOfCell(unit))
        return none;
    const QString known = Units::shared()->normalise(decodedText(unit)).value();
    return m_conversions.emplace(unit, UnitConversion::between(known, m_unit)).first->second;
}

}  // namespace plotix
