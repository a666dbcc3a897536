#include "plugins/PlotixPlugIn/reading/figures/LimitSummary.h"

#include "tests/plugins/PlotixPlugIn/reading/figures/LineFixture.h"

#include <algorithm>

namespace {

using plotix::LimitFigures;

class LimitSummaryTest : public LineFixture {
protected:
    LimitFigures figures(double limit, double from, double to)
    {
        return plotix::LimitSummary::make(line, limit)->figures(from, to);
    }
    void expectAsOneByOne(const plotix::LimitSummary& summary, double from, double to)
    {
        const double limit = summary.limit();
        LimitFigures expected;
        forEachWay(from, to, [&](double length, double value, double first, double last) {
            expected.heldAbove += value > limit ? length : 0;
            expected.heldBelow += value < limit ? length : 0;
            const double low = std::min(first, last);
            const double high = std::max(first, last);
            const double above = low >= limit    ? (high > limit ? 1 : 0)
                                 : high <= limit ? 0
                                                 : (high - limit) / (high - low);
            expected.straightAbove += above * length;
            expected.straightBelow += (high == limit && low == limit ? 0 : 1 - above) * length;
            expected.crossings += (first > limit) != (last > limit) ? 1 : 0;
        });
        const LimitFigures found = summary.figures(from, to);
        EXPECT_NEAR(found.heldAbove, expected.heldAbove, 1e-3);
        EXPECT_NEAR(found.heldBelow, expected.heldBelow, 1e-3);
        EXPECT_NEAR(found.straightAbove, expected.straightAbove, 1e-3);
        EXPECT_NEAR(found.straightBelow, expected.straightBelow, 1e-3);
        EXPECT_EQ(found.crossings, expected.crossings);
    }
};

TEST_F(LimitSummaryTest, AnySpanIsAddedUpFromItsRecords)
{
    recordMany(20'000);
    summarise(60);
    for (const double limit : {0.0, 20.0, 55.5, 1e6}) {
        const auto summary = plotix::LimitSummary::make(line, limit);
        for (int round = 0; round < 10; ++round) {
            const double from = times.front() - 20 + static_cast<double>(random() % 20'000);
            expectAsOneByOne(*summary, from, from + static_cast<double>(random() % 20'000));
        }
    }
}

TEST_F(LimitSummaryTest, AStraightLineIsAboveFromWhereItCrosses)
{
    record(0, 0);
    record(10, 10);
    record(20, 10);
    summarise(60);
    EXPECT_DOUBLE_EQ(figures(6, 0, 20).straightAbove, 14);
    EXPECT_DOUBLE_EQ(figures(6, 0, 20).straightBelow, 6);
    EXPECT_EQ(figures(6, 0, 20).crossings, 1);
}

TEST_F(LimitSummaryTest, AHeldValueIsAboveFromItsRecord)
{
    record(0, 0);
    record(10, 10);
    record(25, 0);
    summarise(60);
    EXPECT_DOUBLE_EQ(figures(6, 0, 25).heldAbove, 15);
    EXPECT_DOUBLE_EQ(figures(6, 0, 25).heldBelow, 10);
}

TEST_F(LimitSummaryTest, AtTheLimitIsNeitherAboveNorBelow)
{
    record(0, 5);
    record(10, 5);
    summarise(60);
    const LimitFigures found = figures(5, 0, 10);
    EXPECT_EQ(found.heldAbove + found.heldBelow + found.straightAbove + found.straightBelow, 0);
}

TEST_F(LimitSummaryTest, AGapIsNoTimeAndNoCrossing)
{
    record(0, 0);
    record(1000, 10);
    summarise(60);
    EXPECT_EQ(figures(5, 0, 1000).straightAbove, 0);
    EXPECT_EQ(figures(5, 0, 1000).crossings, 0);
}

TEST_F(LimitSummaryTest, ASpanBetweenTwoRecordsHasItsPartOfTheWay)
{
    record(0, 0);
    record(10, 10);
    summarise(60);
    EXPECT_DOUBLE_EQ(figures(5, 4, 6).straightAbove, 1);
    EXPECT_DOUBLE_EQ(figures(5, 4, 6).heldBelow, 2);
}

}  // namespace
