#include "ToolbarFixture.h"

#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

namespace {

/// The sheet as a window and what it lists.
using ToolbarSheet = ToolbarFixture;

TEST_F(ToolbarSheet, ListsTheVisiblePropertiesUnticked)
{
    host.agent()->property("pressure")->setVisible(false);
    showSheet();
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Wind"}));
}

TEST_F(ToolbarSheet, ShowsNameColorAndUnit)
{
    showSheet();
    const QAbstractItemModel& model = *toolbar->propertyTable()->model();
    EXPECT_EQ(model.index(1, 0).data(), "Pressure");
    EXPECT_EQ(model.index(1, 1).data(Qt::DecorationRole), QColor(Qt::blue));
    EXPECT_EQ(model.index(1, 2).data(), property("pressure")->unitSymbol());
}

TEST_F(ToolbarSheet, ToolTipsShowNamesAsTheyAre)
{
    host.addProperty("<b>x</b> & y", "m", Qt::red);
    showSheet();
    const QString toolTip = toolbar->propertyTable()->model()->index(3, 0).data(Qt::ToolTipRole).toString();
    EXPECT_EQ(toolTip, plainToolTip("<b>x</b> & y"));
    EXPECT_FALSE(toolTip.contains("<b>"));
}

TEST_F(ToolbarSheet, TheDatesHaveTheirLabelsAndTheQuickRangesTheirText)
{
    showSheet();
    QCoreApplication::processEvents();
    EXPECT_TRUE(dates().fromTextField()->isVisible());
    EXPECT_TRUE(dates().toTextField()->isVisible());
    EXPECT_EQ(dates().quickDatePopupButton()->text(), "Quick Range");
    EXPECT_GE(dates().quickDatePopupButton()->width(), dates().quickDatePopupButton()->sizeHint().width());
    EXPECT_TRUE(dates().view()->rect().contains(dates().quickDatePopupButton()->geometry()));
    EXPECT_FALSE(dates().refreshButton()->isVisible());
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

}  // namespace
