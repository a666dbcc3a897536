#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/lanes/Arrangement.h"
#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"
#include "plugins/PlotixPlugIn/reading/moves/ViewMoves.h"
#include "tests/plugins/PlotixPlugIn/TrendViewFixture.h"

#include <QtGui/QWheelEvent>
#include <QtTest/QTest>

namespace {

using namespace plotix;

/// A shown trend of two lines in the window, with more gestures.
class TrendMovesTest : public TrendViewFixture {
protected:
    void SetUp() override
    {
        openTrendWithData();
        trend().setReading({{"moves", QVariantMap{{"gestures", true}}}});
        trend().view()->resize(800, 700);
        trend().view()->show();
        QCoreApplication::processEvents();
    }
    ViewMoves& moves() { return *static_cast<ViewMoves*>(reader().part(QStringLiteral("moves"))); }
    TrendReader& reader() { return *static_cast<TrendReader*>(trend().trendReader()); }
    CPTXYPlotSpace& space() { return *trend().graph()->defaultPlotSpace(); }
    QRectF area() { return trend().hostView()->geometryShown(*trend().graph()).plotArea; }
    QPoint at(double x, double y)
    {
        return (area().topLeft() + QPointF(x * area().width(), y * area().height())).toPoint();
    }
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mousePress(trend().hostView(), Qt::LeftButton, keys, from);
        QTest::mouseMove(trend().hostView(), to);
        QTest::mouseRelease(trend().hostView(), Qt::LeftButton, keys, to);
    }
    void turnWheelAt(const QPoint& point)
    {
        QWheelEvent event(point, trend().hostView()->mapToGlobal(point), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(trend().hostView(), &event);
    }
    void lookAt(double from, double to)
    {
        space().setXRange({from, to - from});
        moves().settle();
    }
    void keepWhereRecordsAre(double from, double to)
    {
        host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{Date{from}, Date{to}});
        trend().setReading({{"moves", QVariantMap{{"bounded", true}}}});
    }
    QAction* action(int index) { return moves().actions()[static_cast<std::size_t>(index)]; }
};

TEST_F(TrendMovesTest, BackAndForwardGoAmongTheViewsLookedAt)
{
    lookAt(kFrom, kTo);
    lookAt(kFrom + 600, kFrom + 1'200);
    moves().goBack();
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom, 3'600}));
    moves().goForward();
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom + 600, 600}));
    EXPECT_FALSE(action(1)->isEnabled());
}

TEST_F(TrendMovesTest, BackBringsTheValuesOfLanesBackToo)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-unit"}}}});
    auto& lanes = *static_cast<Arrangement*>(reader().part(QStringLiteral("arrangement")));
    moves().settle();
    const CPTPlotRange before = lanes.lanes()[1]->space()->yRange();
    lanes.lanes()[1]->space()->setYRange({5, 7});
    moves().settle();
    moves().goBack();
    EXPECT_EQ(lanes.lanes()[1]->space()->yRange(), before);
}

/// Back is Alt and an arrow, and a hand that zooms with Alt holds the values.
TEST_F(TrendMovesTest, TheKeysOfBackDoNotHoldTheValuesOfLanes)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-unit"}}}});
    auto& lanes = *static_cast<Arrangement*>(reader().part(QStringLiteral("arrangement")));
    moves().settle();
    const CPTPlotRange before = lanes.lanes()[1]->space()->yRange();
    lanes.lanes()[1]->space()->setYRange({5, 7});
    moves().settle();
    host().userInterface().holdDown(Qt::AltModifier);
    moves().goBack();
    EXPECT_EQ(lanes.lanes()[1]->space()->yRange(), before);
}

TEST_F(TrendMovesTest, ATrendThatMovesByItselfAddsNoView)
{
    lookAt(kFrom, kTo);
    trend().showRange(kFrom + 60, kTo + 60);
    completeLastFetch({twoProperties(), {}});
    drain();
    moves().goBack();
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom + 60, 3'600}));
}

TEST_F(TrendMovesTest, WhereAPartWentIsAViewLookedAt)
{
    lookAt(kFrom, kTo);
    trend().setReading({{"marks", QVariantMap{{"a", kFrom + 600}, {"b", kFrom + 1'200}}}});
    static_cast<MarksPart*>(reader().part(QStringLiteral("marks")))->fitToMarks();
    EXPECT_LT(space().xRange().length, 1'000);
    moves().goBack();
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom, 3'600}));
}

TEST_F(TrendMovesTest, ABoundedViewStaysWhereRecordsAre)
{
    keepWhereRecordsAre(kFrom - 3'600, kTo);
    space().setXRange({kTo + 10'000, 600});
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kTo + 60 - 600, 600}));
    space().setXRange({kFrom - 1'800, 600});  // stored, though not fetched
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom - 1'800, 600}));
}

TEST_F(TrendMovesTest, BoundsAreNotForWhatTheHostShows)
{
    keepWhereRecordsAre(kFrom, kTo);
    trend().showRange(kTo + 7'200, kTo + 10'800);
    completeLastFetch({twoProperties(), {}});
    drain();
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kTo + 7'200, 3'600}));
}

TEST_F(TrendViewFixture, FittingABoundedGraphWithoutRecordsShowsTheDatesItWasReadFor)
{
    openTrend();
    host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{Date{kTo + 86'400}, Date{kTo + 90'000}});
    trend().setReading({{"moves", QVariantMap{{"bounded", true}}}});
    answer(recordsAt({}).column("airTemperature", {}).column("pressure", {}));
    trend().fitAll(nullptr);
    EXPECT_EQ(trend().graph()->plotSpace().xRange(), (CPTPlotRange{kFrom, kTo - kFrom}));
    EXPECT_EQ(panel().fromDateValue()->seconds, kFrom);
}

TEST_F(TrendMovesTest, LanesKeepTheirValuesInSight)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-unit"}}}});
    keepWhereRecordsAre(kFrom, kTo);
    auto& lanes = *static_cast<Arrangement*>(reader().part(QStringLiteral("arrangement")));
    const CPTPlotRange before = lanes.lanes()[1]->space()->yRange();
    lanes.lanes()[1]->space()->setYRange({before.location + 1e6, before.length});
    EXPECT_LT(lanes.lanes()[1]->space()->yRange().minLimit(), before.maxLimit());
}

TEST_F(TrendMovesTest, AnArchiveThatTellsNothingBoundsNoTimes)
{
    trend().setReading({{"moves", QVariantMap{{"bounded", true}}}});
    space().setXRange({kTo + 10'000, 600});
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kTo + 10'000, 600}));
}

TEST_F(TrendMovesTest, AControlDragZoomsToItsBox)
{
    const QPointF first = trend().hostView()->geometryShown(*trend().graph()).valueForPoint(space(), at(0.25, 0.75));
    const QPointF last = trend().hostView()->geometryShown(*trend().graph()).valueForPoint(space(), at(0.5, 0.25));
    drag(at(0.25, 0.75), at(0.5, 0.25), Qt::ControlModifier);
    EXPECT_NEAR(space().xRange().minLimit(), first.x(), 1e-3);
    EXPECT_NEAR(space().xRange().maxLimit(), last.x(), 1e-3);
    EXPECT_NEAR(space().yRange().minLimit(), first.y(), 1e-6);
    EXPECT_NEAR(space().yRange().maxLimit(), last.y(), 1e-6);
}

TEST_F(TrendMovesTest, ALowBoxZoomsTheTimesAlone)
{
    const CPTPlotRange y = space().yRange();
    drag(at(0.25, 0.5), at(0.5, 0.5) + QPoint(0, 8), Qt::ControlModifier);
    EXPECT_NEAR(space().xRange().length, 900, 10);
    EXPECT_EQ(space().yRange(), y);
}

TEST_F(TrendMovesTest, TheMenuMakesTheNextDragABox)
{
    action(4)->trigger();
    drag(at(0.25, 0.75), at(0.5, 0.25));
    EXPECT_NEAR(space().xRange().length, 900, 10);
    drag(at(0.5, 0.5), at(0.4, 0.5));
    EXPECT_NEAR(space().xRange().length, 900, 10);  // pans again
}

TEST_F(TrendMovesTest, ADragAlongAnAxisZoomsThatAxisAlone)
{
    const CPTPlotRange x = space().xRange();
    const CPTPlotRange y = space().yRange();
    const QPoint below(int(area().center().x()), int(area().bottom()) + 15);
    drag(below, below + QPoint(120, 0));
    EXPECT_NEAR(space().xRange().length, x.length / 2, 1);
    EXPECT_EQ(space().yRange(), y);
    const QPoint left(int(area().left()) - 15, int(area().center().y()));
    drag(left, left - QPoint(0, 120));
    EXPECT_NEAR(space().yRange().length, y.length / 2, 0.1);
}

TEST_F(TrendMovesTest, TheWheelOverAnAxisZoomsThatAxisAlone)
{
    const CPTPlotRange x = space().xRange();
    turnWheelAt(QPoint(int(area().left()) - 15, int(area().center().y())));
    EXPECT_EQ(space().xRange(), x);
    turnWheelAt(QPoint(int(area().center().x()), int(area().bottom()) + 15));
    EXPECT_NEAR(space().xRange().length, x.length / 1.25, 1);
}

TEST_F(TrendMovesTest, ADoubleClickFitsEverything)
{
    lookAt(kFrom + 600, kFrom + 1'200);
    QTest::mouseDClick(trend().hostView(), Qt::LeftButton, {}, at(0.5, 0.5));
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom, 3'600}));
}

TEST_F(TrendMovesTest, ValuesAreFittedToTheTimesShown)
{
    space().setXRange({kFrom + 1'500, 3'000});  // two of three records
    const CPTPlotRange x = space().xRange();
    action(2)->trigger();
    EXPECT_EQ(space().xRange(), x);
    EXPECT_NEAR(space().yRange().minLimit(), 21 - 0.55, 1e-6);
    EXPECT_NEAR(space().yRange().maxLimit(), 32 + 0.55, 1e-6);
}

TEST_F(TrendMovesTest, WithoutTheChoiceGesturesAreTheContracts)
{
    trend().setReading({{"moves", QVariantMap()}});
    lookAt(kFrom + 600, kFrom + 1'200);
    const QPoint below(int(area().center().x()), int(area().bottom()) + 15);
    drag(below, below + QPoint(100, 0));
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom + 600, 600}));
    QTest::mouseDClick(trend().hostView(), Qt::LeftButton, {}, at(0.5, 0.5));
    EXPECT_NEAR(space().xRange().length, 600, 1e-6);
    EXPECT_FALSE(trend().reading().contains("moves"));
}

}  // namespace
