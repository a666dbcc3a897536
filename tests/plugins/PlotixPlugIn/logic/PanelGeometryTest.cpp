#include "plugins/PlotixPlugIn/logic/PanelGeometry.h"

#include <gtest/gtest.h>

namespace {

using plotix::TrendViewFrames;

constexpr int kParentHeight = 640;

class PanelGeometryTest : public testing::Test {
protected:
    TrendViewFrames shown{.panel = {20, 478, 920, 150},
                          .button = {20, 442, 24, 24},
                          .label = {48, 442, 240, 24},
                          .graph = {0, 46, 960, 392},
                          .dates = {20, 10, 872, 40},
                          .sharing = {908, 14, 32, 32}};
};

TEST_F(PanelGeometryTest, FlippingTwiceGivesTheFrameBack)
{
    EXPECT_EQ(plotix::flipped({1, 2, 3, 4}, 100), QRect(1, 94, 3, 4));
    EXPECT_EQ(plotix::flipped(plotix::flipped({1, 2, 3, 4}, 100), 100), QRect(1, 2, 3, 4));
}

TEST_F(PanelGeometryTest, TheShiftIsTheGapAndThePanelsHeight)
{
    EXPECT_EQ(plotix::panelShift(shown.panel), 162);
    EXPECT_EQ(plotix::panelShift(TrendViewFrames().panel), 12);
}

TEST_F(PanelGeometryTest, HidingMovesButtonAndLabelDownAndGrowsTheGraphBelow)
{
    const TrendViewFrames hidden = plotix::framesAfterHiding(shown, kParentHeight);
    EXPECT_EQ(hidden.button, QRect(20, 604, 24, 24));
    EXPECT_EQ(hidden.label, QRect(48, 604, 240, 24));
    EXPECT_EQ(hidden.graph, QRect(0, 46, 960, 554));
}

TEST_F(PanelGeometryTest, HidingLeavesEverythingElseInPlace)
{
    const TrendViewFrames hidden = plotix::framesAfterHiding(shown, kParentHeight);
    EXPECT_EQ(hidden.panel, shown.panel);
    EXPECT_EQ(hidden.dates, shown.dates);
    EXPECT_EQ(hidden.sharing, shown.sharing);
}

TEST_F(PanelGeometryTest, ShowingAfterHidingGivesEveryFrameBack)
{
    const TrendViewFrames hidden = plotix::framesAfterHiding(shown, kParentHeight);
    EXPECT_EQ(plotix::framesAfterShowing(hidden, kParentHeight), shown);
}

// No record is kept of whether the panel is shown, so a second call moves everything again.
TEST_F(PanelGeometryTest, ShowingTwiceShiftsTwice)
{
    const TrendViewFrames once = plotix::framesAfterShowing(shown, kParentHeight);
    const TrendViewFrames twice = plotix::framesAfterShowing(once, kParentHeight);
    EXPECT_EQ(twice.button.y(), shown.button.y() - 2 * 162);
    EXPECT_EQ(twice.graph, QRect(0, 46, 960, 392 - 2 * 162));
}

TEST_F(PanelGeometryTest, TheGraphTakesTheDifferenceOfAResize)
{
    const TrendViewFrames larger = plotix::framesAfterResizing(shown, {960, 640}, {1060, 840});
    EXPECT_EQ(larger.graph, QRect(0, 46, 1060, 592));
    EXPECT_EQ(larger.dates, QRect(20, 10, 972, 40));
    EXPECT_EQ(larger.sharing, QRect(1008, 14, 32, 32));
}

TEST_F(PanelGeometryTest, ButtonLabelAndPanelKeepTheirDistanceFromTheLowerEdge)
{
    const TrendViewFrames larger = plotix::framesAfterResizing(shown, {960, 640}, {1060, 840});
    EXPECT_EQ(larger.button, QRect(20, 642, 24, 24));
    EXPECT_EQ(larger.label, QRect(48, 642, 240, 24));
    EXPECT_EQ(larger.panel, QRect(20, 678, 1020, 150));
}

TEST_F(PanelGeometryTest, ResizingAndHidingMayComeInAnyOrder)
{
    const TrendViewFrames resizedFirst =
        plotix::framesAfterHiding(plotix::framesAfterResizing(shown, {960, 640}, {1000, 700}), 700);
    const TrendViewFrames hiddenFirst =
        plotix::framesAfterResizing(plotix::framesAfterHiding(shown, 640), {960, 640}, {1000, 700});
    EXPECT_EQ(resizedFirst, hiddenFirst);
}

TEST_F(PanelGeometryTest, InALowViewThePanelLeavesTheGraphItsSpace)
{
    const TrendViewFrames low = plotix::framesAfterResizing(shown, {960, 640}, {960, 360});
    EXPECT_EQ(low.panel, QRect(20, 282, 920, 66));
    EXPECT_EQ(low.button, QRect(20, 246, 24, 24));  // a gap above the panel, as ever
    EXPECT_EQ(low.graph, QRect(0, 46, 960, 196));
}

TEST_F(PanelGeometryTest, ALowViewWithItsPanelHiddenGivesAllToTheGraph)
{
    const TrendViewFrames hidden = plotix::framesAfterHiding(shown, kParentHeight);
    const TrendViewFrames low = plotix::framesAfterResizing(hidden, {960, 640}, {960, 360});
    EXPECT_EQ(low.graph, QRect(0, 46, 960, 274));
    EXPECT_EQ(plotix::framesAfterShowing(low, 360), plotix::framesAfterResizing(shown, {960, 640}, {960, 360}));
}

TEST_F(PanelGeometryTest, APanelIsNeverHigherThanItsFullHeightNorLowerThanTwoRows)
{
    EXPECT_EQ(plotix::panelHeightIn(2000, 150), 150);
    EXPECT_EQ(plotix::panelHeightIn(640, 150), 150);
    EXPECT_EQ(plotix::panelHeightIn(520, 150), 108);
    EXPECT_EQ(plotix::panelHeightIn(0, 150), 66);
    EXPECT_EQ(plotix::panelHeightIn(0, 40), 40);
}

TEST_F(PanelGeometryTest, AParentTooSmallLosesNothing)
{
    const TrendViewFrames tiny = plotix::framesAfterResizing(shown, {960, 640}, {10, 10});
    EXPECT_LT(tiny.graph.height(), 0);
    EXPECT_EQ(plotix::framesAfterResizing(tiny, {10, 10}, {960, 640}), shown);
}

}  // namespace
