#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/GraphLayout.h"
#include "tests/plotkit/layout/RuledText.h"

#include <gtest/gtest.h>

namespace {

using namespace plotkit;

/// 400 × 300 points whose plot area stands from (60, 20) to (340, 250); a second y axis at its right edge shows a space
/// of its own, from 1000 to 2000, while the first one shows 0 to 10.
class SecondAxisTest : public testing::Test {
protected:
    SecondAxisTest()
    {
        graph.setPadding({});
        graph.setPlotAreaFramePadding({.top = 20, .left = 60, .bottom = 50, .right = 60});
        graph.defaultPlotSpace()->setXRange({0, 100});
        graph.defaultPlotSpace()->setYRange({0, 10});
        second->followXOf(graph.allPlotSpaces().front());
        second->setYRange({1000, 1000});
        graph.addPlotSpace(second);
        for (CPTXYAxis* each : {graph.axisSet()->xAxis(), graph.axisSet()->yAxis()})
            each->setAxisConstraints(CPTConstraints{});
        graph.axisSet()->xAxis()->setLabelFormatter(nullptr);  // its last label would stand beside the first one here
        axis->setPlotSpace(second);
        axis->setAxisConstraints(CPTConstraints{.upperOffset = 0});
        axis->setTitle(QStringLiteral("Flow"));
        axis->setMajorTickLength(12);
        graph.axisSet()->addAxis(axis);
    }
    GraphLayout layOut() { return layOutGraph(graph, QRectF(0, 0, 400, 300), sizeOfText); }
    AxisLayout laidOutAxis() { return layOut().axes[2]; }

    CPTXYGraph graph;
    CPTXYPlotSpacePtr second = std::make_shared<CPTXYPlotSpace>();
    CPTXYAxisPtr axis = std::make_shared<CPTXYAxis>(CPTCoordinate::Y);
};

TEST_F(SecondAxisTest, StandsAtTheRightEdge)
{
    EXPECT_EQ(laidOutAxis().line, QLineF(340, 250, 340, 20));
    axis->setAxisConstraints(CPTConstraints{.upperOffset = 15});
    EXPECT_EQ(laidOutAxis().line->x1(), 325);
}

TEST_F(SecondAxisTest, LabelsTheNumbersOfItsOwnSpace)
{
    const AxisLayout right = laidOutAxis();
    ASSERT_EQ(right.labels.size(), 6U);
    EXPECT_EQ(right.labels.front().text, QStringLiteral("1000.0"));
    EXPECT_EQ(right.labels.back().value, 2000);
    EXPECT_EQ(right.labels.back().box.center().y(), 20);
    EXPECT_EQ(layOut().yAxis().majorValues.back(), 10);
}

TEST_F(SecondAxisTest, LabelsStandRightOfItFlushTowardsIt)
{
    const AxisLayout right = laidOutAxis();
    for (const AxisLabel& label : right.labels) {
        EXPECT_EQ(label.box.left(), 340 + 6 + 4);
        EXPECT_TRUE(label.alignment.testFlag(Qt::AlignLeft));
    }
}

TEST_F(SecondAxisTest, TheTitleStandsBeyondTheLabels)
{
    axis->setTitleOffset(10);
    graph.setPlotAreaFramePadding({.top = 20, .left = 60, .bottom = 50, .right = 80});
    const AxisLayout right = laidOutAxis();
    ASSERT_TRUE(right.title);
    EXPECT_TRUE(right.title->readsUpward);
    EXPECT_GT(right.title->box.left(), right.labels.front().box.right());
    EXPECT_LE(right.title->box.right(), 400);
}

TEST_F(SecondAxisTest, ATitleAboveItEndsAtTheAxis)
{
    axis->setTitleOffset(10);
    const AxisLayout right = laidOutAxis();
    ASSERT_TRUE(right.title);
    EXPECT_FALSE(right.title->readsUpward);
    EXPECT_EQ(right.title->box.right(), 346);
    EXPECT_TRUE(right.title->alignment.testFlag(Qt::AlignRight));
}

TEST_F(SecondAxisTest, NegativeTicksPointLeftAtEitherEdge)
{
    axis->setTickDirection(CPTSign::Negative);
    EXPECT_EQ(laidOutAxis().majorTicks.front(), QLineF(328, 250, 340, 250));
    axis->setTickDirection(CPTSign::Positive);
    EXPECT_EQ(laidOutAxis().majorTicks.front(), QLineF(340, 250, 352, 250));
}

TEST_F(SecondAxisTest, AnXAxisAtTheTopHasItsLabelsAboveIt)
{
    graph.setPlotAreaFramePadding({.top = 60, .left = 60, .bottom = 50, .right = 60});
    const auto top = std::make_shared<CPTXYAxis>(CPTCoordinate::X);
    top->setAxisConstraints(CPTConstraints{.upperOffset = 0});
    graph.axisSet()->addAxis(top);
    const AxisLayout laidOut = layOut().axes[3];
    EXPECT_EQ(laidOut.line, QLineF(60, 60, 340, 60));
    ASSERT_FALSE(laidOut.labels.empty());
    EXPECT_LT(laidOut.labels.front().box.bottom(), 60);
}

TEST_F(SecondAxisTest, LabelsGiveWayToThoseOfTheAxesBefore)
{
    axis->setAxisConstraints(CPTConstraints{});  // on top of the first y axis
    const GraphLayout layout = layOut();
    for (const AxisLabel& label : layout.axes[2].labels)
        for (const AxisLabel& other : layout.yAxis().labels)
            EXPECT_FALSE(label.box.intersects(other.box)) << qPrintable(label.text);
}

TEST_F(SecondAxisTest, TicksDoNotHeedWhatWritesTheirLabels)
{
    axis->setLabelingPolicy(CPTAxisLabelingPolicy::FixedInterval);
    axis->setMajorIntervalLength(15);
    second->setYRange({0, 6000});
    const std::vector<double> values = laidOutAxis().majorValues;
    axis->setLabelFormatter(std::make_shared<CPTTimeFormatter>(QStringLiteral("HH:mm:ss")));
    EXPECT_EQ(laidOutAxis().majorValues, values);
    axis->setTickThinning(CPTTickThinning::ClockTimes);
    EXPECT_NE(laidOutAxis().majorValues, values);
}

TEST_F(SecondAxisTest, GeometryMapsEachSpaceByItsOwnRanges)
{
    const GraphGeometry geometry = geometryOfGraph(graph, QRectF(0, 0, 400, 300), sizeOfText);
    EXPECT_EQ(geometry.plotArea, QRectF(60, 20, 280, 230));
    EXPECT_EQ(geometry.pointForValue(*second, {50, 1500}), QPointF(200, 135));
    EXPECT_EQ(geometry.pointForValue(graph.plotSpace(), {50, 5}), QPointF(200, 135));
    EXPECT_EQ(geometry.valueForPoint(*second, {200, 135}), QPointF(50, 1500));
}

}  // namespace
