#include "plotkit/layout/GraphLayout.h"

#include "plotkit/layout/AxisTicks.h"
#include "plotkit/layout/GraphGeometry.h"
#include "tests/plotkit/layout/RuledText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace plotkit;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDay = 86400;

class GraphLayoutTest : public testing::Test {
protected:
    GraphLayoutTest()
    {
        graph.setPadding({20, 20, 20, 20});
        graph.setPlotAreaFramePadding({20, 60, 50, 20});
        styleAxis(*graph.axisSet()->xAxis(), CPTAxisLabelingPolicy::FixedInterval, QStringLiteral("Time"), -20);
        styleAxis(*graph.axisSet()->yAxis(), CPTAxisLabelingPolicy::Automatic, QStringLiteral("Value"), 10);
        showDays(10);
        graph.defaultPlotSpace()->setYRange({0, 100});
        formatX(QStringLiteral("MMM\ndd"));
    }

    static void styleAxis(CPTXYAxis& axis, CPTAxisLabelingPolicy policy, const QString& title, double titleOffset)
    {
        axis.setLabelingPolicy(policy);
        axis.setTitle(title);
        axis.setTitleOffset(titleOffset);
        axis.setAxisConstraints(CPTConstraints{0});
        axis.setMajorTickLength(12);
        axis.setMinorTickLength(8);
    }

    void formatX(const QString& pattern)
    {
        graph.axisSet()->xAxis()->setTickThinning(CPTTickThinning::ClockTimes);
        graph.axisSet()->xAxis()->setLabelFormatter(std::make_shared<CPTTimeFormatter>(pattern));
    }

    void showDays(double days)
    {
        graph.defaultPlotSpace()->setXRange({1.4e9, days * kDay});
        setInterval(kDay);
    }
    void setInterval(double seconds) { graph.axisSet()->xAxis()->setMajorIntervalLength(seconds); }

    GraphLayout layOut(double width = 800, double height = 500)
    {
        rectangle = QRectF(0, 0, width, height);
        return layOutGraph(graph, rectangle, sizeOfText);
    }

    void expectLabelsApartAndInside(const AxisLayout& axis)
    {
        for (std::size_t index = 0; index < axis.labels.size(); ++index) {
            EXPECT_TRUE(rectangle.contains(axis.labels[index].box)) << qPrintable(axis.labels[index].text);
            for (std::size_t other = 0; other < index; ++other)
                EXPECT_FALSE(axis.labels[index].box.intersects(axis.labels[other].box));
        }
    }

    void expectNothingCollides(const GraphLayout& layout)
    {
        expectLabelsApartAndInside(layout.xAxis());
        expectLabelsApartAndInside(layout.yAxis());
        for (const AxisLayout* axis : {&layout.xAxis(), &layout.yAxis()}) {
            if (!axis->title)
                continue;
            EXPECT_TRUE(rectangle.contains(axis->title->box));
            for (const AxisLabel& label : axis->labels)
                EXPECT_FALSE(axis->title->box.intersects(label.box)) << qPrintable(label.text);
        }
    }

    CPTXYGraph graph;
    QRectF rectangle;
};

TEST_F(GraphLayoutTest, PaddingsMakeFrameAndPlotArea)
{
    const GraphLayout layout = layOut();
    EXPECT_EQ(layout.frame, QRectF(20, 20, 760, 460));
    EXPECT_EQ(layout.plotArea, QRectF(80, 40, 680, 390));
    EXPECT_EQ(geometryOfGraph(graph, rectangle, sizeOfText).plotArea, layout.plotArea);
}

TEST_F(GraphLayoutTest, FixedMajorsStandAtWholeMultiplesFromTheOrigin)
{
    graph.axisSet()->xAxis()->setLabelingOrigin(-3600);
    const GraphLayout layout = layOut();
    ASSERT_GE(layout.xAxis().majorValues.size(), 10U);
    for (const double value : layout.xAxis().majorValues)
        EXPECT_EQ(std::fmod(value + 3600, kDay), 0);
}

TEST_F(GraphLayoutTest, MinorsDivideTheInterval)
{
    graph.axisSet()->xAxis()->setMinorTicksPerInterval(2);
    const AxisLayout x = layOut().xAxis();
    for (const double value : x.minorValues)
        EXPECT_NEAR(std::abs(std::remainder(value, kDay)), kDay / 3, 1e-3);
    EXPECT_NEAR(static_cast<double>(x.minorValues.size()), 20, 1);
    graph.axisSet()->xAxis()->setMinorTicksPerInterval(0);
    EXPECT_TRUE(layOut().xAxis().minorValues.empty());
}

TEST_F(GraphLayoutTest, TicksCrossTheAxisAndGridLinesSpanThePlotArea)
{
    const GraphLayout layout = layOut();
    EXPECT_EQ(layout.xAxis().line, QLineF(80, 430, 760, 430));
    EXPECT_EQ(layout.yAxis().line, QLineF(80, 430, 80, 40));
    ASSERT_EQ(layout.xAxis().majorTicks.size(), layout.xAxis().majorValues.size());
    EXPECT_EQ(layout.xAxis().majorTicks.front().y1(), 424);
    EXPECT_EQ(layout.xAxis().majorTicks.front().y2(), 436);
    EXPECT_EQ(layout.xAxis().minorTicks.front().y2(), 434);
    EXPECT_EQ(layout.xAxis().majorGridLines.front().y1(), 40);
    EXPECT_EQ(layout.xAxis().majorGridLines.front().y2(), 430);
    EXPECT_EQ(layout.yAxis().majorGridLines.front().x2(), 760);
}

TEST_F(GraphLayoutTest, TicksMayStandToOneSideOnly)
{
    graph.axisSet()->xAxis()->setTickDirection(CPTSign::Negative);
    graph.axisSet()->yAxis()->setTickDirection(CPTSign::Positive);
    const GraphLayout layout = layOut();
    EXPECT_EQ(layout.xAxis().majorTicks.front().y1(), 430);
    EXPECT_EQ(layout.xAxis().majorTicks.front().y2(), 442);
    EXPECT_EQ(layout.yAxis().majorTicks.front().x1(), 80);
    EXPECT_EQ(layout.yAxis().majorTicks.front().x2(), 92);
}

TEST_F(GraphLayoutTest, AutomaticMajorsAreAboutFiveRoundNumbers)
{
    for (const double length : {1.0, 1.3, 2.0, 3.7, 4.9, 7.0, 9.99, 100.0, 1234.0, 5e-7, 8.8e20}) {
        const TickPlan plan = automaticPlan(length);
        const double mantissa = plan.step / std::pow(10, std::floor(std::log10(plan.step) + 1e-9));
        EXPECT_TRUE(std::abs(mantissa - 1) < 1e-9 || std::abs(mantissa - 2) < 1e-9 || std::abs(mantissa - 5) < 1e-9);
        EXPECT_GE(length / plan.step, 3);
        EXPECT_LE(length / plan.step, 8);
    }
}

TEST_F(GraphLayoutTest, AutomaticTicksDoNotHeedTheInterval)
{
    const AxisLayout before = layOut().yAxis();
    graph.axisSet()->yAxis()->setMajorIntervalLength(7);
    EXPECT_EQ(layOut().yAxis().majorValues, before.majorValues);
    EXPECT_EQ(before.majorValues, (std::vector<double>{0, 20, 40, 60, 80, 100}));
}

TEST_F(GraphLayoutTest, ZeroIsWrittenWithoutASign)
{
    graph.defaultPlotSpace()->setYRange({-50, 100});
    for (const GraphLayout layout = layOut(); const double value : layout.yAxis().majorValues)
        EXPECT_FALSE(value == 0 && std::signbit(value));
}

TEST_F(GraphLayoutTest, AnIntervalFarTooSmallIsThinned)
{
    showDays(3560);
    for (const double interval : {15.0, 1e-3, 1e-300, std::numeric_limits<double>::denorm_min()}) {
        setInterval(interval);
        graph.axisSet()->xAxis()->setMinorTicksPerInterval(std::numeric_limits<int>::max());
        const AxisLayout x = layOut().xAxis();
        EXPECT_LE(x.majorValues.size(), 680U / 4 + 1);
        EXPECT_LE(x.minorValues.size(), 680U);
        for (std::size_t index = 1; index < x.majorTicks.size(); ++index)
            EXPECT_GE(x.majorTicks[index].x1() - x.majorTicks[index - 1].x1(), 4 - 1e-6);
    }
}

TEST_F(GraphLayoutTest, ThinnedTimesStandAtWholeDays)
{
    showDays(3560);
    setInterval(15);
    const AxisLayout x = layOut().xAxis();
    ASSERT_GT(x.majorValues.size(), 20U);
    for (const double value : x.majorValues)
        EXPECT_EQ(std::fmod(value, kDay), 0);
}

TEST_F(GraphLayoutTest, AnUnusableIntervalGivesAutomaticTicks)
{
    for (const double interval : {0.0, kNan, kInfinity}) {
        setInterval(interval);
        const AxisLayout x = layOut().xAxis();
        EXPECT_GE(x.majorValues.size(), 1U);
        EXPECT_LE(x.majorValues.size(), 9U);
    }
}

TEST_F(GraphLayoutTest, ANegativeIntervalCountsAsItsLength)
{
    const AxisLayout before = layOut().xAxis();
    setInterval(-kDay);
    EXPECT_EQ(layOut().xAxis().majorValues, before.majorValues);
}

TEST_F(GraphLayoutTest, RangesThatTellNothingApartHaveNoTicks)
{
    for (const CPTPlotRange& range : {CPTPlotRange{5, 0}, CPTPlotRange{kNan, 1}, CPTPlotRange{0, kInfinity},
                                      CPTPlotRange{1e308, 1.7e308}, CPTPlotRange{1.7e9, 1e-12}}) {
        graph.defaultPlotSpace()->setXRange(range);
        graph.defaultPlotSpace()->setYRange(range);
        const GraphLayout layout = layOut();
        EXPECT_TRUE(layout.xAxis().majorValues.empty());
        EXPECT_TRUE(layout.yAxis().minorValues.empty());
        expectNothingCollides(layout);
    }
}

TEST_F(GraphLayoutTest, AReversedRangeHasTheSameTicksMirrored)
{
    graph.defaultPlotSpace()->setYRange({100, -100});
    const AxisLayout y = layOut().yAxis();
    EXPECT_EQ(y.majorValues, (std::vector<double>{0, 20, 40, 60, 80, 100}));
    EXPECT_EQ(y.majorTicks.front().y1(), 40);
    EXPECT_EQ(y.majorTicks.back().y1(), 430);
}

TEST_F(GraphLayoutTest, NothingCollidesOverManySizesAndSpans)
{
    for (const double width : {160.0, 320.0, 500.0, 1200.0, 3840.0})
        for (const double height : {160.0, 240.0, 600.0, 2160.0})
            for (const double days : {0.0004, 0.01, 0.3, 1.0, 6.0, 29.0, 200.0, 3560.0})
                for (const QString& pattern : {QStringLiteral("h:mm:ssa"), QStringLiteral("MMM-dd\nh:mma")}) {
                    graph.defaultPlotSpace()->setXRange({1.4e9 + width, days * kDay});
                    setInterval(days < 1 ? 900 : kDay);
                    formatX(pattern);
                    expectNothingCollides(layOut(width, height));
                }
}

TEST_F(GraphLayoutTest, ASmallPictureStillHasLabels)
{
    const GraphLayout layout = layOut(320, 160);
    EXPECT_GE(layout.xAxis().labels.size(), 3U);
    EXPECT_GE(layout.yAxis().labels.size(), 2U);
    expectNothingCollides(layout);
}

TEST_F(GraphLayoutTest, LabelsThatWouldOverlapAreLeftOutEvenly)
{
    showDays(60);
    formatX(QStringLiteral("yyyy-MM-dd"));
    const AxisLayout x = layOut().xAxis();
    ASSERT_GE(x.labels.size(), 4U);
    const double step = x.labels[1].value - x.labels[0].value;
    EXPECT_GT(step, kDay);
    for (std::size_t index = 1; index < x.labels.size(); ++index)
        EXPECT_EQ(x.labels[index].value - x.labels[index - 1].value, step);
}

TEST_F(GraphLayoutTest, PanningKeepsTheSameTicksLabelled)
{
    showDays(60);
    std::vector<double> labelled;
    for (int step = 0; step < 40; ++step) {
        graph.defaultPlotSpace()->setXRange({1.4e9 + step * 3600, 60 * kDay});
        for (const GraphLayout layout = layOut(); const AxisLabel& label : layout.xAxis().labels)
            labelled.push_back(label.value);
    }
    const double interval = labelled[1] - labelled[0];
    for (const double value : labelled)
        EXPECT_EQ(std::fmod(value - labelled[0], interval), 0);
}

TEST_F(GraphLayoutTest, TwoLineLabelsAreTwiceAsHigh)
{
    formatX(QStringLiteral("dd"));
    const double oneLine = layOut().xAxis().labels.front().box.height();
    formatX(QStringLiteral("MMM\ndd"));
    EXPECT_EQ(layOut().xAxis().labels.front().box.height(), 2 * oneLine);
}

TEST_F(GraphLayoutTest, LabelsStandBeyondTheTicksOnTheirTick)
{
    const GraphLayout layout = layOut();
    const AxisLabel& x = layout.xAxis().labels.front();
    EXPECT_GE(x.box.top(), 436);
    EXPECT_NEAR(x.box.center().x(), 80 + (x.value - 1.4e9) / (10 * kDay) * 680, 1e-6);
    const AxisLabel& y = layout.yAxis().labels.back();
    EXPECT_LE(y.box.right(), 74);
    EXPECT_NEAR(y.box.center().y(), 40, 1e-6);
    EXPECT_EQ(y.text, QStringLiteral("100.0"));
}

TEST_F(GraphLayoutTest, ANegativeTitleOffsetPutsTheTitleInsideThePlotArea)
{
    const GraphLayout layout = layOut();
    ASSERT_TRUE(layout.xAxis().title);
    EXPECT_TRUE(layout.plotArea.contains(layout.xAxis().title->box));
    EXPECT_LE(layout.xAxis().title->box.bottom(), 424);
    EXPECT_EQ(layout.xAxis().title->box.center().x(), layout.plotArea.center().x());
}

TEST_F(GraphLayoutTest, ATitleGivesWayToTheLabels)
{
    const GraphLayout layout = layOut();
    ASSERT_TRUE(layout.yAxis().title);
    EXPECT_TRUE(layout.yAxis().title->readsUpward);
    EXPECT_GT(layout.yAxis().title->box.height(), layout.yAxis().title->box.width());
    double left = 80;
    for (const AxisLabel& label : layout.yAxis().labels)
        left = std::min(left, label.box.left());
    EXPECT_LT(layout.yAxis().title->box.right(), left);
}

TEST_F(GraphLayoutTest, ATitleWithoutLabelsStandsAtItsOffset)
{
    graph.defaultPlotSpace()->setYRange({5, 0});
    const GraphLayout layout = layOut();
    ASSERT_TRUE(layout.yAxis().title);
    EXPECT_EQ(layout.yAxis().title->box.right(), 70);
}

TEST_F(GraphLayoutTest, ATitleWithoutRoomIsLeftOut)
{
    graph.axisSet()->yAxis()->setTitle(QStringLiteral("A title far longer than the picture is high"));
    EXPECT_FALSE(layOut(320, 160).yAxis().title);
    graph.axisSet()->yAxis()->setTitle({});
    EXPECT_FALSE(layOut().yAxis().title);
}

TEST_F(GraphLayoutTest, TheGraphsTitleStandsAtTheFramesTop)
{
    CPTTextStyle style;
    style.fontSize = 18;
    graph.setTitle(QStringLiteral("Newark"));
    graph.setTitleTextStyle(style);
    graph.setTitleDisplacement({0, 1});
    const GraphLayout layout = layOut();
    ASSERT_TRUE(layout.title);
    EXPECT_EQ(layout.title->box, QRectF(400 - 27, 19, 54, 21));
    graph.setTitlePlotAreaFrameAnchor(CPTRectAnchor::Bottom);
    EXPECT_EQ(layOut().title->box.bottom(), 479);
}

TEST_F(GraphLayoutTest, AGraphTitleIsNeverWiderThanThePicture)
{
    graph.setTitle(QString(500, QLatin1Char('x')));
    const GraphLayout layout = layOut();
    ASSERT_TRUE(layout.title);
    EXPECT_TRUE(rectangle.contains(layout.title->box));
}

TEST_F(GraphLayoutTest, WithoutConstraintsAnAxisStandsAtItsOrthogonalPosition)
{
    graph.axisSet()->xAxis()->setAxisConstraints(std::nullopt);
    graph.axisSet()->xAxis()->setOrthogonalPosition(50);
    EXPECT_EQ(layOut().xAxis().line->y1(), 235);
    expectNothingCollides(layOut());
}

TEST_F(GraphLayoutTest, AnAxisOutsideThePlotAreaHasGridLinesOnly)
{
    graph.axisSet()->xAxis()->setAxisConstraints(std::nullopt);
    graph.axisSet()->xAxis()->setOrthogonalPosition(-1);
    const AxisLayout x = layOut().xAxis();
    EXPECT_FALSE(x.line);
    EXPECT_TRUE(x.majorTicks.empty());
    EXPECT_TRUE(x.labels.empty());
    EXPECT_FALSE(x.title);
    EXPECT_FALSE(x.majorGridLines.empty());
}

TEST_F(GraphLayoutTest, AConstraintHoldsTheAxisAtItsDistanceFromTheLowEdge)
{
    graph.axisSet()->xAxis()->setAxisConstraints(CPTConstraints{30});
    graph.axisSet()->yAxis()->setAxisConstraints(CPTConstraints{30});
    const GraphLayout layout = layOut();
    EXPECT_EQ(layout.xAxis().line->y1(), 400);
    EXPECT_EQ(layout.yAxis().line->x1(), 110);
}

TEST_F(GraphLayoutTest, PaddingsThatLeaveNoRoomGiveAnEmptyLayout)
{
    const GraphLayout layout = layOut(90, 60);
    EXPECT_TRUE(layout.isEmpty());
    EXPECT_GE(layout.plotArea.width(), 0);
    EXPECT_TRUE(layout.xAxis().majorValues.empty());
    EXPECT_TRUE(layOut(0, 0).isEmpty());
    graph.setPadding({kNan, kNan, kNan, kNan});
    EXPECT_TRUE(layOut().isEmpty());
}

struct Multiple {
    double step, wanted, expected;
    bool isTime;
};

TEST(ReadableMultipleTest, KeptTicksStandAtNumbersThatRead)
{
    for (const Multiple& row : {Multiple{15, 2, 2, true}, Multiple{15, 3, 4, true}, Multiple{15, 5, 8, true},
                                Multiple{43200, 3, 4, true}, Multiple{86400, 3, 3, true}, Multiple{900, 5, 8, true},
                                Multiple{15, 5761, 11520, true}, Multiple{7, 3, 5, true}, Multiple{1, 3, 5, false},
                                Multiple{1, 11, 20, false}, Multiple{1, 0.5, 1, false}, Multiple{1, kNan, 1, false}})
        EXPECT_EQ(readableMultiple({0, row.step, 1, row.isTime}, row.wanted), row.expected)
            << row.wanted << " of " << row.step;
}

}  // namespace
