#include "base/ReportableError.h"
#include "hostapp/document/HandingOver.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/document/SiteSchema.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();

RecordBlock blockOf(const std::vector<double>& times, const std::vector<double>& first,
                    const std::vector<double>& second)
{
    RecordBlock block{SharedArray<double>::fromVector(std::vector(times)), {}};
    RowId place = 0;
    for (const std::vector<double>& values : {first, second}) {
        std::vector<std::uint64_t> valid((times.size() + 63) / 64, 0);
        for (std::size_t i = 0; i < values.size(); ++i)
            valid[i / 64] |= std::uint64_t{!std::isnan(values[i])} << (i % 64);
        block.columns.push_back({++place, SharedArray<double>::fromVector(std::vector(values)),
                                 ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid)))});
    }
    return block;
}

/// What waits for a site; a file in the place of one on a server, which takes the same way.
class WaitingRecordsTest : public testing::Test {
protected:
    WaitingRecordsTest() { createSiteFile(site, QStringLiteral("plant")); }

    void begin()
    {
        waiting.reset();
        waiting = std::make_shared<WaitingRecords>(site, agent.name);
    }
    void keep(double first, int count)
    {
        std::vector<double> times, values, others;
        for (int i = 0; i < count; ++i) {
            times.push_back(first + i);
            values.push_back(std::sqrt(first + i));
            others.push_back(i % 3 == 0 ? kAbsent : -0.0);
        }
        waiting->keep(agent, blockOf(times, values, others));
    }
    void handOver()
    {
        HandingOver handing(site, waiting);
        while (handing.store())
            handing.settle();
    }
    /// Of the site: of the first property, where it is valid.
    std::vector<std::pair<double, double>> stored()
    {
        const auto document = SiteDocument::open(site);
        const auto there = document->agentNamed(agent.name);
        std::vector<RowId> properties;
        for (const auto& property : there->siteProperties())
            properties.push_back(property->description().id);
        const RecordBlock block = *document->records()->read(there->id(), properties, {}, {});
        std::vector<std::pair<double, double>> found;
        for (std::size_t i = 0; i < block.times.size(); ++i)
            if (block.columns[0].validity.isValid(i))
                found.emplace_back(block.times[i], block.columns[0].values[i]);
        amendments = document->records()->amendments(there->id(), properties).size();
        return found;
    }
    void storeThere(const RecordBlock& block) { AgentAppender(site, agent).append(block); }

    QTemporaryDir folder;
    const QString site = folder.filePath("plant.desk.plotix");
    const RecordedAgent agent{QStringLiteral("Boiler 1/2"),
                              {{QStringLiteral("Heat"), QStringLiteral("°C")}, {"Flow", {}}}};
    std::shared_ptr<WaitingRecords> waiting;
    std::size_t amendments = 0;
};

TEST_F(WaitingRecordsTest, NothingWaitsAtFirstAndNoFileIsThere)
{
    begin();
    EXPECT_EQ(waiting->count(), 0U);
    EXPECT_FALSE(QFile::exists(waiting->path()));
    EXPECT_FALSE(waiting->oldest());
}

TEST_F(WaitingRecordsTest, WhatIsKeptIsThereForTheNextProgramBitForBit)
{
    begin();
    waiting->keep(agent, blockOf({1, 2}, {0.1, kAbsent}, {-0.0, 5}));
    begin();
    EXPECT_EQ(waiting->count(), 2U);
    const auto batch = waiting->oldest();
    ASSERT_TRUE(batch);
    EXPECT_EQ(batch->agent, agent);
    EXPECT_EQ(batch->byPlace.columns[0].values[0], 0.1);
    EXPECT_FALSE(batch->byPlace.columns[0].validity.isValid(1));
    EXPECT_TRUE(std::signbit(batch->byPlace.columns[1].values[0]));
}

TEST_F(WaitingRecordsTest, TheFileIsASite)
{
    begin();
    keep(100, 5);
    const auto document = SiteDocument::open(waiting->path());
    const auto there = document->agentNamed(agent.name);
    ASSERT_TRUE(there);
    EXPECT_EQ(there->siteProperties().front()->unit(), QStringLiteral("°C"));
    EXPECT_EQ(document->records()->extent(there->id()), (RecordExtent{100, 104}));
}

TEST_F(WaitingRecordsTest, ASecondProgramIsRefused)
{
    begin();
    EXPECT_THROW(WaitingRecords(site, agent.name), ReportableError);
    EXPECT_NO_THROW(WaitingRecords(site, QStringLiteral("Another")));
}

TEST_F(WaitingRecordsTest, OneThatIsLargeEnoughTakesNoMore)
{
    begin();
    keep(1, 1);
    qputenv("PLOTIX_WAITING_LIMIT", "1 MB");
    try {
        for (int i = 0; i < 200; ++i)
            keep(100 + 1000 * i, 1000);
        FAIL() << "it grows without end";
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains("as large as it may be")) << error.message().toStdString();
    }
    qunsetenv("PLOTIX_WAITING_LIMIT");
    const std::size_t kept = waiting->count();
    begin();
    EXPECT_EQ(waiting->count(), kept);
    EXPECT_GT(kept, 1U);
}

TEST_F(WaitingRecordsTest, ATakenAwayFileIsMadeAnew)
{
    begin();
    keep(1, 1);
    ASSERT_TRUE(QFile::remove(waiting->path()));
    keep(2, 1);
    EXPECT_EQ(waiting->count(), 1U);
}

TEST_F(WaitingRecordsTest, AFileWhoseMakingWasInterruptedIsMadeAnew)
{
    begin();
    QFile unfinished(waiting->path() + ".new");
    ASSERT_TRUE(unfinished.open(QIODevice::WriteOnly));
    unfinished.close();
    createSiteFile(waiting->path(), QStringLiteral("without an agent"));
    begin();
    keep(2, 1);
    EXPECT_EQ(waiting->count(), 1U);
}

TEST_F(WaitingRecordsTest, BatchesAreInOrderAndFew)
{
    begin();
    keep(1, 12'500);
    const auto batch = waiting->oldest();
    EXPECT_EQ(batch->byPlace.times[0], 1);
    EXPECT_LE(batch->byPlace.times.size(), 5000U);
    waiting->remove(*batch);
    EXPECT_EQ(waiting->count(), 12'500 - batch->byPlace.times.size());
    EXPECT_EQ(waiting->oldest()->byPlace.times[0], 1.0 + static_cast<double>(batch->byPlace.times.size()));
}

TEST_F(WaitingRecordsTest, ARecordWithoutAnyValueIsHandedOverToo)
{
    begin();
    waiting->keep(agent, blockOf({1, 2, 3}, {1, kAbsent, 3}, {1, kAbsent, 3}));
    handOver();
    EXPECT_EQ(stored().size(), 2U);
    EXPECT_EQ(SiteDocument::open(site)->records()->overview(1, {}).records(), 3U);
    EXPECT_EQ(waiting->count(), 0U);
}

TEST_F(WaitingRecordsTest, HandingOverMakesTheAgentAndLeavesNoFile)
{
    begin();
    keep(1, 20'000);
    handOver();
    const auto there = stored();
    ASSERT_EQ(there.size(), 20'000U);
    for (std::size_t i = 0; i < there.size(); ++i)
        ASSERT_EQ(there[i], (std::pair(1.0 + static_cast<double>(i), std::sqrt(1.0 + static_cast<double>(i)))));
    EXPECT_EQ(amendments, 0U);
    EXPECT_FALSE(QFile::exists(waiting->path()));
}

TEST_F(WaitingRecordsTest, WhatWasStoredBeforeAnInterruptionIsNotStoredAgain)
{
    begin();
    keep(1, 10);
    storeThere(waiting->oldest()->byPlace);
    begin();
    keep(11, 3);
    HandingOver handing(site, waiting);
    EXPECT_EQ(handing.store()->others, 0U);
    handing.settle();
    EXPECT_EQ(stored().size(), 13U);
    EXPECT_EQ(amendments, 0U);
    EXPECT_EQ(waiting->count(), 0U);
}

TEST_F(WaitingRecordsTest, WhatTheSiteHasAtATimeStays)
{
    begin();
    storeThere(blockOf({2}, {77}, {1}));
    keep(1, 3);
    EXPECT_EQ(HandingOver(site, waiting).store()->others, 1U);
    EXPECT_EQ(stored(), (std::vector<std::pair<double, double>>{{1, 1}, {2, 77}, {3, std::sqrt(3.0)}}));
}

TEST_F(WaitingRecordsTest, WhatCannotBeHandedOverWaitsOn)
{
    begin();
    keep(1, 3);
    ASSERT_TRUE(QFile::rename(site, site + ".away"));
    QDir(folder.path()).mkdir(QFileInfo(site).fileName());
    EXPECT_THROW(HandingOver(site, waiting).store(), ReportableError);
    EXPECT_EQ(waiting->count(), 3U);
}

TEST_F(WaitingRecordsTest, WhatIsLeftIsFoundAndHandedOver)
{
    begin();
    keep(1, 3);
    waiting.reset();
    const auto files = waitingBeside(site);
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].agentName, agent.name);
    EXPECT_EQ(files[0].records, 3U);
    EXPECT_EQ(handOverLeft(site).records, 3U);
    EXPECT_TRUE(waitingBeside(site).empty());
}

TEST_F(WaitingRecordsTest, WhatARecorderHasIsLeftToIt)
{
    begin();
    keep(1, 3);
    EXPECT_EQ(handOverLeft(site).records, 0U);
    EXPECT_EQ(waiting->count(), 3U);
}

}  // namespace

}  // namespace plotix
