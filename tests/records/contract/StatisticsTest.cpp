#include "tests/records/contract/RecordStoreContract.h"

#include <cmath>
#include <limits>

namespace {

using plotix::ColumnStatistics;
using plotix::StatisticsFrom;

constexpr std::size_t kChunk = 16384;
const auto kMissing = std::nullopt;

class StatisticsTest : public RecordStoreContract {};

TEST_P(StatisticsTest, StatisticsAreOfTheValidValues)
{
    store(block({1, 2, 3, 4}, {column(air, {3, kMissing, 5, 4}), column(wind, {-2, -8, kMissing, kMissing})}));
    const ColumnStatistics first = opened()->statistics(agent, air);
    EXPECT_EQ(first.valid, 3U);
    EXPECT_EQ(first.minimum, 3);
    EXPECT_EQ(first.maximum, 5);
    EXPECT_EQ(first.average, 4);
    EXPECT_EQ(opened()->statistics(agent, wind).maximum, -2);
}

TEST_P(StatisticsTest, StatisticsLeaveOutWhatIsNoNumber)
{
    store(block({1, 2, 3}, {column(air, {std::nan(""), 4, std::nan("")})}));
    EXPECT_EQ(opened()->statistics(agent, air).valid, 1U);
    EXPECT_EQ(opened()->statistics(agent, air).average, 4);
}

TEST_P(StatisticsTest, StatisticsOfBothInfinitiesHaveNoAverage)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    store(block({1, 2}, {column(air, {infinity, -infinity})}));
    const ColumnStatistics all = opened()->statistics(agent, air);
    EXPECT_EQ(all.minimum, -infinity);
    EXPECT_EQ(all.maximum, infinity);
    EXPECT_TRUE(std::isnan(all.average));
}

TEST_P(StatisticsTest, StatisticsOfARangeCutChunksAtItsEnds)
{
    store(ramp(air, 0, 3 * kChunk));
    const ColumnStatistics part = opened()->statistics(agent, air, 100, 40000);
    EXPECT_EQ(part.valid, 39901U);
    EXPECT_EQ(part.minimum, 100);
    EXPECT_EQ(part.maximum, 40000);
    EXPECT_DOUBLE_EQ(part.average, 20050);
}

TEST_P(StatisticsTest, StatisticsFollowReplacedValues)
{
    store(block({1, 2}, {column(air, {3, 1000})}));
    store(block({2}, {column(air, {5})}));
    EXPECT_EQ(opened()->statistics(agent, air).maximum, 5);
}

TEST_P(StatisticsTest, TheyAreTheSameFromSummariesAndValues)
{
    store(ramp(wind, 0, 3 * kChunk));
    store(block({40'000.5, 1e6}, {column(wind, {kMissing, -5})}));
    const auto reader = opened();
    for (const auto& [from, to] : {std::pair(0.0, 1e7), std::pair(10.5, 40'000.7), std::pair(5.0, 7.0)}) {
        const ColumnStatistics known = reader->statistics(agent, wind, from, to);
        const ColumnStatistics counted = reader->statistics(agent, wind, from, to, StatisticsFrom::Values);
        EXPECT_EQ(known.valid, counted.valid);
        EXPECT_EQ(known.minimum, counted.minimum);
        EXPECT_EQ(known.maximum, counted.maximum);
        EXPECT_NEAR(known.average, counted.average, 1e-9);
    }
}

TEST_P(StatisticsTest, ARangeWithoutValuesHasNone)
{
    store(ramp(air, 0, 10));
    EXPECT_EQ(opened()->statistics(agent, air, 20, 30).valid, 0U);
    EXPECT_EQ(opened()->statistics(agent, air, 5, 3).valid, 0U);
    EXPECT_EQ(opened()->statistics(agent, wind).valid, 0U);
    EXPECT_EQ(opened()->statistics(agent, wind).average, 0);
}

HELD_BY_EVERYTHING_READ(StatisticsTest);

}  // namespace
