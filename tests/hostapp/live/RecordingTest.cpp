#include "hostapp/live/Recording.h"

#include "base/ReportableError.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/document/SiteEditing.h"
#include "tests/hostapp/live/MadeUpSource.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

using plotix::Recording;
using plotix::RecordingStatus;
using State = plotix::RecordingStatus::State;

class RecordingTest : public testing::Test {
protected:
    QString site() const { return folder.filePath("computer.plotix"); }

    void begin()
    {
        recording.reset();
        auto made = std::make_unique<MadeUpSource>();
        source = made.get();
        recording = std::make_unique<Recording>(site(), std::move(made));
    }
    RecordingStatus record(double time) { return recording->record(time); }

    std::vector<double> times() { return column("Count", true); }
    std::vector<double> values(const char* name) { return column(name, false); }

    QTemporaryDir folder;
    MadeUpSource* source = nullptr;
    std::unique_ptr<Recording> recording;

private:
    /// Times, or the values that are valid.
    std::vector<double> column(const char* name, bool wantsTimes)
    {
        const auto document = plotix::SiteDocument::open(site());
        const auto agent = document->agentNamed("Made Up");
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

class ReplacedSiteTest : public RecordingTest {
protected:
    /// Moves a site with one record at 7 s over the one that is recorded into.
    void replace()
    {
        const QString other = folder.filePath("other.plotix");
        {
            Recording small(other, std::make_unique<MadeUpSource>());
            small.record(7);
        }
        ASSERT_EQ(std::rename(qPrintable(other), qPrintable(site())), 0);
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files); }
    QString kept() const
    {
        const QStringList found = files().filter("replaced");
        return found.size() == 1 ? folder.filePath(found.front()) : QString();
    }
    static std::size_t recordsIn(const QString& file)
    {
        const auto document = plotix::SiteDocument::open(file);
        return document->records()->overview(document->agentNamed("Made Up")->id(), {}).records();
    }
};

TEST_F(ReplacedSiteTest, RecordingIsOverWithOneLineThatSaysWhy)
{
    begin();
    record(1);
    replace();
    const RecordingStatus status = record(2);
    EXPECT_EQ(status.state, State::SiteReplaced);
    EXPECT_TRUE(status.message.contains("was replaced by another file")) << status.message.toStdString();
    EXPECT_EQ(record(3).state, State::SiteReplaced);
    EXPECT_EQ(status.stored, 1U);
}

TEST_F(ReplacedSiteTest, TheFileThatCameStaysAsItIs)
{
    begin();
    for (int second = 10; second < 3000; ++second)
        record(second);
    replace();
    record(3000);
    recording.reset();
    EXPECT_EQ(times(), std::vector<double>{7});
    EXPECT_TRUE(plotix::recordsOfSite(site())->verify().isSound());
}

TEST_F(ReplacedSiteTest, EverythingAcknowledgedIsKeptBesideIt)
{
    begin();
    for (int second = 10; second < 40; ++second)
        record(second);
    replace();
    const RecordingStatus status = record(40);
    recording.reset();
    ASSERT_FALSE(kept().isEmpty()) << files().join(' ').toStdString();
    EXPECT_TRUE(status.message.contains(QFileInfo(kept()).fileName())) << status.message.toStdString();
    EXPECT_EQ(recordsIn(kept()), 30U);
}

TEST_F(ReplacedSiteTest, ItIsNoticedWithoutARecordToStore)
{
    begin();
    record(1);
    EXPECT_EQ(recording->watch().state, State::Recording);
    replace();
    EXPECT_EQ(recording->watch().state, State::SiteReplaced);
    EXPECT_EQ(recordsIn(kept()), 1U);
}

TEST_F(ReplacedSiteTest, AFileThatWasMovedAwayFirstHasAllAndNoCopyIsMade)
{
    begin();
    record(1);
    const QString elsewhere = folder.filePath("moved.plotix");
    ASSERT_TRUE(QFile::rename(site(), elsewhere));
    record(2);
    replace();
    EXPECT_EQ(record(3).state, State::SiteReplaced);
    recording.reset();
    EXPECT_EQ(files().filter("replaced"), QStringList());
    EXPECT_EQ(recordsIn(elsewhere), 1U);
    EXPECT_EQ(times(), std::vector<double>{7});
}

TEST_F(ReplacedSiteTest, AFileThatWasRemovedFirstIsKeptToo)
{
    begin();
    record(1);
    ASSERT_TRUE(QFile::remove(site()));
    record(2);
    replace();
    EXPECT_EQ(record(3).state, State::SiteReplaced);
    EXPECT_EQ(recordsIn(kept()), 1U);
}

// Its log would be read with the wrong file.
TEST_F(ReplacedSiteTest, TheNewFileIsNotOpenedWhileSomebodyHasTheOldOne)
{
    begin();
    record(1);
    replace();
    EXPECT_THROW(plotix::SiteDocument::open(site()), plotix::ReportableError);
    recording.reset();
    EXPECT_NO_THROW(plotix::SiteDocument::open(site()));
}

// A record at the time of a stored one would replace it, so nothing is recorded until the clock is past that time.
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
