#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <gtest/gtest.h>

namespace {

using plotkit_test::RenderedGraph;

/// Two lanes one above the other, each with a line at the very middle of its range.
class StripPixelsTest : public testing::Test {
protected:
    CPTXYPlotSpacePtr addLane(double top, double bottom)
    {
        auto lane = std::make_shared<CPTXYPlotSpace>();
        lane->followXOf(rendered.graph.allPlotSpaces().front());
        lane->setYRange({0, 100});
        lane->setStrip({.top = top, .bottom = bottom});
        rendered.graph.addPlotSpace(lane);
        return lane;
    }
    QImage image() { return plotkit::imageOfGraph(rendered.graph, {120, 120}, 1, plotkit::DrawingReport::Silent); }

    RenderedGraph rendered;
};

TEST_F(StripPixelsTest, ALineIsDrawnInTheStripOfItsSpace)
{
    rendered.addPlot(Qt::red, {0, 100}, {50, 50})->setPlotSpace(addLane(0, 0.5));
    rendered.addPlot(Qt::blue, {0, 100}, {50, 50})->setPlotSpace(addLane(0.5, 1));
    EXPECT_EQ(image().pixelColor(60, 10 + 25), QColor(Qt::red));
    EXPECT_EQ(image().pixelColor(60, 10 + 75), QColor(Qt::blue));
}

TEST_F(StripPixelsTest, ALineThatLeavesItsRangeIsCutOffAtTheStrip)
{
    rendered.addPlot(Qt::red, {0, 50, 100}, {50, -900, 50})->setPlotSpace(addLane(0, 0.5));
    const QImage drawn = image();
    for (int y = 10 + 50 + 2; y < 120; ++y)
        for (int x = 0; x < 120; ++x)
            ASSERT_NE(drawn.pixelColor(x, y), QColor(Qt::red)) << x << ' ' << y;
}

TEST_F(StripPixelsTest, AStripAsHighAsThePlotAreaLooksLikeNone)
{
    rendered.addPlot(Qt::red, {0, 30, 100}, {10, 90, 40});
    const QImage plain = image();
    rendered.graph.allPlots()[0]->setPlotSpace(addLane(0, 1));
    EXPECT_EQ(image(), plain);
}

}  // namespace
