#include "TrendViewFixture.h"

namespace {

class TrendAcquisition : public TrendViewFixture {};

/// Installs itself as the desktop and looks at the view when a sheet opens.
class WatchedDesktop : public fakehost::FakeUserInterface {
public:
    explicit WatchedDesktop(std::function<void()> look) : FakeUserInterface(&m_log), m_look(std::move(look))
    {
        KTVHostServices services = KTVHostServices::installed();
        services.userInterface = this;
        m_previous = KTVHostServices::install(services);
    }
    ~WatchedDesktop() override { KTVHostServices::install(m_previous); }
    void beginSheet(const KTVAlert&, QWidget*, std::function<void()>) override { m_look(); }

private:
    fakehost::CallLog m_log;
    std::function<void()> m_look;
    KTVHostServices m_previous;
};

TEST_F(TrendAcquisition, AsksForThePropertiesOverThePanelsRange)
{
    openTrend();
    EXPECT_EQ(lastFetch().properties, trend().properties());
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kTo});
    EXPECT_EQ(lastFetch().maximumSamples, 2147483647);
}

TEST_F(TrendAcquisition, AsksForNoPropertiesWhenThereIsNoList)
{
    makeTrendWithoutTables();
    open();
    ASSERT_EQ(fetchCount(), 1);
    EXPECT_FALSE(lastFetch().properties.has_value());
}

TEST_F(TrendAcquisition, EqualDatesFetch)
{
    openTrend();
    trend().acquirePlotFromDate(plotix::Date{kFrom}, plotix::Date{kFrom});
    EXPECT_EQ(fetchCount(), 2);
}

TEST_F(TrendAcquisition, AbsentDatesFetch)
{
    openTrend();
    trend().acquirePlotFromDate(std::nullopt, plotix::Date{kFrom});
    trend().acquirePlotFromDate(plotix::Date{kFrom}, std::nullopt);
    EXPECT_EQ(fetchCount(), 3);
}

TEST_F(TrendAcquisition, RefusedRangeShowsASheetAndAsksNothing)
{
    openTrend();
    trend().acquirePlotFromDate(plotix::Date{kTo}, plotix::Date{kTo - 1});
    EXPECT_EQ(fetchCount(), 1);
    ASSERT_EQ(desktop().sheets().size(), 1U);
    EXPECT_EQ(desktop().sheets()[0].alert.messageText, "Illegal Date Range");
    EXPECT_EQ(desktop().sheets()[0].alert.informativeText, "The \"from\" date must be less than the \"to\" date.");
    EXPECT_EQ(desktop().sheets()[0].alert.style, KTVAlert::Style::Critical);
}

TEST_F(TrendAcquisition, RefusedRangeEndsTheBusyStateBeforeTheSheet)
{
    openTrend();
    ASSERT_TRUE(isBusy());
    bool busyAtTheSheet = true;
    WatchedDesktop watched([&] { busyAtTheSheet = isBusy(); });
    trend().acquirePlotFromDate(plotix::Date{kTo}, plotix::Date{kFrom});
    EXPECT_FALSE(busyAtTheSheet);
}

TEST_F(TrendAcquisition, SheetOpensOnTheWindowOfTheView)
{
    openTrend();
    QWidget* window = host().siteWindowController().window();
    trend().view()->setParent(window);
    refreshFor(kTo, kFrom);
    EXPECT_EQ(desktop().sheets().at(0).window, window);
}

TEST_F(TrendAcquisition, ViewInNoWindowOpensTheSheetWithoutAParent)
{
    openTrend();
    refreshFor(kTo, kFrom);
    EXPECT_EQ(desktop().sheets().at(0).window, nullptr);
}

TEST_F(TrendAcquisition, RefusedRangeLeavesThePickersAlone)
{
    openTrend();
    panel().setFromDateValue(plotix::Date{kTo + 60});
    trend().refreshPlot();
    EXPECT_EQ(panel().fromDateValue(), plotix::Date{kTo + 60});
    EXPECT_EQ(panel().toDateValue(), plotix::Date{kTo});
    EXPECT_EQ(fetchCount(), 1);
}

TEST_F(TrendAcquisition, FetchMakesThePanelBusy)
{
    openTrend();
    EXPECT_TRUE(isBusy());
}

TEST_F(TrendAcquisition, MalformedAnswerShowsAModalAlertAndStaysBusy)
{
    openTrend();
    answerNothing();
    ASSERT_EQ(desktop().modalAlerts().size(), 1U);
    EXPECT_EQ(desktop().modalAlerts()[0].messageText, "Database Access Error");
    EXPECT_EQ(desktop().modalAlerts()[0].informativeText, "Returned object was malformed.");
    EXPECT_EQ(desktop().modalAlerts()[0].style, KTVAlert::Style::Default);
    EXPECT_TRUE(isBusy());
}

TEST_F(TrendAcquisition, ATrendThatWasAnsweredNothingLacksRecordsUntilItIsAnswered)
{
    openTrendWithData();
    EXPECT_FALSE(trend().lacksRecords());
    refreshFor(kFrom - 600, kTo);
    answerNothing();
    EXPECT_TRUE(trend().lacksRecords());
    answerRefresh(trend().plotData());
    EXPECT_FALSE(trend().lacksRecords());
}

TEST_F(TrendAcquisition, MalformedAnswerRestoresTheDatesAfterTheAlert)
{
    openTrendWithData();
    const plotix::OptionalDate accepted = panel().previousFromDate();
    refreshFor(kFrom - 600, kTo);
    plotix::OptionalDate duringTheAlert;
    desktop().duringModal([&] { duringTheAlert = panel().fromDateValue(); });
    answerNothing();
    EXPECT_EQ(duringTheAlert, plotix::Date{kFrom - 600});
    EXPECT_EQ(panel().fromDateValue(), accepted);
}

TEST_F(TrendAcquisition, MalformedAnswerLeavesThePlotAlone)
{
    openTrendWithData();
    const KTVRecordDictionaryPtr before = trend().plotData();
    const std::vector<CPTScatterPlotPtr> plots = trend().graph()->allPlots();
    trend().refreshPlot();
    answerNothing();
    EXPECT_EQ(trend().plotData(), before);
    EXPECT_EQ(trend().graph()->allPlots(), plots);
}

TEST_F(TrendAcquisition, ErrorWithoutRecordsIsTheMalformedCase)
{
    openTrend();
    answer(nullptr, KTVError{QStringLiteral("disk gone")});
    EXPECT_EQ(desktop().modalAlerts().size(), 1U);
    EXPECT_EQ(overlayText(), QString());
}

TEST_F(TrendAcquisition, RecordsWithAnErrorStillRebuild)
{
    openTrendWithData();
    refreshFor(kFrom - 600, kTo);
    const KTVRecordDictionaryPtr records = twoProperties();
    answer(records, KTVError{QStringLiteral("half of it")});
    EXPECT_EQ(trend().plotData(), records);
    EXPECT_EQ(plotIdentifiers(), QStringList({"airTemperature", "pressure"}));
    EXPECT_TRUE(desktop().modalAlerts().empty());
}

// The overlay of the error is taken away by the rebuild that follows when there is something to show.
TEST_F(TrendAcquisition, OverlayOfAnErrorIsReplacedByTheRebuild)
{
    openTrend();
    answer(twoProperties(), KTVError{QStringLiteral("half of it")});
    EXPECT_EQ(overlayText(), QString());
    EXPECT_EQ(overlayMessages(), QStringList({"No Properties Available to Plot"}));
}

TEST_F(TrendAcquisition, AnswerIsNeverHandledInTheHandlersCall)
{
    openTrend();
    completeLastFetch({twoProperties(), {}});
    EXPECT_EQ(trend().plotData(), nullptr);
    drain();
    EXPECT_NE(trend().plotData(), nullptr);
}

TEST_F(TrendAcquisition, ArchiveThatAnswersAtOnceIsHandledAfterTheCall)
{
    host().archiveManager().answerFetchesWith([this](const auto&) { return Answer{twoProperties(), {}}; });
    openTrend();
    EXPECT_EQ(trend().plotData(), nullptr);
    EXPECT_TRUE(isBusy());
    drain();
    EXPECT_NE(trend().plotData(), nullptr);
}

TEST_F(TrendAcquisition, AnswerOnAnotherThreadIsHandledOnTheMainThread)
{
    openTrend();
    completeLastFetch({twoProperties(), {}}, Where::OnWorkerThread);
    EXPECT_EQ(trend().plotData(), nullptr);
    drain();
    EXPECT_NE(trend().plotData(), nullptr);
}

TEST_F(TrendAcquisition, AnswerAfterTheReleaseIsDropped)
{
    openTrend();
    releaseTrend();
    completeLastFetch({});
    drain();
    EXPECT_TRUE(desktop().modalAlerts().empty());
}

TEST_F(TrendAcquisition, ReleaseWhileTheTaskWaitsDropsTheAnswer)
{
    openTrend();
    completeLastFetch({});
    releaseTrend();
    drain();
    EXPECT_TRUE(desktop().modalAlerts().empty());
}

TEST_F(TrendAcquisition, PendingFetchDoesNotKeepAnOrdinaryViewAlive)
{
    openTrend();
    const std::weak_ptr<KTVPlugIn> weak = trend().weak_from_this();
    releaseTrend();
    EXPECT_TRUE(weak.expired());
}

TEST_F(TrendAcquisition, CancelEndsTheBusyStateAndCancelsNothing)
{
    openTrend();
    trend().cancel(nullptr);
    EXPECT_FALSE(isBusy());
    EXPECT_FALSE(host().archiveManager().reportProgress(0, 0.5));
    answer(twoProperties());
    EXPECT_EQ(plotIdentifiers(), QStringList({"airTemperature", "pressure"}));
}

TEST_F(TrendAcquisition, LastAnswerToArriveWins)
{
    openTrend();
    trend().refreshPlot();
    const KTVRecordDictionaryPtr late = twoProperties();
    host().archiveManager().answer(1, {twoProperties(), {}});
    host().archiveManager().answer(0, {late, {}});
    drain();
    EXPECT_EQ(trend().plotData(), late);
}

TEST_F(TrendAcquisition, DateChangeNeverFetches)
{
    openTrend();
    trend().dateChanged(&panel());
    panel().setDateRangeToday(nullptr);
    EXPECT_EQ(fetchCount(), 1);
}

TEST_F(TrendAcquisition, RefreshAndRefreshPlotFetchAgain)
{
    openTrend();
    trend().refresh(nullptr);
    trend().refreshPlot();
    EXPECT_EQ(fetchCount(), 3);
}

TEST_F(TrendAcquisition, NothingEverSaysThatThePlotIsReady)
{
    openTrendWithData();
    EXPECT_FALSE(trend().plotReady());
}

}  // namespace
