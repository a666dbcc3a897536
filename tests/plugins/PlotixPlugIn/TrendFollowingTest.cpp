#include "TrendViewFixture.h"

namespace {

class TrendFollowing : public TrendViewFixture {
protected:
    void showNow(double from, double to) { trend().showRange(from, to); }
    static QVariantList range(double from, double to) { return {from, to}; }
};

TEST_F(TrendFollowing, AsksForTheRangeWithoutBeingBusy)
{
    openTrendWithData();
    trend().didFinishDrawing();
    const int before = fetchCount();
    const QVariantList shown = trend().shownRange();
    showNow(kFrom + 60, kTo + 60);
    EXPECT_EQ(fetchCount(), before + 1);
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom + 60});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kTo + 60});
    EXPECT_FALSE(isBusy());
    EXPECT_EQ(trend().shownRange(), shown);
}

TEST_F(TrendFollowing, TheAnswerShowsTheWholeRangeAskedFor)
{
    openTrendWithData();
    showNow(kFrom + 60, kTo + 60);
    answer(recordsAt({kFrom + 100, kFrom + 200, kFrom + 300}).column("airTemperature", {1, 2, 3}));
    EXPECT_EQ(trend().shownRange(), range(kFrom + 60, kTo + 60));
    const CPTPlotRange shown = trend().graph()->defaultPlotSpace()->xRange();
    EXPECT_EQ(shown.location, kFrom + 60);
    EXPECT_EQ(shown.length, 3600);
    EXPECT_EQ(plotIdentifiers(), QStringList{"airTemperature"});
}

TEST_F(TrendFollowing, AKeyHeldForSomethingElseDoesNotStopIt)
{
    openTrendWithData();
    for (const Qt::KeyboardModifier held : {Qt::ShiftModifier, Qt::AltModifier}) {
        desktop().holdDown(held);
        showNow(kFrom + 60, kTo + 60);
        answer(recordsAt({kFrom + 100, kFrom + 200}).column("airTemperature", {100, 200}));
        EXPECT_EQ(trend().shownRange(), range(kFrom + 60, kTo + 60));
        EXPECT_EQ(trend().graph()->defaultPlotSpace()->yRange().location, 100);
        desktop().holdDown(Qt::NoModifier);
        trend().graph()->defaultPlotSpace()->setXRange({kFrom, kTo - kFrom});
        trend().graph()->defaultPlotSpace()->setYRange({0, 10});
    }
}

TEST_F(TrendFollowing, WhoeverMovedTheDatesMeanwhileKeepsThem)
{
    openTrendWithData();
    showNow(kFrom + 60, kTo + 60);
    trend().graph()->defaultPlotSpace()->setXRange({kFrom - 7200, 3600});
    answer(recordsAt({kFrom + 100, kFrom + 200}).column("airTemperature", {1, 2}));
    EXPECT_EQ(trend().shownRange(), range(kFrom - 7200, kFrom - 3600));
    EXPECT_EQ(plotIdentifiers().size(), 2);
}

TEST_F(TrendFollowing, SaysWhichRangeWasRefreshedLast)
{
    openTrendWithData();
    const QVariantList shown = trend().shownRange();
    trend().refreshPlot();
    answer(recordsAt({kFrom + 100, kFrom + 200}).column("airTemperature", {1, 2}));
    EXPECT_EQ(trend().refreshedRange(), shown);
    EXPECT_NE(trend().shownRange(), shown);
    showNow(kFrom + 60, kTo + 60);
    EXPECT_EQ(trend().refreshedRange(), shown);
}

TEST_F(TrendFollowing, WithoutRecordsTheDatesMoveOnToo)
{
    openTrendWithData();
    showNow(kFrom + 60, kTo + 60);
    answer(recordsAt({}));
    EXPECT_EQ(trend().shownRange(), range(kFrom + 60, kTo + 60));
}

TEST_F(TrendFollowing, AFailureIsPassedOverWithoutAnAlert)
{
    openTrendWithData();
    const QVariantList shown = trend().shownRange();
    showNow(kFrom + 60, kTo + 60);
    answerNothing();
    EXPECT_EQ(trend().shownRange(), shown);
    EXPECT_EQ(plotIdentifiers().size(), 2);
    EXPECT_TRUE(desktop().modalAlerts().empty());
}

TEST_F(TrendFollowing, AReversedRangeAsksForNothing)
{
    openTrendWithData();
    const int before = fetchCount();
    showNow(kTo, kFrom);
    EXPECT_EQ(fetchCount(), before);
}

TEST_F(TrendFollowing, AViewThatIsGoneIsNotAnswered)
{
    openTrendWithData();
    showNow(kFrom, kTo);
    const std::weak_ptr<KTVPlugIn> gone = trend().shared_from_this();
    releaseTrend();
    EXPECT_TRUE(gone.expired());
    answer(recordsAt({kFrom, kTo}).column("airTemperature", {1, 2}));
    EXPECT_TRUE(desktop().modalAlerts().empty());
}

}  // namespace
