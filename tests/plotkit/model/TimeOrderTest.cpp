#include "plotkit/model/TimeOrder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using plotkit::areTimesSorted;
using Times = plotix::SharedArray<double>;

std::vector<double> everySecond(std::size_t count)
{
    std::vector<double> values(count);
    for (std::size_t at = 0; at < count; ++at)
        values[at] = static_cast<double>(at / 2);
    return values;
}

TEST(TimeOrderTest, TimesThatNeverDecreaseAreSorted)
{
    const Times times = Times::fromVector(everySecond(20000));
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{20000}, std::size_t{4097}})
        EXPECT_TRUE(areTimesSorted(times, count)) << count;
}

TEST(TimeOrderTest, OneThatTurnsBackEndsTheOrderThere)
{
    for (const std::size_t turn :
         {std::size_t{1}, std::size_t{4095}, std::size_t{4096}, std::size_t{4097}, std::size_t{19999}}) {
        std::vector<double> values = everySecond(20000);
        values[turn] = -1;
        const Times times = Times::fromVector(values);
        for (const bool again : {false, true}) {
            EXPECT_FALSE(areTimesSorted(times, 20000)) << turn << again;
            EXPECT_FALSE(areTimesSorted(times, turn + 1)) << turn << again;
            EXPECT_TRUE(areTimesSorted(times, turn)) << turn << again;
        }
    }
}

TEST(TimeOrderTest, LongerPartsAreLookedAtWhenTheyAreAskedFor)
{
    std::vector<double> values = everySecond(10000);
    values[9000] = 0;
    const Times times = Times::fromVector(values);
    EXPECT_TRUE(areTimesSorted(times, 100));
    EXPECT_TRUE(areTimesSorted(times, 9000));
    EXPECT_FALSE(areTimesSorted(times, 9001));
}

TEST(TimeOrderTest, TimesThatAreNotFiniteAreNotSorted)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(areTimesSorted(Times::fromVector({std::nan("")}), 1));
    EXPECT_FALSE(areTimesSorted(Times::fromVector({-infinity, 0}), 2));
    EXPECT_FALSE(areTimesSorted(Times::fromVector({0, std::nan(""), 1}), 3));
    const Times endless = Times::fromVector({0, 1, infinity});
    EXPECT_FALSE(areTimesSorted(endless, 3));
    EXPECT_TRUE(areTimesSorted(endless, 2));
}

TEST(TimeOrderTest, OtherTimesAreNotTakenForThoseThatAreGone)
{
    for (int round = 0; round < 50; ++round) {
        EXPECT_TRUE(areTimesSorted(Times::fromVector({1, 2, 3}), 3));
        EXPECT_FALSE(areTimesSorted(Times::fromVector({3, 2, 1}), 3));
    }
}

}  // namespace
