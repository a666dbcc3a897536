#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <numeric>
#include <random>

namespace {

using plotix::CompactionResult;

constexpr std::size_t kChunk = 16384;

class ArchiveCompactionTest : public ArchiveFixture {
protected:
    /// Chunks of 9000, 8999, … records: none is merged with the shorter one behind it. Records at 0, 1, 2, …; answers
    /// how many.
    std::size_t storeShortChunks(std::size_t count)
    {
        std::size_t stored = 0;
        for (std::size_t i = 0; i < count; ++i) {
            store(ramp(air, static_cast<double>(stored), 9000 - i));
            stored += 9000 - i;
        }
        EXPECT_EQ(chunks(), static_cast<qint64>(count));
        return stored;
    }
    CompactionResult compact(std::optional<double> dropBefore = {}, const plotix::ArchiveProgress& progress = {})
    {
        return opened()->compact({dropBefore, true}, progress);
    }
    qint64 chunks() { return ask("SELECT count(*) FROM chunk"); }
    void expectRamp(std::size_t first, std::size_t count)
    {
        std::vector<double> wanted(count);
        std::iota(wanted.begin(), wanted.end(), static_cast<double>(first));
        EXPECT_EQ(times(), wanted);
        const plotix::RecordBlock records = read({air});
        EXPECT_TRUE(std::equal(wanted.begin(), wanted.end(), records.columns[0].values.span().begin()));
        const plotix::VerificationResult sound = opened()->verify();
        EXPECT_TRUE(sound.isSound()) << sound.findings.join('\n').toStdString();
    }
};

TEST_F(ArchiveCompactionTest, AnEmptySiteStaysEmpty)
{
    EXPECT_EQ(compact().records, 0U);
    EXPECT_EQ(times(), std::vector<double>{});
}

TEST_F(ArchiveCompactionTest, ShortChunksAndTheTailBecomeFullOnes)
{
    const std::size_t stored = storeShortChunks(6);
    opened()->appender()->append(agent, ramp(air, static_cast<double>(stored), 500));
    const CompactionResult result = compact();
    EXPECT_EQ(result.chunksBefore, 6U);
    EXPECT_EQ(result.chunksAfter, 4U);
    EXPECT_EQ(result.records, stored + 500);
    EXPECT_EQ(ask("SELECT count(*) FROM chunk WHERE n = 16384"), 3);
    EXPECT_EQ(ask("SELECT count(*) FROM tail"), 0);
    expectRamp(0, stored + 500);
}

TEST_F(ArchiveCompactionTest, ManyTransactionsJoinAsOne)
{
    const std::size_t stored = storeShortChunks(70);
    EXPECT_EQ(compact().chunksAfter, (stored + kChunk - 1) / kChunk);
    expectRamp(0, stored);
}

TEST_F(ArchiveCompactionTest, WhatIsCompactIsLeftAlone)
{
    store(ramp(air, 0, 5 * kChunk + 3000));
    const qint64 last = ask("SELECT max(id) FROM chunk");
    compact();
    EXPECT_EQ(ask("SELECT max(id) FROM chunk"), last);
    expectRamp(0, 5 * kChunk + 3000);
}

TEST_F(ArchiveCompactionTest, OldRecordsAreDroppedForGood)
{
    store(ramp(air, 0, 3 * kChunk));
    opened()->appender()->append(agent, ramp(air, 3 * kChunk, 10));
    const CompactionResult result = compact(20'000);
    EXPECT_EQ(result.dropped, 20'000U);
    EXPECT_EQ(result.records, 3 * kChunk + 10 - 20'000);
    expectRamp(20'000, 3 * kChunk + 10 - 20'000);
}

TEST_F(ArchiveCompactionTest, EverythingMayBeTooOld)
{
    store(ramp(air, 0, 20'000));
    opened()->appender()->append(agent, ramp(air, 30'000, 10));
    EXPECT_EQ(compact(1e9).dropped, 20'010U);
    EXPECT_EQ(times(), std::vector<double>{});
    EXPECT_EQ(chunks(), 0);
}

TEST_F(ArchiveCompactionTest, TheFileShrinks)
{
    std::mt19937_64 random(1);
    std::vector<double> stamps(200'000), noise(stamps.size());
    std::iota(stamps.begin(), stamps.end(), 0.0);
    for (double& value : noise)
        value = std::bit_cast<double>(random() >> 2);
    store(block(stamps, {{air, plotix::SharedArray<double>::fromVector(noise), {}}}));
    const CompactionResult result = compact(150'000);
    EXPECT_LT(result.bytesAfter, result.bytesBefore / 2);
    EXPECT_EQ(result.bytesAfter, QFileInfo(file()).size());
}

TEST_F(ArchiveCompactionTest, StoppedItLeavesEveryRecord)
{
    const std::size_t stored = storeShortChunks(70);
    int calls = 0;
    const CompactionResult result = compact({}, [&](double) { return ++calls < 2; });
    EXPECT_TRUE(result.stopped);
    EXPECT_EQ(calls, 2);
    EXPECT_LT(result.chunksAfter, 70U);
    expectRamp(0, stored);
}

TEST_F(ArchiveCompactionTest, ProgressRisesToOne)
{
    storeShortChunks(70);
    std::vector<double> seen;
    compact({}, [&](double fraction) {
        seen.push_back(fraction);
        return true;
    });
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(seen.back(), 1);
    EXPECT_GE(seen.size(), 3U);
}

TEST_F(ArchiveCompactionTest, ReadersAndAnAppenderWorkBesideIt)
{
    const std::size_t stored = storeShortChunks(10);
    const auto reader = opened();
    const auto appender = opened()->appender();
    appender->append(agent, ramp(air, static_cast<double>(stored), 1));
    compact();
    EXPECT_EQ(countIn(*reader, agent), stored + 1);
    appender->append(agent, ramp(air, static_cast<double>(stored) + 1, 1));
    EXPECT_EQ(reader->read(agent, std::vector{air}, {}, {})->times.size(), stored + 2);
    expectRamp(0, stored + 2);
}

TEST_F(ArchiveCompactionTest, ADamagedChunkIsNotTouched)
{
    const std::size_t stored = storeShortChunks(2);
    run("UPDATE segment SET data = x'00' WHERE id % 1048576 = 1");
    EXPECT_THROW(compact(), plotix::ReportableError);
    EXPECT_EQ(times().size(), stored);
}

TEST_F(ArchiveCompactionTest, MoreMemoryThanAllowedIsAnErrorAndNothingChanges)
{
    store(ramp(air, 0, 20'000));
    plotix::CompactionRequest request;
    request.dropBefore = 5;
    request.memory = 100'000;
    EXPECT_THROW(opened()->compact(request), plotix::ReportableError);
    EXPECT_EQ(count(), 20'000U);
    request.memory = 1'000'000'000;
    EXPECT_EQ(opened()->compact(request).dropped, 5U);
}

TEST_F(ArchiveCompactionTest, AReadOnlyFileIsRefused)
{
    QFile::setPermissions(file(), QFile::ReadOwner);
    EXPECT_THROW(compact(), plotix::ReportableError);
}

}  // namespace
