#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"

#include <QtWidgets/QLineEdit>

#include <cmath>
#include <limits>

namespace {

using plotix::Date;
using plotix::OptionalDate;

class DateRangeControllerDates : public DateRangeControllerTest {};

double secondsOf(const QDateTime& dateTime)
{
    return static_cast<double>(dateTime.toSecsSinceEpoch());
}

TEST_F(DateRangeControllerDates, StartsWithMidnightTodayToMidnightTomorrow)
{
    const QDate today = QDate::currentDate();
    EXPECT_EQ(controller->fromDateValue(), Date{secondsOf(today.startOfDay())});
    EXPECT_EQ(controller->toDateValue(), Date{secondsOf(today.addDays(1).startOfDay())});
    EXPECT_EQ(controller->fromDate()->dateTime(), today.startOfDay());
    EXPECT_EQ(controller->toDate()->dateTime(), today.addDays(1).startOfDay());
}

TEST_F(DateRangeControllerDates, SettingADateTellsNobodyAndStartsNoTimer)
{
    controller->setFromDateValue(Date{1e9});
    controller->setToDateValue(Date{2e9});
    EXPECT_EQ(controller->dateChangeDelayTimer(), nullptr);
    waitLongerThanTheDelay();
    EXPECT_EQ(delegate.calls, QStringList());
}

TEST_F(DateRangeControllerDates, SettingADateShowsIt)
{
    controller->setFromDateValue(Date{1388534399});
    EXPECT_EQ(controller->fromDate()->dateTime().toSecsSinceEpoch(), 1388534399);
}

TEST_F(DateRangeControllerDates, TheExactDateIsKeptBesideWhatIsShown)
{
    const double exact = 1388534399.123456789;
    controller->setFromDateValue(Date{exact});
    EXPECT_EQ(controller->fromDateValue()->seconds, exact);
}

TEST_F(DateRangeControllerDates, LosingTheFocusKeepsTheExactDate)
{
    showPanel();
    controller->setFromDateValue(Date{1388534399.123456789});
    controller->fromDate()->setFocus();
    controller->toDate()->setFocus();
    EXPECT_EQ(controller->fromDateValue()->seconds, 1388534399.123456789);
    EXPECT_EQ(controller->dateChangeDelayTimer(), nullptr);
}

TEST_F(DateRangeControllerDates, DatesNoEditorCanShowAreKept)
{
    for (const double seconds : {-1e11, 1e13, -1e300, 1e300, std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity()}) {
        controller->setToDateValue(Date{seconds});
        EXPECT_EQ(controller->toDateValue()->seconds, seconds);
        EXPECT_TRUE(controller->toDate()->dateTime().isValid());
    }
}

TEST_F(DateRangeControllerDates, ADateThatIsNotANumberIsKeptAndTheEditorShowsWhatItShowed)
{
    controller->setToDateValue(Date{1e9});
    controller->setToDateValue(Date{std::nan("")});
    EXPECT_TRUE(std::isnan(controller->toDateValue()->seconds));
    EXPECT_EQ(controller->toDate()->dateTime().toSecsSinceEpoch(), 1000000000);
}

TEST_F(DateRangeControllerDates, AnAbsentDateLeavesThePickerAlone)
{
    controller->setFromDateValue(Date{1e9 + 0.25});
    controller->setFromDateValue(std::nullopt);
    EXPECT_EQ(controller->fromDateValue(), Date{1e9 + 0.25});
}

TEST_F(DateRangeControllerDates, AnEditReplacesTheExactDateByWhatIsShown)
{
    showPanel();
    controller->setFromDateValue(Date{1e9 + 0.123456789});
    edit(controller->fromDate());
    EXPECT_EQ(controller->fromDateValue()->seconds,
              static_cast<double>(controller->fromDate()->dateTime().toMSecsSinceEpoch()) / 1000.0);
    EXPECT_NE(controller->fromDateValue()->seconds, 1e9 + 0.123456789);
    EXPECT_NE(controller->dateChangeDelayTimer(), nullptr);
}

TEST_F(DateRangeControllerDates, AClickSelectsTheFieldItFallsOnSoThatTypingReplacesIt)
{
    showPanel();
    KTVDataClusterDatePicker& picker = *controller->fromDate();
    picker.setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    controller->setFromDateValue(Date{1'000'000'000});
    auto* text = picker.findChild<QLineEdit*>();
    QTest::mouseClick(text, Qt::LeftButton, {}, {8, text->height() / 2});
    EXPECT_EQ(text->selectedText(), "09");
    QTest::keyClicks(text, "16");
    EXPECT_EQ(picker.date().day(), 16);
}

TEST_F(DateRangeControllerDates, AnEditOfAClampedDateReplacesIt)
{
    showPanel();
    controller->setFromDateValue(Date{1e300});
    QTest::keyClick(controller->fromDate(), Qt::Key_Down);
    EXPECT_LT(controller->fromDateValue()->seconds, 3e11);
}

TEST_F(DateRangeControllerDates, AnEditOfOnePickerLeavesTheOtherExact)
{
    showPanel();
    controller->setToDateValue(Date{1e9 + 0.123456789});
    edit(controller->fromDate());
    EXPECT_EQ(controller->toDateValue()->seconds, 1e9 + 0.123456789);
}

TEST_F(DateRangeControllerDates, AcceptedDatesComeBackWithoutANotice)
{
    controller->setFromDateValue(Date{1000.5});
    controller->setToDateValue(Date{2000.5});
    controller->acceptDates(nullptr);
    controller->setFromDateValue(Date{1});
    controller->setToDateValue(Date{2});
    controller->restorePreviousDate();
    EXPECT_EQ(controller->fromDateValue(), Date{1000.5});
    EXPECT_EQ(controller->toDateValue(), Date{2000.5});
    EXPECT_EQ(delegate.calls, QStringList());
}

// A first fetch that fails has nothing to return to. The pickers stay, so that Refresh asks for the same range again.
TEST_F(DateRangeControllerDates, RestoringBeforeAnythingWasAcceptedLeavesThePickers)
{
    controller->setFromDateValue(Date{1000});
    controller->setToDateValue(Date{2000});
    controller->restorePreviousDate();
    EXPECT_EQ(controller->previousFromDate(), std::nullopt);
    EXPECT_EQ(controller->fromDateValue(), Date{1000});
    EXPECT_EQ(controller->toDateValue(), Date{2000});
}

TEST_F(DateRangeControllerDates, UpdatingSetsTheGivenDatesAndTellsTheDelegateOnce)
{
    controller->setFromDateValue(Date{1});
    controller->updateDates(std::nullopt, Date{2000});
    EXPECT_EQ(controller->fromDateValue(), Date{1});
    EXPECT_EQ(controller->toDateValue(), Date{2000});
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
    EXPECT_EQ(delegate.lastSender, controller.get());
}

TEST_F(DateRangeControllerDates, UpdatingWithNothingStillTellsTheDelegate)
{
    controller->updateDates(std::nullopt, std::nullopt);
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
}

TEST_F(DateRangeControllerDates, UpdatingAsksWhetherTheDelegateResponds)
{
    delegate.answersDateChanged = false;
    controller->updateDates(Date{1}, Date{2});
    EXPECT_EQ(delegate.calls, QStringList());
    EXPECT_EQ(controller->fromDateValue(), Date{1});
}

TEST_F(DateRangeControllerDates, AReversedRangePassesUnchanged)
{
    controller->updateDates(Date{2000}, Date{1000});
    EXPECT_EQ(controller->fromDateValue(), Date{2000});
    EXPECT_EQ(controller->toDateValue(), Date{1000});
}

TEST_F(DateRangeControllerDates, ThePanelsParentMayDeleteItAndTheDatesStay)
{
    auto* parent = new QWidget;
    controller->view()->setParent(parent);
    controller->setFromDateValue(Date{1000.25});
    delete parent;
    EXPECT_EQ(controller->view(), nullptr);
    EXPECT_EQ(controller->fromDateValue(), Date{1000.25});
    controller->setToDateValue(Date{3000.25});
    EXPECT_EQ(controller->toDateValue(), Date{3000.25});
}

TEST_F(DateRangeControllerDates, AnEditedDateOutlivesThePanel)
{
    showPanel();
    edit(controller->fromDate());
    const OptionalDate edited = controller->fromDateValue();
    delete controller->view();
    EXPECT_EQ(controller->fromDateValue(), edited);
}

TEST_F(DateRangeControllerDates, WithoutAPanelEveryOperationIsSafe)
{
    delete controller->view();
    controller->refreshStarted(nullptr);
    controller->refreshComplete(nullptr);
    controller->hideControls();
    controller->acceptDates(nullptr);
    controller->restorePreviousDate();
    controller->cancel(nullptr);
    controller->returnKeyPressed(nullptr);
    EXPECT_EQ(delegate.calls, (QStringList{"cancel", "refresh"}));
}

TEST_F(DateRangeControllerDates, ThePanelGoesWithItsController)
{
    const QPointer<QWidget> view = controller->view();
    controller.reset();
    EXPECT_TRUE(view.isNull());
}

TEST_F(DateRangeControllerDates, ShowsDateAndTimeToTheSecondWithACalendar)
{
    EXPECT_TRUE(controller->fromDate()->calendarPopup());
    EXPECT_TRUE(controller->fromDate()->displayFormat().contains("ss"));
    EXPECT_TRUE(controller->fromDate()->displayFormat().contains("yyyy"));
}

}  // namespace
