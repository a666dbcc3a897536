#include "ToolbarFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QPushButton>

namespace {

class ToolbarSheet : public ToolbarFixture {
protected:
    /// Shows the sheet as a user sees it, ready for keys.
    void showActive()
    {
        window().window()->show();
        showSheet();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet()));
    }
    QTableView& table() { return *toolbar->propertyTable(); }
    QPoint tickBox(int row)
    {
        const QRect cell = table().visualRect(table().model()->index(row, 0));
        return {cell.left() + 10, cell.center().y()};
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(sheet().focusWidget(), static_cast<Qt::Key>(key), modifiers);
        drain();
    }
};

TEST_F(ToolbarSheet, ListsTheVisiblePropertiesUnticked)
{
    host.agent()->property("pressure")->setVisible(false);
    showSheet();
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Wind"}));
}

TEST_F(ToolbarSheet, ShowsNameColorAndUnit)
{
    showSheet();
    const QAbstractItemModel& model = *table().model();
    EXPECT_EQ(model.index(1, 0).data(), "Pressure");
    EXPECT_EQ(model.index(1, 1).data(Qt::DecorationRole), QColor(Qt::blue));
    EXPECT_EQ(model.index(1, 2).data(), property("pressure")->unitSymbol());
}

TEST_F(ToolbarSheet, SecondShowingAddsNoRowsAndKeepsTicks)
{
    showSheet();
    tick(1);
    cancel();
    showSheet();
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Pressure +", "Wind"}));
}

TEST_F(ToolbarSheet, PropertyThatBecomesVisibleGetsARowAtTheEnd)
{
    host.agent()->property("airTemperature")->setVisible(false);
    showSheet();
    tick(0);
    cancel();
    host.agent()->property("airTemperature")->setVisible(true);
    showSheet();
    EXPECT_EQ(rows(), QStringList({"Pressure +", "Wind", "Air Temperature"}));
}

// A tick must not vanish because a property was hidden for a while.
TEST_F(ToolbarSheet, RowsOfHiddenAndRemovedPropertiesStay)
{
    showSheet();
    tick(0);
    tick(1);
    cancel();
    host.agent()->property("airTemperature")->setVisible(false);
    host.agent()->removeProperty("pressure");
    showSheet();
    EXPECT_EQ(rows(), QStringList({"Air Temperature +", "Pressure +", "Wind"}));
    done();
    EXPECT_EQ(trend().properties()->size(), 2U);
}

// The object counts, not its name.
TEST_F(ToolbarSheet, PropertyMeasuredAnewUnderAnOldNameIsAnotherRow)
{
    showSheet();
    cancel();
    host.agent()->removeProperty("wind");
    host.addProperty("Wind", "m/s");
    showSheet();
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Pressure", "Wind", "Wind"}));
}

TEST_F(ToolbarSheet, IsWindowModalOnTheSiteWindow)
{
    showSheet();
    EXPECT_EQ(sheet().parentWidget(), window().window());
    EXPECT_EQ(sheet().windowModality(), Qt::WindowModal);
    EXPECT_TRUE(sheet().isVisible());
}

TEST_F(ToolbarSheet, WithoutAWindowStandsAloneAndBlocksNothing)
{
    window().closeWindow();
    showSheet();
    EXPECT_EQ(sheet().parentWidget(), nullptr);
    EXPECT_EQ(sheet().windowModality(), Qt::NonModal);
    tick(0);
    done();
    EXPECT_EQ(trendCount(), 1U);
}

TEST_F(ToolbarSheet, CannotBeResized)
{
    showSheet();
    const QSize size = sheet().size();
    sheet().resize(size + QSize(200, 200));
    EXPECT_EQ(sheet().minimumSize(), sheet().maximumSize());
    EXPECT_EQ(sheet().size(), size);
}

TEST_F(ToolbarSheet, EveryShowingIsANewWindowAroundTheSameView)
{
    showSheet();
    const QPointer<QDialog> first = &sheet();
    QWidget* view = toolbar->view();
    EXPECT_TRUE(first->isAncestorOf(view));
    cancel();
    const void* firstAddress = first.data();
    EXPECT_NE(firstAddress, nullptr);
    showSheet();
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(toolbar->view(), view);
    EXPECT_TRUE(sheet().isAncestorOf(view));
    EXPECT_TRUE(view->isVisible());
}

TEST_F(ToolbarSheet, ShowingAgainWhileItIsUpEndsTheFirstWithoutATrend)
{
    showSheet();
    showSheet();
    drain();
    EXPECT_TRUE(sheet().isVisible());
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheet, SettingsSurviveTheSiteWindowTheSheetWasOn)
{
    showSheet();
    tick(2);
    cancel();
    window().closeWindow();
    showSheet();
    ASSERT_TRUE(sheet().isVisible());
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Pressure", "Wind +"}));
}

TEST_F(ToolbarSheet, SiteWindowThatGoesWhileTheSheetIsUpTakesItAlong)
{
    showSheet();
    window().closeWindow();
    EXPECT_EQ(toolbar->configurationWindow(), nullptr);
    showSheet();
    done();
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheet, HidesTheRefreshButton)
{
    showSheet();
    EXPECT_FALSE(dates().refreshButton()->isVisible());
    EXPECT_TRUE(dates().fromDate()->isVisible());
    EXPECT_EQ(dates().view()->parentWidget(), toolbar->dataClusterHostView());
}

TEST_F(ToolbarSheet, DoneMakesATrendOfTheTickedPropertiesSelected)
{
    makeTrend({0, 2});
    ASSERT_EQ(trendCount(), 1U);
    EXPECT_EQ(trend().properties(), KTVPropertyList({property("airTemperature"), property("wind")}));
    EXPECT_EQ(window().selectedItem(), window().items().at(0));
    EXPECT_EQ(trend().agent(), host.agent());
    EXPECT_EQ(trend().siteWindowController(), &window());
}

TEST_F(ToolbarSheet, PropertiesComeInTheOrderOfTheRowsNotOfTheScreen)
{
    showSheet();
    tick(0);
    tick(1);
    toolbar->selectablePropertiesArrayController()->setSortOrder(
        [](const auto& one, const auto& other) { return one->property()->name() > other->property()->name(); });
    done();
    EXPECT_EQ(trend().properties(), KTVPropertyList({property("airTemperature"), property("pressure")}));
}

TEST_F(ToolbarSheet, DoneWithoutATickMakesATrendOfNothing)
{
    makeTrend();
    ASSERT_EQ(trendCount(), 1U);
    ASSERT_TRUE(trend().properties().has_value());
    EXPECT_TRUE(trend().properties()->empty());
}

TEST_F(ToolbarSheet, CancelMakesNothingAndKeepsTheSettings)
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

TEST_F(ToolbarSheet, DoneKeepsTheSettings)
{
    showSheet();
    toolbar->titleField()->setText("Weather");
    tick(0);
    done();
    showSheet();
    EXPECT_EQ(toolbar->titleField()->text(), "Weather");
    EXPECT_EQ(rows().at(0), "Air Temperature +");
}

TEST_F(ToolbarSheet, PressingDoneOnAnEndedSheetMakesNothing)
{
    makeTrend({0});
    done();
    EXPECT_EQ(trendCount(), 1U);
}

TEST_F(ToolbarSheet, DoneBeforeAnyShowingMakesNothing)
{
    done();
    EXPECT_EQ(trendCount(), 0U);
}

// Adding may load the view, and loading it fetches: title and dates must stand by then.
TEST_F(ToolbarSheet, DatesAndTitleAreSetBeforeTheTrendIsAdded)
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

TEST_F(ToolbarSheet, TrendFetchesTheDatesOfTheSheet)
{
    dates().setFromDateValue(plotix::Date{1'000});
    dates().setToDateValue(plotix::Date{2'000});
    makeTrend({1});
    trend().view();
    EXPECT_EQ(host.archiveManager().lastFetch().fromDate, plotix::Date{1'000});
    EXPECT_EQ(host.archiveManager().lastFetch().toDate, plotix::Date{2'000});
    EXPECT_EQ(host.archiveManager().lastFetch().properties, KTVPropertyList{property("pressure")});
}

TEST_F(ToolbarSheet, ReversedDatesArePassedOn)
{
    dates().setFromDateValue(plotix::Date{2'000});
    dates().setToDateValue(plotix::Date{1'000});
    makeTrend({0});
    EXPECT_EQ(trend().fromDate(), plotix::Date{2'000});
    EXPECT_EQ(trend().toDate(), plotix::Date{1'000});
}

TEST_F(ToolbarSheet, EmptyTitleIsPassedOn)
{
    toolbar->setDesiredTitle(QString());
    makeTrend({0});
    EXPECT_EQ(trend().title(), "");
}

TEST_F(ToolbarSheet, StaysInTheSourceListUnlessAsked)
{
    makeTrend({0});
    EXPECT_FALSE(host.log().contains("siteWindow.openInSeparateWindow"));
}

TEST_F(ToolbarSheet, OpensInAWindowOfItsOwnWhenAsked)
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
TEST_F(ToolbarSheet, AddsToItsOwnWindowAndOpensInTheAgents)
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

TEST_F(ToolbarSheet, WhatTheAgentsWindowDoesNotFindStaysInTheSourceList)
{
    fakehost::FakeSiteWindowController agents(host.agent(), &host.log());
    host.agent()->setSiteWindowController(&agents);
    toolbar->setOpenInSeparateWindow(true);
    makeTrend({0});
    EXPECT_EQ(trendCount(), 1U);
    EXPECT_FALSE(host.log().contains("siteWindow.openInSeparateWindow"));
    host.agent()->setSiteWindowController(nullptr);
}

TEST_F(ToolbarSheet, AgentWithoutAWindowLeavesTheTrendInTheSourceList)
{
    host.agent()->setSiteWindowController(nullptr);
    toolbar->setOpenInSeparateWindow(true);
    makeTrend({0});
    EXPECT_EQ(trendCount(), 1U);
    EXPECT_FALSE(host.log().contains("siteWindow.openInSeparateWindow"));
}

TEST_F(ToolbarSheet, WithoutASiteWindowNothingIsAdded)
{
    toolbar = KTVPlotixToolbarPlugIn::initWithAgent(host.agent(), nullptr);
    makeTrend({0});
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheet, PlugInThatGoesBeforeTheSheetsEndIsHandledMakesNothing)
{
    showSheet();
    tick(0);
    toolbar->doneClicked(nullptr);
    toolbar.reset();
    drain();
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheet, RowsNeedALoadedView)
{
    toolbar->updateSelectableProperties();
    ASSERT_NE(toolbar->selectableProperties(), nullptr);
    EXPECT_TRUE(rows().isEmpty());
    showSheet();
    EXPECT_EQ(rows().size(), 3);
}

TEST_F(ToolbarSheet, TitleAndCheckBoxFollowTheFieldsBothWays)
{
    showSheet();
    toolbar->setDesiredTitle("Set");
    toolbar->setOpenInSeparateWindow(true);
    EXPECT_EQ(toolbar->titleField()->text(), "Set");
    EXPECT_TRUE(toolbar->openInSeparateWindowCheckBox()->isChecked());
    toolbar->titleField()->setText("Typed");
    toolbar->openInSeparateWindowCheckBox()->setChecked(false);
    EXPECT_EQ(toolbar->desiredTitle(), "Typed");
    EXPECT_FALSE(toolbar->openInSeparateWindow());
}

// Keys and clicks.

TEST_F(ToolbarSheet, BeginsInTheTable)
{
    showActive();
    EXPECT_TRUE(table().hasFocus());
    EXPECT_EQ(table().currentIndex().row(), 0);
}

TEST_F(ToolbarSheet, SpaceTicksTheCurrentRowAndUnticksIt)
{
    showActive();
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Pressure +", "Wind"}));
    press(Qt::Key_Space);
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Pressure", "Wind"}));
}

TEST_F(ToolbarSheet, SpaceTicksEverySelectedRow)
{
    showActive();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Space);
    EXPECT_EQ(rows(), QStringList({"Air Temperature +", "Pressure +", "Wind +"}));
}

TEST_F(ToolbarSheet, ClickOnTheTickBoxTicks)
{
    showActive();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, tickBox(2));
    EXPECT_EQ(rows().at(2), "Wind +");
}

TEST_F(ToolbarSheet, DoubleClickOnTheRowTicks)
{
    showActive();
    const QPoint unit = table().visualRect(table().model()->index(1, 2)).center();
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, unit);
    EXPECT_EQ(rows().at(1), "Pressure +");
}

TEST_F(ToolbarSheet, ReturnIsDone)
{
    showActive();
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    ASSERT_EQ(trendCount(), 1U);
    EXPECT_EQ(trend().properties()->size(), 1U);
}

TEST_F(ToolbarSheet, ReturnInTheTitleIsDone)
{
    showActive();
    toolbar->titleField()->setFocus();
    toolbar->titleField()->selectAll();
    QTest::keyClicks(toolbar->titleField(), "Week");
    press(Qt::Key_Return);
    ASSERT_EQ(trendCount(), 1U);
    EXPECT_EQ(trend().title(), "Week");
}

// The date fields keep Return for themselves, and nobody is told: in the sheet the dates are only read.
TEST_F(ToolbarSheet, ReturnInADateDoesNothing)
{
    showActive();
    dates().fromDate()->setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(sheet().isVisible());
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheet, ReturnIsStillDoneInTheSecondWindow)
{
    showActive();
    cancel();
    showActive();
    press(Qt::Key_Return);
    EXPECT_EQ(trendCount(), 1U);
}

TEST_F(ToolbarSheet, EscapeIsCancel)
{
    showActive();
    press(Qt::Key_Escape);
    EXPECT_FALSE(sheet().isVisible());
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheet, ButtonsEndTheSheet)
{
    showSheet();
    QTest::mouseClick(control<QPushButton>("cancelButton"), Qt::LeftButton);
    drain();
    EXPECT_EQ(trendCount(), 0U);
    showSheet();
    QTest::mouseClick(control<QPushButton>("doneButton"), Qt::LeftButton);
    drain();
    EXPECT_EQ(trendCount(), 1U);
}

TEST_F(ToolbarSheet, TabVisitsTheControlsInReadingOrder)
{
    showActive();
    const QWidgetList order = {&table(),
                               dates().fromDate(),
                               dates().toDate(),
                               dates().quickDatePopupButton(),
                               toolbar->titleField(),
                               toolbar->openInSeparateWindowCheckBox(),
                               control<QPushButton>("cancelButton"),
                               control<QPushButton>("doneButton")};
    QWidgetList visited;
    for (QWidget* next = &table(); visited.size() < order.size(); next = next->nextInFocusChain())
        if (order.contains(next) && !visited.contains(next))
            visited << next;
    EXPECT_EQ(visited, order);
}

TEST_F(ToolbarSheet, TabLeavesTheTable)
{
    showActive();
    press(Qt::Key_Tab);
    EXPECT_EQ(sheet().focusWidget(), dates().fromDate());
}

TEST_F(ToolbarSheet, EveryControlHasAnAccessibleName)
{
    showSheet();
    EXPECT_FALSE(table().accessibleName().isEmpty());
    EXPECT_FALSE(toolbar->titleField()->accessibleName().isEmpty());
    EXPECT_EQ(table().model()->index(0, 0).data(Qt::AccessibleTextRole).toString().section(' ', 0, 1),
              "Air Temperature");
}

TEST_F(ToolbarSheet, ButtonsSpeakTheUsersLanguage)
{
    host.bundle().speakGerman();
    toolbar->view();
    EXPECT_EQ(control<QPushButton>("cancelButton")->text(), "Abbrechen");
}

}  // namespace
