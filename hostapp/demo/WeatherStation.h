#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// A simulated weather station in a temperate place: what it measured in any minute, by seed and time alone.
///
/// Seasons and days come from the sun's height; weather systems move the pressure for days; fronts pass every three or
/// four days with falling pressure, wind, rain and a sudden drop of temperature; clouds dim the sun; sensors fail now
/// and then. A minute's record depends on nothing but the seed and the minute. Pure; any thread.
namespace plotix {

enum class StationQuantity { AirTemperature, DewPoint, Humidity, Pressure, WindSpeed, WindGust, Rain, SolarRadiation };
inline constexpr std::size_t kStationQuantities = 8;

struct StationChannel {
    std::string_view name;
    std::string_view unit;
    double resolution;  ///< of the sensor, in that unit
};

/// In the order of StationQuantity. Names are stored: never change.
inline constexpr std::array<StationChannel, kStationQuantities> kStationChannels = {{
    {"Air Temperature", "°C", 0.01},
    {"Dew Point", "°C", 0.01},
    {"Humidity", "%", 0.1},
    {"Pressure", "hPa", 0.01},
    {"Wind Speed", "m/s", 0.01},
    {"Wind Gust", "m/s", 0.01},
    {"Rain", "mm/h", 0.1},
    {"Solar Radiation", "W/m²", 0.1},
}};

struct StationRecord {
    std::array<double, kStationQuantities> values{};  ///< in the channels' units
    std::array<bool, kStationQuantities> valid{};     ///< false while the sensor fails; the value is then NaN

    double value(StationQuantity quantity) const { return values[static_cast<std::size_t>(quantity)]; }
};

/// `minute` counts from 1970-01-01 00:00 UTC; negative ones lie before.
StationRecord stationRecord(std::uint64_t seed, std::int64_t minute);

/// The sun's height over the station's horizon as its sine: 1 overhead, 0 at the horizon, negative at night.
double sunHeight(double seconds);

}  // namespace plotix
