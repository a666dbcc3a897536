#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"

#include "tests/plugins/PlotixPlugIn/reading/figures/LineFixture.h"

#include <algorithm>
#include <numeric>

namespace {

using plotix::LineFigures;

class LineSummaryTest : public LineFixture {
protected:
    void expectAsOneByOne(double from, double to)
    {
        const LineFigures figures = line->figures(from, to);
        const auto inside = points(from, to);
        ASSERT_EQ(figures.points, static_cast<std::int64_t>(inside.size()));
        if (!inside.empty())
            expectValues(figures, inside);
        double covered = 0, held = 0, straight = 0;
        forEachWay(from, to, [&](double length, double value, double first, double last) {
            covered += length;
            held += value * length;
            straight += (first + last) / 2 * length;
        });
        const double ends = endsOf(from, to);
        EXPECT_NEAR(figures.covered, covered + ends, 1e-6 * (1 + covered));
        if (covered > 0) {
            EXPECT_NEAR(figures.heldIntegral, held, 1e-8 * (1 + 100 * covered));
            EXPECT_NEAR(figures.straightIntegral, straight, 1e-8 * (1 + 100 * covered));
            EXPECT_NEAR(figures.coverage, (covered + ends) / (to - from), 1e-6);
        }
    }
    /// What lies before the first record of all and after the last one, as far as it would be joined.
    double endsOf(double from, double to) const
    {
        const auto all = points(-HUGE_VAL, HUGE_VAL);
        if (points(from, to).empty())
            return 0;
        const double before = std::max(0.0, all.front().time - from);
        const double after = std::max(0.0, to - all.back().time);
        return (before <= join ? before : 0) + (after <= join ? after : 0);
    }
    static void expectValues(const LineFigures& figures, const std::vector<plotix::LineSummary::Point>& inside)
    {
        const auto less = [](const auto& one, const auto& other) { return one.value < other.value; };
        const auto lowest = *std::min_element(inside.begin(), inside.end(), less);
        const auto highest = *std::max_element(inside.begin(), inside.end(), less);
        EXPECT_EQ(figures.minimum, lowest.value);
        EXPECT_EQ(figures.minimumTime, lowest.time);
        EXPECT_EQ(figures.maximum, highest.value);
        EXPECT_EQ(figures.maximumTime, highest.time);
        EXPECT_EQ(figures.first, inside.front().value);
        EXPECT_EQ(figures.firstTime, inside.front().time);
        EXPECT_EQ(figures.last, inside.back().value);
        EXPECT_EQ(figures.lastTime, inside.back().time);
        long double sum = 0, squares = 0;
        for (const auto& point : inside)
            sum += point.value;
        const auto count = static_cast<long double>(inside.size());
        for (const auto& point : inside)
            squares += (point.value - sum / count) * (point.value - sum / count);
        EXPECT_NEAR(figures.sum, static_cast<double>(sum), 1e-9 * std::abs(static_cast<double>(sum)) + 1e-9);
        EXPECT_NEAR(figures.mean, static_cast<double>(sum / count), 1e-9);
        if (inside.size() > 1) {
            EXPECT_NEAR(figures.deviation, static_cast<double>(std::sqrt(squares / (count - 1))), 1e-9);
        }
    }
};

TEST_F(LineSummaryTest, AnySpanOfManyRecordsHasTheFiguresOfItsRecords)
{
    recordMany(30'000);
    summarise(60);
    for (int round = 0; round < 40; ++round) {
        double from = times.front() - 50 + static_cast<double>(random() % 40'000);
        double to = times.front() - 50 + static_cast<double>(random() % 40'000);
        if (from > to)
            std::swap(from, to);
        expectAsOneByOne(from, to);
    }
    expectAsOneByOne(times.front(), times.back());
}

TEST_F(LineSummaryTest, ShortSpansToo)
{
    recordMany(9'000);
    summarise(60, false);
    for (int round = 0; round < 300; ++round) {
        const double from = times.front() + static_cast<double>(random() % 900'000) / 100;
        expectAsOneByOne(from, from + static_cast<double>(random() % 1'000) / 100);
    }
}

TEST_F(LineSummaryTest, WithoutRecordsNoFigureExists)
{
    summarise(60);
    const LineFigures figures = line->figures(0, 100);
    EXPECT_EQ(figures.points, 0);
    EXPECT_TRUE(std::isnan(figures.minimum) && std::isnan(figures.maximumTime) && std::isnan(figures.sum));
    EXPECT_TRUE(std::isnan(figures.heldMean) && std::isnan(figures.straightIntegral));
    EXPECT_EQ(figures.coverage, 0);
    EXPECT_EQ(figures.gaps, 1);
}

TEST_F(LineSummaryTest, AReversedSpanHasNoFigures)
{
    record(10, 1);
    summarise(60);
    EXPECT_EQ(line->figures(20, 0).points, 0);
}

TEST_F(LineSummaryTest, OneRecordHasNoDeviationAndCoversNothing)
{
    record(10, 7);
    summarise(60);
    const LineFigures figures = line->figures(10, 10);
    EXPECT_EQ(figures.mean, 7);
    EXPECT_EQ(figures.range(), 0);
    EXPECT_TRUE(std::isnan(figures.deviation));
    EXPECT_TRUE(std::isnan(figures.heldMean));
    EXPECT_TRUE(std::isnan(figures.coverage));
}

TEST_F(LineSummaryTest, OfEqualExtremesTheFirstIsTold)
{
    record(0, 1);
    record(1, 5);
    record(2, 5);
    record(3, 1);
    summarise(60);
    EXPECT_EQ(line->figures(0, 3).maximumTime, 1);
    EXPECT_EQ(line->figures(0, 3).minimumTime, 0);
}

TEST_F(LineSummaryTest, AHeldValueCountsUntilTheNextAndAStraightLineInBetween)
{
    record(0, 0);
    record(30, 10);
    record(40, 0);
    summarise(60);
    const LineFigures figures = line->figures(0, 40);
    EXPECT_DOUBLE_EQ(figures.heldMean, 100.0 / 40);
    EXPECT_DOUBLE_EQ(figures.straightMean, 200.0 / 40);
    EXPECT_DOUBLE_EQ(figures.mean, 10.0 / 3);
}

TEST_F(LineSummaryTest, TheLineCountsIntoTheSpanAndOutOfIt)
{
    record(0, 0);
    record(10, 10);
    record(20, 0);
    summarise(60);
    const LineFigures figures = line->figures(5, 15);
    EXPECT_EQ(figures.points, 1);
    EXPECT_DOUBLE_EQ(figures.straightMean, 7.5);
    EXPECT_DOUBLE_EQ(figures.heldMean, 5);
    EXPECT_EQ(figures.coverage, 1);
}

TEST_F(LineSummaryTest, BetweenTwoRecordsTheLineHasAMeanAndNoExtremes)
{
    record(0, 0);
    record(10, 10);
    summarise(60);
    const LineFigures figures = line->figures(4, 6);
    EXPECT_EQ(figures.points, 0);
    EXPECT_DOUBLE_EQ(figures.straightMean, 5);
    EXPECT_DOUBLE_EQ(figures.heldMean, 0);
    EXPECT_TRUE(std::isnan(figures.minimum));
    EXPECT_EQ(figures.gaps, 0);
}

TEST_F(LineSummaryTest, AGapCountsNothingAndIsCounted)
{
    record(0, 1);
    record(10, 1);
    record(110, 5);
    record(120, 5);
    summarise(60);
    const LineFigures figures = line->figures(0, 120);
    EXPECT_EQ(figures.gaps, 1);
    EXPECT_DOUBLE_EQ(figures.coverage, 20.0 / 120);
    EXPECT_DOUBLE_EQ(figures.heldMean, 3);
}

TEST_F(LineSummaryTest, InvalidRecordsLeaveAGapWhereTheyAreMany)
{
    for (int time = 0; time <= 100; time += 10)
        record(time, time > 20 && time < 80 ? kNone : 1);
    summarise(30);
    EXPECT_EQ(line->figures(0, 100).gaps, 1);
    EXPECT_DOUBLE_EQ(line->figures(0, 100).coverage, 0.4);
}

TEST_F(LineSummaryTest, ASpanThatBeginsBeforeTheRecordsHasAGapThere)
{
    record(1000, 1);
    record(1010, 1);
    summarise(60);
    EXPECT_EQ(line->figures(0, 1010).gaps, 1);
    EXPECT_EQ(line->figures(950, 1060).gaps, 0);
    EXPECT_EQ(line->figures(1000, 5000).gaps, 1);
}

TEST_F(LineSummaryTest, ASpanThatEndsSoonAfterTheLastRecordIsCovered)
{
    for (int time = 10; time <= 90; time += 10)
        record(time, 1);
    summarise(50);
    EXPECT_EQ(line->figures(0, 100).coverage, 1);
    EXPECT_DOUBLE_EQ(line->figures(0, 180).coverage, 90.0 / 180);
}

TEST_F(LineSummaryTest, LargeValuesKeepTheirSmallDeviation)
{
    for (int i = 0; i < 10'000; ++i)
        record(i, 1e9 + i % 2);
    summarise(60);
    EXPECT_NEAR(line->figures(0, 10'000).deviation, 0.5, 1e-4);
}

TEST_F(LineSummaryTest, StopsWhenItIsTold)
{
    recordMany(10'000);
    std::stop_source stop;
    stop.request_stop();
    using plotix::SharedArray;
    const plotix::FigureRecords records(SharedArray<double>::fromVector(times),
                                        SharedArray<double>::fromVector(values));
    EXPECT_EQ(plotix::LineSummary::make(records, 60, {stop.get_token(), {}}), nullptr);
}

TEST_F(LineSummaryTest, TellsEveryRecordOnce)
{
    recordMany(300'000);
    using plotix::SharedArray;
    const plotix::FigureRecords records(SharedArray<double>::fromVector(times),
                                        SharedArray<double>::fromVector(values));
    std::vector<std::size_t> told;
    plotix::LineSummary::make(records, 60, {{}, [&](std::size_t count) { told.push_back(count); }});
    EXPECT_EQ(std::accumulate(told.begin(), told.end(), std::size_t{0}), 300'000U);
    EXPECT_GT(told.size(), 1U);
}

}  // namespace
