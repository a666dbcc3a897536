#include "hostapp/live/LiveRecorder.h"

#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "tests/hostapp/live/MadeUpSource.h"

#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <gtest/gtest.h>

namespace {

using plotix::LiveRecorder;
using plotix::RecordingStatus;

class LiveRecorderTest : public testing::Test {
protected:
    QString site() const { return folder.filePath("computer.plotix"); }
    std::unique_ptr<LiveRecorder> make() const
    {
        return std::make_unique<LiveRecorder>(site(), std::make_unique<MadeUpSource>(), 0.01);
    }
    /// Listens on this thread: a listener without a context would be called on the recorder's.
    static void waitForRecords(LiveRecorder& recorder, int count)
    {
        QEventLoop loop;
        int seen = 0;
        QObject::connect(&recorder, &LiveRecorder::recorded, &loop, [&] {
            if (++seen == count)
                loop.quit();
        });
        QTimer::singleShot(10'000, &loop, &QEventLoop::quit);
        loop.exec();
        ASSERT_GE(seen, count);
    }
    static void waitForState(LiveRecorder& recorder, RecordingStatus::State state)
    {
        QEventLoop loop;
        QObject::connect(&recorder, &LiveRecorder::statusChanged, &loop, [&] {
            if (recorder.status().state == state)
                loop.quit();
        });
        QTimer::singleShot(10'000, &loop, &QEventLoop::quit);
        if (recorder.status().state != state)
            loop.exec();
        ASSERT_EQ(recorder.status().state, state);
    }
    std::size_t storedRecords(const LiveRecorder& recorder) const
    {
        return plotix::recordsOfSite(site())->overview(recorder.agent(), {}).records();
    }

    QTemporaryDir folder;
};

TEST_F(LiveRecorderTest, RecordsUntilItIsStopped)
{
    const auto recorder = make();
    recorder->start();
    waitForRecords(*recorder, 3);
    recorder->stop();
    const RecordingStatus status = recorder->status();
    EXPECT_EQ(status.state, RecordingStatus::State::Recording);
    EXPECT_GE(status.stored, 3U);
    EXPECT_EQ(storedRecords(*recorder), status.stored);
}

TEST_F(LiveRecorderTest, WhatItSaysIsStoredIs)
{
    const auto recorder = make();
    double told = 0;
    QObject::connect(recorder.get(), &LiveRecorder::recorded, recorder.get(), [&told](double time) { told = time; });
    recorder->start();
    waitForRecords(*recorder, 5);
    EXPECT_GE(plotix::recordsOfSite(site())->extent(recorder->agent())->last, told);
}

TEST_F(LiveRecorderTest, TellsWhenTheSiteIsHeldAndWhenItIsFree)
{
    const auto recorder = make();
    {
        const auto other = plotix::recordsOfSite(site())->begin();
        recorder->start();
        waitForState(*recorder, RecordingStatus::State::WaitingForSite);
    }
    waitForState(*recorder, RecordingStatus::State::Recording);
}

TEST_F(LiveRecorderTest, ADocumentThatIsOpenSeesTheAgentAndItsRecords)
{
    const auto document = plotix::SiteDocument::create(site());
    const auto recorder = make();
    recorder->start();
    waitForRecords(*recorder, 1);
    document->reload();
    ASSERT_TRUE(document->agentNamed(recorder->agentName()));
    EXPECT_TRUE(document->recordExtent());
}

TEST_F(LiveRecorderTest, TheSiteIsOneFileAfterwards)
{
    {
        const auto recorder = make();
        recorder->start();
        waitForRecords(*recorder, 2);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"computer.plotix"});
}

TEST_F(LiveRecorderTest, StoppingOneThatNeverStartedIsHarmless)
{
    const auto recorder = make();
    recorder->stop();
    EXPECT_EQ(recorder->status().stored, 0U);
}

}  // namespace
