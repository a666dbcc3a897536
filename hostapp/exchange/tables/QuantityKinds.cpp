#include "hostapp/exchange/tables/QuantityKinds.h"

#include "hostapp/core/Units.h"
#include "hostapp/exchange/DecodedText.h"
#include "hostapp/exchange/tables/TableSample.h"

#include <algorithm>

namespace plotix {

void QuantityKinds::learn(const std::string& name, std::string_view unit)
{
    const auto [found, isNew] = m_names.try_emplace(name);
    Name& entry = found->second;
    if (isNew) {
        entry.quantities.push_back(m_quantities.size());
        entry.readings.push_back({{}, {}, {m_quantities.size()}});
        m_quantities.push_back({name, {}, {}});
    }
    const auto isThis = [unit](const Reading& reading) { return reading.text == unit; };
    if (std::any_of(entry.readings.begin(), entry.readings.end(), isThis))
        return;
    const std::string text(unit);
    const QString known = Units::shared()->normalise(decodedText(text).trimmed()).value_or(QString());
    const bool isUnit = !known.isEmpty() || kindOf(text) == CellKind::Text;
    const std::size_t place = isUnit ? placeOf(entry, name, text, known) : entry.quantities.front();
    entry.readings.push_back({text, isUnit ? known : QString(), {place}});
}

/// The quantity of that name that the unit belongs to; a new one where it belongs to none.
std::size_t QuantityKinds::placeOf(Name& entry, const std::string& name, const std::string& text, const QString& unit)
{
    for (const std::size_t place : entry.quantities) {
        Quantity& quantity = m_quantities[place];
        if (quantity.text.empty()) {
            quantity.text = text;
            quantity.unit = unit;
            return place;
        }
        if (!unit.isEmpty() && !quantity.unit.isEmpty() && UnitConversion::between(unit, quantity.unit))
            return place;
    }
    m_quantities[entry.quantities.front()].isOneOfMore = true;
    entry.quantities.push_back(m_quantities.size());
    m_quantities.push_back({name, text, unit, true});
    return entry.quantities.back();
}

bool QuantityKinds::setUnit(std::size_t index, const QString& unit)
{
    const Quantity& quantity = m_quantities[index];
    if (quantity.unit.isEmpty())
        return true;  // bare numbers are in the unit that is said
    for (Reading& reading : m_names.at(quantity.name).readings) {
        if (reading.place.quantity != index)
            continue;
        const auto conversion = UnitConversion::between(reading.unit.isEmpty() ? quantity.unit : reading.unit,
                                                        unit.isEmpty() ? quantity.unit : unit);
        if (!conversion)
            return false;
        reading.place.conversion = *conversion;
    }
    return true;
}

const QuantityKinds::Place* QuantityKinds::find(const std::string& name, std::string_view unit) const
{
    const auto found = m_names.find(name);
    if (found == m_names.end())
        return nullptr;
    for (const Reading& reading : found->second.readings)
        if (reading.text == unit)
            return &reading.place;
    return nullptr;
}

}  // namespace plotix
