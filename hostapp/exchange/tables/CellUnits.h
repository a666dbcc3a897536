#pragma once

#include "hostapp/exchange/NumberText.h"

#include <QtCore/QString>

#include <map>
#include <optional>
#include <string>

/// Units that stand behind the numbers in cells: "950 W", "1.2 kW". A cell's own unit is what its number is in,
/// whatever the other cells and the header say. Values; one thread each.
namespace plotix {

/// How numbers in one unit become numbers in another. An angle is no fraction, though both are mere numbers.
class UnitConversion {
public:
    /// Nothing where the units have nothing in common.
    static std::optional<UnitConversion> between(const QString& from, const QString& to);
    double operator()(double value) const;

private:
    QString m_from, m_to;  // of a conversion that is not linear
    double m_factor = 1, m_divisor = 1, m_offset = 0;
};

/// Whether a text may stand behind a number as its unit: one that `Units` knows.
bool isUnitOfCell(std::string_view text);

/// The cells of one column, converted to the column's unit.
class CellUnits {
public:
    /// `unit` is the column's, as `Units` writes it; `usual` stands in most cells, as in the file. Each may be empty.
    CellUnits(const QString& unit, const std::string& usual);

    /// Whether what stands in most cells can be converted to the column's unit.
    bool agree() const { return m_agree; }
    /// Not where header and cells have different units: a number without one may be in either.
    bool takesBareNumbers() const { return m_takesBare; }
    /// The number and its unit; the whole field where no unit stands there that can be converted.
    NumberWithUnit split(std::string_view field);
    /// False for a bare number that does not count.
    bool convert(std::string_view unit, double& value);

private:
    const std::optional<UnitConversion>& conversionOf(std::string_view unit);

    QString m_unit;
    std::string m_usual;
    bool m_agree = true, m_takesBare = true;
    std::map<std::string, std::optional<UnitConversion>, std::less<>> m_conversions;  // by text
};

}  // namespace plotix
