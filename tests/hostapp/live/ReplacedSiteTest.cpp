#include "base/ReportableError.h"
#include "tests/hostapp/live/RecordingFixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstdio>

namespace {

using plotix::Recording;
using plotix::RecordingStatus;
using State = plotix::RecordingStatus::State;

class ReplacedSiteTest : public RecordingFixture {
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
}  // namespace
