#pragma once

#include "benchmarks/data/Signal.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

/// The records that the archive programs store and read: a weather station's, one a second, four properties rounded the
/// way sensors give them and one at full precision.
///
/// The same values in every run and program. Standard C++17 alone. Pure; any thread.
namespace plotix_bench {

inline constexpr std::size_t kStationRecords = 10'000'000;
inline constexpr std::size_t kStationProperties = 5;
inline constexpr const char* kStationKeys[kStationProperties] = {"temperature", "humidity", "pressure", "windSpeed",
                                                                 "radiation"};

/// A hundredth of the records, somewhere in the middle; both times are inside.
inline constexpr std::size_t kWindowRecords = kStationRecords / 100;
inline constexpr double kWindowFrom = kStart + 4'003'000;
inline constexpr double kWindowTo = kWindowFrom + static_cast<double>(kWindowRecords - 1);

class Station {
public:
    explicit Station(unsigned seed = 4711) : m_noise(seed) {}

    struct Record {
        double time;
        std::array<double, kStationProperties> values;
    };

    Record next()
    {
        constexpr double kDay = 86'400, kTurn = 6.283185307179586;
        const double time = kStart + static_cast<double>(m_count++);
        const double day = std::sin(time / kDay * kTurn);
        const double season = std::sin(time / (365.25 * kDay) * kTurn);
        m_warmth = m_warmth * 0.9999 + m_noise.next() * 0.01;
        m_weather = m_weather * 0.99999 + m_noise.next() * 0.02;
        m_gust = m_gust * 0.98 + m_noise.next() * 0.4;
        const double sky = day > 0 ? day * (600 + 200 * season) : 0;
        return {time,
                {rounded(11 + 9 * season + 5 * day + m_warmth, 10), rounded(65 - 15 * day - 4 * m_warmth, 10),
                 rounded(1013.25 + m_weather, 100), rounded(std::abs(4 + m_gust), 100), sky + m_noise.next()}};
    }

private:
    /// The double nearest to a decimal number, as reading its text would give it.
    static double rounded(double value, double steps) { return std::round(value * steps) / steps; }

    Noise m_noise;
    std::size_t m_count = 0;
    double m_warmth = 0, m_weather = 0, m_gust = 0;
};

struct StationColumns {
    std::vector<double> times;
    std::array<std::vector<double>, kStationProperties> values;
};

inline StationColumns stationColumns(std::size_t count)
{
    StationColumns columns;
    columns.times.reserve(count);
    for (std::vector<double>& each : columns.values)
        each.reserve(count);
    Station station;
    for (std::size_t index = 0; index < count; ++index) {
        const Station::Record record = station.next();
        columns.times.push_back(record.time);
        for (std::size_t property = 0; property < kStationProperties; ++property)
            columns.values[property].push_back(record.values[property]);
    }
    return columns;
}

}  // namespace plotix_bench
