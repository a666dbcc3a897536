#include "TrendViewFixture.h"

#include "plotkit/model/CPTFormatter.h"
#include "tests/support/PinnedZone.h"

namespace {

class TrendAxes : public TrendViewFixture {
protected:
    CPTXYAxis& xAxis() { return *trend().graph()->axisSet()->firstAxis(); }
    CPTXYAxis& yAxis() { return *trend().graph()->axisSet()->lastAxis(); }
    CPTXYPlotSpace& space() { return *trend().graph()->defaultPlotSpace(); }
    void showSpan(double seconds)
    {
        panel().setFromDateValue(plotix::Date{kFrom});
        panel().setToDateValue(plotix::Date{kFrom + seconds});
        trend().adjustXAxis();
    }
    void expectTimeTicks(double interval, int minorTicks, const QString& pattern)
    {
        EXPECT_EQ(xAxis().majorIntervalLength(), interval);
        EXPECT_EQ(xAxis().minorTicksPerInterval(), minorTicks);
        EXPECT_EQ(xAxis().labelFormatter()->pattern(), pattern);
    }
    KTVRecordDictionaryPtr valuesFrom(double low, double high) const
    {
        return recordsAt({kFrom, kTo}).column("airTemperature", {low, high}).build();
    }
};

TEST_F(TrendAxes, TimeTicksFollowThePanelsDatesAndNotThePlotSpace)
{
    openTrendWithData();
    showSpan(59);
    expectTimeTicks(15, 2, "h:mm:ssa");
    showSpan(604'800);
    expectTimeTicks(86'400, 1, "MMM\ndd");
}

TEST_F(TrendAxes, SpanIsCutToWholeMinutes)
{
    openTrendWithData();
    showSpan(3'659);
    expectTimeTicks(1'800, 1, "h:mma");
}

TEST_F(TrendAxes, ReversedDatesTakeTheFirstRow)
{
    openTrendWithData();
    showSpan(-86'400);
    expectTimeTicks(15, 2, "h:mm:ssa");
}

TEST_F(TrendAxes, EveryCallSetsANewFormatter)
{
    openTrendWithData();
    const CPTFormatterPtr before = xAxis().labelFormatter();
    trend().adjustXAxis();
    EXPECT_NE(xAxis().labelFormatter(), before);
}

TEST_F(TrendAxes, LabelsCountFromTheEpoch)
{
    openTrendWithData();
    const auto formatter = std::dynamic_pointer_cast<const CPTTimeFormatter>(xAxis().labelFormatter());
    ASSERT_NE(formatter, nullptr);
    EXPECT_EQ(formatter->referenceDate(), plotix::Date{0});
}

TEST_F(TrendAxes, TicksCountFromLocalMidnight)
{
    const plotix::PinnedZone zone("Asia/Tokyo");
    openTrendWithData();
    EXPECT_EQ(xAxis().labelingOrigin(), -9 * 3'600);
}

TEST_F(TrendAxes, FitShowsTheExtentOfTheDataWithoutPadding)
{
    openTrend();
    answer(valuesFrom(-5, 15));
    EXPECT_EQ(space().yRange(), (CPTPlotRange{-5, 20}));
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom, kTo - kFrom}));
    EXPECT_EQ(trend().plotRangeForY(), (CPTPlotRange{-5, 20}));
}

// The fit goes through the plot-space delegate, so what the panel shows afterwards is the extent, not what was asked.
TEST_F(TrendAxes, PickersAfterAFetchShowTheDatasExtent)
{
    openTrend();
    answer(recordsAt({kFrom + 600, kTo - 600}).column("airTemperature", {20, 21}).build());
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom + 600});
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kTo - 600});
    trend().refreshPlot();
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom + 600});
}

TEST_F(TrendAxes, FirstRebuildKeepsIntervalTwentyAndTheDefaultLabels)
{
    openTrend();
    const CPTFormatterPtr themeLabels = CPTXYGraph().axisSet()->yAxis()->labelFormatter();
    answer(valuesFrom(0, 40));
    EXPECT_EQ(yAxis().majorIntervalLength(), 20);
    EXPECT_EQ(yAxis().minorTicksPerInterval(), 1);
    EXPECT_EQ(std::dynamic_pointer_cast<const CPTTimeFormatter>(yAxis().labelFormatter()), nullptr);
    EXPECT_EQ(yAxis().labelFormatter() ? yAxis().labelFormatter()->pattern() : QString(),
              themeLabels ? themeLabels->pattern() : QString());
    EXPECT_EQ(trend().plotRangeForY(), (CPTPlotRange{0, 40}));
}

TEST_F(TrendAxes, LaterRebuildsSetIntervalAndLabels)
{
    openTrend();
    answer(valuesFrom(0, 40));
    answerRefresh(valuesFrom(0, 40));
    EXPECT_EQ(yAxis().majorIntervalLength(), 4);
    EXPECT_EQ(yAxis().labelFormatter()->pattern(), "#.#");
}

TEST_F(TrendAxes, SmallSpansGetTwoDecimals)
{
    openTrend();
    answer(valuesFrom(0, 6.99));
    answerRefresh(valuesFrom(0, 6.99));
    EXPECT_EQ(yAxis().labelFormatter()->pattern(), "#.##");
    answerRefresh(valuesFrom(0, 7));
    EXPECT_EQ(yAxis().labelFormatter()->pattern(), "#.#");
}

TEST_F(TrendAxes, RebuildWithoutAPlotLeavesRangesAndLabels)
{
    openTrend();
    answer(valuesFrom(0, 40));
    answerRefresh(valuesFrom(0, 40));
    const CPTFormatterPtr labels = yAxis().labelFormatter();
    answerRefresh(records().withoutTime().build());
    EXPECT_EQ(space().yRange(), (CPTPlotRange{0, 40}));
    EXPECT_EQ(trend().plotRangeForY(), (CPTPlotRange{0, 40}));
    EXPECT_EQ(yAxis().labelFormatter(), labels);
}

TEST_F(TrendAxes, SingleValueIsShownATenthHighAndLeavesTheDates)
{
    openTrend();
    answer(recordsAt({kFrom, kFrom}).column("airTemperature", {20, 20}).build());
    EXPECT_EQ(space().yRange(), (CPTPlotRange{20, 0.1}));
    EXPECT_EQ(trend().plotRangeForY(), (CPTPlotRange{20, 0.1}));
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kTo});
}

TEST_F(TrendAxes, TooTallDataIsCutFromItsLowEnd)
{
    openTrend();
    answer(valuesFrom(-100, 6'000));
    EXPECT_EQ(space().yRange(), (CPTPlotRange{-100, 5'000}));
    EXPECT_EQ(trend().plotRangeForY(), (CPTPlotRange{-100, 5'000}));
}

TEST_F(TrendAxes, ModifierKeysHoldTheFitToo)
{
    openTrendWithData();
    const CPTPlotRange before = space().yRange();
    desktop().holdDown(Qt::AltModifier);
    answerRefresh(valuesFrom(0, 40));
    EXPECT_EQ(space().yRange(), before);
}

TEST_F(TrendAxes, OperationsNobodyCallsStillAnswer)
{
    makeTrend();
    EXPECT_EQ(trend().computeOptimalMajorIntervalForDomainWithTimeSpan(3'600), 900);
    EXPECT_EQ(trend().computeOptimalMinorIntervalForDomainWithTimeSpan(3'600), 4);
    EXPECT_EQ(trend().computeOptimalMajorIntervalForRangeWithSpan(25), 3);
}

}  // namespace
