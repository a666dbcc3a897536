#include "hostapp/demo/WeatherStation.h"

#include "hostapp/demo/StationNoise.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace plotix {

namespace {

constexpr double kMinute = 60, kHour = 3600, kDay = 86'400, kYear = 365.2425 * kDay;
constexpr double kLatitude = 48.0 * std::numbers::pi / 180;  // radians
constexpr double kSolarNoon = 11.35 * kHour;                 // UTC: the station lies ten degrees east
constexpr double kFrontSpacing = 3.4 * kDay;

/// Random channels; part of what defines a station. Stored in every site built: never change.
enum Chance : std::uint32_t {
    kFront,
    kAirMass,
    kPressureSlow,
    kPressureFast,
    kCloudSlow,
    kCloudFast,
    kHumidityChance,
    kWindSlow,
    kTurbulence,
    kGustiness,
    kShowers,
    kDrizzle,
    kRipple,
    kFlicker,
    kPressureRipple,
    kDropOut,
    kStationOutage = 64
};

/// What the fronts near a moment change.
struct FrontEffect {
    double pressure = 0;     // hPa, negative
    double temperature = 0;  // °C
    double wind = 0;         // m/s
    double squall = 0;       // m/s, for gusts only
    double wetness = 0;      // 0 … 1
    double cloud = 0;        // 0 … 1
};

/// 1 in the middle, falling to nothing some widths away.
double bell(double distance, double width)
{
    constexpr double kNothing = 4.5;  // beyond this the bell is less than a sensor shows; most minutes lie there
    const double part = distance / width;
    return std::abs(part) > kNothing ? 0 : std::exp(-part * part);
}

/// `since` is negative while the front is still coming.
void addFront(FrontEffect& effect, double since, double strength)
{
    effect.pressure -= strength * 17 * bell(since, since < 0 ? 20 * kHour : 11 * kHour);
    effect.temperature += strength * 2.5 * bell(since + 7 * kHour, 7 * kHour);  // the warm air ahead of it
    if (since > -4 * kHour)
        effect.temperature -= strength * 6.5 * smoothStep(since, -0.4 * kHour, 1.1 * kHour) *
                              std::exp(-std::max(since, 0.0) / (26 * kHour));
    effect.wind += strength * 6.5 * bell(since - 1 * kHour, since < kHour ? 7 * kHour : 12 * kHour);
    effect.squall += strength * 7 * bell(since, 35 * kMinute);
    effect.wetness = std::max(effect.wetness, strength * std::max(bell(since + 1 * kHour, 3.2 * kHour),
                                                                  0.55 * bell(since - 9 * kHour, 6 * kHour)));
    effect.cloud = std::max(effect.cloud, bell(since + 2 * kHour, since < -2 * kHour ? 12 * kHour : 8 * kHour));
}

/// One front a cell of time, somewhere in its middle.
FrontEffect frontsAround(std::uint64_t seed, double seconds)
{
    const NoiseSource chance{seed, kFront};
    const auto here = static_cast<std::int64_t>(std::floor(seconds / kFrontSpacing));
    FrontEffect effect;
    for (std::int64_t cell = here - 1; cell <= here + 1; ++cell) {
        const double passage = (static_cast<double>(cell) + 0.15 + 0.7 * chance.uniform(cell, 1)) * kFrontSpacing;
        addFront(effect, seconds - passage, 0.35 + 0.75 * chance.uniform(cell, 2));
    }
    return effect;
}

/// 0 = clear, 1 = overcast.
double cloudCover(std::uint64_t seed, double seconds, const FrontEffect& fronts)
{
    const double slow = NoiseSource{seed, kCloudSlow}.smooth(seconds, 9 * kHour);
    const double fast = NoiseSource{seed, kCloudFast}.smooth(seconds, 50 * kMinute);
    return std::clamp(0.38 + 0.32 * slow + 0.14 * fast + 0.75 * fronts.cloud, 0.0, 1.0);
}

/// +1 in the middle of summer, -1 in the middle of winter, some weeks behind the sun.
double seasonAt(double seconds)
{
    constexpr double kWarmest = 200 * kDay;  // 20 July
    return std::cos(2 * std::numbers::pi * (seconds - kWarmest) / kYear);
}

/// The day's course of temperature: lowest about sunrise, highest in mid-afternoon; mean about 0.
double dayCourse(double seconds)
{
    const double angle = 2 * std::numbers::pi * (seconds - kSolarNoon - 2.8 * kHour) / kDay;
    return std::cos(angle) + 0.22 * std::cos(2 * angle) - 0.05;
}

double airTemperature(std::uint64_t seed, double seconds, const FrontEffect& fronts, double slowCloud)
{
    const double season = seasonAt(seconds);
    const double airMass = NoiseSource{seed, kAirMass}.smooth(seconds, 4.5 * kDay);
    const double ripple = NoiseSource{seed, kRipple}.smooth(seconds, 11 * kMinute);
    const double swing = (4.1 + 1.7 * season) * (1 - 0.62 * slowCloud);
    return 9.8 + 9.4 * season + 3.4 * airMass + swing * dayCourse(seconds) + fronts.temperature +
           (0.07 + 0.1 * std::max(sunHeight(seconds), 0.0)) * ripple;
}

/// How far the dew point lies below the air: dry on sunny afternoons, close in rain and at dawn.
double dewPointDepression(std::uint64_t seed, double seconds, double slowCloud, double wetness)
{
    const double chance = NoiseSource{seed, kHumidityChance}.smooth(seconds, 14 * kHour);
    const double day = 0.5 + 0.5 * dayCourse(seconds);
    const double sunny = (6.2 + 4.6 * seasonAt(seconds)) * std::max(day, 0.0) * (1 - 0.62 * slowCloud);
    const double dry = std::max(0.0, 1.9 + 1.7 * chance) + sunny;
    return std::max(0.15, dry * (1 - 0.8 * std::min(wetness, 1.0)) + 0.35);
}

/// Relative humidity in percent (Magnus formula over water).
double humidityOf(double temperature, double dewPoint)
{
    const auto exponent = [](double celsius) { return 17.62 * celsius / (243.12 + celsius); };
    return std::clamp(100 * std::exp(exponent(dewPoint) - exponent(temperature)), 1.0, 100.0);
}

double pressureAt(std::uint64_t seed, double seconds, const FrontEffect& fronts)
{
    const double slow = NoiseSource{seed, kPressureSlow}.smooth(seconds, 6 * kDay);
    const double fast = NoiseSource{seed, kPressureFast}.smooth(seconds, 1.1 * kDay);
    const double ripple = NoiseSource{seed, kPressureRipple}.smooth(seconds, 7 * kMinute);
    const double tide = 0.6 * std::cos(4 * std::numbers::pi * (seconds - 9 * kHour) / kDay);
    return 1018.5 + 7.5 * slow + 2.2 * fast + tide + fronts.pressure + 0.03 * ripple;
}

double windSpeed(std::uint64_t seed, double seconds, const FrontEffect& fronts, double sun)
{
    const double slow = NoiseSource{seed, kWindSlow}.smooth(seconds, 16 * kHour);
    const NoiseSource turbulence{seed, kTurbulence};
    const double minutes = turbulence.smooth(seconds, 4 * kMinute);
    const double quarters = turbulence.smooth(seconds + 7.7e9, 22 * kMinute);
    const double steady = 2.1 - 0.4 * seasonAt(seconds) + 1.1 * slow + 1.5 * std::max(sun, 0.0) + fronts.wind;
    return std::max(0.0, std::max(steady, 0.25) * (1 + 0.16 * minutes + 0.13 * quarters));
}

double rainRate(std::uint64_t seed, double seconds, const FrontEffect& fronts)
{
    const double shower = NoiseSource{seed, kShowers}.smooth(seconds, 24 * kMinute);
    const double drizzle = NoiseSource{seed, kDrizzle}.smooth(seconds, 5 * kMinute);
    const double excess = 2.1 * fronts.wetness + 0.75 * shower + 0.16 * drizzle - 1.35;
    return excess <= 0 ? 0 : 4.2 * std::pow(excess, 1.7);
}

/// Watts per square metre on level ground. Broken clouds flicker; overcast dims to a fifth.
double solarRadiation(std::uint64_t seed, double seconds, double cloud, double sun)
{
    if (sun <= 0.005)
        return 0;
    const double clear = 1098 * sun * std::exp(-0.057 / sun);
    const double broken = std::clamp(4 * cloud * (1 - cloud), 0.0, 1.0);
    const double passing = NoiseSource{seed, kFlicker}.smooth(seconds, 6 * kMinute);
    const double shade = std::clamp(0.8 * std::pow(cloud, 2.4) + 0.3 * broken * passing, -0.06, 0.9);
    return clear * (1 - shade);
}

/// Whether a failure covers the minute: at most one a cell, wholly inside it.
bool failsAt(const NoiseSource& chance, std::int64_t minute, std::int64_t cellMinutes, double probability,
             double longestMinutes)
{
    const auto cell =
        static_cast<std::int64_t>(std::floor(static_cast<double>(minute) / static_cast<double>(cellMinutes)));
    if (chance.uniform(cell, 0) >= probability)
        return false;
    const double share = chance.uniform(cell, 1);
    const auto length = static_cast<std::int64_t>(4 + longestMinutes * share * share);
    const auto start = static_cast<std::int64_t>(chance.uniform(cell, 2) * static_cast<double>(cellMinutes - length));
    const std::int64_t place = minute - cell * cellMinutes;
    return place >= start && place < start + length;
}

void dropOut(std::uint64_t seed, std::int64_t minute, StationRecord& record)
{
    const bool isOut = failsAt({seed, kStationOutage}, minute, 45 * 1440, 0.6, 90);
    for (std::uint32_t index = 0; index < kStationQuantities; ++index) {
        record.valid[index] = !isOut && !failsAt({seed, kDropOut + index}, minute, 11 * 1440, 0.4, 300);
        if (!record.valid[index])
            record.values[index] = std::numeric_limits<double>::quiet_NaN();
    }
}

}  // namespace

double sunHeight(double seconds)
{
    const double turn = 2 * std::numbers::pi;
    const double declination = -0.4091 * std::cos(turn * (seconds + 10 * kDay) / kYear);
    const double hourAngle = turn * (seconds - kSolarNoon) / kDay;
    return std::sin(kLatitude) * std::sin(declination) +
           std::cos(kLatitude) * std::cos(declination) * std::cos(hourAngle);
}

StationRecord stationRecord(std::uint64_t seed, std::int64_t minute)
{
    const double seconds = static_cast<double>(minute) * kMinute;
    const FrontEffect fronts = frontsAround(seed, seconds);
    const double sun = sunHeight(seconds);
    const double cloud = cloudCover(seed, seconds, fronts);
    // Temperatures follow the clouds without their quick changes.
    const double slowCloud =
        std::clamp(0.4 + 0.3 * NoiseSource{seed, kCloudSlow}.smooth(seconds, 9 * kHour) + 0.4 * fronts.cloud, 0.0, 1.0);
    const double temperature = airTemperature(seed, seconds, fronts, slowCloud);
    const double dewPoint = temperature - dewPointDepression(seed, seconds, slowCloud, fronts.wetness);
    const double wind = windSpeed(seed, seconds, fronts, sun);
    const double gustiness = std::abs(NoiseSource{seed, kGustiness}.normal(minute));

    StationRecord record;
    record.values = {temperature,
                     dewPoint,
                     humidityOf(temperature, dewPoint),
                     pressureAt(seed, seconds, fronts),
                     wind,
                     wind * (1.25 + 0.24 * gustiness) + fronts.squall,
                     rainRate(seed, seconds, fronts),
                     solarRadiation(seed, seconds, cloud, sun)};
    for (std::size_t index = 0; index < kStationQuantities; ++index) {
        const double steps = 1 / kStationChannels[index].resolution;
        record.values[index] = std::round(record.values[index] * steps) / steps + 0.0;  // + 0.0: no negative zero
    }
    dropOut(seed, minute, record);
    return record;
}

}  // namespace plotix
