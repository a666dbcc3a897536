#include "base/ReportableError.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/HandingOver.h"
#include "hostapp/document/ServerSites.h"
#include "tests/hostapp/live/RecordingFixture.h"
#include "tests/records/clickhouse/ServerForTests.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QThread>

namespace plotix {

namespace {

using State = RecordingStatus::State;

/// Records into a site on a server that comes and goes.
class RecordingOnServerTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!ServerForTests::running().isOwn())
            GTEST_SKIP() << "the server is somebody else's";
        qputenv("PLOTIX_DATA_HOME", folder.path().toUtf8());
        storeServer(address)->create();
        desk = deskFileOf(address);
    }
    void TearDown() override
    {
        recording.reset();
        qunsetenv("PLOTIX_DATA_HOME");
        if (!isThere)
            bringServerBack();
    }

    void takeServerAway()
    {
        ServerForTests::running().kill();
        isThere = false;
    }
    void bringServerBack()
    {
        ServerForTests::running().restart();
        isThere = true;
    }
    void begin()
    {
        recording.reset();
        auto made = std::make_unique<MadeUpSource>();
        source = made.get();
        recording = std::make_unique<Recording>(deskFileToRecordInto(address), std::move(made));
    }
    RecordingStatus record(double time) { return recording->record(time); }
    void record(int first, int last)
    {
        for (int time = first; time <= last; ++time)
            record(time);
    }
    /// Until nothing is on the disk any more.
    RecordingStatus handedOver()
    {
        RecordingStatus status = recording->watch();
        for (const QDeadlineTimer end(20'000); status.onDisk > 0 && !end.hasExpired(); status = recording->watch())
            QThread::msleep(20);
        return status;
    }
    /// Times that the server has; notes whether anything was amended.
    std::vector<double> times()
    {
        bringUpToDate(desk, address);
        const auto document = SiteDocument::open(desk);
        const auto agent = document->agentNamed("Made Up");
        if (!agent)
            return {};
        const RowId count = agent->siteProperties().front()->description().id;
        amended = !document->records()->amendments(agent->id(), std::span(&count, 1)).empty();
        const RecordBlock block = *document->records()->read(agent->id(), std::span(&count, 1), {}, {});
        return {block.times.span().begin(), block.times.span().end()};
    }
    static std::vector<double> upTo(int last)
    {
        std::vector<double> all;
        for (int time = 1; time <= last; ++time)
            all.push_back(time);
        return all;
    }

    QTemporaryDir folder;
    const QString address = ServerForTests::running().newSite().text();
    QString desk;
    bool isThere = true, amended = false;
    MadeUpSource* source = nullptr;
    std::unique_ptr<Recording> recording;
};

TEST_F(RecordingOnServerTest, IsStoredThereAtOnce)
{
    begin();
    record(1, 3);
    const RecordingStatus status = handedOver();
    EXPECT_EQ(status.state, State::Recording) << status.message.toStdString();
    EXPECT_EQ(status.stored, 3U);
    EXPECT_EQ(times(), upTo(3));
}

TEST_F(RecordingOnServerTest, IsKeptBesideWhileTheServerIsAwayAndHandedOverInOrder)
{
    begin();
    record(1, 3);
    takeServerAway();
    record(4, 6);
    const RecordingStatus away = record(7);
    EXPECT_EQ(away.state, State::KeptBeside);
    EXPECT_GE(away.onDisk, 4U);
    EXPECT_TRUE(away.message.contains("cannot be reached")) << away.message.toStdString();
    bringServerBack();
    const RecordingStatus back = handedOver();
    EXPECT_EQ(back.state, State::Recording) << back.message.toStdString();
    EXPECT_EQ(back.stored, 7U);
    EXPECT_EQ(back.last, 7);
    EXPECT_EQ(times(), upTo(7));
    EXPECT_FALSE(amended);
    EXPECT_TRUE(waitingBeside(desk).empty());
}

TEST_F(RecordingOnServerTest, BeginsWithoutTheServerAlsoWhereTheAgentIsNew)
{
    takeServerAway();
    begin();
    EXPECT_EQ(recording->agent(), 0);
    EXPECT_EQ(record(1).state, State::KeptBeside);
    record(2);
    bringServerBack();
    handedOver();
    record(3);
    handedOver();
    EXPECT_NE(recording->agent(), 0);
    EXPECT_EQ(times(), upTo(3));
    EXPECT_FALSE(amended);
}

TEST_F(RecordingOnServerTest, ASiteThatThisDeskNeverSawCannotBeBegunWithoutTheServer)
{
    takeServerAway();
    const QString other = ServerForTests::running().newSite().text();
    EXPECT_THROW(deskFileToRecordInto(other), ServerUnreachable);
}

TEST_F(RecordingOnServerTest, WhatAnEndedRecordingLeftGoesBeforeWhatTheNextOneReads)
{
    begin();
    record(1);
    takeServerAway();
    record(2, 4);
    begin();
    EXPECT_EQ(record(3).state, State::ClockSetBack);  // it waits here already
    record(5);
    bringServerBack();
    handedOver();
    EXPECT_EQ(times(), upTo(5));
    EXPECT_FALSE(amended);
}

TEST_F(RecordingOnServerTest, WhatAnEndedRecordingLeftIsHandedOverByWhoeverOpensTheSite)
{
    begin();
    record(1);
    takeServerAway();
    record(2, 4);
    recording.reset();
    ASSERT_EQ(waitingBeside(desk).size(), 1U);
    bringServerBack();
    const auto document = SiteDocument::open(desk);
    for (const QDeadlineTimer end(20'000); !waitingBeside(desk).empty() && !end.hasExpired();)
        QThread::msleep(50);
    EXPECT_EQ(times(), upTo(4));
    EXPECT_FALSE(amended);
}

TEST_F(RecordingOnServerTest, AServerThatStandsStillHoldsUpNeitherReadingsNorTheEnd)
{
    begin();
    record(1);
    ServerForTests::running().standStill();
    QElapsedTimer watch;
    watch.start();
    record(2, 6);
    EXPECT_LT(watch.elapsed(), 3000);
    EXPECT_EQ(recording->watch().onDisk, 5U);
    recording.reset();
    EXPECT_LT(watch.elapsed(), 8000);
    ServerForTests::running().goOn();
    begin();
    record(7);
    handedOver();
    EXPECT_EQ(times(), upTo(7));
    EXPECT_FALSE(amended);
}

TEST_F(RecordingOnServerTest, FinishingSaysHowManyWait)
{
    begin();
    takeServerAway();
    record(1, 2);
    const RecordingStatus status = recording->finish();
    EXPECT_EQ(status.state, State::KeptBeside);
    EXPECT_EQ(status.onDisk, 2U);
    EXPECT_TRUE(QFile::exists(status.file));
}

TEST_F(RecordingOnServerTest, WithoutRoomOnTheDiskRecordsWaitInMemory)
{
    begin();
    takeServerAway();
    EXPECT_EQ(record(1).state, State::KeptBeside);
    qputenv("PLOTIX_WAITING_LIMIT", "1 KB");
    record(2);
    const RecordingStatus status = record(3);
    qunsetenv("PLOTIX_WAITING_LIMIT");
    EXPECT_EQ(status.state, State::WaitingForSite);
    EXPECT_TRUE(status.message.contains("as large as it may be")) << status.message.toStdString();
    EXPECT_EQ(status.waiting, 2U);
    EXPECT_EQ(record(4).waiting, 0U);
    bringServerBack();
    handedOver();
    EXPECT_EQ(times(), upTo(4));
}

}  // namespace

}  // namespace plotix
