#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"
#include "tests/support/PinnedZone.h"
#include "tests/support/fakehost/FakeCoder.h"

#include <cmath>

// What the delegate finds when it is called, the delay of both pickers, and days that are not 24 hours long.

namespace {

class DateRangeControllerOrder : public DateRangeControllerTest {
protected:
    /// What the button read inside each call of the delegate.
    QStringList titles;
    void noteTitles()
    {
        delegate.duringCall = [this] { titles.append(controller->refreshButton()->text()); };
    }
};

TEST_F(DateRangeControllerOrder, ReturnCallsTheDelegateWhenTheControlsAreChanged)
{
    noteTitles();
    controller->returnKeyPressed(nullptr);
    controller->returnKeyPressed(nullptr);
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "cancel"}));
    EXPECT_EQ(titles, (QStringList{"Cancel", "Refresh"}));
}

TEST_F(DateRangeControllerOrder, TheButtonCallsTheDelegateWhenTheControlsAreChanged)
{
    noteTitles();
    controller->refreshButton()->click();
    controller->refreshButton()->click();
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "cancel"}));
    EXPECT_EQ(titles, (QStringList{"Cancel", "Refresh"}));
}

TEST_F(DateRangeControllerOrder, PickersAreSetBeforeTheDelegateIsTold)
{
    plotix::OptionalDate from, to;
    delegate.duringCall = [&] {
        from = controller->fromDateValue();
        to = controller->toDateValue();
    };
    controller->updateDates(plotix::Date{1'000}, plotix::Date{2'000});
    EXPECT_EQ(from, plotix::Date{1'000});
    EXPECT_EQ(to, plotix::Date{2'000});
}

TEST_F(DateRangeControllerOrder, EditsOfTheToPickerWaitAndAreApplied)
{
    showPanel();
    edit(controller->toDate());
    EXPECT_EQ(delegate.calls, QStringList());
    waitForDateChanged(1);
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
}

TEST_F(DateRangeControllerOrder, TypingMustPauseForASecond)
{
    makeController(KTVDataClusterViewController::kApplyDelay);
    showPanel();
    edit(controller->fromDate());
    ASSERT_NE(controller->dateChangeDelayTimer(), nullptr);
    EXPECT_EQ(controller->dateChangeDelayTimer()->interval(), 1'000);
}

TEST_F(DateRangeControllerOrder, LabelsStayAsTheyAreWhileRecordsAreFetched)
{
    const auto expectLabels = [this] {
        for (const QLabel* label : {controller->fromTextField(), controller->toTextField()}) {
            EXPECT_FALSE(label->isHidden());
            EXPECT_TRUE(label->isEnabled());
        }
    };
    controller->refreshStarted(nullptr);
    expectLabels();
    controller->refreshComplete(nullptr);
    expectLabels();
}

TEST_F(DateRangeControllerOrder, HidingTheControlsLeavesTheIndicatorAsItIs)
{
    controller->hideControls();
    EXPECT_TRUE(controller->progressIndicator()->isHidden());
    controller->refreshStarted(nullptr);
    controller->hideControls();
    EXPECT_FALSE(controller->progressIndicator()->isHidden());
    EXPECT_TRUE(controller->progressIndicator()->isAnimating());
}

/// Writes down which control is hidden, in order.
class HidingRecorder : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::HideToParent)
            hidden.append(watched->objectName());
        return false;
    }
    QStringList hidden;
};

TEST_F(DateRangeControllerOrder, TheControlsAreHiddenInTheirOrder)
{
    HidingRecorder recorder;
    for (QWidget* control : controller->view()->findChildren<QWidget*>())
        control->installEventFilter(&recorder);
    showPanel();
    controller->hideControls();
    EXPECT_EQ(recorder.hidden,
              (QStringList{"fromDate", "toDate", "fromTextField", "toTextField", "quickDatePopupButton"}));
}

TEST_F(DateRangeControllerOrder, BothDatesAreArchivedToTheBit)
{
    controller->setFromDateValue(plotix::Date{1388534399.123456789});
    controller->setToDateValue(plotix::Date{1388538000.987654321});
    fakehost::FakeArchive archive;
    fakehost::FakeEncoder encoder(archive);
    controller->encodeWithCoder(encoder);
    EXPECT_EQ(archive.value("fromDate").toDouble(), 1388534399.123456789);
    EXPECT_EQ(archive.value("toDate").toDouble(), 1388538000.987654321);
}

/// A zone of its own, in which the clock went forward by an hour this noon. It is early afternoon there whenever this
/// runs: at another hour the change might move the day itself.
class DateRangeControllerZone : public DateRangeControllerTest {
protected:
    DateRangeControllerZone()
    {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        m_hoursAhead = 14 - now.time().hour();
        const int today = now.addSecs(m_hoursAhead * 3'600).date().dayOfYear() - 1;
        const int next = (today + 100) % 365;
        m_zone.use(QStringLiteral("WIN%1SUM,%2/12,%3/12").arg(-m_hoursAhead).arg(today).arg(next).toLatin1());
        makeController();
    }

    int m_hoursAhead = 0;  ///< of Greenwich, until noon

private:
    plotix::PinnedZone m_zone;
};

TEST_F(DateRangeControllerZone, TodayEndsAtTheNextMidnightThoughItHas23Hours)
{
    EXPECT_EQ(controller->toDateValue()->seconds - controller->fromDateValue()->seconds, 23 * 3'600);
}

TEST_F(DateRangeControllerZone, TodayBeginsAtTheMidnightOfTheUsersZone)
{
    const double sinceMidnightOfGreenwich = std::fmod(controller->fromDateValue()->seconds, 86'400);
    EXPECT_EQ(sinceMidnightOfGreenwich, (24 - m_hoursAhead) % 24 * 3'600);
}

}  // namespace
