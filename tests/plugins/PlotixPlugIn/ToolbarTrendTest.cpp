#include "ToolbarFixture.h"

namespace {

/// The trend that the sheet makes when it ends, and where it goes.
using ToolbarTrend = ToolbarFixture;

TEST_F(ToolbarTrend, DoneMakesATrendOfTheTickedPropertiesSelected)
{
    makeTrend({0, 2});
    ASSERT_EQ(trendCount(), 1U);
    EXPECT_EQ(trend().properties(), KTVPropertyList({property("airTemperature"), property("wind")}));
    EXPECT_EQ(window().selectedItem(), window().items().at(0));
    EXPECT_EQ(trend().agent(), host.agent());
    EXPECT_EQ(trend().siteWindowController(), &window());
}

TEST_F(ToolbarTrend, PropertiesComeInTheOrderOfTheRowsNotOfTheScreen)
{
    showSheet();
    tick(0);
    tick(1);
    toolbar->selectablePropertiesArrayController()->setSortOrder(
        [](const auto& one, const auto& other) { return one->property()->name() > other->property()->name(); });
    done();
    EXPECT_EQ(trend().properties(), KTVPropertyList({property("airTemperature"), property("pressure")}));
}

TEST_F(ToolbarTrend, DoneWithoutATickMakesATrendOfNothing)
{
    makeTrend();
    ASSERT_EQ(trendCount(), 1U);
    ASSERT_TRUE(trend().properties().has_value());
    EXPECT_TRUE(trend().properties()->empty());
}

TEST_F(ToolbarTrend, CancelMakesNothingAndKeepsTheSettings)
{
    showSheet();
    tick(1);
    toolbar->titleField()->setText("Weather");
    toolbar->openInSeparateWindowCheckBox()->setChecked(true);
    cancel();
    EXPECT_EQ(trendCount(), 0U);
    EXPECT_FALSE(sheet().isVisible());
    showSheet();
    EXPECT_EQ(toolbar->titleField()->text(), "Weather");
    EXPECT_TRUE(toolbar->openInSeparateWindowCheckBox()->isChecked());
    EXPECT_EQ(rows().at(1), "Pressure +");
}

TEST_F(ToolbarTrend, DoneKeepsTheSettings)
{
    showSheet();
    toolbar->titleField()->setText("Weather");
    tick(0);
    done();
    showSheet();
    EXPECT_EQ(toolbar->titleField()->text(), "Weather");
    EXPECT_EQ(rows().at(0), "Air Temperature +");
}

TEST_F(ToolbarTrend, PressingDoneOnAnEndedSheetMakesNothing)
{
    makeTrend({0});
    done();
    EXPECT_EQ(trendCount(), 1U);
}

TEST_F(ToolbarTrend, DoneBeforeAnyShowingMakesNothing)
{
    done();
    EXPECT_EQ(trendCount(), 0U);
}

// Adding may load the view, and loading it fetches: title and dates must be set by then.
TEST_F(ToolbarTrend, DatesAndTitleAreSetBeforeTheTrendIsAdded)
{
    QString title;
    plotix::OptionalDate from, to;
    window().beforeAdding([&](KTVPlugIn& plugIn) {
        auto& added = dynamic_cast<KTVPlotixPlugIn&>(plugIn);
        title = added.title();
        from = added.fromDate();
        to = added.toDate();
    });
    toolbar->setDesiredTitle("Weather");
    dates().setFromDateValue(plotix::Date{1'000});
    dates().setToDateValue(plotix::Date{2'000});
    makeTrend({0});
    EXPECT_EQ(title, "Weather");
    EXPECT_EQ(from, plotix::Date{1'000});
    EXPECT_EQ(to, plotix::Date{2'000});
}

TEST_F(ToolbarTrend, TrendFetchesTheDatesOfTheSheet)
{
    dates().setFromDateValue(plotix::Date{1'000});
    dates().setToDateValue(plotix::Date{2'000});
    makeTrend({1});
    trend().view();
    EXPECT_EQ(host.archiveManager().lastFetch().fromDate, plotix::Date{1'000});
    EXPECT_EQ(host.archiveManager().lastFetch().toDate, plotix::Date{2'000});
    EXPECT_EQ(host.archiveManager().lastFetch().properties, KTVPropertyList{property("pressure")});
}

TEST_F(ToolbarTrend, ReversedDatesArePassedOn)
{
    dates().setFromDateValue(plotix::Date{2'000});
    dates().setToDateValue(plotix::Date{1'000});
    makeTrend({0});
    EXPECT_EQ(trend().fromDate(), plotix::Date{2'000});
    EXPECT_EQ(trend().toDate(), plotix::Date{1'000});
}

TEST_F(ToolbarTrend, EmptyTitleIsPassedOn)
{
    toolbar->setDesiredTitle(QString());
    makeTrend({0});
    EXPECT_EQ(trend().title(), "");
}

TEST_F(ToolbarTrend, StaysInTheSourceListUnlessAsked)
{
    makeTrend({0});
    EXPECT_FALSE(host.log().contains("siteWindow.openInSeparateWindow"));
}

TEST_F(ToolbarTrend, OpensInAWindowOfItsOwnWhenAsked)
{
    showSheet();
    toolbar->openInSeparateWindowCheckBox()->setChecked(true);
    done();
    EXPECT_TRUE(host.log().isBefore("siteWindow.addPlugIn", "siteWindow.openInSeparateWindow Plotix"));
    ASSERT_EQ(window().fakeDocument().windowControllers().size(), 1U);
    EXPECT_EQ(window().fakeDocument().windowControllers()[0]->contentViewController().get(), &trend());
}

/// The site window of the agent, where it is another one than the plug-in's own.
class AgentsWindow : public fakehost::FakeSiteWindowController {
public:
    AgentsWindow(KTVAgentPtr agent, fakehost::CallLog* log, const FakeSiteWindowController& other)
        : FakeSiteWindowController(std::move(agent), log), m_other(other)
    {
    }
    KTVSourceListItemPtr findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const override
    {
        return m_other.findSourceListItemWithRepresentedObject(plugIn);
    }

private:
    const FakeSiteWindowController& m_other;
};

// Adding goes to the plug-in's own site window, finding and opening to the agent's.
TEST_F(ToolbarTrend, AddsToItsOwnWindowAndOpensInTheAgents)
{
    AgentsWindow agents(host.agent(), &host.log(), window());
    host.agent()->setSiteWindowController(&agents);
    toolbar->setOpenInSeparateWindow(true);
    makeTrend({0});
    EXPECT_EQ(trendCount(), 1U);
    EXPECT_TRUE(agents.items().empty());
    EXPECT_EQ(agents.fakeDocument().windowControllers().size(), 1U);
    EXPECT_TRUE(window().fakeDocument().windowControllers().empty());
    host.agent()->setSiteWindowController(nullptr);
}

TEST_F(ToolbarTrend, WhatTheAgentsWindowDoesNotFindStaysInTheSourceList)
{
    fakehost::FakeSiteWindowController agents(host.agent(), &host.log());
    host.agent()->setSiteWindowController(&agents);
    toolbar->setOpenInSeparateWindow(true);
    makeTrend({0});
    EXPECT_EQ(trendCount(), 1U);
    EXPECT_FALSE(host.log().contains("siteWindow.openInSeparateWindow"));
    host.agent()->setSiteWindowController(nullptr);
}

TEST_F(ToolbarTrend, AgentWithoutAWindowLeavesTheTrendInTheSourceList)
{
    host.agent()->setSiteWindowController(nullptr);
    toolbar->setOpenInSeparateWindow(true);
    makeTrend({0});
    EXPECT_EQ(trendCount(), 1U);
    EXPECT_FALSE(host.log().contains("siteWindow.openInSeparateWindow"));
}

TEST_F(ToolbarTrend, WithoutASiteWindowNothingIsAdded)
{
    toolbar = KTVPlotixToolbarPlugIn::initWithAgent(host.agent(), nullptr);
    makeTrend({0});
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarTrend, PlugInThatGoesBeforeTheSheetsEndIsHandledMakesNothing)
{
    showSheet();
    tick(0);
    toolbar->doneClicked(nullptr);
    toolbar.reset();
    drain();
    EXPECT_EQ(trendCount(), 0U);
}

}  // namespace
