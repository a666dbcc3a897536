#include "hostapp/demo/WeatherStation.h"
#include "hostapp/demo/StationNoise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace plotix {

namespace {

constexpr std::uint64_t kSeed = 7;
constexpr std::int64_t kMinutesPerYear = 525'600;
constexpr std::int64_t kBegin = 28'401'120;  // 2024-01-01 00:00 UTC

using Q = StationQuantity;

/// Every seventh minute of a year.
const std::vector<StationRecord>& yearOfRecords()
{
    static const std::vector<StationRecord> records = [] {
        std::vector<StationRecord> made;
        for (std::int64_t minute = kBegin; minute < kBegin + kMinutesPerYear; minute += 7)
            made.push_back(stationRecord(kSeed, minute));
        return made;
    }();
    return records;
}

std::vector<double> validValues(Q quantity)
{
    std::vector<double> values;
    for (const StationRecord& record : yearOfRecords())
        if (record.valid[static_cast<std::size_t>(quantity)])
            values.push_back(record.value(quantity));
    return values;
}

double mean(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

double meanOfMonth(Q quantity, int month)
{
    std::vector<double> values;
    const auto& records = yearOfRecords();
    for (std::size_t index = 0; index < records.size(); ++index)
        if (index * 12 / records.size() == static_cast<std::size_t>(month) &&
            records[index].valid[static_cast<std::size_t>(quantity)])
            values.push_back(records[index].value(quantity));
    return mean(values);
}

TEST(Noise, DependsOnSeedChannelAndPlaceAlone)
{
    const NoiseSource source{1, 2};
    EXPECT_EQ(source.smooth(12345.6, 60), NoiseSource({1, 2}).smooth(12345.6, 60));
    EXPECT_NE(source.uniform(5), NoiseSource({1, 3}).uniform(5));
    EXPECT_NE(source.uniform(5), NoiseSource({2, 2}).uniform(5));
    EXPECT_NE(source.uniform(5), source.uniform(5, 1));
}

TEST(Noise, IsSpreadAsItSays)
{
    const NoiseSource source{1, 2};
    double sum = 0, squares = 0;
    for (std::int64_t cell = -5000; cell < 5000; ++cell) {
        const double number = source.normal(cell);
        EXPECT_LE(std::abs(number), 3.5);
        EXPECT_GE(source.uniform(cell), 0);
        EXPECT_LT(source.uniform(cell), 1);
        sum += number;
        squares += number * number;
    }
    EXPECT_NEAR(sum / 10'000, 0, 0.05);
    EXPECT_NEAR(squares / 10'000, 1, 0.05);
}

TEST(Noise, IsSmoothAcrossCells)
{
    const NoiseSource source{1, 2};
    for (double seconds = -300; seconds < 300; seconds += 60)
        EXPECT_NEAR(source.smooth(seconds - 1e-6, 60), source.smooth(seconds + 1e-6, 60), 1e-5);
}

TEST(SmoothStep, GoesFromNothingToOne)
{
    EXPECT_EQ(smoothStep(-1, 0, 2), 0);
    EXPECT_EQ(smoothStep(1, 0, 2), 0.5);
    EXPECT_EQ(smoothStep(3, 0, 2), 1);
}

TEST(Station, TellsTheSameStoryAgain)
{
    for (std::int64_t minute = kBegin; minute < kBegin + 3000; minute += 11) {
        const StationRecord one = stationRecord(kSeed, minute), other = stationRecord(kSeed, minute);
        EXPECT_EQ(one.valid, other.valid);
        for (std::size_t index = 0; index < kStationQuantities; ++index)
            EXPECT_TRUE(one.values[index] == other.values[index] || !one.valid[index]);
    }
}

TEST(Station, HasOtherWeatherForAnotherSeed)
{
    EXPECT_NE(stationRecord(1, kBegin).value(Q::Pressure), stationRecord(2, kBegin).value(Q::Pressure));
}

TEST(Station, WorksBefore1970)
{
    EXPECT_TRUE(std::isfinite(stationRecord(kSeed, -1'000'001).value(Q::AirTemperature)));
}

struct BoundsCase {
    const char* name;
    Q quantity;
    double lowest, highest;          // nothing lies outside
    double meanLowest, meanHighest;  // of a year
};

class StationBounds : public testing::TestWithParam<BoundsCase> {};

TEST_P(StationBounds, ArePlausible)
{
    const std::vector<double> values = validValues(GetParam().quantity);
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    EXPECT_GE(*least, GetParam().lowest);
    EXPECT_LE(*most, GetParam().highest);
    EXPECT_GE(mean(values), GetParam().meanLowest);
    EXPECT_LE(mean(values), GetParam().meanHighest);
}

INSTANTIATE_TEST_SUITE_P(Quantities, StationBounds,
                         testing::Values(BoundsCase{"AirTemperature", Q::AirTemperature, -25, 40, 5, 13},
                                         BoundsCase{"DewPoint", Q::DewPoint, -30, 28, 0, 9},
                                         BoundsCase{"Humidity", Q::Humidity, 15, 100, 60, 88},
                                         BoundsCase{"Pressure", Q::Pressure, 955, 1055, 1005, 1022},
                                         BoundsCase{"WindSpeed", Q::WindSpeed, 0, 30, 2, 6},
                                         BoundsCase{"WindGust", Q::WindGust, 0, 45, 3, 9},
                                         BoundsCase{"Rain", Q::Rain, 0, 80, 0.05, 0.25},
                                         BoundsCase{"SolarRadiation", Q::SolarRadiation, 0, 1150, 90, 230}),
                         [](const auto& row) { return row.param.name; });

TEST(Station, HasSeasons)
{
    EXPECT_GT(meanOfMonth(Q::AirTemperature, 6), meanOfMonth(Q::AirTemperature, 0) + 12);
    EXPECT_GT(meanOfMonth(Q::SolarRadiation, 5), 2.5 * meanOfMonth(Q::SolarRadiation, 11));
}

TEST(Station, HasDays)
{
    const double june = 1'718'928'000;  // 2024-06-21 00:00 UTC
    EXPECT_LT(sunHeight(june), 0);
    EXPECT_GT(sunHeight(june + 11.35 * 3600), 0.85);
    const auto midnight = static_cast<std::int64_t>(june / 60);
    for (std::int64_t minute = midnight; minute < midnight + 120; ++minute)
        if (stationRecord(kSeed, minute).valid[static_cast<std::size_t>(Q::SolarRadiation)]) {
            EXPECT_EQ(stationRecord(kSeed, minute).value(Q::SolarRadiation), 0);
        }
}

TEST(Station, KeepsItsQuantitiesInOrder)
{
    for (const StationRecord& record : yearOfRecords()) {
        EXPECT_FALSE(record.value(Q::DewPoint) > record.value(Q::AirTemperature));
        EXPECT_FALSE(record.value(Q::WindGust) < record.value(Q::WindSpeed));
        EXPECT_FALSE(record.value(Q::Rain) < 0);
    }
}

TEST(Station, HasRainySpellsAndDryOnes)
{
    const std::vector<double> rain = validValues(Q::Rain);
    const auto wet = static_cast<double>(std::count_if(rain.begin(), rain.end(), [](double rate) { return rate > 0; }));
    EXPECT_GT(wet / static_cast<double>(rain.size()), 0.02);
    EXPECT_LT(wet / static_cast<double>(rain.size()), 0.20);
}

TEST(Station, RainsAtLowerPressureThanItIsDry)
{
    double wetSum = 0, drySum = 0, wet = 0, dry = 0;
    for (const StationRecord& record : yearOfRecords()) {
        if (!record.valid[static_cast<std::size_t>(Q::Rain)] || !record.valid[static_cast<std::size_t>(Q::Pressure)])
            continue;
        (record.value(Q::Rain) > 0 ? wetSum : drySum) += record.value(Q::Pressure);
        ++(record.value(Q::Rain) > 0 ? wet : dry);
    }
    EXPECT_LT(wetSum / wet, drySum / dry - 4);
}

TEST(Station, LosesSensorsNowAndThenAndSaysSo)
{
    std::size_t invalid = 0;
    for (const StationRecord& record : yearOfRecords())
        for (std::size_t index = 0; index < kStationQuantities; ++index) {
            EXPECT_EQ(record.valid[index], !std::isnan(record.values[index]));
            invalid += record.valid[index] ? 0 : 1;
        }
    const double share =
        static_cast<double>(invalid) / static_cast<double>(yearOfRecords().size() * kStationQuantities);
    EXPECT_GT(share, 0.0005);
    EXPECT_LT(share, 0.02);
}

TEST(Station, ChangesLittleFromMinuteToMinute)
{
    for (std::int64_t minute = kBegin; minute < kBegin + 20'000; ++minute) {
        const StationRecord one = stationRecord(kSeed, minute), next = stationRecord(kSeed, minute + 1);
        EXPECT_FALSE(std::abs(one.value(Q::AirTemperature) - next.value(Q::AirTemperature)) > 1.0) << minute;
        EXPECT_FALSE(std::abs(one.value(Q::Pressure) - next.value(Q::Pressure)) > 0.5) << minute;
    }
}

}  // namespace

}  // namespace plotix
