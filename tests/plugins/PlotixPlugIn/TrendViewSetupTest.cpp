#include "TrendViewFixture.h"

namespace {

class TrendViewSetup : public TrendViewFixture {};

TEST_F(TrendViewSetup, LoadingFetchesOnceForTheGivenDates)
{
    openTrend();
    ASSERT_EQ(fetchCount(), 1);
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kTo});
}

TEST_F(TrendViewSetup, WithoutDatesThePanelsOwnAreFetched)
{
    makeTrendWithoutTables();
    const plotix::OptionalDate today = panel().fromDateValue();
    open();
    EXPECT_EQ(lastFetch().fromDate, today);
}

TEST_F(TrendViewSetup, LoadingBuildsNoGraph)
{
    openTrend();
    EXPECT_EQ(trend().graph(), nullptr);
    EXPECT_FALSE(trend().binders().has_value());
}

TEST_F(TrendViewSetup, EveryOutletIsConnected)
{
    openTrend();
    EXPECT_NE(trend().hostView(), nullptr);
    EXPECT_NE(trend().dragDropView(), nullptr);
    EXPECT_NE(trend().dataClusterHostView(), nullptr);
    EXPECT_NE(trend().infoTable(), nullptr);
    EXPECT_NE(trend().propertyDetailsView(), nullptr);
    EXPECT_NE(trend().propertyDetailsDisclosureButton(), nullptr);
    EXPECT_NE(trend().propertyDetailsTextField(), nullptr);
    EXPECT_NE(trend().sharingButton(), nullptr);
}

TEST_F(TrendViewSetup, PlugInBecomesTheDelegateOfItsParts)
{
    openTrend();
    EXPECT_EQ(trend().hostView()->keyDelegate(), static_cast<KTVGraphHostingViewKeyDelegate*>(&trend()));
    EXPECT_EQ(trend().dragDropView()->delegate(), static_cast<PropertyDropProtocol*>(&trend()));
    EXPECT_EQ(trend().dragDropView()->registeredDraggedTypes(), QStringList({agent()->uniqueIdentifier()}));
    EXPECT_NE(trend().messageViewController(), nullptr);
    EXPECT_TRUE(trend().observersAdded());
}

TEST_F(TrendViewSetup, RowsOfTableAndPlugInAreOneList)
{
    openTrend();
    EXPECT_EQ(trend().infoTableArrayController()->content(), trend().infoTableArray());
}

TEST_F(TrendViewSetup, DatePanelStandsInItsPlace)
{
    openTrend();
    EXPECT_EQ(panel().view()->parentWidget(), trend().dataClusterHostView());
}

TEST_F(TrendViewSetup, NewViewShowsItsDetails)
{
    openTrend();
    EXPECT_TRUE(trend().propertyDetailsDisclosureButton()->isChecked());
}

TEST_F(TrendViewSetup, FetchStartsBeforeTheColumnLayoutIsRestored)
{
    QVariantMap narrowed;
    {
        openTrend();
        trend().infoTable()->setColumnWidth(2, 77);
        narrowed = trend().infoTable()->dictionaryForAutosavingLayout();
    }
    adopt(decoded({{"tableColumns", narrowed}, {"propertyDetailsShowing", true}}));
    int widthAtTheFetch = 0;
    host().archiveManager().answerFetchesWith([&](const auto&) {
        widthAtTheFetch = trend().infoTable()->columnWidth(2);
        return Answer{};
    });
    open();
    EXPECT_NE(widthAtTheFetch, 77);
    EXPECT_EQ(trend().infoTable()->columnWidth(2), 77);
}

TEST_F(TrendViewSetup, DecodedViewFetchesToo)
{
    adopt(decoded({}));
    open();
    EXPECT_EQ(fetchCount(), 1);
}

TEST_F(TrendViewSetup, AskingForTheViewAgainLoadsNothing)
{
    openTrend();
    open();
    EXPECT_EQ(fetchCount(), 1);
}

class TrendTeardown : public TrendViewFixture {};

TEST_F(TrendTeardown, DatePanelLeavesAViewThatItsWindowKeeps)
{
    QWidget window;
    openTrendWithData();
    trend().view()->setParent(&window);
    releaseTrend();
    EXPECT_TRUE(window.findChildren<KTVDataClusterDatePicker*>().isEmpty());
}

TEST_F(TrendTeardown, OverlayGoesWithTheView)
{
    openTrend();
    answer(records().withoutTime());
    ASSERT_FALSE(overlayText().isEmpty());
    releaseTrend();
    EXPECT_EQ(host().lastMessageViewController(), nullptr);
}

TEST_F(TrendTeardown, WindowThatGoesFirstTakesTheViewAlong)
{
    openTrendWithData();
    {
        QWidget window;
        trend().view()->setParent(&window);
    }
    EXPECT_EQ(trend().hostView(), nullptr);
    EXPECT_EQ(trend().infoTable(), nullptr);
    trend().acquirePlotFromDate(plotix::Date{kTo}, plotix::Date{kFrom});
    answerRefresh(twoProperties());
    EXPECT_EQ(plotIdentifiers(), QStringList({"airTemperature", "pressure"}));
}

TEST_F(TrendTeardown, ObservationsEndWithTheView)
{
    openTrend();
    EXPECT_GT(host().agent()->property("airTemperature")->observationCount(), 0U);
    releaseTrend();
    EXPECT_EQ(host().agent()->property("airTemperature")->observationCount(), 0U);
}

TEST_F(TrendTeardown, GraphKeptElsewherePointsNowhere)
{
    openTrendWithData();
    const CPTXYGraphPtr graph = trend().graph();
    releaseTrend();
    EXPECT_EQ(graph->fill(), CPTFill::none());
    EXPECT_EQ(graph->defaultPlotSpace()->delegate(), nullptr);
    for (const CPTScatterPlotPtr& plot : graph->allPlots())
        EXPECT_EQ(plot->delegate(), nullptr);
}

TEST_F(TrendTeardown, ViewThatWasNeverLoadedGoesQuietly)
{
    makeTrend();
    releaseTrend();
    makeTrendWithoutTables();
    releaseTrend();
    EXPECT_EQ(fetchCount(), 0);
}

}  // namespace
