#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "TrendViewFixture.h"

#include <QtTest/QSignalSpy>

// What is read, what is drawn, and which dates were chosen; and how the graph marks where it is behind.

namespace {

using plotix::ReadSpans;

constexpr QSizeF kPicture{600, 400};

class ReadSpansTest : public TrendViewFixture {
protected:
    ReadSpans& reading() { return *qobject_cast<ReadSpans*>(trend().readSpans()); }
    CPTXYPlotSpace& space() { return *trend().graph()->defaultPlotSpace(); }
    QVariantList span(const char* name) { return reading().spans().value(QLatin1String(name)).toList(); }
    bool datesLead() { return reading().spans().value(QStringLiteral("datesLead")).toBool(); }
    static QVariantList range(double from, double to) { return {from, to}; }
    QVariantList held() { return range(kFrom + 100, kFrom + 300); }
    fakehost::RecordBuilder threeRecords()
    {
        return recordsAt({kFrom + 100, kFrom + 200, kFrom + 300}).column("airTemperature", {1, 2, 3});
    }
    void chooseDates(double from, double to) { panel().updateDates(plotix::Date{from}, plotix::Date{to}); }
    QImage picture() { return trend().graphImageWithSize(kPicture, 1, {}); }
    /// Whether the pixels of a part of the plot area, from 0 at its left to 1 at its right, changed since a picture.
    bool differs(const QImage& before, double from, double to)
    {
        const QImage now = picture();
        const CPTPadding &outside = trend().graph()->padding(), &inside = trend().graph()->plotAreaFrame().padding;
        const double left = outside.left + inside.left;
        const double width = kPicture.width() - left - outside.right - inside.right;
        const QRect part = QRectF(left + from * width, kPicture.height() / 3, (to - from) * width, 60).toRect();
        return now.copy(part) != before.copy(part);
    }
};

TEST_F(ReadSpansTest, KnowsWhatWasAskedForUntilItIsAnswered)
{
    openTrend();
    EXPECT_EQ(span("asked"), range(kFrom, kTo));
    answer(threeRecords());
    EXPECT_TRUE(span("asked").isEmpty());
    EXPECT_EQ(span("read"), range(kFrom, kTo));
    EXPECT_EQ(span("held"), held());
    EXPECT_EQ(span("drawn"), held());
}

TEST_F(ReadSpansTest, AFailureReadsNothing)
{
    openTrend();
    answerNothing();
    EXPECT_TRUE(span("asked").isEmpty());
    EXPECT_TRUE(span("read").isEmpty());
}

TEST_F(ReadSpansTest, ChosenDatesLeadUntilTheGraphIsMoved)
{
    openTrendWithData();
    QSignalSpy moves(&reading(), &ReadSpans::spanMoved);
    chooseDates(kFrom - 7200, kFrom);
    EXPECT_TRUE(datesLead());
    EXPECT_EQ(moves.count(), 1);
    space().setXRange({kFrom - 60, 60});
    EXPECT_FALSE(datesLead());
    EXPECT_EQ(moves.count(), 2);
}

TEST_F(ReadSpansTest, ReadingLeavesBothRangesAsTheyAre)
{
    openTrendWithData();
    trend().didFinishDrawing();
    space().setXRange({kFrom - 100, 50});
    space().setYRange({-3, 6});
    trend().readRange(kFrom - 100, kFrom - 50);
    EXPECT_FALSE(isBusy());
    answer(recordsAt({kFrom - 90, kFrom - 60}).column("airTemperature", {1, 2}));
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom - 100, 50}));
    EXPECT_EQ(space().yRange(), (CPTPlotRange{-3, 6}));
    EXPECT_EQ(trend().shownRange(), range(kFrom - 100, kFrom - 50));
    EXPECT_EQ(span("read"), range(kFrom - 100, kFrom - 50));
}

TEST_F(ReadSpansTest, ReadingThatIsOvertakenByAPanIsShownWhereItBelongs)
{
    openTrendWithData();
    trend().readRange(kFrom - 100, kFrom - 50);
    space().setXRange({kFrom - 200, 50});
    answer(recordsAt({kFrom - 90, kFrom - 60}).column("airTemperature", {1, 2}));
    EXPECT_EQ(space().xRange(), (CPTPlotRange{kFrom - 200, 50}));
    EXPECT_EQ(span("read"), range(kFrom - 100, kFrom - 50));
}

TEST_F(ReadSpansTest, ARefreshShrinksToItsRecordsUnlessTheSpanIsKept)
{
    openTrend();
    reading().setSpanKept(true);
    answer(threeRecords());
    EXPECT_EQ(trend().shownRange(), range(kFrom, kTo));
    reading().setSpanKept(false);
    trend().refreshPlot();
    answer(threeRecords());
    EXPECT_EQ(trend().shownRange(), held());
}

TEST_F(ReadSpansTest, AnAnswerWithoutRecordsMovesAMarkedGraphAlone)
{
    openTrendWithData();
    const QVariantList before = span("drawn");
    refreshFor(kFrom - 7200, kFrom);
    answer(recordsAt({}));
    EXPECT_EQ(span("drawn"), before);
    reading().setSpanMarked(true);
    refreshFor(kFrom - 7200, kFrom);
    answer(recordsAt({}));
    EXPECT_EQ(span("drawn"), range(kFrom - 7200, kFrom));
}

TEST_F(ReadSpansTest, DatesFollowAGraphThatWasCut)
{
    openTrendWithData();
    space().setXRange({kFrom, 4e8});
    EXPECT_NE(trend().shownRange(), span("drawn"));
    reading().moveDatesToDrawn();
    EXPECT_EQ(trend().shownRange(), range(kFrom, kFrom + 307'584'000));
}

TEST_F(ReadSpansTest, WhatIsNotReadYetIsShaded)
{
    openTrendWithData();
    const double span = space().xRange().length;
    space().setXRange({space().xRange().location - span, 2 * span});
    const QImage unmarked = picture();
    reading().setSpanMarked(true);
    EXPECT_FALSE(differs(unmarked, 0.55, 0.95));
    EXPECT_TRUE(differs(unmarked, 0, 0.1));
    trend().readRange(space().xRange().location, space().xRange().end());
    answer(twoProperties());
    EXPECT_FALSE(differs(unmarked, 0, 1));
}

TEST_F(ReadSpansTest, WhatWasReadAndHeldNothingIsNotShaded)
{
    openTrendWithData();
    reading().setSpanMarked(true);
    space().setXRange({kFrom - 7200, 7200});
    refreshFor(kFrom - 7200, kFrom);
    const QImage onItsWay = picture();
    answer(recordsAt({}));
    const QImage answered = picture();
    EXPECT_NE(answered, onItsWay);
    reading().setSpanMarked(false);
    EXPECT_EQ(picture(), answered);
}

TEST_F(ReadSpansTest, OtherDatesThanTheGraphsAreMarkedUntilTheyAreDrawn)
{
    openTrendWithData();
    const QImage unmarked = picture();
    chooseDates(kFrom - 7200, kFrom);
    EXPECT_EQ(picture(), unmarked);
    reading().setSpanMarked(true);
    EXPECT_NE(picture(), unmarked);
    chooseDates(span("drawn")[0].toDouble(), span("drawn")[1].toDouble());
    EXPECT_EQ(picture(), unmarked);
}

}  // namespace
