#include "base/Date.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

using plotix::Date;
using plotix::isEarlierThanDate;
using plotix::OptionalDate;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Date, IsEarlierOnlyStrictlyBefore)
{
    EXPECT_TRUE(isEarlierThanDate(Date{1}, Date{2}));
    EXPECT_FALSE(isEarlierThanDate(Date{2}, Date{2}));
    EXPECT_FALSE(isEarlierThanDate(Date{3}, Date{2}));
}

TEST(Date, AnAbsentDateIsNeverEarlierNorLater)
{
    EXPECT_FALSE(isEarlierThanDate(std::nullopt, Date{2}));
    EXPECT_FALSE(isEarlierThanDate(Date{2}, std::nullopt));
    EXPECT_FALSE(isEarlierThanDate(std::nullopt, std::nullopt));
}

TEST(Date, ANaNIsNeverEarlierNorLater)
{
    EXPECT_FALSE(isEarlierThanDate(Date{kNaN}, Date{2}));
    EXPECT_FALSE(isEarlierThanDate(Date{2}, Date{kNaN}));
}

TEST(Date, TellsNeighbouringDoublesApart)
{
    const double moment = 1'370'088'300.25;
    EXPECT_TRUE(isEarlierThanDate(Date{moment}, Date{std::nextafter(moment, 2e9)}));
}

TEST(Date, CurrentDateIsTheSystemClocks)
{
    using Seconds = std::chrono::duration<double>;
    const auto clock = [] { return Seconds(std::chrono::system_clock::now().time_since_epoch()).count(); };
    const double before = clock();
    const double now = plotix::currentDate().seconds;
    EXPECT_LE(before, now);
    EXPECT_LE(now, clock());
}

}  // namespace
