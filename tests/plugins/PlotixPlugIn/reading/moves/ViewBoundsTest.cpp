#include "plugins/PlotixPlugIn/reading/moves/ViewBounds.h"

#include <gtest/gtest.h>

namespace {

using plotix::boundedTimes;
using plotix::boundedValues;
using plotix::TimeSpan;

constexpr TimeSpan kRecords{1'000, 2'000};

TEST(ViewBounds, AViewAmongTheRecordsIsLeftAsItIs)
{
    EXPECT_EQ(boundedTimes({1'200, 100}, kRecords), (CPTPlotRange{1'200, 100}));
}

TEST(ViewBounds, AViewStopsATenthOfItselfBeyondTheRecords)
{
    EXPECT_EQ(boundedTimes({0, 100}, kRecords), (CPTPlotRange{990, 100}));
    EXPECT_EQ(boundedTimes({5'000, 100}, kRecords), (CPTPlotRange{1'910, 100}));
}

TEST(ViewBounds, ALongViewShowsAllRecords)
{
    EXPECT_EQ(boundedTimes({0, 1'400}, kRecords), (CPTPlotRange{740, 1'400}));
    EXPECT_EQ(boundedTimes({900, 1'400}, kRecords), (CPTPlotRange{860, 1'400}));
}

TEST(ViewBounds, NoViewIsLongerThanOneAndAHalfTimesTheRecords)
{
    EXPECT_EQ(boundedTimes({-8'500, 20'000}, kRecords), (CPTPlotRange{750, 1'500}));
}

TEST(ViewBounds, ASingleRecordBoundsNothing)
{
    EXPECT_EQ(boundedTimes({0, 10}, {5'000, 5'000}), (CPTPlotRange{0, 10}));
}

TEST(ViewBounds, SomeValuesStayInSight)
{
    EXPECT_EQ(boundedValues({30, 10}, 0, 20), (CPTPlotRange{19, 10}));
    EXPECT_EQ(boundedValues({-30, 10}, 0, 20), (CPTPlotRange{-9, 10}));
    EXPECT_EQ(boundedValues({-30, 100}, 0, 20), (CPTPlotRange{-30, 100}));
}

TEST(ViewBounds, ValuesAreNeverMadeFlatterThanAHundredth)
{
    EXPECT_EQ(boundedValues({-5'000, 10'010}, 0, 10), (CPTPlotRange{-495, 1'000}));
}

TEST(ViewBounds, AConstantBoundsNothing)
{
    EXPECT_EQ(boundedValues({100, 1}, 5, 5), (CPTPlotRange{100, 1}));
}

}  // namespace
