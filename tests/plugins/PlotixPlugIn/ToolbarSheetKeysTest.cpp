#include "ToolbarFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QPushButton>

namespace {

/// The sheet under keys and clicks.
class ToolbarSheetKeys : public ToolbarFixture {
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

TEST_F(ToolbarSheetKeys, BeginsInTheTable)
{
    showActive();
    EXPECT_TRUE(table().hasFocus());
    EXPECT_EQ(table().currentIndex().row(), 0);
}

TEST_F(ToolbarSheetKeys, SpaceTicksTheCurrentRowAndUnticksIt)
{
    showActive();
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Pressure +", "Wind"}));
    press(Qt::Key_Space);
    EXPECT_EQ(rows(), QStringList({"Air Temperature", "Pressure", "Wind"}));
}

TEST_F(ToolbarSheetKeys, SpaceTicksEverySelectedRow)
{
    showActive();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Space);
    EXPECT_EQ(rows(), QStringList({"Air Temperature +", "Pressure +", "Wind +"}));
}

TEST_F(ToolbarSheetKeys, ClickOnTheTickBoxTicks)
{
    showActive();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, tickBox(2));
    EXPECT_EQ(rows().at(2), "Wind +");
}

TEST_F(ToolbarSheetKeys, DoubleClickOnTheRowTicks)
{
    showActive();
    const QPoint unit = table().visualRect(table().model()->index(1, 2)).center();
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, unit);
    EXPECT_EQ(rows().at(1), "Pressure +");
}

TEST_F(ToolbarSheetKeys, ReturnIsDone)
{
    showActive();
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    ASSERT_EQ(trendCount(), 1U);
    EXPECT_EQ(trend().properties()->size(), 1U);
}

TEST_F(ToolbarSheetKeys, ReturnInTheTitleIsDone)
{
    showActive();
    toolbar->titleField()->setFocus();
    toolbar->titleField()->selectAll();
    QTest::keyClicks(toolbar->titleField(), "Week");
    press(Qt::Key_Return);
    ASSERT_EQ(trendCount(), 1U);
    EXPECT_EQ(trend().title(), "Week");
}

// The date fields take Return and tell no delegate: the sheet only reads the dates.
TEST_F(ToolbarSheetKeys, ReturnInADateDoesNothing)
{
    showActive();
    dates().fromDate()->setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(sheet().isVisible());
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheetKeys, ReturnIsStillDoneInTheSecondWindow)
{
    showActive();
    cancel();
    showActive();
    press(Qt::Key_Return);
    EXPECT_EQ(trendCount(), 1U);
}

TEST_F(ToolbarSheetKeys, EscapeIsCancel)
{
    showActive();
    press(Qt::Key_Escape);
    EXPECT_FALSE(sheet().isVisible());
    EXPECT_EQ(trendCount(), 0U);
}

TEST_F(ToolbarSheetKeys, ButtonsEndTheSheet)
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

TEST_F(ToolbarSheetKeys, TabVisitsTheControlsInReadingOrder)
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

TEST_F(ToolbarSheetKeys, TabLeavesTheTable)
{
    showActive();
    press(Qt::Key_Tab);
    EXPECT_EQ(sheet().focusWidget(), dates().fromDate());
}

TEST_F(ToolbarSheetKeys, EveryControlHasAnAccessibleName)
{
    showSheet();
    EXPECT_FALSE(table().accessibleName().isEmpty());
    EXPECT_FALSE(toolbar->titleField()->accessibleName().isEmpty());
    EXPECT_EQ(table().model()->index(0, 0).data(Qt::AccessibleTextRole).toString().section(' ', 0, 1),
              "Air Temperature");
}

TEST_F(ToolbarSheetKeys, ButtonsSpeakTheUsersLanguage)
{
    host.bundle().speakGerman();
    toolbar->view();
    EXPECT_EQ(control<QPushButton>("cancelButton")->text(), "Abbrechen");
}

}  // namespace
