#include "plugins/PlotixPlugIn/logic/TimeTicks.h"

#include "tests/support/PinnedZone.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>

using plotix::timeTicksForSpan;

namespace {

struct Band {
    const char* name;
    double span;
    int majorInterval;
    int minorTicks;
    const char* pattern;
};

void PrintTo(const Band& band, std::ostream* out)
{
    *out << band.name;
}

class TimeTickTable : public testing::TestWithParam<Band> {};

TEST_P(TimeTickTable, GivesIntervalMinorTicksAndPattern)
{
    const plotix::TimeTickRow& row = timeTicksForSpan(GetParam().span);
    EXPECT_EQ(row.majorInterval, GetParam().majorInterval);
    EXPECT_EQ(row.minorTicks, GetParam().minorTicks);
    EXPECT_EQ(std::string(row.labelPattern), GetParam().pattern);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TimeTickTable,
    testing::Values(
        Band{"UnderAMinute", 59, 15, 2, "h:mm:ssa"}, Band{"OneMinute", 60, 60, 1, "h:mma"},
        Band{"FourteenMinutes", 899, 60, 1, "h:mma"}, Band{"FifteenMinutes", 900, 900, 2, "h:mma"},
        Band{"FiftyNineMinutes", 3'599, 900, 2, "h:mma"}, Band{"OneHour", 3'600, 1'800, 1, "h:mma"},
        Band{"UnderFourHours", 14'399, 1'800, 1, "h:mma"}, Band{"FourHours", 14'400, 3'600, 1, "h:mma"},
        Band{"UnderTwelveHours", 43'199, 3'600, 1, "h:mma"}, Band{"TwelveHours", 43'200, 14'400, 1, "MMM-dd\nh:mma"},
        Band{"UnderADay", 86'399, 14'400, 1, "MMM-dd\nh:mma"}, Band{"OneDay", 86'400, 43'200, 1, "MMM-dd\nh:mma"},
        Band{"UnderAWeek", 604'799, 43'200, 1, "MMM-dd\nh:mma"}, Band{"OneWeek", 604'800, 86'400, 1, "MMM\ndd"},
        Band{"UnderThirtyDays", 2'591'999, 86'400, 1, "MMM\ndd"},
        Band{"ThirtyDays", 2'592'000, 691'200, 1, "MMM-dd\nyyyy"},
        Band{"UnderSixtyDays", 5'183'999, 691'200, 1, "MMM-dd\nyyyy"},
        Band{"SixtyDays", 5'184'000, 1'382'400, 1, "MMM-dd\nyyyy"},
        Band{"UnderHalfAYear", 15'551'999, 1'382'400, 1, "MMM-dd\nyyyy"},
        Band{"HalfAYear", 15'552'000, 2'764'800, 1, "MMM-dd\nyyyy"},
        Band{"UnderAYear", 31'535'999, 2'764'800, 1, "MMM-dd\nyyyy"},
        Band{"OneYear", 31'536'000, 31'536'000, 1, "MMM-dd\nyyyy"},
        Band{"TenYears", 3.2e8, 31'536'000, 1, "MMM-dd\nyyyy"}),
    [](const testing::TestParamInfo<Band>& band) { return std::string(band.param.name); });

TEST(TimeTicks, SpanIsCutToWholeMinutesFirst)
{
    EXPECT_EQ(timeTicksForSpan(3'659).majorInterval, 1'800);
    EXPECT_EQ(timeTicksForSpan(119.9).majorInterval, 60);
}

TEST(TimeTicks, NegativeSpanTakesTheFirstRow)
{
    EXPECT_EQ(timeTicksForSpan(-1e9).majorInterval, 15);
}

TEST(TimeTicks, SpanThatIsNoNumberTakesTheLastRow)
{
    EXPECT_EQ(timeTicksForSpan(std::numeric_limits<double>::quiet_NaN()).majorInterval, 31'536'000);
    EXPECT_EQ(timeTicksForSpan(std::numeric_limits<double>::infinity()).majorInterval, 31'536'000);
}

TEST(TimeTicks, RowsStandByRisingBound)
{
    double bound = 0;
    for (const plotix::TimeTickRow& row : plotix::timeTickTable()) {
        EXPECT_LT(bound, row.spanBelow);
        bound = row.spanBelow;
    }
}

TEST(WholeMinutes, KeepsTheSign)
{
    EXPECT_EQ(plotix::wholeMinutes(90), 60);
    EXPECT_EQ(plotix::wholeMinutes(-90), -60);
    EXPECT_EQ(plotix::wholeMinutes(-30), 0);
    EXPECT_EQ(plotix::wholeMinutes(0), 0);
}

TEST(MajorIntervalForTimeSpan, BoundsBelongToTheShorterBand)
{
    EXPECT_EQ(plotix::majorIntervalForTimeSpan(3'600), 900);
    EXPECT_EQ(plotix::majorIntervalForTimeSpan(3'601), 10'800);
    EXPECT_EQ(plotix::majorIntervalForTimeSpan(86'400), 10'800);
    EXPECT_EQ(plotix::majorIntervalForTimeSpan(604'800), 86'400);
    EXPECT_EQ(plotix::majorIntervalForTimeSpan(604'804), 151'201);
}

TEST(MinorIntervalForTimeSpan, FallsAndRisesAgain)
{
    const double spans[] = {3'600, 86'400, 604'800, 2'419'200, 7'776'000, 7'776'001};
    const double counts[] = {4, 2, 1, 4, 8, 16};
    for (int band = 0; band < 6; ++band)
        EXPECT_EQ(plotix::minorIntervalForTimeSpan(spans[band]), counts[band]) << "band " << band;
}

class LabelingOrigin : public testing::Test {
protected:
    void useZone(const char* zone) { m_zone.use(zone); }

private:
    plotix::PinnedZone m_zone;
};

TEST_F(LabelingOrigin, IsTheEpochInUtc)
{
    useZone("UTC");
    EXPECT_EQ(plotix::labelingOriginForLocalMidnight(1.7e9), 0);
}

TEST_F(LabelingOrigin, PutsDayTicksOnLocalMidnight)
{
    useZone("America/New_York");
    const double winter = 1357016400;  // 2013-01-01 00:00 in New York
    EXPECT_EQ(std::fmod(winter - plotix::labelingOriginForLocalMidnight(winter), 86'400), 0);
}

TEST_F(LabelingOrigin, FollowsTheZonesOffsetAtTheMoment)
{
    useZone("America/New_York");
    EXPECT_EQ(plotix::labelingOriginForLocalMidnight(1357016400), 5 * 3'600);
    EXPECT_EQ(plotix::labelingOriginForLocalMidnight(1372651200), 4 * 3'600);  // 2013-07-01
}

TEST_F(LabelingOrigin, AnswersForMomentsBeyondAllCalendars)
{
    useZone("UTC");
    EXPECT_EQ(plotix::labelingOriginForLocalMidnight(1e300), 0);
    EXPECT_EQ(plotix::labelingOriginForLocalMidnight(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace
