#include "plotkit/layout/GraphLayout.h"
#include "plotkit/widget/CPTGraphHostingView.h"

#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtTest/qtestspontaneevent.h>

#include <gtest/gtest.h>

#include <optional>

namespace {

/// Freezes axes, declines zooms, and writes down what is proposed and asked.
class FreezingDelegate : public CPTPlotSpaceDelegate {
public:
    bool plotSpaceShouldScaleBy(CPTXYPlotSpace*, double, QPointF) override { return scales; }
    CPTPlotRange plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                CPTCoordinate coordinate) override
    {
        log.push_back(coordinate == CPTCoordinate::X ? "x" : "y");
        if (coordinate == CPTCoordinate::Y)
            return freezesY ? space->yRange() : range;
        return freezesX ? space->xRange() : range;
    }
    void plotSpaceDidChangePlotRangeForCoordinate(CPTXYPlotSpace*, CPTCoordinate) override {}
    bool plotSpaceShouldHandlePointingDeviceUpEvent(CPTXYPlotSpace*, QPointF) override
    {
        log.push_back("up");
        return true;
    }
    bool plotSpaceShouldHandlePointingDeviceCancelledEvent(CPTXYPlotSpace*) override
    {
        log.push_back("cancelled");
        return true;
    }

    bool scales = true;
    bool freezesX = false;
    bool freezesY = false;
    QStringList log;
};

class CountingDelegate : public CPTPlotDelegate {
public:
    void didFinishDrawing(CPTScatterPlot* plot) override { drawn.push_back(plot->identifier()); }
    QStringList drawn;
};

/// A parent that collects the keys and wheel turns its child did not use.
class Parent : public QWidget {
public:
    QList<int> keys;
    int wheels = 0;
    int presses = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
    void wheelEvent(QWheelEvent*) override { ++wheels; }
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

/// A view of 240 × 240 whose plot area is the square from 20 to 220, showing 0 to 200 on both axes: a point a value.
class HostingViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        graph->setPadding({10, 10, 10, 10});
        graph->setPlotAreaFramePadding({10, 10, 10, 10});
        graph->defaultPlotSpace()->setAllowsUserInteraction(true);
        show({0, 200}, {0, 200});
        parent.resize(240, 240);
        view->setGeometry(0, 0, 240, 240);
        view->setHostedGraph(graph);
        parent.show();
    }

    CPTXYPlotSpace& space() { return *graph->defaultPlotSpace(); }
    void show(const CPTPlotRange& x, const CPTPlotRange& y)
    {
        space().setXRange(x);
        space().setYRange(y);
    }
    void drag(const QList<QPoint>& places)
    {
        QTest::mousePress(view, Qt::LeftButton, {}, places.front());
        moveOn(places);
        QTest::mouseRelease(view, Qt::LeftButton, {}, places.back());
    }
    void moveOn(const QList<QPoint>& places)
    {
        for (const QPoint& place : places) {
            QMouseEvent move(QEvent::MouseMove, QPointF(place), QPointF(view->mapToGlobal(place)), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(view, &move);
        }
    }
    void turnWheel(QPointF place, QPoint angle, Qt::KeyboardModifiers modifiers = {}, QPoint pixels = {},
                   Qt::ScrollPhase phase = Qt::NoScrollPhase)
    {
        QWheelEvent event(place, view->mapToGlobal(place), pixels, angle, Qt::NoButton, modifiers, phase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);  // only turns of a real wheel go on to the parent
        qApp->notify(view, &event);
    }
    void expectRanges(const CPTPlotRange& x, const CPTPlotRange& y)
    {
        EXPECT_NEAR(space().xRange().location, x.location, 1e-9);
        EXPECT_NEAR(space().xRange().length, x.length, 1e-9);
        EXPECT_NEAR(space().yRange().location, y.location, 1e-9);
        EXPECT_NEAR(space().yRange().length, y.length, 1e-9);
    }
    CPTScatterPlotPtr addPlot(std::vector<double> x, std::vector<float> y)
    {
        const std::size_t count = y.size();
        controllers.push_back(std::make_shared<CPTSeriesController>(std::make_shared<CPTPointSeries>(
            plotix::SharedArray<double>::fromVector(std::move(x)), plotix::SharedArray<float>::fromVector(std::move(y)),
            plotix::ValidityBitmap(), count)));
        auto plot = std::make_shared<CPTScatterPlot>();
        plot->setIdentifier(QString::number(controllers.size()));
        plot->setDelegate(&plotDelegate);
        plot->bind(CPTScatterPlotBindingXValues, controllers.back(), QStringLiteral("arrangedObjects.x"));
        plot->bind(CPTScatterPlotBindingYValues, controllers.back(), QStringLiteral("arrangedObjects.y"));
        graph->addPlot(plot);
        return plot;
    }

    FreezingDelegate delegate;
    CountingDelegate plotDelegate;
    std::vector<CPTSeriesControllerPtr> controllers;
    CPTXYGraphPtr graph = std::make_shared<CPTXYGraph>();
    Parent parent;
    CPTGraphHostingView* view = new CPTGraphHostingView(&parent);
};

TEST_F(HostingViewTest, PlotAreaIsTheSquareTheseTestsCountOn)
{
    EXPECT_EQ(plotkit::plotAreaOfGraph(*graph, view->rect()), QRectF(20, 20, 200, 200));
}

TEST_F(HostingViewTest, DragPansBothAxesWithThePointer)
{
    drag({{100, 100}, {90, 120}});
    expectRanges({10, 200}, {20, 200});
}

TEST_F(HostingViewTest, DragInManyStepsDoesNotDrift)
{
    QList<QPoint> places{{100, 100}};
    for (int step = 0; step < 100; ++step)
        places << QPoint(100 + step % 7, 100 - step % 5);
    places << QPoint(100, 100);
    drag(places);
    EXPECT_EQ(space().xRange(), (CPTPlotRange{0, 200}));
    EXPECT_EQ(space().yRange(), (CPTPlotRange{0, 200}));
}

TEST_F(HostingViewTest, DragProposesXThenYAndAsksOnRelease)
{
    space().setDelegate(&delegate);
    drag({{100, 100}, {90, 120}});
    EXPECT_EQ(delegate.log, (QStringList{"x", "y", "up"}));
}

TEST_F(HostingViewTest, DragWithFrozenYMovesOnlyX)
{
    space().setDelegate(&delegate);
    delegate.freezesY = true;
    drag({{100, 100}, {95, 110}, {90, 120}});
    expectRanges({10, 200}, {0, 200});
}

TEST_F(HostingViewTest, PressBesideThePlotAreaGoesToTheParent)
{
    drag({{5, 5}, {50, 50}});
    expectRanges({0, 200}, {0, 200});
    EXPECT_EQ(parent.presses, 1);
}

TEST_F(HostingViewTest, RangesChangedDuringADragAreTheNewStart)
{
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 100});
    moveOn({{90, 100}});
    show({1000, 400}, {0, 200});
    moveOn({{80, 100}});
    expectRanges({1020, 400}, {0, 200});
}

TEST_F(HostingViewTest, HidingTheViewCancelsTheDrag)
{
    space().setDelegate(&delegate);
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 100});
    view->hide();
    moveOn({{50, 50}});
    EXPECT_EQ(delegate.log, QStringList{"cancelled"});
}

TEST_F(HostingViewTest, HostingAnotherGraphDuringADragIsSafe)
{
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 100});
    view->setHostedGraph(std::make_shared<CPTXYGraph>());
    moveOn({{50, 50}});
    QTest::mouseRelease(view, Qt::LeftButton, {}, {50, 50});
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewTest, WheelZoomsAboutThePointer)
{
    turnWheel({120, 20}, {0, 120});  // in the middle of x, at the top of y
    expectRanges({20, 160}, {40, 160});
}

TEST_F(HostingViewTest, WheelTurnedBackShowsWhatWasThere)
{
    turnWheel({60, 70}, {0, 120});
    turnWheel({60, 70}, {0, -120});
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewTest, WheelBesideThePlotAreaZoomsAboutItsNearestPlace)
{
    turnWheel({2, 238}, {0, 120});
    expectRanges({0, 160}, {0, 160});
}

// With Alt held the platform delivers a vertical turn as a horizontal one.
TEST_F(HostingViewTest, AltSwappedWheelStillZooms)
{
    turnWheel({120, 120}, {120, 0}, Qt::AltModifier);
    expectRanges({20, 160}, {20, 160});
}

TEST_F(HostingViewTest, AltSwappedHorizontalWheelStillPans)
{
    turnWheel({120, 120}, {0, -120}, Qt::AltModifier);
    expectRanges({20, 200}, {0, 200});
}

TEST_F(HostingViewTest, HorizontalWheelPansXByATenth)
{
    space().setDelegate(&delegate);
    turnWheel({120, 120}, {-120, 0});
    expectRanges({20, 200}, {0, 200});
    EXPECT_EQ(delegate.log, QStringList{"x"});
}

TEST_F(HostingViewTest, TouchpadPansByItsPixels)
{
    turnWheel({120, 120}, {-56, 0}, {}, {-7, 0}, Qt::ScrollBegin);
    expectRanges({7, 200}, {0, 200});
}

TEST_F(HostingViewTest, DeclinedZoomChangesNothing)
{
    space().setDelegate(&delegate);
    delegate.scales = false;
    turnWheel({120, 120}, {0, 120});
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewTest, ZoomWithFrozenXScalesOnlyY)
{
    space().setDelegate(&delegate);
    delegate.freezesX = true;
    turnWheel({120, 120}, {0, 120});
    expectRanges({0, 200}, {20, 160});
}

TEST_F(HostingViewTest, PinchOnATouchpadZooms)
{
    QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, {120, 120},
                              {120, 120}, {120, 120}, 0.25, {});
    QApplication::sendEvent(view, &event);
    expectRanges({20, 160}, {20, 160});
}

TEST_F(HostingViewTest, TwoFingersZoomAboutTheirMiddle)
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

TEST_F(HostingViewTest, ArrowsPanByATenth)
{
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Up);
    expectRanges({20, 200}, {20, 200});
    QTest::keyClick(view, Qt::Key_Left);
    QTest::keyClick(view, Qt::Key_Down);
    expectRanges({0, 200}, {0, 200});
}

TEST_F(HostingViewTest, PlusEqualsAndMinusZoomAboutTheMiddle)
{
    QTest::keyClick(view, Qt::Key_Plus);
    expectRanges({20, 160}, {20, 160});
    QTest::keyClick(view, Qt::Key_Minus);
    QTest::keyClick(view, Qt::Key_Equal);
    expectRanges({20, 160}, {20, 160});
}

TEST_F(HostingViewTest, HomeShowsEveryPlot)
{
    addPlot({-100, 900}, {-5, 5});
    QTest::keyClick(view, Qt::Key_Home);
    expectRanges({-100, 1000}, {-5, 10});
}

TEST_F(HostingViewTest, OtherKeysGoToTheParent)
{
    QTest::keyClick(view, Qt::Key_T);
    QTest::keyClick(view, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(view, Qt::Key_Left);
    EXPECT_EQ(parent.keys, (QList<int>{Qt::Key_T, Qt::Key_Control, Qt::Key_Home}));
}

TEST_F(HostingViewTest, WithoutInteractionEveryEventGoesToTheParent)
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

TEST_F(HostingViewTest, WithoutAGraphEventsAreSafe)
{
    view->setHostedGraph(nullptr);
    turnWheel({120, 120}, {0, 120});
    drag({{100, 100}, {50, 50}});
    QTest::keyClick(view, Qt::Key_Home);
    EXPECT_TRUE(view->imageOfLayer().isNull());
    EXPECT_TRUE(view->dataForPDFRepresentationOfLayer().isEmpty());
    EXPECT_FALSE(view->grab().isNull());
}

TEST_F(HostingViewTest, EveryPaintReportsEachVisiblePlotOnce)
{
    addPlot({0, 200}, {0, 200});
    addPlot({0, 200}, {200, 0});
    addPlot({0, 200}, {50, 50})->setHidden(true);
    plotDelegate.drawn.clear();
    view->grab();
    EXPECT_EQ(plotDelegate.drawn, (QStringList{"1", "2"}));
}

TEST_F(HostingViewTest, ChangedRangeIsPaintedAndReportedOnce)
{
    addPlot({0, 200}, {0, 200});
    QCoreApplication::processEvents();
    plotDelegate.drawn.clear();
    show({10, 200}, {10, 200});
    QCoreApplication::processEvents();
    EXPECT_EQ(plotDelegate.drawn, QStringList{"1"});
}

TEST_F(HostingViewTest, ViewAnywhereInItsWindowShowsTheSamePicture)
{
    addPlot({0, 200}, {0, 200})->setDataLineStyle({.width = 5, .color = Qt::black});
    const QImage picture = view->imageOfLayer();
    parent.resize(400, 400);
    view->move(33, 57);
    const QImage window = parent.grab().toImage().copy(33, 57, 240, 240);
    for (int place = 30; place < 210; ++place) {
        const QColor expected = picture.pixelColor(place, 240 - place);
        EXPECT_TRUE(expected.alpha() < 255 || window.pixelColor(place, 240 - place) == expected) << place;
    }
    EXPECT_EQ(picture.pixelColor(120, 120), QColor(Qt::black));
}

TEST_F(HostingViewTest, PartOfTheViewPaintsAsTheWholeDoes)
{
    addPlot({0, 200}, {0, 200});
    const QImage whole = view->grab().toImage();
    EXPECT_EQ(view->grab(QRect(50, 60, 70, 80)).toImage(), whole.copy(50, 60, 70, 80));
}

TEST_F(HostingViewTest, ImagesAndPdfReport)
{
    addPlot({0, 200}, {0, 200});
    plotDelegate.drawn.clear();
    EXPECT_EQ(view->imageOfLayer(2).size(), QSize(480, 480));
    EXPECT_TRUE(view->dataForPDFRepresentationOfLayer().startsWith("%PDF"));
    EXPECT_EQ(plotDelegate.drawn, (QStringList{"1", "1"}));
}

TEST_F(HostingViewTest, ViewOfSizeZeroDrawsNothing)
{
    view->resize(0, 0);
    EXPECT_TRUE(view->imageOfLayer().isNull());
    EXPECT_TRUE(view->dataForPDFRepresentationOfLayer().isEmpty());
}

TEST_F(HostingViewTest, GraphFillsTheView)
{
    EXPECT_EQ(graph->bounds(), QRectF(0, 0, 240, 240));
    view->resize(100, 90);
    EXPECT_EQ(graph->bounds(), QRectF(0, 0, 100, 90));
}

TEST_F(HostingViewTest, GraphMayOutliveTheView)
{
    delete view;
    graph->setNeedsDisplay();
    show({5, 6}, {7, 8});
    expectRanges({5, 6}, {7, 8});
}

TEST_F(HostingViewTest, ViewKeepsTheGraphItShows)
{
    const std::weak_ptr<CPTXYGraph> weak = graph;
    graph.reset();
    EXPECT_FALSE(weak.expired());
    EXPECT_FALSE(view->grab().isNull());
    view->setHostedGraph(nullptr);
    EXPECT_TRUE(weak.expired());
}

TEST_F(HostingViewTest, TakesFocusAndHasAName)
{
    EXPECT_EQ(view->focusPolicy(), Qt::StrongFocus);
    EXPECT_TRUE(view->acceptsFirstResponder());
    EXPECT_FALSE(view->accessibleName().isEmpty());
}

TEST_F(HostingViewTest, FocusShowsAtTheEdgeOfTheView)
{
    const QImage before = view->grab().toImage();
    parent.activateWindow();
    view->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return view->hasFocus(); }));
    EXPECT_NE(view->grab().toImage().pixel(120, 0), before.pixel(120, 0));
}

TEST_F(HostingViewTest, EmptyViewShowsADarkFrame)
{
    view->setHostedGraph(nullptr);
    const QColor middle = view->grab().toImage().pixelColor(120, 120);
    EXPECT_LT(middle.lightness(), 90);
    EXPECT_EQ(middle.alpha(), 255);
}

}  // namespace
