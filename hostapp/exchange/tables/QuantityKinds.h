#pragma once

#include "hostapp/exchange/tables/CellUnits.h"

#include <QtCore/QStringList>

#include <string>
#include <unordered_map>
#include <vector>

namespace plotix {

/// What rows that each name their quantity measure: a name in units that can be converted into each other is one
/// quantity, in the first of them; one name in °C and in % is two. Learnt from all rows, then asked for each.
/// *Owned* by a reader; one thread.
class QuantityKinds {
public:
    struct Quantity {
        std::string name;          ///< as in the file
        std::string text;          ///< its first unit, as in the file; empty: none
        QString unit;              ///< the same; empty: none, or one that is not known
        bool isOneOfMore = false;  ///< of the same name

        /// No other quantity has it.
        std::string key() const { return isOneOfMore ? name + '\n' + text : name; }
    };

    /// A row's, from its name and what stands there as its unit.
    void learn(const std::string& name, std::string_view unit);
    const std::vector<Quantity>& quantities() const { return m_quantities; }

    /// The unit in which `find` answers a quantity; its own where none is said. False where it has nothing in common
    /// with its own.
    bool setUnit(std::size_t quantity, const QString& unit);

    struct Place {
        std::size_t quantity = 0;
        UnitConversion conversion{};  ///< of the row's number
    };
    /// Null for a name that was not learnt.
    const Place* find(const std::string& name, std::string_view unit) const;

private:
    struct Reading {
        std::string text;
        QString unit;
        Place place;
    };
    struct Name {
        std::vector<std::size_t> quantities;
        std::vector<Reading> readings;  // by the text of the unit; the first is of no text
    };
    std::size_t placeOf(Name& entry, const std::string& name, const std::string& text, const QString& unit);

    std::unordered_map<std::string, Name> m_names;
    std::vector<Quantity> m_quantities;
};

}  // namespace plotix
