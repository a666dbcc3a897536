#include "plotkit/model/UsualDistance.h"

#include "tests/plotkit/layout/SeriesBuilder.h"

#include <gtest/gtest.h>

namespace {

class UsualDistanceTest : public testing::Test {
protected:
    void addEvery(double distance, int count)
    {
        for (int index = 0; index < count; ++index)
            builder.add(m_time += distance, 1);
    }
    double distance() const { return plotkit::usualDistance(*builder.series()); }

    SeriesBuilder builder;

private:
    double m_time = 0;
};

TEST_F(UsualDistanceTest, IsThatOfMostPoints)
{
    addEvery(60, 100);
    addEvery(9000, 3);
    addEvery(60, 100);
    EXPECT_EQ(distance(), 60);
}

TEST_F(UsualDistanceTest, OfLongSeriesAFewThousandAreEnough)
{
    addEvery(1, 900'000);
    addEvery(5, 300'000);
    EXPECT_EQ(distance(), 1);
}

TEST_F(UsualDistanceTest, CountsPointsAndNotDroppedElements)
{
    for (int second = 0; second < 6000; ++second)
        builder.add(second, 1, second % 10 == 0);
    EXPECT_EQ(distance(), 10);
}

TEST_F(UsualDistanceTest, IsNothingWithoutTwoPoints)
{
    EXPECT_EQ(distance(), 0);
    addEvery(60, 1);
    EXPECT_EQ(distance(), 0);
}

TEST_F(UsualDistanceTest, IsNothingWhereTimeTurnsBack)
{
    addEvery(60, 10);
    addEvery(-60, 10);
    EXPECT_EQ(distance(), 0);
}

}  // namespace
