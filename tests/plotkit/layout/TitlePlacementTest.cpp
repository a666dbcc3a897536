#include "plotkit/layout/AxisPlacement.h"
#include "plotkit/layout/GraphLayout.h"
#include "tests/plotkit/layout/RuledText.h"

#include <gtest/gtest.h>

// Titles among wide labels and inside a bordered frame.

namespace {

using namespace plotkit;

constexpr double kBorder = 4;

/// A graph padded as the trend view pads it, in a frame with a border of four points.
class TitlePlacementTest : public testing::Test {
protected:
    TitlePlacementTest()
    {
        graph.setPadding({20, 20, 20, 20});
        CPTPlotAreaFrame frame;
        frame.padding = CPTPadding{.top = 20, .left = 60, .bottom = 50, .right = 20};
        frame.borderLineStyle.emplace();
        frame.borderLineStyle->width = kBorder;
        graph.setPlotAreaFrame(frame);
        styleAxis(*graph.axisSet()->xAxis(), QStringLiteral("Time"), -20);
        styleAxis(*graph.axisSet()->yAxis(), QStringLiteral("Value"), 10);
        graph.defaultPlotSpace()->setXRange({0, 100});
    }

    static void styleAxis(CPTXYAxis& axis, const QString& title, double titleOffset)
    {
        axis.setLabelingPolicy(CPTAxisLabelingPolicy::Automatic);
        axis.setTitle(title);
        axis.setTitleOffset(titleOffset);
        axis.setAxisConstraints(CPTConstraints{0});
        axis.setMajorTickLength(12);
        axis.setMinorTickLength(8);
    }

    GraphLayout layOut(const CPTPlotRange& values, QSizeF size = {1200, 600})
    {
        graph.defaultPlotSpace()->setYRange(values);
        const GraphLayout layout = layOutGraph(graph, QRectF(QPointF(0, 0), size), sizeOfText);
        frameInside = layout.frame.adjusted(kBorder, kBorder, -kBorder, -kBorder);
        return layout;
    }

    void expectTitleIsClear(const GraphLayout& layout) const
    {
        ASSERT_TRUE(layout.yAxis().title);
        EXPECT_TRUE(frameInside.contains(layout.yAxis().title->box));
        for (const AxisLayout* axis : {&layout.xAxis(), &layout.yAxis()})
            for (const AxisLabel& label : axis->labels)
                EXPECT_FALSE(layout.yAxis().title->box.intersects(label.box)) << qPrintable(label.text);
    }

    CPTXYGraph graph;
    QRectF frameInside;
};

TEST_F(TitlePlacementTest, ATitleLongerThanItsAxisGivesWayToItsNextVariant)
{
    graph.setLabelRoom(CPTLabelRoom::Grows);
    graph.axisSet()->yAxis()->setTitle(QStringLiteral("Temperature of the supply (°C)") + kTitleVariants + "°C" +
                                       kTitleVariants);
    EXPECT_EQ(layOut({0, 10}).yAxis().title->text, QStringLiteral("Temperature of the supply (°C)"));
    EXPECT_EQ(layOut({0, 10}, {1200, 200}).yAxis().title->text, QStringLiteral("°C"));
    EXPECT_FALSE(layOut({0, 10}, {1200, 115}).yAxis().title);
}

TEST_F(TitlePlacementTest, BesideNarrowLabelsItReadsUpward)
{
    const GraphLayout layout = layOut({0, 10});
    expectTitleIsClear(layout);
    EXPECT_TRUE(layout.yAxis().title->readsUpward);
    EXPECT_EQ(layout.yAxis().title->box.center().y(), layout.plotArea.center().y());
}

TEST_F(TitlePlacementTest, BesideLabelsThatLeaveJustEnoughRoomItStandsAtTheBorder)
{
    const GraphLayout layout = layOut({900, 99});  // labels of 30 points leave 16 for a title of 14
    expectTitleIsClear(layout);
    EXPECT_TRUE(layout.yAxis().title->readsUpward);
    EXPECT_EQ(layout.yAxis().title->box.left(), frameInside.left());
}

TEST_F(TitlePlacementTest, AboveTheAxisWhenTheLabelsAreWide)
{
    for (const CPTPlotRange& values : {CPTPlotRange{990, 20}, CPTPlotRange{-1e4, 2e4}, CPTPlotRange{1e5, 5e3}}) {
        const GraphLayout layout = layOut(values);
        expectTitleIsClear(layout);
        EXPECT_FALSE(layout.yAxis().title->readsUpward);
        EXPECT_LE(layout.yAxis().title->box.bottom(), layout.plotArea.top());
    }
}

TEST_F(TitlePlacementTest, AtATopWithoutRoomItStandsInsideThePlotArea)
{
    graph.setPlotAreaFramePadding({.top = 10, .left = 60, .bottom = 50, .right = 20});
    const GraphLayout layout = layOut({990, 20});
    expectTitleIsClear(layout);
    EXPECT_TRUE(layout.plotArea.contains(layout.yAxis().title->box));
}

TEST_F(TitlePlacementTest, NothingTouchesOverManyRangesAndSizes)
{
    for (const QSizeF& size : {QSizeF(160, 200), QSizeF(320, 320), QSizeF(1200, 600), QSizeF(3840, 2160)})
        for (const double low : {-1e5, -1234.5, -10.0, 0.0, 9.9, 99.5, 995.0, 9995.0, 101'325.0})
            for (const double span : {0.1, 3.0, 20.0, 250.0, 5000.0})
                expectTitleIsClear(layOut({low, span}, size));
}

TEST_F(TitlePlacementTest, TheGraphsTitleStandsBelowTheBorder)
{
    graph.setTitle(QStringLiteral("Newark"));
    EXPECT_EQ(layOut({0, 10}).title->box.top(), 20 + kBorder);
    graph.setTitlePlotAreaFrameAnchor(CPTRectAnchor::Bottom);
    EXPECT_EQ(layOut({0, 10}).title->box.bottom(), 580 - kBorder);
}

TEST_F(TitlePlacementTest, AnAxisTitleGivesWayToTheGraphsTitle)
{
    graph.setTitle(QString(120, QLatin1Char('x')));
    const GraphLayout layout = layOut({990, 20}, {600, 400});
    ASSERT_TRUE(layout.title);
    EXPECT_FALSE(layout.yAxis().title);
}

}  // namespace
