#include "hostapp/live/MachineRecording.h"

#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "tests/hostapp/live/sources/computer/MadeUpMachine.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using plotix::MachineRecording;
using plotix::RecordingStatus;
using State = plotix::RecordingStatus::State;

class MachineRecordingTest : public testing::Test {
protected:
    QString site() const { return folder.filePath("computer.plotix"); }

    void begin()
    {
        recording.reset();
        auto source = std::make_unique<MadeUpMachine>();
        machine = source.get();
        recording = std::make_unique<MachineRecording>(site(), std::move(source));
    }
    RecordingStatus record(double time) { return recording->record(time); }

    std::vector<double> times() { return column("Load 1 Minute", true); }
    std::vector<double> values(const char* name) { return column(name, false); }

    QTemporaryDir folder;
    MadeUpMachine* machine = nullptr;
    std::unique_ptr<MachineRecording> recording;

private:
    /// Times, or the values that are valid.
    std::vector<double> column(const char* name, bool wantsTimes)
    {
        const auto document = plotix::SiteDocument::open(site());
        const auto agent = document->agentNamed(plotix::kMachineAgentName);
        for (const auto& property : agent->siteProperties())
            if (property->name() == QLatin1String(name)) {
                const plotix::RowId id = property->description().id;
                const auto block = plotix::recordsOfSite(site())->read(agent->id(), std::span(&id, 1), {}, {});
                std::vector<double> found;
                for (std::size_t i = 0; i < block->times.size(); ++i)
                    if (wantsTimes)
                        found.push_back(block->times[i]);
                    else if (block->columns[0].validity.isValid(i))
                        found.push_back(block->columns[0].values[i]);
                return found;
            }
        ADD_FAILURE() << "there is no " << name;
        return {};
    }
};

TEST_F(MachineRecordingTest, MakesTheSiteTheAgentAndItsProperties)
{
    begin();
    const auto agent = plotix::SiteDocument::open(site())->agentNamed("This Computer");
    ASSERT_TRUE(agent);
    ASSERT_EQ(agent->siteProperties().size(), 11U);
    EXPECT_EQ(agent->siteProperties().front()->name(), "Processor");
    EXPECT_EQ(agent->siteProperties().back()->unit(), "°C");
}

TEST_F(MachineRecordingTest, EveryRecordIsStoredAtOnce)
{
    begin();
    for (int second = 100; second < 150; ++second) {
        const RecordingStatus status = record(second);
        ASSERT_EQ(status.state, State::Recording);
        ASSERT_EQ(status.last, second);
    }
    EXPECT_EQ(times().size(), 50U);
    EXPECT_EQ(values("Load 1 Minute").front(), 2);  // the first look was for the properties
    EXPECT_EQ(values("Load 1 Minute").back(), 51);
}

TEST_F(MachineRecordingTest, GoesOnBehindWhatIsThere)
{
    begin();
    record(100);
    begin();
    EXPECT_EQ(record(101).stored, 1U);
    EXPECT_EQ(times(), (std::vector<double>{100, 101}));
}

TEST_F(MachineRecordingTest, ASensorThatGoesHasNoValueMeanwhile)
{
    begin();
    record(1);
    machine->sensorIsThere = false;
    record(2);
    machine->sensorIsThere = true;
    record(3);
    EXPECT_EQ(values("Temperature Core").size(), 2U);
    EXPECT_EQ(times().size(), 3U);
}

TEST_F(MachineRecordingTest, RecordsWaitWhileAnotherProgramWrites)
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

TEST_F(MachineRecordingTest, WhatWaitsIsStoredAtTheEndWithoutAnotherRecord)
{
    begin();
    {
        const auto other = plotix::recordsOfSite(site())->begin();
        record(1);
    }
    EXPECT_EQ(recording->storeWaiting().state, State::Recording);
    EXPECT_EQ(times(), std::vector<double>{1});
}

TEST_F(MachineRecordingTest, AFileThatIsGoneIsNotWrittenTo)
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

// A record at a time that is taken would replace one that is stored, so nothing is recorded until the clock is past it.
TEST_F(MachineRecordingTest, AClockThatWasSetBackReplacesNothing)
{
    begin();
    record(100);
    const double before = values("Load 1 Minute").front();
    const RecordingStatus status = record(40);
    EXPECT_EQ(status.state, State::ClockSetBack);
    EXPECT_TRUE(status.message.contains("1970-01-01T00:01:40")) << status.message.toStdString();
    EXPECT_EQ(record(100).state, State::ClockSetBack);
    EXPECT_EQ(record(101).state, State::Recording);
    EXPECT_EQ(times(), (std::vector<double>{100, 101}));
    EXPECT_EQ(values("Load 1 Minute").front(), before);
}

TEST_F(MachineRecordingTest, AClockBehindAnEarlierRecordingIsNoticedToo)
{
    begin();
    record(100);
    begin();
    EXPECT_EQ(record(99).state, State::ClockSetBack);
}

TEST_F(MachineRecordingTest, AFileThatIsNoSiteIsRefused)
{
    QFile file(site());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("time,value\n");
    file.close();
    EXPECT_THROW(begin(), plotix::ReportableError);
}

}  // namespace
