#pragma once

#include <span>

/// The units people choose from, with the spellings they use and what UDUNITS-2 calls them. Data only.
namespace plotix {

enum class Quantity {
    Temperature,
    Pressure,
    Speed,
    Fraction,
    Illuminance,
    Irradiance,
    Irradiation,
    Length,
    Rainfall,
    Power,
    Energy,
    Voltage,
    Current,
    Frequency,
    Angle,
    Mass,
    Density,
    Time,
    Volume,
    Flow,
    Data,
    DataRate
};

struct UnitRow {
    Quantity quantity;
    const char* text;        ///< what people read, and what is stored: never change
    const char* expression;  ///< in UDUNITS-2's language
    const char* spellings;   ///< other spellings, separated by "|"; compared exactly first, then ignoring case
};

/// In menu order.
std::span<const UnitRow> unitTable();

}  // namespace plotix
