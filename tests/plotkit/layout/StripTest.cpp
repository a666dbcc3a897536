#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/GraphLayout.h"
#include "tests/plotkit/layout/RuledText.h"

#include <gtest/gtest.h>

namespace {

using namespace plotkit;

/// 400 × 300 points whose plot area stands from (60, 20) to (340, 250), in two strips: the upper one a fifth shorter in
/// its plots for a head of 20 points.
class StripTest : public testing::Test {
protected:
    StripTest()
    {
        graph.setPadding({});
        graph.setPlotAreaFramePadding({.top = 20, .left = 60, .bottom = 50, .right = 60});
        graph.defaultPlotSpace()->setXRange({0, 100});
        for (CPTXYAxis* each : {graph.axisSet()->xAxis(), graph.axisSet()->yAxis()})
            each->setAxisConstraints(CPTConstraints{});
        graph.axisSet()->yAxis()->setHidden(true);
        graph.axisSet()->xAxis()->setLabelFormatter(nullptr);
        addLane(upper, upperAxis, {.top = 0, .bottom = 0.5, .headRoom = 20}, {0, 10});
        addLane(lower, lowerAxis, {.top = 0.5, .bottom = 1, .headRoom = 20}, {1000, 1000});
    }
    void addLane(const CPTXYPlotSpacePtr& space, const CPTXYAxisPtr& axis, const CPTStrip& strip,
                 const CPTPlotRange& values)
    {
        space->followXOf(graph.allPlotSpaces().front());
        space->setStrip(strip);
        space->setYRange(values);
        graph.addPlotSpace(space);
        axis->setPlotSpace(space);
        axis->setAxisConstraints(CPTConstraints{});
        graph.axisSet()->addAxis(axis);
    }
    void entitle(const QString& title)
    {
        CPTStrip strip = upper->strip();
        strip.title = title;
        strip.hasKeys = true;
        upper->setStrip(strip);
    }
    CPTScatterPlotPtr addPlot(const QString& title)
    {
        auto plot = std::make_shared<CPTScatterPlot>();
        plot->setTitle(title);
        plot->setPlotSpace(upper);
        graph.addPlot(plot);
        return plot;
    }
    GraphLayout layOut() { return layOutGraph(graph, QRectF(0, 0, 400, 300), sizeOfText); }
    GraphGeometry geometry() { return geometryOfGraph(graph, QRectF(0, 0, 400, 300), sizeOfText); }

    CPTXYGraph graph;
    CPTXYPlotSpacePtr upper = std::make_shared<CPTXYPlotSpace>(), lower = std::make_shared<CPTXYPlotSpace>();
    CPTXYAxisPtr upperAxis = std::make_shared<CPTXYAxis>(CPTCoordinate::Y);
    CPTXYAxisPtr lowerAxis = std::make_shared<CPTXYAxis>(CPTCoordinate::Y);
};

TEST_F(StripTest, ASpaceIsSpreadOverItsStripBelowTheHead)
{
    EXPECT_EQ(geometry().areaOf(*upper), QRectF(QPointF(60, 40), QPointF(340, 135)));
    EXPECT_EQ(geometry().areaOf(*lower), QRectF(QPointF(60, 155), QPointF(340, 250)));
    EXPECT_EQ(geometry().areaOf(graph.plotSpace()), geometry().plotArea);
}

TEST_F(StripTest, ValuesStandInTheirOwnStrip)
{
    EXPECT_EQ(geometry().pointForValue(*upper, {50, 10}), QPointF(200, 40));
    EXPECT_EQ(geometry().pointForValue(*lower, {50, 1000}), QPointF(200, 250));
    EXPECT_EQ(geometry().valueForPoint(*lower, {200, 155}), QPointF(50, 2000));
}

TEST_F(StripTest, AnAxisStandsInTheStripOfItsSpace)
{
    EXPECT_EQ(layOut().axes[2].line, QLineF(60, 135, 60, 40));
    EXPECT_EQ(layOut().axes[3].labels.back().value, 2000);
    EXPECT_EQ(layOut().axes[3].labels.back().box.center().y(), 155);
}

TEST_F(StripTest, GridLinesOfTheTimeLeaveTheHeadsFree)
{
    const std::vector<QLineF> lines = layOut().xAxis().majorGridLines;
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0].y1(), 40);
    EXPECT_EQ(lines[0].y2(), 135);
    EXPECT_EQ(lines[1].y1(), 155);
}

TEST_F(StripTest, AHiddenAxisTakesNoRoom)
{
    EXPECT_FALSE(layOut().yAxis().line);
    graph.setPlotAreaFramePadding({});
    graph.setLabelRoom(CPTLabelRoom::Grows);
    upperAxis->setHidden(true);
    lowerAxis->setHidden(true);
    EXPECT_LT(geometry().plotArea.left(), 10);
}

TEST_F(StripTest, TheHeadHoldsTitleAndKeysAboveTheStripsPlots)
{
    entitle(QStringLiteral("Heat"));
    addPlot(QStringLiteral("Air"));
    addPlot(QStringLiteral("Hidden"))->setHidden(true);
    const StripLayout strip = layOut().strips[0];
    ASSERT_TRUE(strip.title && strip.keys.size() == 1);
    EXPECT_LE(strip.title->box.bottom(), 40);
    EXPECT_GT(strip.keys[0].sample.x1(), strip.title->box.right());
    EXPECT_GT(strip.keys[0].name.box.left(), strip.keys[0].sample.x2());
}

TEST_F(StripTest, ASampleWithoutANameStandsAtTheHeightOfTheOthers)
{
    entitle(QStringLiteral("Heat"));
    addPlot(QStringLiteral("Air"));
    addPlot(QString());
    const StripLayout strip = layOut().strips[0];
    ASSERT_EQ(strip.keys.size(), 2U);
    EXPECT_EQ(strip.keys[1].sample.y1(), strip.keys[0].sample.y1());
}

TEST_F(StripTest, KeysWithoutRoomAreCounted)
{
    entitle(QString());
    for (int index = 0; index < 30; ++index)
        addPlot(QStringLiteral("Some longer name"));
    const StripLayout strip = layOut().strips[0];
    ASSERT_TRUE(strip.more);
    EXPECT_EQ(strip.more->text, QStringLiteral("+%1").arg(30 - strip.keys.size()));
    EXPECT_LE(strip.more->box.right(), 340);
}

TEST_F(StripTest, ALowLaneHasTwoLabelsClearOfEachOther)
{
    lower->setStrip({.top = 0.78, .bottom = 1, .headRoom = 18});
    lowerAxis->setLabelingPolicy(CPTAxisLabelingPolicy::Automatic);
    for (double low = 1000; low < 1020; low += 0.7) {
        lower->setYRange({low, 23});
        const std::vector<AxisLabel> labels = layOut().axes[3].labels;
        ASSERT_GE(labels.size(), 2U) << low;
        EXPECT_FALSE(labels.front().box.intersects(labels.back().box)) << low;
    }
}

}  // namespace
