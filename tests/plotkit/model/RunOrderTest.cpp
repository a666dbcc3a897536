#include "plotkit/model/RunOrder.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class RunOrderTest : public testing::Test {
protected:
    /// Ten thousand runs of a second each.
    RunOrderTest()
    {
        for (int run = 0; run < 10'000; ++run) {
            runs->first.push_back(run);
            runs->last.push_back(run + 0.5);
        }
    }
    bool isSorted(std::size_t count = 10'000) const { return plotkit::areTimesSorted(runs, count); }

    std::shared_ptr<plotix::TimeRuns> runs = std::make_shared<plotix::TimeRuns>();
};

TEST_F(RunOrderTest, TimesThatNeverDecreaseAreSorted)
{
    runs->first[5000] = runs->last[4999];
    EXPECT_TRUE(isSorted());
}

TEST_F(RunOrderTest, ARunThatBeginsBeforeTheOneBeforeEndsIsNot)
{
    runs->first[5000] = 4999.25;
    EXPECT_FALSE(isSorted());
}

TEST_F(RunOrderTest, ARunThatEndsBeforeItBeginsIsNot)
{
    runs->last[9999] = 9998.75;
    EXPECT_FALSE(isSorted());
}

TEST_F(RunOrderTest, TimesThatAreNoNumbersAreNot)
{
    runs->last[9999] = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(isSorted());
}

TEST_F(RunOrderTest, RunsBeforeWhatIsOutOfOrderAreSorted)
{
    runs->first[5000] = 0;
    EXPECT_TRUE(isSorted(5000));
    EXPECT_FALSE(isSorted(5001));
}

TEST_F(RunOrderTest, OthersThatComeLaterAreLookedAtAnew)
{
    EXPECT_TRUE(isSorted());
    const auto others = std::make_shared<plotix::TimeRuns>(*runs);
    others->first[1] = -1;
    EXPECT_FALSE(plotkit::areTimesSorted(others, 10'000));
    EXPECT_TRUE(isSorted());
}

}  // namespace
