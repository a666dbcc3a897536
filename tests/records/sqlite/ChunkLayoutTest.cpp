#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

namespace {

using plotix::ReportableError;

constexpr std::size_t kChunk = 16384;
const auto kMissing = std::nullopt;

/// Into which chunks records go, and what is wrong with chunks when they are read.
class ChunkLayoutTest : public ArchiveFixture {};

TEST_F(ChunkLayoutTest, ALateRecordRewritesOneChunkOnly)
{
    store(ramp(air, 0, 4 * kChunk));
    const qint64 before = ask("SELECT count(*) FROM chunk");
    store(block({100.5}, {column(air, {1})}));
    EXPECT_EQ(before, 4);
    EXPECT_EQ(ask("SELECT count(*) FROM chunk"), 5);
    EXPECT_EQ(ask("SELECT count(*) FROM chunk WHERE id IN (2, 3, 4)"), 3);
}

TEST_F(ChunkLayoutTest, RecordsOneByOneDoNotLeaveOneChunkEach)
{
    for (int i = 0; i < 100; ++i)
        store(block({static_cast<double>(i)}, {column(air, {i})}));
    EXPECT_EQ(times().size(), 100U);
    EXPECT_LE(ask("SELECT count(*) FROM chunk"), 7);
}

TEST_F(ChunkLayoutTest, LongRunsFillTheirChunks)
{
    for (int i = 0; i < 10; ++i)
        store(ramp(air, i * 10000.0, 10000));
    EXPECT_EQ(times().size(), 100000U);
    EXPECT_LE(ask("SELECT count(*) FROM chunk"), 8);
    EXPECT_EQ(ask("SELECT max(n) FROM chunk"), qint64(kChunk));
}

TEST_F(ChunkLayoutTest, ProgressIsToldWithEachChunk)
{
    store(ramp(air, 0, 3 * kChunk));
    std::vector<double> seen;
    opened()->read(agent, std::vector{air}, {}, {}, [&](double fraction) {
        seen.push_back(fraction);
        return true;
    });
    EXPECT_EQ(seen.front(), 0);
    EXPECT_EQ(seen.back(), 1);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_GE(seen.size(), 4U);
}

TEST_F(ChunkLayoutTest, SegmentsOfTheWrongLengthAreFoundWhenRead)
{
    store(ramp(air, 0, 2000));
    run("UPDATE segment SET data = x'00' WHERE id % 1048576 = 1");
    EXPECT_EQ(times().size(), 2000U);
    EXPECT_THROW(read({air}), ReportableError);
    run("UPDATE segment SET data = zeroblob(16000)");
    EXPECT_THROW(read({}), ReportableError);
    run("DELETE FROM segment");
    EXPECT_THROW(read({}), ReportableError);
}

TEST_F(ChunkLayoutTest, ImpossibleChunksAreFoundWhenRead)
{
    store(ramp(air, 0, 2000));
    run("UPDATE chunk SET n = 1000000000000");
    EXPECT_THROW(read({air}), ReportableError);
    run("UPDATE chunk SET n = -1");
    EXPECT_THROW(read({air}), ReportableError);
}

TEST_F(ChunkLayoutTest, ImpossibleChunksAreFoundWhenALateRecordBelongsIntoThem)
{
    store(ramp(air, 0, 2000));
    for (const char* sql : {"UPDATE chunk SET n = 1125899906842624", "UPDATE chunk SET n = 0"}) {
        run(sql);
        EXPECT_THROW(store(ramp(air, 5, 1)), ReportableError) << sql;
    }
}

TEST_F(ChunkLayoutTest, ValidityOfTheWrongLengthIsFoundWhenRead)
{
    store(ramp(air, 0, 2000));
    store(block({1, 2}, {column(air, {kMissing, 5})}));
    run("UPDATE segment SET valid = x'0000' WHERE valid IS NOT NULL");
    EXPECT_THROW(read({air}), ReportableError);
}

}  // namespace
