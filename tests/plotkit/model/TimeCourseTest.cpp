#include "plotkit/model/TimeCourse.h"

#include "plotkit/model/TimeOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

namespace {

using plotkit::TimeCourse;

constexpr std::size_t kCount = 3 * TimeCourse::kLineElements + 777;

class TimeCourseTest : public testing::Test {
protected:
    void take(std::size_t count, const std::function<double(std::size_t)>& timeOf)
    {
        times.resize(count);
        for (std::size_t at = 0; at < count; ++at)
            times[at] = timeOf(at);
        course = TimeCourse();
        course.extend(times);
    }

    /// Every answer holds: distances are those to the times within `off`, and the value lies between if both exceed
    /// `off`.
    void expectHonest(double value, std::size_t guess)
    {
        const auto found = course.around(value, guess);
        if (!found || !std::isfinite(found->off))
            return;
        ASSERT_LT(found->after, times.size());
        ASSERT_EQ(found->after % TimeCourse::kBlock, 0U);
        ASSERT_LE(std::abs(found->above - (times[found->after] - value)), found->off);
        ASSERT_LE(std::abs(found->below - (value - times[found->after - TimeCourse::kBlock])), found->off);
        answered += found->above > found->off && found->below > found->off ? 1 : 0;
    }

    void expectHonestEverywhere()
    {
        std::mt19937 random(1);
        const double length = times.back() - times.front();
        std::uniform_real_distribution<double> share(-0.01, 1.01);
        for (int round = 0; round < 3000; ++round) {
            const double value =
                round % 5 == 0 ? times[random() % times.size()] : times.front() + share(random) * length;
            const auto at =
                static_cast<std::size_t>(std::lower_bound(times.begin(), times.end(), value) - times.begin());
            for (const std::size_t guess : {at, at / 2, at + 100, std::size_t{0}, times.size()})
                expectHonest(value, guess);
        }
    }

    std::vector<double> times;
    TimeCourse course;
    int answered = 0;
};

TEST_F(TimeCourseTest, EvenTimesAreFoundHoweverFarFromZero)
{
    for (const double start : {0.0, 1.7e9, -1.7e9, 1e15}) {
        answered = 0;
        take(kCount, [start](std::size_t at) { return start + static_cast<double>(at); });
        expectHonestEverywhere();
        EXPECT_GT(answered, 3000) << start;
    }
}

TEST_F(TimeCourseTest, ShortStepsThatRoundAreFoundToo)
{
    take(kCount, [](std::size_t at) { return 1.7e9 + static_cast<double>(at) * 0.1; });
    expectHonestEverywhere();
    EXPECT_GT(answered, 3000);
}

TEST_F(TimeCourseTest, StepsTooShortForTheirDistanceFromZeroAreNotGuessed)
{
    take(kCount, [](std::size_t at) { return 1e15 + static_cast<double>(at) * 0.004; });
    expectHonestEverywhere();
}

TEST_F(TimeCourseTest, ATremblingClockIsFoundNearItsLine)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> late(0, 0.2);
    take(kCount, [&](std::size_t at) { return 1.7e9 + static_cast<double>(at) + late(random); });
    expectHonestEverywhere();
    EXPECT_GT(answered, 3000);
}

TEST_F(TimeCourseTest, AGapSpoilsNothingBeyondItsLine)
{
    take(kCount, [](std::size_t at) { return static_cast<double>(at < 5000 ? at : at + 100'000); });
    expectHonestEverywhere();
    const auto beyond = course.around(times[9000] + 0.5, 9000);
    ASSERT_TRUE(beyond);
    EXPECT_EQ(beyond->after, 9024U);
    EXPECT_LT(beyond->off, 0.5);
    const auto within = course.around(times[4999] + 50'000, 5000);
    EXPECT_TRUE(!within || within->off > 1000);
}

TEST_F(TimeCourseTest, RepeatedTimesAreNeverTakenForAPlaceBetweenBlocks)
{
    take(kCount, [](std::size_t at) { return static_cast<double>(at / 5000 * 60); });
    expectHonestEverywhere();
    take(kCount, [](std::size_t) { return 7.0; });
    for (const double value : {6.0, 7.0, 8.0}) {
        const auto found = course.around(value, 100);
        EXPECT_FALSE(found && found->above > found->off && found->below > found->off) << value;
    }
}

TEST_F(TimeCourseTest, FewTimesTellNothing)
{
    EXPECT_FALSE(course.around(1, 0));
    take(32, [](std::size_t at) { return static_cast<double>(at); });
    EXPECT_FALSE(course.around(16, 16));
    take(33, [](std::size_t at) { return static_cast<double>(at); });
    ASSERT_TRUE(course.around(16, 16));
    EXPECT_EQ(course.around(16, 16)->after, 32U);
}

TEST_F(TimeCourseTest, TimesTooFarApartForANumberTellNothing)
{
    const double most = std::numeric_limits<double>::max();
    take(100, [most](std::size_t at) { return at < 50 ? -most : most; });
    const auto found = course.around(0, 50);
    EXPECT_TRUE(!found || std::isinf(found->off));
}

TEST_F(TimeCourseTest, TakenInPiecesItIsTheSame)
{
    take(kCount, [](std::size_t at) { return static_cast<double>(at) * 1.5; });
    TimeCourse pieces;
    for (const std::size_t count : {std::size_t{1}, std::size_t{100}, std::size_t{4096}, std::size_t{9000}, kCount})
        pieces.extend(std::span(times).first(count));
    EXPECT_EQ(pieces.elements(), course.elements());
    for (std::size_t at = 0; at < kCount; at += 101) {
        const auto one = course.around(times[at] + 0.7, at);
        const auto other = pieces.around(times[at] + 0.7, at);
        ASSERT_EQ(one.has_value(), other.has_value());
        ASSERT_TRUE(!one || (one->after == other->after && one->above == other->above && one->off == other->off));
    }
}

TEST_F(TimeCourseTest, SeriesOfOneTimeArrayShareIt)
{
    take(kCount, [](std::size_t at) { return static_cast<double>(at); });
    const auto shared = plotix::SharedArray<double>::fromVector(times);
    const auto known = plotkit::courseOfTimes(shared, kCount);
    ASSERT_TRUE(known);
    EXPECT_EQ(known->elements(), kCount);
    EXPECT_EQ(plotkit::courseOfTimes(shared, kCount), known);
    EXPECT_EQ(plotkit::courseOfTimes(shared, 0), nullptr);
}

TEST_F(TimeCourseTest, ThereIsNoneBeyondATimeOutOfOrder)
{
    take(kCount, [](std::size_t at) { return at == 9000 ? 0.0 : static_cast<double>(at); });
    const auto shared = plotix::SharedArray<double>::fromVector(times);
    EXPECT_EQ(plotkit::courseOfTimes(shared, kCount), nullptr);
    const auto known = plotkit::courseOfTimes(shared, 9000);
    ASSERT_TRUE(known);
    EXPECT_LE(known->elements(), 9000U);
}

}  // namespace
