#include "TrendViewFixture.h"

namespace {

class TrendConstruction : public TrendViewFixture {};

TEST_F(TrendConstruction, WithoutTablesThereIsNoPropertiesListAtAll)
{
    const KTVPlotixPlugIn::Ptr trend = KTVPlotixPlugIn::initWithAgent(agent(), &host().siteWindowController());
    ASSERT_NE(trend, nullptr);
    EXPECT_FALSE(trend->properties().has_value());
    EXPECT_TRUE(trend->infoTableArray()->empty());
    EXPECT_TRUE(trend->deletionArray().isEmpty());
    EXPECT_TRUE(trend->propertyDetailsShowing());
    EXPECT_FALSE(trend->fromDate().has_value());
    EXPECT_FALSE(trend->toDate().has_value());
}

TEST_F(TrendConstruction, EmptyTablesAreNotAbsentOnes)
{
    const KTVPlotixPlugIn::Ptr trend =
        KTVPlotixPlugIn::initWithAgent(agent(), &host().siteWindowController(), KTVPropertyList());
    ASSERT_TRUE(trend->properties().has_value());
    EXPECT_TRUE(trend->properties()->empty());
}

TEST_F(TrendConstruction, AbsentTablesStayAbsentWithDates)
{
    const KTVPlotixPlugIn::Ptr trend = KTVPlotixPlugIn::initWithAgent(agent(), &host().siteWindowController(),
                                                                      std::nullopt, plotix::Date{kFrom}, std::nullopt);
    EXPECT_FALSE(trend->properties().has_value());
    EXPECT_EQ(trend->fromDate(), plotix::Date{kFrom});
    EXPECT_FALSE(trend->toDate().has_value());
}

TEST_F(TrendConstruction, WithoutAnAgentThereIsNoPlugIn)
{
    EXPECT_EQ(KTVPlotixPlugIn::initWithAgent(nullptr, nullptr), nullptr);
    EXPECT_EQ(KTVPlotixPlugIn::initWithAgent(nullptr, nullptr, KTVPropertyList(), std::nullopt, std::nullopt), nullptr);
}

TEST_F(TrendConstruction, PlugInIsTheDatePanelsDelegate)
{
    makeTrend();
    EXPECT_EQ(panel().delegate(), static_cast<KTVDataClusterViewControllerDelegate*>(&trend()));
}

TEST_F(TrendConstruction, GraphAndRecordsAreAbsentAtFirst)
{
    makeTrend();
    EXPECT_EQ(trend().graph(), nullptr);
    EXPECT_EQ(trend().plotData(), nullptr);
    EXPECT_FALSE(trend().binders().has_value());
    EXPECT_FALSE(trend().plotRangeForY().has_value());
    EXPECT_FALSE(trend().infoTablePropertyShowMapping().has_value());
    EXPECT_EQ(trend().webView(), nullptr);
}

TEST_F(TrendConstruction, DescribesItself)
{
    makeTrend();
    EXPECT_EQ(trend().name(), "Plotix");
    EXPECT_EQ(trend().group(), "Plotix");
    EXPECT_EQ(trend().bundleIdentifier(), "org.plotix.PlotixPlugIn");
    EXPECT_EQ(trend().bundleVersion(), 1);
    EXPECT_EQ(trend().bundleShortVersion(), "1.0");
    EXPECT_TRUE(trend().isDeletable());
    EXPECT_TRUE(trend().isRenamable());
    EXPECT_TRUE(trend().isUndockable());
}

TEST_F(TrendConstruction, IconIsThePlugInsOwnPicture)
{
    makeTrend();
    const QImage picture(QStringLiteral(":/PlotixPlugIn/icon.png"));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(trend().icon().pixmap(picture.size()).toImage().convertToFormat(picture.format()), picture);
}

// The toolbar plug-in speaks for both to the host's pages and its web server.
TEST_F(TrendConstruction, LeavesPagesToolbarAndWebToTheToolbarPlugIn)
{
    makeTrend();
    EXPECT_FALSE(trend().htmlDescription().has_value());
    EXPECT_FALSE(trend().xmlDescription().has_value());
    EXPECT_FALSE(trend().jsonDescription().has_value());
    EXPECT_EQ(trend().toolbarItem(), nullptr);
    EXPECT_FALSE(trend().webServiceAdvertisementForBaseURL("http://host").has_value());
    EXPECT_EQ(trend().webServiceResponseForRequest({QUrl("http://host/" + trend().uniqueIdentifier() + ".png")}),
              nullptr);
}

// The doubled word is part of the text.
TEST_F(TrendConstruction, TextDescriptionKeepsItsDoubledWord)
{
    makeTrend();
    EXPECT_EQ(trend().textDescription(), "Plotix provides provides plotting, trending, and analytics services.");
}

TEST_F(TrendConstruction, HelpButtonOpensTheTrendAnchor)
{
    makeTrend();
    trend().helpButtonAction(nullptr);
    EXPECT_EQ(host().log().lines(), QStringList("helpManager.openHelpAnchor trend"));
}

TEST_F(TrendConstruction, OperationsAreSafeWithoutAView)
{
    makeTrend();
    trend().refreshPlot();
    answer(twoProperties());
    answerRefresh(records().withoutTime().build());
    trend().cancel(nullptr);
    trend().sharingButtonClicked(nullptr);
    trend().fitAll(nullptr);
    trend().windowDidEndLiveResize(nullptr);
    trend().setPlotForPropertyName("airTemperature", true);
    trend().propertyDetailsDisclosureButtonAction(nullptr);
    EXPECT_FALSE(trend().isViewLoaded());
}

// There is no window for a sheet: the alert opens without a parent.
TEST_F(TrendConstruction, RefusedRangeWithoutAViewIsASheetWithoutAWindow)
{
    makeTrend();
    trend().acquirePlotFromDate(plotix::Date{kTo}, plotix::Date{kFrom});
    ASSERT_EQ(desktop().sheets().size(), 1U);
    EXPECT_EQ(desktop().sheets()[0].window.data(), nullptr);
    EXPECT_FALSE(trend().isViewLoaded());
}

}  // namespace
