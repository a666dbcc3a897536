#include "hostapp/window/SiteRecording.h"

#include "base/ReportableError.h"
#include "hostapp/live/LiveRecorder.h"
#include "hostapp/window/RecordingIndicator.h"
#include "tests/hostapp/window/StubbedServices.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace {

using plotix::SiteRecording;

class SiteRecordingTest : public testing::Test {
protected:
    SiteRecordingTest() { make(); }
    void make()
    {
        recording.reset();
        recording = std::make_unique<SiteRecording>(site.document);
    }

    ScratchSite site;
    std::unique_ptr<SiteRecording> recording;
};

TEST_F(SiteRecordingTest, SwitchedOnItAddsTheAgentAndRemembers)
{
    QSignalSpy added(recording.get(), &SiteRecording::agentAdded);
    recording->switchOn();
    EXPECT_TRUE(recording->isOn());
    EXPECT_TRUE(recording->wasOn());
    EXPECT_TRUE(site.document->agentNamed(QStringLiteral("This Computer")));
    EXPECT_EQ(added.count(), 1);
}

TEST_F(SiteRecordingTest, TheDocumentRemembersAcrossOpenings)
{
    recording->switchOn();
    recording.reset();
    site.reopen();
    make();
    EXPECT_FALSE(recording->isOn());
    EXPECT_TRUE(recording->wasOn());
    QSignalSpy added(recording.get(), &SiteRecording::agentAdded);
    recording->switchOn();
    EXPECT_EQ(added.count(), 0);
    recording->switchOff();
    EXPECT_FALSE(recording->wasOn());
}

TEST_F(SiteRecordingTest, ASourceThatCannotBeMadeLeavesItOff)
{
    recording = std::make_unique<SiteRecording>(site.document, []() -> std::unique_ptr<plotix::ReadingSource> {
        throw plotix::ReportableError(QStringLiteral("There is no space left."));
    });
    EXPECT_THROW(recording->switchOn(), plotix::ReportableError);
    EXPECT_FALSE(recording->isOn());
    EXPECT_FALSE(recording->wasOn());
    EXPECT_EQ(recording->message(), QString());
}

/// A source that is there and cannot begin.
class SilentSource : public plotix::ReadingSource {
public:
    QString agentName() const override { return QStringLiteral("Silent"); }
    std::vector<plotix::SourceProperty> start(double) override
    {
        throw plotix::ReportableError(QStringLiteral("There is no space left."));
    }
    std::vector<plotix::Reading> read(double) override { return {}; }
};

TEST_F(SiteRecordingTest, ARecorderThatCannotBeginLeavesItOff)
{
    recording = std::make_unique<SiteRecording>(site.document, [] { return std::make_unique<SilentSource>(); });
    EXPECT_THROW(recording->switchOn(), plotix::ReportableError);
    EXPECT_FALSE(recording->isOn());
    EXPECT_FALSE(recording->wasOn());
    EXPECT_EQ(recording->message(), QString());
}

class LiveWindowTest : public testing::Test, protected StubbedServices {
protected:
    void TearDown() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void openWindow() { window = std::make_unique<plotix::SiteWindow>(site.document, services()); }
    void reopen()
    {
        window->close();
        window.reset();
        site.reopen();
        openWindow();
    }
    QAction* recordAction() { return window->actions().recordComputer; }

    ScratchSite site;
    std::unique_ptr<plotix::SiteWindow> window;
};

TEST_F(LiveWindowTest, RecordingBeginsWithATrendOfItsOwn)
{
    openWindow();
    recordAction()->trigger();
    EXPECT_TRUE(recordAction()->isChecked());
    ASSERT_TRUE(window->selectedPlugIn());
    EXPECT_EQ(window->selectedPlugIn()->title(), QStringLiteral("This Computer"));
}

TEST_F(LiveWindowTest, RecordingGoesOnWhenTheSiteIsOpenedAgain)
{
    openWindow();
    recordAction()->trigger();
    reopen();
    EXPECT_TRUE(recordAction()->isChecked());
    EXPECT_EQ(window->controller().sourceList().rowCount(), 1);
    recordAction()->trigger();
    reopen();
    EXPECT_FALSE(recordAction()->isChecked());
}

TEST_F(LiveWindowTest, FollowIsGreyedForAViewThatCannot)
{
    openWindow();
    EXPECT_FALSE(window->actions().follow->isEnabled());
    EXPECT_EQ(window->actions().follow->toolTip(), QStringLiteral("Select a trend first."));
    recordAction()->trigger();  // its trend is a stub here
    EXPECT_FALSE(window->actions().follow->isEnabled());
    EXPECT_EQ(window->actions().follow->toolTip(), QStringLiteral("This view cannot do that."));
}

TEST_F(LiveWindowTest, TheWindowSaysThatItRecordsSinceWhenAndHowMany)
{
    openWindow();
    window->show();
    auto* indicator = window->findChild<plotix::RecordingIndicator*>();
    EXPECT_FALSE(indicator->isVisible());
    recordAction()->trigger();
    EXPECT_TRUE(indicator->isVisible());
    EXPECT_TRUE(indicator->text().startsWith(QStringLiteral("Recording since "))) << indicator->text().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !indicator->text().contains(QStringLiteral(": 0 ")); }));
    recordAction()->trigger();
    EXPECT_FALSE(indicator->isVisible());
}

class EndRecordingTest : public LiveWindowTest {
protected:
    EndRecordingTest()
    {
        openWindow();
        window->show();
        recordAction()->trigger();
    }
    void TearDown() override
    {
        window->closeAsOrdered();
        LiveWindowTest::TearDown();
    }
    /// Closes, and presses that button of the question.
    bool closeAndPress(int button)
    {
        QTimer::singleShot(0, &*window, [this, button] {
            auto* box = window->findChild<QMessageBox*>(QStringLiteral("endRecording"));
            asked = box->informativeText();
            box->buttons().at(button)->click();
        });
        return window->close();
    }

    QString asked;
};

TEST_F(EndRecordingTest, ClosingAsksAndMayBeTakenBack)
{
    EXPECT_FALSE(closeAndPress(1));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(recordAction()->isChecked());
    EXPECT_TRUE(asked.startsWith(QStringLiteral("Recording since ")));
}

TEST_F(EndRecordingTest, ClosingGoesOnWhenConfirmed)
{
    EXPECT_TRUE(closeAndPress(0));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(EndRecordingTest, ASystemThatEndsIsNotAsked)
{
    plotix::closeAllSites(plotix::Closing::Ordered);
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
