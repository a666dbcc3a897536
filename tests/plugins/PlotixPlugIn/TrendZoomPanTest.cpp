#include "TrendViewFixture.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>

namespace {

class TrendZoomPan : public TrendViewFixture {
protected:
    void SetUp() override
    {
        openTrendWithData();
        answerRefresh(twoProperties());
    }
    CPTXYAxis& yAxis() { return *trend().graph()->axisSet()->lastAxis(); }
    CPTXYPlotSpace& space() { return *trend().graph()->defaultPlotSpace(); }
    void press(int key, const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(trend().hostView(), &event);
    }
};

TEST_F(TrendZoomPan, PanningMovesThePanelAndFetchesNothing)
{
    const int fetches = fetchCount();
    space().setXRange({kFrom + 60, kTo - kFrom});
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom + 60});
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kTo + 60});
    EXPECT_EQ(fetchCount(), fetches);
}

TEST_F(TrendZoomPan, FractionsOfASecondSurvivePanning)
{
    space().setXRange({kFrom + 0.0625, 1'000.5});
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom + 0.0625});
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kFrom + 1'000.5625});
}

TEST_F(TrendZoomPan, AcceptedTimeRangeTicksAnew)
{
    space().setXRange({kFrom, 604'800});
    EXPECT_EQ(trend().graph()->axisSet()->xAxis()->majorIntervalLength(), 86'400);
}

TEST_F(TrendZoomPan, TooLongTimeRangeIsClampedAndMovesNothing)
{
    const double interval = trend().graph()->axisSet()->xAxis()->majorIntervalLength();
    space().setXRange({kFrom, 4e8});
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom, 307'584'000}));
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kTo});
    EXPECT_EQ(trend().graph()->axisSet()->xAxis()->majorIntervalLength(), interval);
}

TEST_F(TrendZoomPan, AcceptedValueRangeTicksAnew)
{
    space().setYRange({0, 40});
    EXPECT_EQ(yAxis().majorIntervalLength(), 4);
}

TEST_F(TrendZoomPan, ClampedValueRangeKeepsItsTicks)
{
    const double interval = yAxis().majorIntervalLength();
    space().setYRange({3, 0.05});
    EXPECT_EQ(space().yRange(), (CPTPlotRange{3, 0.1}));
    EXPECT_EQ(yAxis().majorIntervalLength(), interval);
}

TEST_F(TrendZoomPan, OptionHoldsTheValueAxis)
{
    const CPTPlotRange before = space().yRange();
    desktop().holdDown(Qt::AltModifier);
    space().setYRange({0, 40});
    space().setXRange({kFrom + 60, 600});
    EXPECT_EQ(space().yRange(), before);
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom + 60, 600}));
}

TEST_F(TrendZoomPan, ShiftHoldsTheTimeAxis)
{
    const CPTPlotRange before = space().xRange();
    desktop().holdDown(Qt::ShiftModifier);
    space().setXRange({kFrom + 60, 600});
    space().setYRange({0, 40});
    EXPECT_EQ(space().xRange(), before);
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom});
    EXPECT_EQ(space().yRange(), (CPTPlotRange{0, 40}));
}

TEST_F(TrendZoomPan, WithBothKeysOnlyTheValueAxisIsHeld)
{
    desktop().holdDown(Qt::AltModifier | Qt::ShiftModifier);
    space().setXRange({kFrom + 60, 600});
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom + 60, 600}));
}

TEST_F(TrendZoomPan, KeysAreReadAtTheMomentOfAsking)
{
    desktop().holdDown(Qt::ShiftModifier);
    desktop().holdDown(Qt::NoModifier);
    space().setXRange({kFrom + 60, 600});
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom + 60, 600}));
}

TEST_F(TrendZoomPan, AnyZoomIsAllowedAndEveryPointerEventHandled)
{
    EXPECT_TRUE(trend().plotSpaceShouldScaleBy(&space(), 1e9, {}));
    EXPECT_TRUE(trend().plotSpaceShouldHandlePointingDeviceUpEvent(&space(), {}));
    EXPECT_TRUE(trend().plotSpaceShouldHandlePointingDeviceCancelledEvent(&space()));
}

TEST_F(TrendZoomPan, FitAllShowsEverythingAgain)
{
    const CPTPlotRange all = space().xRange();
    space().setXRange({kFrom + 60, 600});
    trend().fitAll(nullptr);
    EXPECT_EQ(space().xRange(), all);
}

TEST_F(TrendZoomPan, SmallRRefreshesTheRangeShown)
{
    space().setXRange({kFrom + 60, 600});
    const int fetches = fetchCount();
    press(Qt::Key_R, "r");
    ASSERT_EQ(fetchCount(), fetches + 1);
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom + 60});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kFrom + 660});
}

TEST_F(TrendZoomPan, OtherKeysDoNotRefresh)
{
    const int fetches = fetchCount();
    press(Qt::Key_R, "R", Qt::ShiftModifier);
    press(Qt::Key_T, "t");
    press(Qt::Key_Left, "");
    EXPECT_EQ(fetchCount(), fetches);
}

TEST_F(TrendZoomPan, FirstCharacterDecides)
{
    const int fetches = fetchCount();
    press(Qt::Key_unknown, "rx");
    press(Qt::Key_unknown, "xr");
    EXPECT_EQ(fetchCount(), fetches + 1);
}

TEST_F(TrendZoomPan, HostingViewTakesTheKeys)
{
    EXPECT_TRUE(trend().hostView()->acceptsFirstResponder());
    EXPECT_NE(trend().hostView()->focusPolicy() & Qt::ClickFocus, 0);
}

}  // namespace
