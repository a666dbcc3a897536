#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <QtCore/QFile>

#include <cmath>
#include <limits>

namespace {

using plotix::VerificationResult;

class ArchiveVerificationTest : public ArchiveFixture {
protected:
    /// Two chunks and three rows.
    ArchiveVerificationTest()
    {
        store(ramp(air, 0, 16384 + 4000));
        opened()->appender()->append(agent, ramp(air, 30'000, 3));
    }
    VerificationResult verify() { return opened()->verify(); }

    /// After a change made by hand, exactly one finding, with these words.
    void expectFound(const char* sql, const char* words)
    {
        run(sql);
        const QStringList findings = verify().findings;
        ASSERT_EQ(findings.size(), 1) << findings.join('\n').toStdString();
        EXPECT_TRUE(findings.front().contains(words)) << findings.front().toStdString();
    }
};

TEST_F(ArchiveVerificationTest, ASoundArchiveHasNoFindings)
{
    const VerificationResult result = verify();
    EXPECT_TRUE(result.isSound()) << result.findings.join('\n').toStdString();
    EXPECT_EQ(result.chunks, 2U);
    EXPECT_EQ(result.records, 16384U + 4000 + 3);
    EXPECT_EQ(result.values, result.records);
}

TEST_F(ArchiveVerificationTest, OddValuesAreSound)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::vector<double> stamps, odd;
    for (int i = 0; i < 3000; ++i) {
        stamps.push_back(i);
        odd.push_back(i % 5 == 0 ? std::nan("") : i % 5 == 1 ? infinity : i % 5 == 2 ? -infinity : -0.0);
    }
    store(block(stamps, {{wind, plotix::SharedArray<double>::fromVector(odd), {}}}));
    EXPECT_TRUE(verify().isSound());
}

TEST_F(ArchiveVerificationTest, ASegmentThatCannotBeRead)
{
    expectFound("UPDATE segment SET data = x'00' WHERE id = 1048576 + 1", "cannot be read");
}

TEST_F(ArchiveVerificationTest, AMissingSegment)
{
    expectFound("DELETE FROM segment WHERE id = 1048576 + 1", "summaries of values that are not there");
}

TEST_F(ArchiveVerificationTest, MissingTimes)
{
    expectFound("DELETE FROM segment WHERE id = 1048576", "no times");
}

TEST_F(ArchiveVerificationTest, AMissingSummary)
{
    expectFound("DELETE FROM summary WHERE id = 1048576 + 1", "no summary");
}

TEST_F(ArchiveVerificationTest, AnotherSummary)
{
    expectFound("UPDATE summary SET sum = sum + 1 WHERE id = 1048576 + 1", "another summary");
    expectFound("UPDATE summary SET sum = sum - 1, valid = valid - 1 WHERE id = 1048576 + 1", "another summary");
}

TEST_F(ArchiveVerificationTest, OtherTimesThanTheChunkSays)
{
    expectFound("UPDATE chunk SET t1 = t1 - 1 WHERE id = 1", "other times than it says");
}

TEST_F(ArchiveVerificationTest, ChunksThatOverlap)
{
    run("UPDATE chunk SET t0 = 16000 WHERE id = 2");
    EXPECT_TRUE(verify().findings.join(' ').contains("overlaps the one before it"));
}

TEST_F(ArchiveVerificationTest, AnImpossibleChunk)
{
    expectFound("UPDATE chunk SET n = 99999 WHERE id = 2", "impossible");
}

TEST_F(ArchiveVerificationTest, RowsThatBelongToNoChunk)
{
    expectFound("INSERT INTO segment VALUES(77 * 1048576, 0, NULL, x'')", "belong to no chunk");
}

TEST_F(ArchiveVerificationTest, ATailThatLiesAmongTheChunks)
{
    run("UPDATE chunk SET t1 = 40000 WHERE id = 2");
    EXPECT_TRUE(verify().findings.join(' ').contains("does not lie behind its chunks"));
}

TEST_F(ArchiveVerificationTest, ATailWithAMissingRow)
{
    expectFound("DELETE FROM tail WHERE id % 1048576 = 1", "makes no sense");
}

TEST_F(ArchiveVerificationTest, ValuesOfAnotherAgentsProperty)
{
    run("UPDATE property SET agent = 99");
    EXPECT_TRUE(verify().findings.join(' ').contains("not its agent's"));
}

TEST_F(ArchiveVerificationTest, DamageToTheDatabaseItself)
{
    QFile content(file());
    ASSERT_TRUE(content.open(QIODevice::ReadWrite));
    content.seek(content.size() - 3 * 16384);
    content.write(QByteArray(3 * 16384, '\x5A'));
    content.close();
    EXPECT_FALSE(verify().isSound());
}

TEST_F(ArchiveVerificationTest, ItCanBeStopped)
{
    const VerificationResult result = opened()->verify([](double) { return false; });
    EXPECT_TRUE(result.stopped);
    EXPECT_FALSE(result.isSound());
}

TEST_F(ArchiveVerificationTest, MoreMemoryThanAllowedIsAnErrorAndNoDamage)
{
    EXPECT_THROW(opened()->verify({}, 100'000), plotix::ReportableError);
    EXPECT_TRUE(opened()->verify({}, 100'000'000).isSound());
}

TEST_F(ArchiveVerificationTest, AFileThatIsNoSiteIsAnError)
{
    EXPECT_THROW(plotix::SqliteRecordStore(folder.filePath("missing.plotix"), SqliteFile::schema()).verify({}, 0),
                 plotix::ReportableError);
}

}  // namespace
