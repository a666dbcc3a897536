#include "tests/plotkit/widget/HostingViewFixture.h"

namespace {

/// Pointer, wheel, fingers and keys.
using HostingViewGesturesTest = HostingViewTest;

TEST_F(HostingViewGesturesTest, PlotAreaIsTheSquareTheseTestsCountOn)
{
    EXPECT_EQ(view->geometryShown(*graph).plotArea, QRectF(20, 20, 200, 200));
}

TEST_F(HostingViewGesturesTest, DragPansBothAxesWithThePointer)
{
    drag({{100, 100}, {90, 120}});
    expectRanges({10, 200}, {20, 200});
}

TEST_F(HostingViewGesturesTest, DragInManyStepsDoesNotDrift)
{
    QList<QPoint> places{{100, 100}};
    for (int step = 0; step < 100; ++step)
        places << QPoint(100 + step % 7, 100 - step % 5);
    places << QPoint(100, 100);
    drag(places);
    EXPECT_EQ(space().xRange(), (CPTPlotRange{0, 200}));
    EXPECT_EQ(space().yRange(), (CPTPlotRange{0, 200}));
}

TEST_F(HostingViewGesturesTest, DragProposesXThenYAndAsksOnRelease)
{
    space().setDelegate(&delegate);
    drag({{100, 100}, {90, 120}});
    EXPECT_EQ(delegate.log, (QStringList{"x", "y", "up"}));
}

TEST_F(HostingViewGesturesTest, DragWithFrozenYMovesOnlyX)
{
    space().setDelegate(&delegate);
    delegate.freezesY = true;
    drag({{100, 100}, {95, 110}, {90, 120}});
    expectRanges({10, 200}, {0, 200});
}

TEST_F(HostingViewGesturesTest, PressBesideThePlotAreaGoesToTheParent)
{
    drag({{5, 5}, {50, 50}});
    expectRanges({0, 200}, {0, 200});
    EXPECT_EQ(parent.presses, 1);
}

TEST_F(HostingViewGesturesTest, RangesChangedDuringADragAreTheNewStart)
{
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 100});
    moveOn({{90, 100}});
    show({1000, 400}, {0, 200});
    moveOn({{80, 100}});
    expectRanges({1020, 400}, {0, 200});
}

TEST_F(HostingViewGesturesTest, HidingTheViewCancelsTheDrag)
{
    space().setDelegate(&delegate);
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 100});
    view->hide();
    moveOn({{50, 50}});
    EXPECT_EQ(delegate.log, QStringList{"cancelled"});
}

TEST_F(HostingViewGesturesTest, HostingAnotherGraphDuringADragIsSafe)
{
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 100});
    view->setHostedGraph(std::make_shared<CPTXYGraph>());
    moveOn({{50, 50}});
    QTest::mouseRelease(view, Qt::LeftButton, {}, {50, 50});
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewGesturesTest, WheelZoomsAboutThePointer)
{
    turnWheel({120, 20}, {0, 120});  // in the middle of x, at the top of y
    expectRanges({20, 160}, {40, 160});
}

TEST_F(HostingViewGesturesTest, WheelTurnedBackShowsWhatWasThere)
{
    turnWheel({60, 70}, {0, 120});
    turnWheel({60, 70}, {0, -120});
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewGesturesTest, WheelBesideThePlotAreaZoomsAboutItsNearestPlace)
{
    turnWheel({2, 238}, {0, 120});
    expectRanges({0, 160}, {0, 160});
}

// With Alt held the platform delivers a vertical turn as a horizontal one.
TEST_F(HostingViewGesturesTest, AltSwappedWheelStillZooms)
{
    turnWheel({120, 120}, {120, 0}, Qt::AltModifier);
    expectRanges({20, 160}, {20, 160});
}

TEST_F(HostingViewGesturesTest, AltSwappedHorizontalWheelStillPans)
{
    turnWheel({120, 120}, {0, -120}, Qt::AltModifier);
    expectRanges({20, 200}, {0, 200});
}

TEST_F(HostingViewGesturesTest, HorizontalWheelPansXByATenth)
{
    space().setDelegate(&delegate);
    turnWheel({120, 120}, {-120, 0});
    expectRanges({20, 200}, {0, 200});
    EXPECT_EQ(delegate.log, QStringList{"x"});
}

TEST_F(HostingViewGesturesTest, TouchpadPansByItsPixels)
{
    turnWheel({120, 120}, {-56, 0}, {}, {-7, 0}, Qt::ScrollBegin);
    expectRanges({7, 200}, {0, 200});
}

TEST_F(HostingViewGesturesTest, DeclinedZoomChangesNothing)
{
    space().setDelegate(&delegate);
    delegate.scales = false;
    turnWheel({120, 120}, {0, 120});
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewGesturesTest, ZoomWithFrozenXScalesOnlyY)
{
    space().setDelegate(&delegate);
    delegate.freezesX = true;
    turnWheel({120, 120}, {0, 120});
    expectRanges({0, 200}, {20, 160});
}

TEST_F(HostingViewGesturesTest, PinchOnATouchpadZooms)
{
    QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, {120, 120},
                              {120, 120}, {120, 120}, 0.25, {});
    QApplication::sendEvent(view, &event);
    expectRanges({20, 160}, {20, 160});
}

TEST_F(HostingViewGesturesTest, TwoFingersZoomAboutTheirMiddle)
{
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    QTest::touchEvent(view, screen.get()).press(0, {100, 120}).press(1, {140, 120});
    for (int spread = 1; spread <= 20; ++spread)
        QTest::touchEvent(view, screen.get()).move(0, {100 - spread, 120}).move(1, {140 + spread, 120});
    QTest::touchEvent(view, screen.get()).release(0, {80, 120}).release(1, {160, 120});
    EXPECT_LT(space().xRange().length, 150);
    EXPECT_NEAR(space().xRange().location + space().xRange().length / 2, 100, 2);
    EXPECT_NEAR(space().yRange().length, space().xRange().length, 1e-9);
}

TEST_F(HostingViewGesturesTest, ArrowsPanByATenth)
{
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Up);
    expectRanges({20, 200}, {20, 200});
    QTest::keyClick(view, Qt::Key_Left);
    QTest::keyClick(view, Qt::Key_Down);
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewGesturesTest, PlusEqualsAndMinusZoomAboutTheMiddle)
{
    QTest::keyClick(view, Qt::Key_Plus);
    expectRanges({20, 160}, {20, 160});
    QTest::keyClick(view, Qt::Key_Minus);
    QTest::keyClick(view, Qt::Key_Equal);
    expectRanges({20, 160}, {20, 160});
}

TEST_F(HostingViewGesturesTest, HomeShowsEveryPlot)
{
    addPlot({-100, 900}, {-5, 5});
    QTest::keyClick(view, Qt::Key_Home);
    expectRanges({-100, 1000}, {-5, 10});
}

TEST_F(HostingViewGesturesTest, OtherKeysGoToTheParent)
{
    QTest::keyClick(view, Qt::Key_T);
    QTest::keyClick(view, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(view, Qt::Key_Left);
    EXPECT_EQ(parent.keys, (QList<int>{Qt::Key_T, Qt::Key_Control, Qt::Key_Home}));
}

TEST_F(HostingViewGesturesTest, WithoutInteractionEveryEventGoesToTheParent)
{
    space().setAllowsUserInteraction(false);
    turnWheel({120, 120}, {0, 120});
    drag({{100, 100}, {50, 50}});
    QTest::keyClick(view, Qt::Key_Left);
    expectRanges({0, 200}, {0, 200});
    EXPECT_EQ(parent.wheels, 1);
    EXPECT_EQ(parent.presses, 1);
    EXPECT_EQ(parent.keys, QList<int>{Qt::Key_Left});
}

}  // namespace
