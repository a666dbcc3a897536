#include "plugins/PlotixPlugIn/reading/overview/OverviewWindow.h"

#include <gtest/gtest.h>

namespace {

using plotix::OverviewWindow;
using plotix::TimeSpan;
using Grip = OverviewWindow::Grip;

/// 1,000 seconds over a strip from 100 to 1,100, a point a second; 400 to 600 are shown.
class OverviewWindowTest : public testing::Test {
protected:
    OverviewWindow overview{QRectF(100, 50, 1'000, 30), {0, 1'000}, {400, 600}};
};

TEST_F(OverviewWindowTest, TheWindowStandsOverWhatIsShown)
{
    EXPECT_EQ(overview.window(), QRectF(500, 50, 200, 30));
}

TEST_F(OverviewWindowTest, WhatIsShownBeyondEverythingEndsAtTheStrip)
{
    overview.shown = {-500, 300};
    EXPECT_EQ(overview.window(), QRectF(100, 50, 300, 30));
}

TEST_F(OverviewWindowTest, AnInstantStillHasAWindowThatIsSeen)
{
    overview.shown = {999.99, 1'000};
    EXPECT_EQ(overview.window(), QRectF(1'096, 50, 4, 30));
}

TEST_F(OverviewWindowTest, TheInsideIsMoved)
{
    EXPECT_EQ(overview.gripAt(600), Grip::Inside);
    EXPECT_EQ(overview.dragged(Grip::Inside, 600, 650), (TimeSpan{450, 650}));
}

TEST_F(OverviewWindowTest, AnEdgeIsMovedAlone)
{
    EXPECT_EQ(overview.gripAt(503), Grip::From);
    EXPECT_EQ(overview.gripAt(697), Grip::To);
    EXPECT_EQ(overview.dragged(Grip::To, 700, 800), (TimeSpan{400, 700}));
}

TEST_F(OverviewWindowTest, AnEdgeDraggedPastTheOtherTurnsTheWindowRound)
{
    EXPECT_EQ(overview.dragged(Grip::From, 500, 800), (TimeSpan{600, 700}));
}

TEST_F(OverviewWindowTest, ADragElsewhereDrawsAnotherWindow)
{
    EXPECT_EQ(overview.gripAt(900), Grip::Elsewhere);
    EXPECT_EQ(overview.dragged(Grip::Elsewhere, 900, 850), (TimeSpan{750, 800}));
}

TEST_F(OverviewWindowTest, AWindowThatIsEverythingCanOnlyBeNarrowed)
{
    overview.shown = {0, 1'000};
    EXPECT_EQ(overview.gripAt(600), Grip::Elsewhere);
    EXPECT_EQ(overview.gripAt(101), Grip::From);
}

TEST_F(OverviewWindowTest, ANarrowWindowIsMovedByItsEdges)
{
    overview.shown = {500, 501};
    EXPECT_EQ(overview.gripAt(604), Grip::Inside);
}

TEST_F(OverviewWindowTest, AClickCentresTheSameLength)
{
    EXPECT_EQ(overview.centredAt(900), (TimeSpan{700, 900}));
}

}  // namespace
