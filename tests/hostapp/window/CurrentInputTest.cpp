#include "hostapp/window/CurrentInput.h"

#include "base/MainQueue.h"
#include "hostapp/window/DesktopUserInterface.h"

#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <functional>

// Which modifier keys count while an event is handled, and which between events.

namespace {

/// Asks for the keys while it handles an event, as a graph does.
class AskingView : public QWidget {
public:
    explicit AskingView(const plotix::DesktopUserInterface& asked) : m_asked(asked) {}
    Qt::KeyboardModifiers seen;

protected:
    void wheelEvent(QWheelEvent*) override { seen = m_asked.modifierFlags(); }
    void keyPressEvent(QKeyEvent*) override { seen = m_asked.modifierFlags(); }

private:
    const plotix::DesktopUserInterface& m_asked;
};

class CurrentInputTest : public testing::Test {
protected:
    void TearDown() override { QTest::keyRelease(&other, Qt::Key_Shift); }

    Qt::KeyboardModifiers seenInAWheelTurn(AskingView& turned, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event({5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&turned, &event);
        return turned.seen;
    }
    Qt::KeyboardModifiers seenInATask()
    {
        Qt::KeyboardModifiers seen;
        bool hasRun = false;
        plotix::MainQueue::main().async([&] {
            seen = desktop.modifierFlags();
            hasRun = true;
        });
        while (!hasRun)
            QCoreApplication::processEvents();
        return seen;
    }

    plotix::DesktopUserInterface desktop;
    AskingView view{desktop}, other{desktop};
};

TEST_F(CurrentInputTest, TheKeysAreThoseOfTheEventThatIsHandled)
{
    EXPECT_EQ(seenInAWheelTurn(view, Qt::ShiftModifier), Qt::ShiftModifier);
    EXPECT_EQ(seenInAWheelTurn(view), Qt::NoModifier);
}

TEST_F(CurrentInputTest, AKeyThatAnotherEventHadDoesNotCount)
{
    QTest::keyPress(&other, Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_EQ(seenInAWheelTurn(view), Qt::NoModifier);
}

TEST_F(CurrentInputTest, AMenusKeysCountInTheGesturesOfItsWindowAlone)
{
    desktop.setHeldModifiers(&view, Qt::AltModifier);
    EXPECT_EQ(seenInAWheelTurn(view), Qt::AltModifier);
    EXPECT_EQ(seenInAWheelTurn(view, Qt::ShiftModifier), Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(seenInAWheelTurn(other), Qt::NoModifier);
    QTest::keyClick(&view, Qt::Key_Home);
    EXPECT_EQ(view.seen, Qt::AltModifier);
}

TEST_F(CurrentInputTest, BetweenEventsAMenuHoldsNothing)
{
    desktop.setHeldModifiers(&view, Qt::AltModifier);
    seenInAWheelTurn(view);
    EXPECT_EQ(seenInATask(), Qt::NoModifier);
}

TEST_F(CurrentInputTest, ACommandsKeyIsNoGesture)
{
    desktop.setHeldModifiers(&view, Qt::AltModifier);
    QKeyEvent shortcut(QEvent::ShortcutOverride, Qt::Key_0, Qt::ControlModifier);
    QApplication::sendEvent(&view, &shortcut);
    EXPECT_EQ(desktop.modifierFlags(), Qt::ControlModifier);
}

TEST_F(CurrentInputTest, AProgramInTheBackgroundKnowsOfNoKeys)
{
    QTest::keyPress(&other, Qt::Key_Shift, Qt::ShiftModifier);
    ASSERT_NE(QGuiApplication::applicationState(), Qt::ApplicationActive);
    EXPECT_EQ(seenInATask(), Qt::NoModifier);
}

TEST_F(CurrentInputTest, TheProgramInFrontKnowsTheKeysOfItsLastEvent)
{
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    QTest::keyPress(&other, Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_EQ(seenInATask(), Qt::ShiftModifier);
}

TEST_F(CurrentInputTest, HeldKeysEndWithTheirWindow)
{
    auto window = std::make_unique<QWidget>();
    const QWidget* const place = window.get();
    desktop.setHeldModifiers(window.get(), Qt::AltModifier);
    window.reset();
    EXPECT_EQ(desktop.heldModifiers(place), Qt::NoModifier);
}

}  // namespace
