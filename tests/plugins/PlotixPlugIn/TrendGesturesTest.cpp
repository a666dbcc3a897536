#include "TrendViewFixture.h"
#include "plotkit/layout/GraphGeometry.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>

// Mouse, wheel, keys and fingers on the graph of a trend view, and what becomes of ranges, dates and labels.

namespace {

class TrendGestures : public TrendViewFixture {
protected:
    void SetUp() override
    {
        openTrendWithData();
        answerRefresh(twoProperties());
        trend().view()->resize(900, 700);
        trend().view()->show();
        area = graphView().geometryShown(*trend().graph()).plotArea;
        middle = area.center().toPoint();
        before = ranges();
        fetches = fetchCount();
    }

    struct Ranges {
        CPTPlotRange x, y;
    };
    KTVGraphHostingView& graphView() { return *trend().hostView(); }
    Ranges ranges()
    {
        const CPTXYPlotSpace& space = *trend().graph()->defaultPlotSpace();
        return {space.xRange(), space.yRange()};
    }

    void press(QPoint place) { QTest::mousePress(&graphView(), Qt::LeftButton, {}, place); }
    void moveTo(QPoint place)
    {
        QMouseEvent move(QEvent::MouseMove, QPointF(place), QPointF(graphView().mapToGlobal(place)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(&graphView(), &move);
    }
    void release(QPoint place) { QTest::mouseRelease(&graphView(), Qt::LeftButton, {}, place); }
    void drag(QPoint by)
    {
        press(middle);
        moveTo(middle + by);
        release(middle + by);
    }
    void turnWheel(QPoint angle, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event(middle, graphView().mapToGlobal(middle), {}, angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&graphView(), &event);
    }

    void expectXStays() { EXPECT_EQ(ranges().x, before.x); }
    void expectYStays() { EXPECT_EQ(ranges().y, before.y); }
    void expectPanelShowsTheRange()
    {
        EXPECT_EQ(panel().fromDateValue(), plotix::Date{ranges().x.location});
        EXPECT_EQ(panel().toDateValue(), plotix::Date{ranges().x.end()});
        EXPECT_EQ(fetchCount(), fetches);
    }

    QRectF area;
    QPoint middle;
    Ranges before;
    int fetches = 0;
};

TEST_F(TrendGestures, DragPansBothAxesAndThePanelFollows)
{
    drag({-90, 30});
    EXPECT_NEAR(ranges().x.location, before.x.location + 90 / area.width() * before.x.length, 1e-3);
    EXPECT_NEAR(ranges().y.location, before.y.location + 30 / area.height() * before.y.length, 1e-6);
    EXPECT_DOUBLE_EQ(ranges().x.length, before.x.length);
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, DragWithOptionMovesTimeOnly)
{
    desktop().holdDown(Qt::AltModifier);
    drag({-90, 30});
    EXPECT_GT(ranges().x.location, before.x.location);
    expectYStays();
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, DragWithShiftMovesValuesOnly)
{
    desktop().holdDown(Qt::ShiftModifier);
    drag({-90, 30});
    EXPECT_GT(ranges().y.location, before.y.location);
    expectXStays();
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, DragWithBothMovesTimeOnly)
{
    desktop().holdDown(Qt::AltModifier | Qt::ShiftModifier);
    drag({-90, 30});
    EXPECT_GT(ranges().x.location, before.x.location);
    expectYStays();
}

TEST_F(TrendGestures, KeyLetGoDuringADragFreesItsAxis)
{
    desktop().holdDown(Qt::AltModifier);
    press(middle);
    moveTo(middle + QPoint(-40, 20));
    expectYStays();
    desktop().holdDown(Qt::NoModifier);
    moveTo(middle + QPoint(-40, 40));
    release(middle + QPoint(-40, 40));
    EXPECT_GT(ranges().y.location, before.y.location);
}

TEST_F(TrendGestures, WheelZoomsBothAxes)
{
    turnWheel({0, 120});
    EXPECT_LT(ranges().x.length, before.x.length);
    EXPECT_LT(ranges().y.length, before.y.length);
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, WheelWithOptionZoomsTimeOnlyAlthoughItsAxesAreSwapped)
{
    desktop().holdDown(Qt::AltModifier);
    turnWheel({120, 0}, Qt::AltModifier);  // as the toolkit hands on a turn of the one wheel there is
    EXPECT_DOUBLE_EQ(ranges().x.length, before.x.length / 1.25);
    expectYStays();
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, WheelWithShiftZoomsValuesOnly)
{
    desktop().holdDown(Qt::ShiftModifier);
    turnWheel({0, 120}, Qt::ShiftModifier);
    EXPECT_LT(ranges().y.length, before.y.length);
    expectXStays();
}

TEST_F(TrendGestures, HorizontalScrollPansTimeAlone)
{
    turnWheel({-120, 0});
    EXPECT_NEAR(ranges().x.location, before.x.location + 0.1 * before.x.length, 1e-3);
    expectYStays();
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, ZoomLeavesTheFormatOfTheValueLabels)
{
    const CPTXYAxis& axis = *trend().graph()->axisSet()->yAxis();
    const auto formatter = axis.labelFormatter();
    for (int turn = 0; turn < 8; ++turn)
        turnWheel({0, 120});
    ASSERT_LT(ranges().y.length, 7.0);  // a fit of this length would write two decimals
    EXPECT_EQ(axis.labelFormatter(), formatter);
    EXPECT_EQ(axis.majorIntervalLength(), trend().computeOptimalMajorIntervalForRangeWithSpan(ranges().y.length));
}

TEST_F(TrendGestures, ZoomingOutEndsAtTheLongestSpansAndLeavesTheDatesThere)
{
    std::optional<plotix::Date> lastAccepted;
    for (int turn = 0; turn < 80; ++turn) {
        if (ranges().x.length < 307'584'000)
            lastAccepted = panel().fromDateValue();
        turnWheel({0, -120});
    }
    EXPECT_EQ(ranges().x.length, 307'584'000);
    EXPECT_EQ(ranges().y.length, 5'000);
    ASSERT_TRUE(lastAccepted);
    EXPECT_LT(panel().toDateValue()->seconds - panel().fromDateValue()->seconds, 307'584'000);
}

TEST_F(TrendGestures, ZoomingInEndsAtATenth)
{
    for (int turn = 0; turn < 80; ++turn)
        turnWheel({0, 120});
    EXPECT_EQ(ranges().x.length, 0.1);
    EXPECT_EQ(ranges().y.length, 0.1);
}

TEST_F(TrendGestures, KeysPanZoomAndFit)
{
    QTest::keyClick(&graphView(), Qt::Key_Right);
    QTest::keyClick(&graphView(), Qt::Key_Up);
    EXPECT_NEAR(ranges().x.location, before.x.location + 0.1 * before.x.length, 1e-3);
    EXPECT_GT(ranges().y.location, before.y.location);
    QTest::keyClick(&graphView(), '+');
    QTest::keyClick(&graphView(), '=');
    QTest::keyClick(&graphView(), '-');
    EXPECT_NEAR(ranges().x.length, before.x.length / 1.25, 1e-3);
    expectPanelShowsTheRange();
    QTest::keyClick(&graphView(), Qt::Key_Home);
    expectXStays();
    expectYStays();
}

TEST_F(TrendGestures, AKeyWithOptionHeldKeepsTheValues)
{
    desktop().holdDown(Qt::AltModifier);
    QTest::keyClick(&graphView(), Qt::Key_Up, Qt::AltModifier);
    expectYStays();
    QTest::keyClick(&graphView(), '+', Qt::AltModifier);
    EXPECT_LT(ranges().x.length, before.x.length);
    expectYStays();
}

TEST_F(TrendGestures, TwoFingersPinch)
{
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    const QPoint left = middle - QPoint(40, 0), right = middle + QPoint(40, 0);
    QTest::touchEvent(&graphView(), screen.get()).press(0, left).press(1, right);
    for (int step = 1; step <= 20; ++step)
        QTest::touchEvent(&graphView(), screen.get())
            .move(0, left - QPoint(2 * step, 0))
            .move(1, right + QPoint(2 * step, 0));
    QTest::touchEvent(&graphView(), screen.get()).release(0, left - QPoint(40, 0)).release(1, right + QPoint(40, 0));
    EXPECT_LT(ranges().x.length, 0.75 * before.x.length);
    EXPECT_LT(ranges().y.length, 0.75 * before.y.length);
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, OneFingerDrags)
{
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    QTest::touchEvent(&graphView(), screen.get()).press(0, middle);
    for (int step = 1; step <= 9; ++step)
        QTest::touchEvent(&graphView(), screen.get()).move(0, middle - QPoint(10 * step, 0));
    QTest::touchEvent(&graphView(), screen.get()).release(0, middle - QPoint(90, 0));
    EXPECT_NEAR(ranges().x.location, before.x.location + 90 / area.width() * before.x.length, 1e-3);
    EXPECT_DOUBLE_EQ(ranges().x.length, before.x.length);
    expectPanelShowsTheRange();
}

TEST_F(TrendGestures, RefreshAfterAZoomFetchesWhatIsShown)
{
    turnWheel({0, 120});
    const CPTPlotRange shown = ranges().x;
    QTest::keyClick(&graphView(), 'r');
    EXPECT_EQ(fetchCount(), fetches + 1);
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{shown.location});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{shown.end()});
}

TEST_F(TrendGestures, KeysHeldWhileDataArriveFreezeTheFit)
{
    turnWheel({0, 120});
    const Ranges zoomed = ranges();
    desktop().holdDown(Qt::AltModifier);
    answerRefresh(twoProperties());
    EXPECT_EQ(ranges().x, before.x);
    EXPECT_EQ(ranges().y, zoomed.y);
}

}  // namespace
