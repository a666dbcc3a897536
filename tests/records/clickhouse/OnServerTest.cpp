#include "base/ReportableError.h"
#include "records/clickhouse/AgentWriting.h"
#include "records/clickhouse/ServerStamps.h"
#include "records/clickhouse/WritersTurn.h"
#include "records/columns/ColumnFormat.h"
#include "tests/records/clickhouse/RecordsOnServerFixture.h"

#include <QtTest/QTest>

#include <cmath>
#include <thread>

namespace plotix {

namespace {

TEST_F(RecordsOnServerTest, WhatIsAppendedBecomesAChunkOnceItFillsOne)
{
    append(*opened()->appender(), 0, 17'000, 500);
    EXPECT_EQ(chunks(), 1U);
    EXPECT_EQ(count(), 17'000U);
    EXPECT_EQ(values(air, 16'383, 16'384), (Values{16'383, 16'384}));
}

TEST_F(RecordsOnServerTest, ALateRecordOverASealedChunkCountsAtOnce)
{
    const auto appender = opened()->appender();
    append(*appender, 0, 17'000, 500);
    appender->append(agent, block({100, 100.5}, {column(wind, {7, 8})}));
    EXPECT_EQ(values(wind, 99.5, 100.5), (Values{7, 8}));
    EXPECT_EQ(values(air, 100, 100), (Values{100}));
    EXPECT_EQ(count(), 17'001U);
}

TEST_F(RecordsOnServerTest, WhatACorrectionReplacedDoesNotComeBack)
{
    append(*opened()->appender(), 0, 17'000, 500);
    RecordBlock other = ramp(air, 100, 2'000);
    other.columns[0].values = SharedArray<double>::fromVector(std::vector<double>(2'000, -1));
    store(other);
    EXPECT_EQ(values(air, 99, 101), (Values{99, -1, -1}));
    opened()->compact({});
    EXPECT_EQ(values(air, 2'099, 2'100), (Values{-1, 2'100}));
}

TEST_F(RecordsOnServerTest, TwoWhoSealTheSameRecordsSpoilNothing)
{
    const auto appender = opened()->appender();
    append(*appender, 0, 16'000, 500);
    append(*appender, 16'000, 383, 383);
    appender->append(agent, ramp(air, 16'383, 10));
    const AgentReading::Rows before = rows();
    std::vector<std::thread> sealers;
    for (int i = 0; i < 2; ++i)
        sealers.emplace_back([this] {
            ServerConnection own(site->address(), {});
            AgentWriting(own, site->tables(), agent, 0).sealOneChunk([] {});
        });
    for (std::thread& sealer : sealers)
        sealer.join();
    EXPECT_EQ(count(), 16'393U);
    EXPECT_EQ(opened()->statistics(agent, air).valid, 16'393U);
    EXPECT_TRUE(opened()->verify().isSound());
    opened()->compact({});
    EXPECT_EQ(count(), 16'393U);
}

TEST_F(RecordsOnServerTest, WhatWasAppendedWhileAChunkWasSealedIsNotLost)
{
    const auto first = opened()->appender(), second = opened()->appender();
    append(*first, 0, 10'000, 500);
    second->append(agent, ramp(wind, 0, 5));
    append(*first, 10'000, 7'000, 500);
    // By a writer whose earlier records the chunk has taken in.
    second->append(agent, block({3}, {column(wind, {-3})}));
    EXPECT_EQ(values(wind, 2, 4), (Values{2, -3, 4}));
    opened()->compact({});
    EXPECT_EQ(values(wind, 2, 4), (Values{2, -3, 4}));
    EXPECT_EQ(chunks(), 2U);
}

TEST_F(RecordsOnServerTest, AClaimOfAProcessThatIsGoneIsForgotten)
{
    rowbinary::Writer row;
    row.add(stamps::day()).add(std::uint64_t{4711}).add(std::uint64_t{3}).add(std::uint8_t{1});
    server.insert("INSERT INTO " + site->tables().turns() + " (day, claim, renewed, state) FORMAT RowBinary",
                  row.bytes());
    store(ramp(air, 0, 10));
    EXPECT_EQ(count(), 10U);
}

/// A turn that others take for given up.
class LostTurnOnServerTest : public RecordsOnServerTest {
protected:
    void loseIt(ServerConnection& by)
    {
        const std::string turns = site->tables().turns();
        by.tell("INSERT INTO " + turns + " SELECT day, claim, renewed, 0 FROM " + turns);
    }

    WritersTurn turn{site, SiteOnServer::kHome, 1'000};
};

TEST_F(LostTurnOnServerTest, StoresNothingAnyMore)
{
    bool isStored = false;
    loseIt(server);
    EXPECT_THROW(turn.commit([&](ServerConnection&) { isStored = true; }), ReportableError);
    EXPECT_FALSE(isStored);
}

TEST_F(LostTurnOnServerTest, AcknowledgesNothingThatWasStoredMeanwhile)
{
    EXPECT_THROW(turn.commit([&](ServerConnection& quick) { loseIt(quick); }), ReportableError);
}

TEST_F(LostTurnOnServerTest, UntilItIsLostItStoresOnce)
{
    int stored = 0;
    EXPECT_NO_THROW(turn.commit([&](ServerConnection&) { ++stored; }));
    EXPECT_EQ(stored, 1);
}

TEST_F(RecordsOnServerTest, WhatWasDroppedStaysAwayWhereverOneWrites)
{
    store(ramp(air, 0, 10'000));
    ServerConnection own(site->address(), {});
    const std::uint64_t batch = stamps::number();
    EXPECT_EQ(AgentWriting(own, site->tables(), agent, batch).dropBefore(5'000), 5'000U);
    server.insert("INSERT INTO " + site->tables().batches() + " (batch) FORMAT RowBinary",
                  rowbinary::Writer().add(batch).bytes());
    const auto writer = opened()->begin();
    writer->remove(agent, std::vector{air}, 6'000, 6'000);
    writer->commit();
    EXPECT_EQ(extent()->first, 5'000);
    EXPECT_EQ(count(), 4'999U);
    EXPECT_EQ(opened()->overview(agent, {}, 9'000, 9'001).records(), 4'999U);
}

TEST_F(RecordsOnServerTest, CompactingAgainWritesNothing)
{
    for (int part = 0; part < 5; ++part)
        store(ramp(air, part * 10'000, 4'000));
    opened()->compact({});
    const std::uint64_t before = countIn(site->tables().chunks());
    EXPECT_EQ(opened()->compact({}).chunksAfter, 2U);
    EXPECT_EQ(countIn(site->tables().chunks()), before);
}

TEST_F(RecordsOnServerTest, CompactingDropsYoungRowsOfFormerDaysWhichChunksHaveTakenIn)
{
    append(*opened()->appender(), 0, 3'000, 500);
    const std::string young = site->tables().young();
    const std::string columns = "agent, time, writer, number, place, version, batch, properties, values, valid";
    server.tell("INSERT INTO " + young + " (" + columns + ", day) SELECT " + columns + ", 1000 FROM " + young);
    EXPECT_EQ(countIn(young), 6'000U);
    opened()->compact({});
    // Replicas do so in their own time.
    EXPECT_TRUE(QTest::qWaitFor([&] { return countIn(young) == 3'000U; }, 20'000));
    EXPECT_EQ(count(), 3'000U);
}

/// Rows of chunks again, as if they had been stored earlier, or by a batch that never counted.
class SweptOnServerTest : public RecordsOnServerTest {
protected:
    SweptOnServerTest()
    {
        store(ramp(air, 0, 32'768));
        store(ramp(air, 0, 32'768));
    }
    /// The chunks of the agent, as another one's.
    void copyChunks(RowId to, std::uint64_t daysEarlier, const std::string& batch)
    {
        const std::string columns = "upto, codec, valid, data, count, minimum, maximum, sum, whole, runs";
        server.tell("INSERT INTO " + table +
                    " (agent, property, t0, t1, begin, end, n, chunk, version, batch, writers, " + columns +
                    ") SELECT " + std::to_string(to) + ", property, t0, t1, begin, end, n, chunk, version - " +
                    std::to_string(daysEarlier * 86'400'000'000) + ", " + batch + ", writers, " + columns + " FROM " +
                    table + " WHERE agent = " + std::to_string(agent));
    }
    std::uint64_t chunksOf(RowId of)
    {
        return countIn(table + " WHERE property = 0 AND agent = " + std::to_string(of));
    }
    bool comesTo(RowId of, std::uint64_t chunks)
    {
        // Replicas leave what was inserted last as it is, until something else is.
        copyChunks(999, 0, "batch");
        return QTest::qWaitFor([&] { return chunksOf(of) == chunks; }, 20'000);
    }
    static std::string batchOf(std::uint64_t daysAgo)
    {
        return std::to_string(stamps::number() - ((daysAgo * 86'400) << stamps::kRandomBits));
    }

    const std::string table = site->tables().chunks();
};

TEST_F(SweptOnServerTest, ChunksThatOthersHaveLainOverForDaysAreTakenAway)
{
    copyChunks(77, 3, "batch");
    EXPECT_EQ(chunksOf(77), 4U);
    opened()->compact({});
    EXPECT_TRUE(comesTo(77, 2)) << chunksOf(77);
    EXPECT_EQ(opened()->overview(77, {}).records(), 32'768U);
}

TEST_F(SweptOnServerTest, ThoseThatSomebodyMayStillReadStay)
{
    copyChunks(77, 3, "batch");
    opened()->compact({});
    EXPECT_TRUE(comesTo(77, 2));
    EXPECT_EQ(chunksOf(agent), 4U);
}

TEST_F(SweptOnServerTest, FewAreNotWorthWritingTheOthersAnew)
{
    copyChunks(77, 3, "batch");
    for (RowId other = 100; other < 106; ++other)
        copyChunks(other, 0, "batch");
    opened()->compact({});
    EXPECT_FALSE(QTest::qWaitFor([&] { return chunksOf(77) != 4; }, 1'500));
}

TEST_F(SweptOnServerTest, WhatABatchOfFormerDaysNeverFinishedIsTakenAway)
{
    copyChunks(77, 0, batchOf(3));
    copyChunks(78, 0, batchOf(0));
    opened()->compact({});
    EXPECT_TRUE(comesTo(77, 0)) << chunksOf(77);
    EXPECT_EQ(chunksOf(78), 4U);
}

TEST_F(RecordsOnServerTest, YoungRowsThatAChunkHasTakenInDoNotCome)
{
    append(*opened()->appender(), 0, 17'000, 500);
    EXPECT_EQ(countIn(site->tables().young()), 17'000U);
    EXPECT_EQ(rows().young.size(), 17'000U - 16'384U);
}

TEST_F(RecordsOnServerTest, ALaterRecordCountsWhateverTheClocksSay)
{
    const std::vector<RowId> properties{air};
    const std::vector<double> told{-1};
    const std::vector<std::uint8_t> valid{1};
    rowbinary::Writer row;
    row.add(agent).add(10.0).add(std::uint64_t{1}).add(std::uint64_t{1}).add(std::uint32_t{0});
    row.add(stamps::version() + 3'600'000'000).add(std::uint64_t{0}).add(stamps::day());
    row.addList(std::span(properties)).addList(std::span(told)).addList(std::span(valid));
    server.insert("INSERT INTO " + site->tables().young() +
                      " (agent, time, writer, number, place, version, batch, day, properties, values, valid) FORMAT "
                      "RowBinary",
                  row.bytes());
    opened()->appender()->append(agent, ramp(air, 10, 1));
    EXPECT_EQ(values(air), (Values{10}));
}

TEST_F(RecordsOnServerTest, RowsThatComeTwiceCountOnce)
{
    store(ramp(air, 0, 20'000));
    opened()->appender()->append(agent, ramp(wind, 30'000, 3));
    for (const std::string& table : {site->tables().chunks(), site->tables().young(), site->tables().batches()})
        server.tell("INSERT INTO " + table + " SELECT * FROM " + table);
    EXPECT_EQ(count(), 20'003U);
    EXPECT_EQ(opened()->statistics(agent, air).valid, 20'000U);
    EXPECT_EQ(read({air, wind}).times.size(), 20'003U);
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_F(RecordsOnServerTest, ManyMonthsAreStoredInInsertsThatServersTake)
{
    std::vector<double> times;
    Values values;
    for (int day = 0; day < 20'000; ++day) {
        times.push_back(day * 86'400.0);
        values.emplace_back(day);
    }
    store(block(times, {column(air, values)}));
    EXPECT_EQ(count(), 20'000U);
    for (int decade = 0; decade < 150; ++decade)
        store(ramp(wind, 1e9 + 1e8 * decade, 1100));
    opened()->compact({});
    EXPECT_EQ(opened()->statistics(agent, wind).valid, 150U * 1100);
}

TEST_F(RecordsOnServerTest, WhatIsStoredOutlivesAServerThatIsKilled)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "the server is somebody else's";
    store(ramp(air, 0, 20'000));
    const auto appender = opened()->appender();
    appender->append(agent, ramp(air, 20'000, 10));
    ServerForTests::running().kill();
    EXPECT_THROW(appender->append(agent, ramp(air, 20'010, 10)), ReportableError);
    EXPECT_THROW(opened()->read(agent, std::vector{air}, {}, {}), ReportableError);
    ServerForTests::running().restart();
    EXPECT_EQ(count(), 20'010U);
    appender->append(agent, ramp(air, 20'010, 10));
    EXPECT_EQ(count(), 20'020U);
}

TEST_F(RecordsOnServerTest, TheNextHostServesWhereOneIsGone)
{
    ServerAddress address = site->address();
    address.hosts.insert(address.hosts.begin(), {QStringLiteral("127.0.0.1"), 1});
    ServerConnection other(address, {});
    EXPECT_NO_THROW(other.ask("SELECT 1"));
    EXPECT_NO_THROW(other.insert("INSERT INTO " + site->tables().batches() + " (batch) FORMAT RowBinary",
                                 rowbinary::Writer().add(std::uint64_t{7}).bytes()));
    EXPECT_EQ(countIn(site->tables().batches()), 1U);
}

TEST_F(RecordsOnServerTest, AWrongPasswordIsOneLine)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "the server is somebody else's";
    ServerConnection stranger(site->address(), {"keeper", "wrong"});
    try {
        stranger.ask("SELECT 1");
        FAIL() << "was let in";
    } catch (const ReportableError& error) {
        EXPECT_FALSE(error.message().contains('\n'));
        EXPECT_FALSE(error.message().contains("wrong password: wrong"));
    }
    EXPECT_NO_THROW(ServerConnection(site->address(), {"keeper", "secret"}).ask("SELECT 1"));
}

TEST_F(RecordsOnServerTest, ANumberInAStatementKeepsEveryBit)
{
    for (const double value : {0.1, -0.0, 1e300, 5e-324, 1234567890.123456789, kInfinity}) {
        const auto answer = server.ask("SELECT " + sqlNumber(value) + " FORMAT RowBinary");
        EXPECT_EQ(bitsOf(rowbinary::Reader(answer).number<double>()), bitsOf(value));
    }
}

}  // namespace

}  // namespace plotix
