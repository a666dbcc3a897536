#include "base/ReportableError.h"
#include "hostapp/document/SiteEditing.h"
#include "tests/hostapp/live/RecordingFixture.h"

#include <QtCore/QFile>

namespace {

using plotix::Recording;
using plotix::RecordingStatus;
using State = plotix::RecordingStatus::State;

class RecordingTest : public RecordingFixture {};

TEST_F(RecordingTest, MakesTheSiteTheAgentAndItsProperties)
{
    begin();
    const auto agent = plotix::SiteDocument::open(site())->agentNamed("Made Up");
    ASSERT_TRUE(agent);
    ASSERT_EQ(agent->siteProperties().size(), 2U);
    EXPECT_EQ(agent->siteProperties().front()->name(), "Count");
    EXPECT_EQ(agent->siteProperties().back()->unit(), "°C");
}

TEST_F(RecordingTest, EveryRecordIsStoredAtOnce)
{
    begin();
    for (int second = 100; second < 150; ++second) {
        const RecordingStatus status = record(second);
        ASSERT_EQ(status.state, State::Recording);
        ASSERT_EQ(status.last, second);
    }
    EXPECT_EQ(times().size(), 50U);
    EXPECT_EQ(values("Count").front(), 1);
    EXPECT_EQ(values("Count").back(), 50);
}

TEST_F(RecordingTest, GoesOnBehindWhatIsThere)
{
    begin();
    record(100);
    begin();
    EXPECT_EQ(record(101).stored, 1U);
    EXPECT_EQ(times(), (std::vector<double>{100, 101}));
}

TEST_F(RecordingTest, ASensorThatGoesHasNoValueMeanwhile)
{
    begin();
    record(1);
    source->sensorIsThere = false;
    record(2);
    source->sensorIsThere = true;
    record(3);
    EXPECT_EQ(values("Temperature").size(), 2U);
    EXPECT_EQ(times().size(), 3U);
}

TEST_F(RecordingTest, RecordsWaitWhileAnotherProgramWrites)
{
    begin();
    record(1);
    {
        const auto other = plotix::recordsOfSite(site())->begin();
        const RecordingStatus status = record(2);
        EXPECT_EQ(status.state, State::WaitingForSite);
        EXPECT_TRUE(status.message.contains("being written by another program")) << status.message.toStdString();
        EXPECT_EQ(record(3).waiting, 2U);
    }
    const RecordingStatus after = record(4);
    EXPECT_EQ(after.state, State::Recording);
    EXPECT_EQ(after.message, QString());
    EXPECT_EQ(after.stored, 4U);
    EXPECT_EQ(times(), (std::vector<double>{1, 2, 3, 4}));
}

TEST_F(RecordingTest, WhatWaitsIsStoredAtTheEndWithoutAnotherRecord)
{
    begin();
    {
        const auto other = plotix::recordsOfSite(site())->begin();
        record(1);
    }
    EXPECT_EQ(recording->storeWaiting().state, State::Recording);
    EXPECT_EQ(times(), std::vector<double>{1});
}

TEST_F(RecordingTest, AFileThatIsGoneIsNotWrittenTo)
{
    begin();
    record(1);
    const QString elsewhere = folder.filePath("moved.plotix");
    ASSERT_TRUE(QFile::rename(site(), elsewhere));
    const RecordingStatus status = record(2);
    EXPECT_EQ(status.state, State::WaitingForSite);
    EXPECT_TRUE(status.message.contains("does not exist")) << status.message.toStdString();
    ASSERT_TRUE(QFile::rename(elsewhere, site()));
    EXPECT_EQ(record(3).state, State::Recording);
    EXPECT_EQ(times(), (std::vector<double>{1, 2, 3}));
}

TEST_F(RecordingTest, AClockThatWasSetBackReplacesNothing)
{
    begin();
    record(100);
    const double before = values("Count").front();
    const RecordingStatus status = record(40);
    EXPECT_EQ(status.state, State::ClockSetBack);
    EXPECT_TRUE(status.message.contains("1970-01-01T00:01:40")) << status.message.toStdString();
    EXPECT_EQ(record(100).state, State::ClockSetBack);
    EXPECT_EQ(record(101).state, State::Recording);
    EXPECT_EQ(times(), (std::vector<double>{100, 101}));
    EXPECT_EQ(values("Count").front(), before);
}

TEST_F(RecordingTest, TheRemedyForARecordAheadIsSaidAndHelpsAtOnce)
{
    begin();
    record(5'000'000);
    const RecordingStatus status = record(100);
    EXPECT_TRUE(status.message.contains("plotix edit computer.plotix --agent \"Made Up\" --remove --from "
                                        "1970-01-01T00:01:40Z"))
        << status.message.toStdString();
    std::vector<plotix::RowId> all;
    const auto document = plotix::SiteDocument::open(site());
    for (const auto& property : document->agentNamed("Made Up")->siteProperties())
        all.push_back(property->description().id);
    plotix::removeValues(site(), document->agentNamed("Made Up")->id(), all, 101, {});
    EXPECT_EQ(record(102).state, State::Recording);
    EXPECT_EQ(times(), std::vector<double>{102});
}

TEST_F(RecordingTest, ARecordAheadIsStillToldAtTheEnd)
{
    begin();
    record(5'000'000);
    record(100);
    EXPECT_EQ(recording->storeWaiting().state, State::ClockSetBack);
}

TEST_F(RecordingTest, ASecondRecordingOfTheSameSourceIsRefused)
{
    begin();
    record(1);
    try {
        Recording second(site(), std::make_unique<MadeUpSource>());
        FAIL() << "two recordings";
    } catch (const plotix::ReportableError& error) {
        EXPECT_TRUE(error.message().contains("is being recorded")) << error.message().toStdString();
    }
    EXPECT_EQ(record(2).state, State::Recording);
    recording.reset();
    EXPECT_NO_THROW(Recording(site(), std::make_unique<MadeUpSource>()));
}

TEST_F(RecordingTest, WhatIsBeingRecordedIsNotDeleted)
{
    begin();
    const plotix::RowId agent = recording->agent();
    EXPECT_THROW(plotix::deleteAgent(site(), agent), plotix::ReportableError);
    recording.reset();
    EXPECT_NO_THROW(plotix::deleteAgent(site(), agent));
}

TEST_F(RecordingTest, AClockBehindAnEarlierRecordingIsNoticedToo)
{
    begin();
    record(100);
    begin();
    EXPECT_EQ(record(99).state, State::ClockSetBack);
}

TEST_F(RecordingTest, ReadingsThatWereHeardMeanwhileAreStoredUnderTheirOwnTimes)
{
    begin();
    source->heard = {{source->reading(10), source->reading(11.5)}};
    EXPECT_EQ(record(12).stored, 2U);
    EXPECT_EQ(record(13).stored, 2U);  // nothing was heard
    EXPECT_EQ(times(), (std::vector<double>{10, 11.5}));
}

TEST_F(RecordingTest, OfReadingsThatWereHeardThoseAtTimesThatAreTakenAreLeftOut)
{
    begin();
    record(10);
    source->heard = {{source->reading(9), source->reading(10), source->reading(11), source->reading(11)}};
    EXPECT_EQ(record(12).state, State::Recording);
    EXPECT_EQ(times(), (std::vector<double>{10, 11}));
}

TEST_F(RecordingTest, ASourceThatCannotBeReadIsAskedAgain)
{
    begin();
    record(1);
    source->problem = QStringLiteral("the cable is out");
    const RecordingStatus status = record(2);
    EXPECT_EQ(status.state, State::WaitingForSource);
    EXPECT_EQ(status.message, QStringLiteral("the cable is out"));
    source->problem.clear();
    EXPECT_EQ(record(3).state, State::Recording);
    EXPECT_EQ(times(), (std::vector<double>{1, 3}));
}

TEST_F(RecordingTest, WhatWaitsIsStoredAlthoughTheSourceCannotBeRead)
{
    begin();
    {
        const auto other = plotix::recordsOfSite(site())->begin();
        record(1);
    }
    source->problem = QStringLiteral("the cable is out");
    EXPECT_EQ(record(2).stored, 1U);
}

TEST_F(RecordingTest, StartsTheSourceAndStopsIt)
{
    class Stopped : public MadeUpSource {
    public:
        explicit Stopped(bool& flag) : stopped(flag) {}
        void stop() override { stopped = true; }
        bool& stopped;
    };
    bool stopped = false;
    auto made = std::make_unique<Stopped>(stopped);
    source = made.get();
    recording = std::make_unique<Recording>(site(), std::move(made));
    EXPECT_TRUE(source->isStarted);
    EXPECT_FALSE(stopped);
    recording.reset();
    EXPECT_TRUE(stopped);
}

TEST_F(RecordingTest, AFileThatIsNoSiteIsRefused)
{
    QFile file(site());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("time,value\n");
    file.close();
    EXPECT_THROW(begin(), plotix::ReportableError);
}

}  // namespace
