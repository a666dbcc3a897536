#include "base/TimeDistance.h"

#include <gtest/gtest.h>

namespace {

using plotix::TimeDistance;
using plotix::timeDistanceFrom;

struct Row {
    const char* name;
    const char* typed;
    TimeDistance distance;
    const char* written;
};

class TimeDistanceTest : public testing::TestWithParam<Row> {};

TEST_P(TimeDistanceTest, IsReadAndWritten)
{
    EXPECT_EQ(timeDistanceFrom(GetParam().typed), GetParam().distance);
    EXPECT_EQ(textOf(GetParam().distance), GetParam().written);
    EXPECT_EQ(timeDistanceFrom(GetParam().written), GetParam().distance);
}

INSTANTIATE_TEST_SUITE_P(
    Distances, TimeDistanceTest,
    testing::Values(Row{"Days", "7d", {0, 7, 0}, "7d"}, Row{"Weeks", "2w", {0, 14, 0}, "14d"},
                    Row{"Hours", "36h", {0, 0, 129'600}, "36h"}, Row{"Years", "1y", {12, 0, 0}, "1y"},
                    Row{"Months", " 14 months ", {14, 0, 0}, "1y 2mo"}, Row{"Minutes", "90min", {0, 0, 5'400}, "90min"},
                    Row{"MinutesByLetter", "5m", {0, 0, 300}, "5min"}, Row{"Words", "2 Weeks", {0, 14, 0}, "14d"},
                    Row{"Several", "1mo 3d 12h", {1, 3, 43'200}, "1mo 3d 12h"},
                    Row{"PartsOfSeconds", "0.25s", {0, 0, 0.25}, "0.25s"},
                    Row{"PartsOfHours", "1.5h", {0, 0, 5'400}, "90min"}),
    [](const testing::TestParamInfo<Row>& row) { return row.param.name; });

TEST(TimeDistanceTextTest, WhatIsNoDistanceIsRefused)
{
    for (const char* text : {"", " ", "7", "d", "-7d", "7d earlier", "0d", "1.5d", "9999999999999d", "2000y", "7 z"})
        EXPECT_EQ(timeDistanceFrom(text), std::nullopt) << text;
}

}  // namespace
