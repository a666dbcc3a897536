#include "plugins/PlotixPlugIn/logic/Statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using plotix::SharedArray;
using plotix::Statistics;
using plotix::StatisticsAccumulator;
using plotix::ValidityBitmap;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

Statistics statisticsOf(const std::vector<double>& values)
{
    StatisticsAccumulator accumulator;
    accumulator.addBlock(values, {}, 0);
    return accumulator.statistics();
}

ValidityBitmap bitmapOf(const std::vector<bool>& valid)
{
    std::vector<std::uint64_t> words((valid.size() + 63) / 64);
    for (std::size_t index = 0; index < valid.size(); ++index)
        if (valid[index])
            words[index / 64] |= std::uint64_t{1} << (index % 64);
    return ValidityBitmap(SharedArray<std::uint64_t>::fromVector(words));
}

TEST(StatisticsTest, NoValuesAreAllZero)
{
    EXPECT_EQ(statisticsOf({}), (Statistics{0, 0, 0, 0}));
}

TEST(StatisticsTest, OneValueIsMinimumMaximumAndAverage)
{
    EXPECT_EQ(statisticsOf({-7.25}), (Statistics{-7.25, -7.25, -7.25, 1}));
}

TEST(StatisticsTest, ThreeFiveFour)
{
    EXPECT_EQ(statisticsOf({3, 5, 4}), (Statistics{3, 5, 4, 3}));
}

TEST(StatisticsTest, AllNegativeValuesKeepANegativeMaximum)
{
    EXPECT_EQ(statisticsOf({-3, -1, -2}), (Statistics{-3, -1, -2, 3}));
}

TEST(StatisticsTest, AllEqualValues)
{
    EXPECT_EQ(statisticsOf({4, 4, 4, 4}), (Statistics{4, 4, 4, 4}));
}

TEST(StatisticsTest, ANaNIsNotCounted)
{
    EXPECT_EQ(statisticsOf({1, kNaN, 3}), (Statistics{1, 3, 2, 2}));
    EXPECT_EQ(statisticsOf({kNaN}), (Statistics{0, 0, 0, 0}));
}

TEST(StatisticsTest, AnInfinityIsAValue)
{
    const Statistics statistics = statisticsOf({1, kInfinity});
    EXPECT_EQ(statistics.maximum, kInfinity);
    EXPECT_EQ(statistics.minimum, 1);
    EXPECT_EQ(statistics.points, 2);
}

TEST(StatisticsTest, OnlyValidElementsCount)
{
    StatisticsAccumulator accumulator;
    accumulator.addBlock(std::vector<double>{100, 1, -100, 3}, bitmapOf({false, true, false, true}), 0);
    EXPECT_EQ(accumulator.statistics(), (Statistics{1, 3, 2, 2}));
}

TEST(StatisticsTest, ABlockBeginsAtItsOwnBit)
{
    StatisticsAccumulator accumulator;
    accumulator.addBlock(std::vector<double>{100, 2}, bitmapOf({true, false, true}), 1);
    EXPECT_EQ(accumulator.statistics(), (Statistics{2, 2, 2, 1}));
}

TEST(StatisticsTest, IsEmptyUntilTheFirstValidValue)
{
    StatisticsAccumulator accumulator;
    accumulator.addBlock(std::vector<double>{kNaN, 2}, bitmapOf({true, false}), 0);
    EXPECT_TRUE(accumulator.isEmpty());
    accumulator.add(0);
    EXPECT_FALSE(accumulator.isEmpty());
}

// The sum runs over the doubles: floats would lose the small value here.
TEST(StatisticsTest, SumsInDoublePrecision)
{
    EXPECT_EQ(statisticsOf({16777216, 1, 1, 2}).average, 16777220.0 / 4);
}

TEST(StatisticsTest, BlocksGiveWhatTheValuesOneByOneGive)
{
    std::mt19937_64 random(7);
    std::normal_distribution<double> value(20, 5);
    for (const std::size_t size : {1U, 31U, 64U, 1024U, 1025U, 5000U}) {
        std::vector<double> values(size);
        std::vector<bool> valid(size);
        double minimum = std::numeric_limits<double>::max();
        double maximum = -minimum;
        double sum = 0;
        int count = 0;
        for (std::size_t index = 0; index < size; ++index) {
            values[index] = index % 17 == 3 ? kNaN : value(random);
            valid[index] = random() % 3 != 0;
            if (!valid[index] || std::isnan(values[index]))
                continue;
            minimum = std::min(minimum, values[index]);
            maximum = std::max(maximum, values[index]);
            sum += values[index];
            ++count;
        }
        StatisticsAccumulator accumulator;
        const ValidityBitmap bitmap = bitmapOf(valid);
        for (std::size_t first = 0; first < size; first += 1000)
            accumulator.addBlock(std::span(values).subspan(first, std::min<std::size_t>(1000, size - first)), bitmap,
                                 first);
        const Statistics expected = count ? Statistics{minimum, maximum, sum / count, count} : Statistics{0, 0, 0, 0};
        EXPECT_EQ(accumulator.statistics(), expected) << size << " values";
    }
}

/// Exactly, the sign of a zero included.
void expectSameBits(const Statistics& one, const Statistics& other, const std::string& what)
{
    for (const auto& member : {&Statistics::minimum, &Statistics::maximum, &Statistics::average})
        EXPECT_EQ(std::bit_cast<std::uint64_t>(one.*member), std::bit_cast<std::uint64_t>(other.*member)) << what;
    EXPECT_EQ(one.points, other.points) << what;
}

TEST(StatisticsTest, OddValuesInABlockCountAsOneByOne)
{
    const std::vector<double> odd{0.0, -0.0, 1, -1, 1e308, -1e308, 5e-324, kInfinity, kNaN};
    std::mt19937_64 random(11);
    for (int round = 0; round < 500; ++round) {
        std::vector<double> values(1 + random() % 3000);
        const std::size_t kinds = 1 + random() % odd.size();
        for (double& value : values)
            value = odd[random() % kinds];
        StatisticsAccumulator each, block;
        for (const double value : values)
            each.add(value);
        block.addBlock(values, {}, 0);
        expectSameBits(block.statistics(), each.statistics(), "round " + std::to_string(round));
    }
}

/// Runs of a few values each, as a store knows them, and the values themselves.
class KnownStatisticsTest : public testing::Test {
protected:
    void take(const std::vector<std::vector<double>>& runs)
    {
        for (const std::vector<double>& run : runs) {
            const auto ordered = [](double one, double other) { return one < other; };
            std::vector<double> numbers;
            std::copy_if(run.begin(), run.end(), std::back_inserter(numbers), [](double v) { return !std::isnan(v); });
            m_runs.least.push_back(numbers.empty() ? kInfinity : *std::min_element(numbers.begin(), numbers.end()));
            // The first of equals, which max_element answers too.
            m_runs.greatest.push_back(numbers.empty() ? -kInfinity
                                                      : *std::max_element(numbers.begin(), numbers.end(), ordered));
            for (const double value : numbers)
                m_sum += value;
            m_count += static_cast<std::int64_t>(numbers.size());
            m_values.insert(m_values.end(), run.begin(), run.end());
        }
    }
    std::optional<Statistics> known(double scale = 1, double offset = 0) const
    {
        StatisticsAccumulator accumulator;
        const bool isKnown = accumulator.addKnown({*plotix::KeptRuns::of(m_runs), m_count, m_sum, scale, offset});
        EXPECT_EQ(accumulator.isEmpty(), !isKnown || m_count == 0);
        return isKnown ? std::optional(accumulator.statistics()) : std::nullopt;
    }
    Statistics added(double scale = 1, double offset = 0) const
    {
        StatisticsAccumulator accumulator;
        for (const double value : m_values)
            accumulator.add(scale == 1 && offset == 0 ? value : value * scale + offset);
        return accumulator.statistics();
    }
    void expectAsAdded(double scale = 1, double offset = 0)
    {
        const auto found = known(scale, offset);
        ASSERT_TRUE(found);
        const Statistics expected = added(scale, offset);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(found->minimum), std::bit_cast<std::uint64_t>(expected.minimum));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(found->maximum), std::bit_cast<std::uint64_t>(expected.maximum));
        EXPECT_EQ(found->points, expected.points);
        if (std::isfinite(expected.average))
            EXPECT_NEAR(found->average, expected.average, 1e-9);
        else
            EXPECT_EQ(std::bit_cast<std::uint64_t>(found->average), std::bit_cast<std::uint64_t>(expected.average));
    }

    plotix::ValueRuns m_runs;
    std::vector<double> m_values;
    double m_sum = 0;
    std::int64_t m_count = 0;
};

TEST_F(KnownStatisticsTest, RunsTellWhatTheirValuesWould)
{
    take({{3, 5, 4}, {-7.25}, {kNaN, 6}});
    expectAsAdded();
}

TEST_F(KnownStatisticsTest, RunsWithoutValuesTellNothing)
{
    take({{kNaN}, {kNaN, kNaN}});
    expectAsAdded();
    take({{4}});
    expectAsAdded();
}

TEST_F(KnownStatisticsTest, OfZerosTheFirstOneStays)
{
    take({{1, -0.0, 0.0}, {0.0, -0.0}});
    expectAsAdded();
    take({{-1, 5}});
    expectAsAdded();
}

TEST_F(KnownStatisticsTest, InfinitiesCountAsTheyDoWhenAdded)
{
    take({{kInfinity}});
    expectAsAdded();
    take({{1, 2}});
    expectAsAdded();
    take({{-kInfinity}});
    expectAsAdded();
}

TEST_F(KnownStatisticsTest, AnotherUnitIsReachedWithoutTheValues)
{
    take({{3, 5, 4}, {-7.25, 0}});
    expectAsAdded(1.8, 32);
    expectAsAdded(0.001);
}

TEST_F(KnownStatisticsTest, AUnitThatTurnsValuesRoundTurnsExtremesRound)
{
    take({{3, 5, 4}, {-7.25, kInfinity}});
    expectAsAdded(-2, 1);
    expectAsAdded(-1);
}

TEST_F(KnownStatisticsTest, WhatOnlyTheValuesTellIsNotGuessed)
{
    take({{-1e-320, 1e-320}});
    EXPECT_FALSE(known(1e-10));
    EXPECT_FALSE(known(0, 5));
    EXPECT_FALSE(known(kInfinity));
}

TEST(StatisticsTest, AnyPatternOfValidElementsCountsAsOneByOne)
{
    std::mt19937_64 random(12);
    for (int round = 0; round < 200; ++round) {
        std::vector<double> values(1 + random() % 1000);
        const std::uint64_t gaps = 1 + random() % 200;
        const std::size_t first = random() % 70;
        std::vector<bool> valid(first + values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = static_cast<double>(random() % 1000) / 7 - 50;
            valid[first + i] = random() % gaps != 0;
        }
        StatisticsAccumulator each, block;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (valid[first + i])
                each.add(values[i]);
        block.addBlock(values, bitmapOf(valid), first);
        expectSameBits(block.statistics(), each.statistics(), "round " + std::to_string(round));
    }
}

}  // namespace
