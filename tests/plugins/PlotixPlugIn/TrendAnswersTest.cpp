#include "TrendViewFixture.h"

#include "ImageReceiver.h"

#include <QtCore/QMimeData>

// The busy state, the dates and the overlay around a fetch: what each kind of answer leaves behind.

namespace {

class TrendAnswers : public TrendViewFixture {
protected:
    void openIdle()
    {
        openTrendWithData();
        trend().cancel(nullptr);
        ASSERT_FALSE(isBusy());
    }
    InfoTableArray rows() { return *trend().infoTableArray(); }
    static KTVError anError() { return KTVError{QStringLiteral("half of it")}; }
};

TEST_F(TrendAnswers, FetchThatNobodyAnnouncedMakesThePanelBusy)
{
    openIdle();
    refreshFor(kFrom, kTo);
    EXPECT_TRUE(isBusy());
}

TEST_F(TrendAnswers, PanelIsBusyAndShowsTheRangeBeforeTheArchiveIsAsked)
{
    openIdle();
    bool wasBusy = false;
    plotix::OptionalDate from, to;
    host().archiveManager().answerFetchesWith([&](const auto&) {
        wasBusy = isBusy();
        from = panel().fromDateValue();
        to = panel().toDateValue();
        return Answer{twoProperties(), {}};
    });
    refreshFor(kFrom - 60, kTo + 60);
    EXPECT_TRUE(wasBusy);
    EXPECT_EQ(from, plotix::Date{kFrom - 60});
    EXPECT_EQ(to, plotix::Date{kTo + 60});
}

TEST_F(TrendAnswers, RefusedRangeLeavesThePanelIdle)
{
    openIdle();
    refreshFor(kTo, kFrom);
    EXPECT_FALSE(isBusy());
}

// The button's way back to "Refresh" comes from the refusal, inside the refresh that Return began.
TEST_F(TrendAnswers, ReversedRangeEnteredByReturnLeavesThePanelIdle)
{
    openIdle();
    panel().setFromDateValue(plotix::Date{kTo + 60});
    panel().returnKeyPressed(nullptr);
    EXPECT_EQ(desktop().sheets().size(), 1U);
    EXPECT_FALSE(isBusy());
}

TEST_F(TrendAnswers, DismissingTheRefusalChangesNothing)
{
    openIdle();
    refreshFor(kTo, kFrom);
    const plotix::OptionalDate from = panel().fromDateValue();
    const QStringList before = host().log().lines();
    desktop().dismissSheet(0);
    drain();
    EXPECT_EQ(panel().fromDateValue(), from);
    EXPECT_EQ(host().log().lines(), before);
    EXPECT_FALSE(isBusy());
}

TEST_F(TrendAnswers, ErrorBesideRecordsRestoresTheDates)
{
    openTrendWithData();
    const plotix::OptionalDate accepted = panel().previousFromDate();
    refreshFor(kFrom - 600, kTo);
    answer(records().withoutTime().build(), anError());
    EXPECT_EQ(panel().fromDateValue(), accepted);
}

// Restored first, then rebuilt: the fit of the records moves the dates once more.
TEST_F(TrendAnswers, RebuildAfterAnErrorMovesTheRestoredDates)
{
    openTrendWithData();
    refreshFor(kFrom - 600, kTo);
    answer(recordsAt({kFrom - 300, kTo}).column("airTemperature", {20, 21}).build(), anError());
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kFrom - 300});
}

TEST_F(TrendAnswers, MalformedAnswerLeavesTheOverlay)
{
    openTrend();
    answer(records().withoutTime());
    trend().refreshPlot();
    answerNothing();
    EXPECT_EQ(overlayText(), "No Properties Available to Plot");
    EXPECT_EQ(overlayMessages().size(), 1);
}

TEST_F(TrendAnswers, MalformedAnswerShowsNoOverlayOfItsOwn)
{
    openTrendWithData();
    trend().refreshPlot();
    answerNothing();
    EXPECT_EQ(overlayMessages(), QStringList());
}

TEST_F(TrendAnswers, MalformedAnswerLeavesTheTable)
{
    openTrendWithData();
    const InfoTableArray before = rows();
    ASSERT_EQ(before.size(), 2U);
    trend().refreshPlot();
    answerNothing();
    EXPECT_EQ(rows(), before);
}

TEST_F(TrendAnswers, NumberBesideTheRecordsMeansNothing)
{
    openTrend();
    completeLastFetch({twoProperties(), {}, -1});
    drain();
    EXPECT_EQ(plotIdentifiers(), QStringList({"airTemperature", "pressure"}));
}

// Every fixture expects it of its test; here everything comes from other threads.
TEST_F(TrendAnswers, HostIsAskedOnTheMainThreadAlone)
{
    host().serve(recordsAt({kFrom, kTo}).column("airTemperature", {20, 21}), Where::OnWorkerThread);
    openTrend({"airTemperature"});
    refreshFor(kFrom - 60, kTo);
    host().archiveManager().waitForWorkers();
    drain();
    EXPECT_EQ(plotIdentifiers(), QStringList("airTemperature"));
    EXPECT_EQ(host().log().callsOnOtherThreads(), 0);
}

TEST_F(TrendAnswers, OverlayLiesOverTheGraph)
{
    openTrend();
    answer(records().withoutTime());
    EXPECT_EQ(host().lastMessageViewController()->coveredView(), trend().hostView());
}

/// Looks when something is laid over a view.
class OverlayWatcher : public QObject {
public:
    OverlayWatcher(QWidget* view, std::function<void()> look) : m_look(std::move(look))
    {
        view->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::ChildAdded)
            m_look();
        return false;
    }

private:
    std::function<void()> m_look;
};

TEST_F(TrendAnswers, MessageComesBeforeTheEndOfTheRefresh)
{
    openTrend();
    bool wasBusy = false;
    const OverlayWatcher watcher(trend().hostView(), [&] { wasBusy = isBusy(); });
    answer(records().withoutTime());
    EXPECT_TRUE(wasBusy);
    EXPECT_FALSE(isBusy());
}

// It rebuilds as an answer does, and an answer accepts the dates that stand in the panel.
TEST_F(TrendAnswers, UnitChangeAcceptsTheDatesShown)
{
    openTrendWithData();
    panel().setFromDateValue(plotix::Date{kFrom - 60});
    property("airTemperature")->setUnit("degF");
    EXPECT_EQ(panel().previousFromDate(), plotix::Date{kFrom - 60});
    EXPECT_EQ(fetchCount(), 1);
}

TEST_F(TrendAnswers, PictureIsSentAfterTheMessages)
{
    openTrend();
    ImageReceiver receiver;
    QString shown;
    receiver.whenReceiving = [&] { shown = overlayText(); };
    trend().setCompletionTarget(&receiver);
    trend().setCompletionSelector("receiveImage");
    trend().setImageSize("{64, 48}");
    answer(records().withoutTime());
    EXPECT_EQ(receiver.images.size(), 1U);
    EXPECT_EQ(shown, "No Properties Available to Plot");
}

TEST_F(TrendAnswers, TableFollowsThePlots)
{
    openTrend();
    ImageReceiver receiver;
    std::size_t rowsAtTheEndOfTheRebuild = 9;
    receiver.whenReceiving = [&] { rowsAtTheEndOfTheRebuild = rows().size(); };
    trend().setCompletionTarget(&receiver);
    trend().setCompletionSelector("receiveImage");
    trend().setImageSize("{64, 48}");
    answer(twoProperties());
    EXPECT_EQ(rowsAtTheEndOfTheRebuild, 0U);
    EXPECT_EQ(rows().size(), 2U);
}

// Nobody reads a log. Whatever goes wrong is an alert, an overlay, or nothing at all.
TEST_F(TrendAnswers, NothingIsWrittenDown)
{
    testing::internal::CaptureStderr();
    openTrendWithData();
    trend().addProperties({"nothing"});
    trend().removePropertiesAndRefresh({"Nothing"});
    QMimeData unreadable;
    unreadable.setData(trend().dragType(), "not drag data at all");
    trend().dragDropView()->concludeDragOperation(&unreadable);
    desktop().answerSavePanelWith(QStringLiteral("/nowhere/at/all.pdf"));
    trend().exportToPDF(nullptr);
    trend().exportToPNG(nullptr);
    trend().refreshPlot();
    answer(twoProperties(), anError());
    trend().refreshPlot();
    answerNothing();
    refreshFor(kTo, kFrom);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(desktop().modalAlerts().size(), 1U);
    EXPECT_EQ(desktop().sheets().size(), 1U);
}

}  // namespace
