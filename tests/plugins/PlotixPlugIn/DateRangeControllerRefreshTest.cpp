#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"

#include <QtWidgets/QDialog>
#include <QtWidgets/QLayout>

namespace {

/// Writes down, in order, what happens to the controls and what the button read at that moment.
class ControlsRecorder : public QObject {
public:
    explicit ControlsRecorder(KTVDataClusterViewController& controller) : m_controller(controller)
    {
        for (QWidget* control :
             std::initializer_list<QWidget*>{controller.fromDate(), controller.toDate(),
                                             controller.quickDatePopupButton(), controller.progressIndicator()})
            control->installEventFilter(this);
        connect(controller.progressIndicator(), &ProgressIndicator::animatingChanged, this,
                [this](bool animating) { note(animating ? "start" : "stop"); });
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* control = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::EnabledChange)
            note(control->objectName() + (control->isEnabled() ? " on" : " off"));
        else if (event->type() == QEvent::ShowToParent)
            note("show");
        else if (event->type() == QEvent::HideToParent)
            note("hide");
        return false;
    }

    QStringList steps;
    QStringList titles;  ///< one per step

private:
    void note(const QString& step)
    {
        steps.append(step);
        titles.append(m_controller.refreshButton()->text());
    }

    KTVDataClusterViewController& m_controller;
};

class DateRangeControllerRefresh : public DateRangeControllerTest {
protected:
    QString title() const { return controller->refreshButton()->text(); }
    void press() { controller->refreshButton()->click(); }
    void press(Qt::Key key, QWidget* widget) { QTest::keyClick(widget, key); }
};

TEST_F(DateRangeControllerRefresh, ReadsRefreshAndShowsNoProgressAtFirst)
{
    EXPECT_EQ(title(), "Refresh");
    EXPECT_TRUE(controller->progressIndicator()->isHidden());
    EXPECT_FALSE(controller->progressIndicator()->isAnimating());
}

TEST_F(DateRangeControllerRefresh, StartingGoesThroughTheControlsInOrder)
{
    ControlsRecorder recorder(*controller);
    controller->refreshStarted(nullptr);
    EXPECT_EQ(recorder.steps, (QStringList{"fromDate off", "toDate off", "quickDatePopupButton off", "start", "show"}));
    EXPECT_EQ(recorder.titles.count("Refresh"), 5);
    EXPECT_EQ(title(), "Cancel");
}

TEST_F(DateRangeControllerRefresh, CompletingGoesThroughTheControlsInItsOwnOrder)
{
    controller->refreshStarted(nullptr);
    ControlsRecorder recorder(*controller);
    controller->refreshComplete(nullptr);
    EXPECT_EQ(recorder.steps, (QStringList{"fromDate on", "toDate on", "hide", "stop", "quickDatePopupButton on"}));
    EXPECT_EQ(recorder.titles.count("Cancel"), 5);
    EXPECT_EQ(title(), "Refresh");
}

TEST_F(DateRangeControllerRefresh, StartingAndCompletingTwiceIsHarmless)
{
    controller->refreshStarted(nullptr);
    controller->refreshStarted(nullptr);
    EXPECT_EQ(title(), "Cancel");
    controller->refreshComplete(nullptr);
    controller->refreshComplete(nullptr);
    EXPECT_EQ(title(), "Refresh");
    EXPECT_TRUE(controller->fromDate()->isEnabled());
}

TEST_F(DateRangeControllerRefresh, PressingTheButtonRefreshesThenCancels)
{
    press();
    EXPECT_EQ(title(), "Cancel");
    press();
    EXPECT_EQ(title(), "Refresh");
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "cancel"}));
    EXPECT_EQ(delegate.lastSender, controller.get());
}

TEST_F(DateRangeControllerRefresh, TheButtonDoesNotAskWhetherTheDelegateResponds)
{
    delegate.answersRefresh = false;
    press();
    EXPECT_EQ(delegate.calls, QStringList("refresh"));
}

TEST_F(DateRangeControllerRefresh, ReturnAsksWhetherTheDelegateRespondsBeforeItTouchesTheControls)
{
    delegate.answersRefresh = false;
    controller->returnKeyPressed(nullptr);
    EXPECT_EQ(delegate.calls, QStringList());
    EXPECT_EQ(title(), "Refresh");
}

TEST_F(DateRangeControllerRefresh, ReturnRefreshesAndThenCancels)
{
    controller->returnKeyPressed(nullptr);
    EXPECT_EQ(title(), "Cancel");
    controller->returnKeyPressed(nullptr);
    EXPECT_EQ(title(), "Refresh");
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "cancel"}));
}

TEST_F(DateRangeControllerRefresh, ReturnCancelsUncheckedWhileTheButtonReadsCancel)
{
    controller->refreshStarted(nullptr);
    delegate.answersRefresh = false;
    controller->returnKeyPressed(nullptr);
    EXPECT_EQ(delegate.calls, QStringList("cancel"));
}

// The title is set translated and compared untranslated: elsewhere Return always refreshes, the button still cancels.
TEST_F(DateRangeControllerRefresh, WhereCancelIsTranslatedReturnAlwaysRefreshes)
{
    bundle.translations = {{"Cancel", "Abbrechen"}, {"Refresh", "Aktualisieren"}};
    controller->refreshStarted(nullptr);
    EXPECT_EQ(title(), "Abbrechen");
    controller->returnKeyPressed(nullptr);
    press();
    EXPECT_EQ(title(), "Aktualisieren");
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "cancel"}));
}

TEST_F(DateRangeControllerRefresh, ReturnAndKeypadEnterInAPickerReachTheController)
{
    showPanel();
    press(Qt::Key_Return, controller->fromDate());
    controller->refreshComplete(nullptr);
    press(Qt::Key_Enter, controller->toDate());
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "refresh"}));
}

TEST_F(DateRangeControllerRefresh, OtherKeysInAPickerEditTheDate)
{
    showPanel();
    const auto before = controller->fromDateValue();
    press(Qt::Key_Up, controller->fromDate());
    EXPECT_NE(controller->fromDateValue(), before);
    EXPECT_EQ(delegate.calls, QStringList());
}

TEST_F(DateRangeControllerRefresh, ReturnIsHandledOnceAndGoesNoFurther)
{
    QDialog sheet;
    controller->view()->setParent(&sheet);
    sheet.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&sheet));
    press(Qt::Key_Return, controller->fromDate());
    EXPECT_EQ(delegate.calls, QStringList("refresh"));
    EXPECT_TRUE(sheet.isVisible());
    controller->view()->setParent(nullptr);
}

TEST_F(DateRangeControllerRefresh, ReturnCancelsFromThePanelWhileThePickersAreDisabled)
{
    showPanel();
    press(Qt::Key_Return, controller->fromDate());
    ASSERT_FALSE(controller->fromDate()->isEnabled());
    press(Qt::Key_Return, controller->fromDate());
    EXPECT_EQ(delegate.calls, (QStringList{"refresh", "cancel"}));
}

TEST_F(DateRangeControllerRefresh, ReturnOnTheButtonsAndThePanelReachesTheController)
{
    showPanel();
    for (QWidget* control : std::initializer_list<QWidget*>{controller->refreshButton(), controller->view(),
                                                            controller->quickDatePopupButton()}) {
        delegate.calls.clear();
        press(Qt::Key_Enter, control);
        EXPECT_EQ(delegate.calls, QStringList("refresh"));
        controller->refreshComplete(nullptr);
    }
}

TEST_F(DateRangeControllerRefresh, TheFocusGoesToCancelAndComesBackToThePicker)
{
    showPanel();
    controller->toDate()->setFocus();
    press(Qt::Key_Return, controller->toDate());
    EXPECT_TRUE(controller->refreshButton()->hasFocus());
    controller->refreshComplete(nullptr);
    EXPECT_TRUE(controller->toDate()->hasFocus());
}

TEST_F(DateRangeControllerRefresh, WithoutADelegateOnlyTheControlsChange)
{
    controller->setDelegate(nullptr);
    controller->returnKeyPressed(nullptr);
    EXPECT_EQ(title(), "Refresh");
    controller->refresh(nullptr);
    EXPECT_EQ(title(), "Cancel");
    controller->cancel(nullptr);
    EXPECT_EQ(title(), "Refresh");
    controller->updateDates(plotix::Date{1}, plotix::Date{2});
    EXPECT_EQ(controller->toDateValue(), plotix::Date{2});
}

TEST_F(DateRangeControllerRefresh, ADelegateThatHasGoneIsForgotten)
{
    auto shortLived = std::make_unique<RecordingDateDelegate>();
    controller->setDelegate(shortLived.get());
    EXPECT_EQ(controller->delegate(), shortLived.get());
    shortLived.reset();
    EXPECT_EQ(controller->delegate(), nullptr);
    controller->refresh(nullptr);
    controller->timerFireMethod();
    EXPECT_EQ(title(), "Cancel");
}

TEST_F(DateRangeControllerRefresh, HidingTheControlsLeavesButtonAndIndicator)
{
    controller->hideControls();
    for (QWidget* control :
         std::initializer_list<QWidget*>{controller->fromDate(), controller->toDate(), controller->fromTextField(),
                                         controller->toTextField(), controller->quickDatePopupButton()})
        EXPECT_TRUE(control->isHidden());
    EXPECT_FALSE(controller->refreshButton()->isHidden());
}

TEST_F(DateRangeControllerRefresh, TabGoesThroughTheControlsInReadingOrder)
{
    showPanel();
    controller->fromDate()->setFocus();
    // Within an editor Tab goes through its sections first.
    const auto tabToNextControl = [] {
        const QWidget* before = QApplication::focusWidget();
        for (int count = 0; count < 10 && QApplication::focusWidget() == before; ++count)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    };
    for (QWidget* next : std::initializer_list<QWidget*>{controller->toDate(), controller->quickDatePopupButton(),
                                                         controller->refreshButton()}) {
        tabToNextControl();
        EXPECT_EQ(QApplication::focusWidget(), next);
    }
}

TEST_F(DateRangeControllerRefresh, EveryControlHasANameForScreenReaders)
{
    EXPECT_EQ(controller->fromDate()->accessibleName(), "From date");
    EXPECT_EQ(controller->toDate()->accessibleName(), "To date");
    EXPECT_FALSE(controller->quickDatePopupButton()->accessibleName().isEmpty());
    EXPECT_FALSE(controller->progressIndicator()->accessibleName().isEmpty());
}

TEST_F(DateRangeControllerRefresh, TheButtonKeepsItsWidthWhenItsTitleChanges)
{
    showPanel();
    const int width = controller->refreshButton()->width();
    controller->refreshStarted(nullptr);
    controller->view()->layout()->activate();
    EXPECT_EQ(controller->refreshButton()->width(), width);
}

}  // namespace
