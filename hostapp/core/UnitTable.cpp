#include "hostapp/core/UnitTable.h"

namespace plotix {

namespace {

using enum Quantity;

constexpr UnitRow kUnits[] = {
    {Temperature, "°C", "degC",
     "C|ºC|℃|degC|deg C|deg_C|deg. C|Celsius|degree Celsius|degrees Celsius|degree_Celsius|degrees_C"},
    {Temperature, "°F", "degF",
     "F|ºF|℉|degF|deg F|deg_F|deg. F|Fahrenheit|degree Fahrenheit|degrees Fahrenheit|degree_Fahrenheit|degrees_F"},
    {Temperature, "K", "K", "Kelvin|°K|degK|deg K"},
    {Pressure, "hPa", "hPa", "hectopascal|hectopascals"},
    {Pressure, "mbar", "mbar", "mb|millibar|millibars"},
    {Pressure, "Pa", "Pa", "pascal"},
    {Pressure, "kPa", "kPa", "kilopascal"},
    {Pressure, "bar", "bar", ""},
    {Pressure, "mmHg", "mmHg", "mm Hg|torr"},
    {Pressure, "inHg", "inHg", "in Hg|in. Hg|inches Hg"},
    {Pressure, "psi", "psi", ""},
    {Pressure, "atm", "atm", "atmosphere"},
    {Speed, "m/s", "m/s", "mps|m s-1|m/sec|ms-1|metres per second|meters per second"},
    {Speed, "km/h", "km/h", "kmh|kph|kmph|km/hr|km h-1|kilometres per hour|kilometers per hour"},
    {Speed, "mph", "mile/hour", "mi/h|mi/hr|miles/hour|miles per hour"},
    {Speed, "kn", "knot", "kt|kts|knot|knots"},
    {Speed, "ft/s", "ft/s", "fps|feet per second"},
    {Fraction, "%", "%", "percent|per cent|pct|% RH|%RH|%rH|% rH|% r.H.|%r.H.|%rF|% rF|% r.F.|%r.F.|% r. F."},
    {Fraction, "‰", "1e-3", "per mille|permille"},
    {Fraction, "ppm", "1e-6", "ppmv|parts per million"},
    {Fraction, "ppb", "1e-9", "ppbv|parts per billion"},
    {Illuminance, "lux", "lux", "lx"},
    {Illuminance, "klx", "klx", "klux|kilolux"},
    {Irradiance, "W/m²", "W/m2", "W/m2|W/m^2|W m-2|Wm-2|W/sqm|W/qm"},
    {Irradiance, "kW/m²", "kW/m2", "kW/m2|kW/m^2|kW m-2"},
    {Length, "mm", "mm", "millimetre|millimeter|millimetres|millimeters"},
    {Length, "cm", "cm", "centimetre|centimeter|centimetres|centimeters"},
    {Length, "m", "m", "metre|meter|metres|meters"},
    {Length, "km", "km", "kilometre|kilometer|kilometres|kilometers"},
    {Length, "in", "inch", "inch|inches|\""},
    {Length, "ft", "foot", "foot|feet"},
    {Length, "mi", "mile", "mile|miles"},
    {Rainfall, "mm/h", "mm/h", "mm/hr|mm h-1|mmh"},
    {Rainfall, "in/h", "inch/hour", "in/hr|inch/h|inches/hour"},
    {Power, "W", "W", "watt|watts"},
    {Power, "kW", "kW", "kilowatt|kilowatts"},
    {Power, "MW", "MW", "megawatt|megawatts"},
    {Energy, "Wh", "W.h", "W h|watt hour|watt hours"},
    {Energy, "kWh", "kW.h", "kW h|kilowatt hour|kilowatt hours"},
    {Energy, "MWh", "MW.h", "MW h|megawatt hour|megawatt hours"},
    {Energy, "J", "J", "joule|joules"},
    {Energy, "kJ", "kJ", "kilojoule|kilojoules"},
    {Energy, "MJ", "MJ", "megajoule|megajoules"},
    {Voltage, "V", "V", "volt|volts"},
    {Voltage, "mV", "mV", "millivolt|millivolts"},
    {Current, "A", "A", "amp|amps|ampere|amperes"},
    {Current, "mA", "mA", "milliamp|milliamps"},
    {Frequency, "Hz", "Hz", "hertz"},
    {Frequency, "kHz", "kHz", "kilohertz"},
    {Angle, "°", "degree", "º|deg|degree|degrees|arc degree|arc_degree"},
    {Angle, "rad", "rad", "radian|radians"},
    {Mass, "g", "g", "gram|grams"},
    {Mass, "kg", "kg", "kilogram|kilograms"},
    {Mass, "t", "tonne", "tonne|tonnes"},
    {Mass, "lb", "pound", "lbs|pound|pounds"},
    {Density, "µg/m³", "ug/m3", "ug/m3|ug/m^3|ug/m³|µg/m3|µg/m^3|ug m-3|mcg/m3"},
    {Density, "mg/m³", "mg/m3", "mg/m3|mg/m^3|mg m-3"},
    {Density, "g/m³", "g/m3", "g/m3|g/m^3|g m-3"},
    {Time, "s", "s", "sec|second|seconds"},
    {Time, "ms", "ms", "msec|millisecond|milliseconds"},
    {Time, "min", "min", "minute|minutes"},
    {Time, "h", "hour", "hr|hrs|hour|hours"},
    {Time, "d", "day", "day|days"},
    {Volume, "L", "litre", "l|litre|liter|litres|liters"},
    {Volume, "mL", "mL", "ml|millilitre|milliliter"},
    {Volume, "m³", "m3", "m3|m^3|cubic metre|cubic meter"},
    {Volume, "gal", "US_liquid_gallon", "gallon|gallons"},
    {Flow, "L/min", "litre/min", "l/min|lpm"},
    {Flow, "L/h", "litre/hour", "l/h|L/hr|l/hr"},
    {Flow, "m³/h", "m3/hour", "m3/h|m^3/h|m3/hr"},
    {Data, "kB", "kbyte", "kilobyte|kilobytes"},
    {Data, "MB", "Mbyte", "megabyte|megabytes"},
    {Data, "GB", "Gbyte", "gigabyte|gigabytes"},
    {DataRate, "kB/s", "kbyte/s", "kilobytes per second"},
    {DataRate, "MB/s", "Mbyte/s", "megabytes per second"},
    {DataRate, "Mbit/s", "Mbit/s", "Mbps|megabits per second"},
};

}  // namespace

std::span<const UnitRow> unitTable()
{
    return kUnits;
}

}  // namespace plotix
