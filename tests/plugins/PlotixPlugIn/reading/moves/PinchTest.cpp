#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <QtGui/QNativeGestureEvent>
#include <QtGui/QPointingDevice>

// Two fingers on a touch screen, and a pinch on a touchpad, zoom about where they are.

namespace {

class PinchTest : public ReadTrendFixture {
protected:
    void showInLanes() { trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}}); }
    /// By a touchpad, to so many times the size.
    void pinch(const QPointF& place, double times)
    {
        QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, place, place,
                                  graphView().mapToGlobal(place), times - 1, {});
        QApplication::sendEvent(&graphView(), &event);
    }
    /// By two fingers on a screen that begin 40 points apart and end 80 apart.
    void spread(const QPoint& middle)
    {
        const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
        const auto at = [&](int offset) { return middle + QPoint(offset, 0); };
        QTest::touchEvent(&graphView(), screen.get()).press(0, at(-20)).press(1, at(20));
        for (int step = 1; step <= 20; ++step)
            QTest::touchEvent(&graphView(), screen.get()).move(0, at(-20 - step)).move(1, at(20 + step));
        QTest::touchEvent(&graphView(), screen.get()).release(0, at(-40)).release(1, at(40));
    }
    const CPTXYPlotSpace& spaceOf(const char* key)
    {
        return trend().graph()->plotSpaceOf(*trend().graph()->plotWithIdentifier(key));
    }
    CPTPlotRange times() { return trend().graph()->defaultPlotSpace()->xRange(); }
    double timeAt(const QPointF& place)
    {
        return plotkit::valueForCoordinate(geometry().xMappingOf(*trend().graph()->defaultPlotSpace()), place.x());
    }
    QPointF middleOfLane(const char* key) { return geometry().areaOf(spaceOf(key)).center(); }
};

TEST_F(PinchTest, OnOneScaleBothAxesZoomAboutTheFingers)
{
    const CPTPlotRange timesBefore = times(), valuesBefore = spaceOf("wind").yRange();
    const QPointF place = at(20);
    const double timeBefore = timeAt(place);
    pinch(place, 2);
    EXPECT_NEAR(times().length, timesBefore.length / 2, 1);
    EXPECT_NEAR(spaceOf("wind").yRange().length, valuesBefore.length / 2, 1e-6 * valuesBefore.length);
    EXPECT_NEAR(timeAt(place), timeBefore, 1);
}

TEST_F(PinchTest, TogetherAgainIsWhatItWas)
{
    const CPTPlotRange before = times();
    pinch(at(30), 2);
    pinch(at(30), 0.5);
    EXPECT_NEAR(times().length, before.length, 1);
    EXPECT_NEAR(times().location, before.location, 1);
}

TEST_F(PinchTest, InLanesTimesZoomInAllAndValuesInTheOneBeneathTheFingers)
{
    showInLanes();
    const double length = times().length;
    const double air = spaceOf("airTemperature").yRange().length, wind = spaceOf("wind").yRange().length;
    const QPointF place = middleOfLane("airTemperature");
    const double timeBefore = timeAt(place);
    pinch(place, 2);
    EXPECT_NEAR(times().length, length / 2, 1);
    EXPECT_NEAR(timeAt(place), timeBefore, 1);
    EXPECT_NEAR(spaceOf("airTemperature").yRange().length, air / 2, 1e-6 * air);
    EXPECT_EQ(spaceOf("wind").yRange().length, wind);
}

TEST_F(PinchTest, TwoFingersOnAScreenZoomAboutTheirMiddle)
{
    for (const bool isInLanes : {false, true}) {
        if (isInLanes)
            showInLanes();
        const QPoint middle = middleOfLane("airTemperature").toPoint();
        const double length = times().length, timeBefore = timeAt(middle);
        spread(middle);
        EXPECT_LT(times().length, 0.75 * length);
        EXPECT_NEAR(timeAt(middle), timeBefore, 0.03 * length);
    }
}

}  // namespace
