#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMenu>

namespace {

class DateRangeControllerDelay : public DateRangeControllerTest {
protected:
    DateRangeControllerDelay() { showPanel(); }
};

TEST_F(DateRangeControllerDelay, ABurstOfEditsTellsTheDelegateOnce)
{
    for (int count = 0; count < 3; ++count)
        edit(controller->fromDate());
    edit(controller->toDate());
    EXPECT_EQ(delegate.calls, QStringList());
    waitForDateChanged(1);
    waitLongerThanTheDelay();
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
}

TEST_F(DateRangeControllerDelay, ThreeEditsHalfASecondApartTellTheDelegateOneSecondAfterTheThird)
{
    makeController(KTVDataClusterViewController::kApplyDelay);
    showPanel();
    QElapsedTimer sinceLastEdit;
    for (int count = 0; count < 3; ++count) {
        if (count > 0)
            QTest::qWait(500);
        edit(controller->fromDate());
        sinceLastEdit.start();
        EXPECT_EQ(delegate.calls, QStringList());
    }
    waitForDateChanged(1);
    EXPECT_GE(sinceLastEdit.elapsed(), 999);
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
}

TEST_F(DateRangeControllerDelay, TheTimerIsKeptAfterItFiredAndANewEditMakesAnother)
{
    edit(controller->fromDate());
    waitForDateChanged(1);
    ASSERT_NE(controller->dateChangeDelayTimer(), nullptr);
    EXPECT_FALSE(controller->dateChangeDelayTimer()->isActive());
    edit(controller->fromDate());
    EXPECT_TRUE(controller->dateChangeDelayTimer()->isActive());
    waitForDateChanged(2);
}

TEST_F(DateRangeControllerDelay, AQuickRangeTellsAtOnceAndLeavesTheDelayRunning)
{
    edit(controller->fromDate());
    controller->setDateRangeLast7Days(nullptr);
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
    waitForDateChanged(2);
}

TEST_F(DateRangeControllerDelay, ReturnLeavesTheDelayRunning)
{
    edit(controller->fromDate());
    QTest::keyClick(controller->fromDate(), Qt::Key_Return);
    waitForDateChanged(1);
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "dateChanged"}));
}

TEST_F(DateRangeControllerDelay, AnOpenMenuHoldsTheDelayUp)
{
    QMenu menu;
    menu.addAction("item");
    edit(controller->fromDate());
    menu.popup({0, 0});
    waitLongerThanTheDelay();
    EXPECT_EQ(delegate.calls, QStringList());
    menu.close();
    waitForDateChanged(1);
}

TEST_F(DateRangeControllerDelay, AnApplicationModalPanelHoldsTheDelayUp)
{
    QDialog panel;
    panel.setWindowModality(Qt::ApplicationModal);
    edit(controller->fromDate());
    panel.show();
    waitLongerThanTheDelay();
    EXPECT_EQ(delegate.calls, QStringList());
    panel.close();
    waitForDateChanged(1);
}

// A sheet blocks one window only; what was typed before it opened is applied behind it.
TEST_F(DateRangeControllerDelay, ASheetDoesNotHoldTheDelayUp)
{
    QDialog sheet(controller->view());
    edit(controller->fromDate());
    sheet.open();
    ASSERT_EQ(sheet.windowModality(), Qt::WindowModal);
    waitForDateChanged(1);
}

TEST_F(DateRangeControllerDelay, TheDelayEndsWithItsController)
{
    edit(controller->fromDate());
    controller.reset();
    waitLongerThanTheDelay();
    EXPECT_EQ(delegate.calls, QStringList());
}

TEST_F(DateRangeControllerDelay, FiringTellsTheDelegateAndChangesNoDate)
{
    const auto before = controller->fromDateValue();
    controller->timerFireMethod();
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
    EXPECT_EQ(controller->fromDateValue(), before);
}

}  // namespace
