#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <cmath>

namespace {

constexpr std::size_t kChunk = 16384;
const auto kMissing = std::nullopt;

class TailTest : public ArchiveFixture {
protected:
    void append(double time, std::optional<double> value) { append(block({time}, {column(air, {value})})); }
    void append(const plotix::RecordBlock& records) { opened()->appender()->append(agent, records); }
    qint64 rows() { return ask("SELECT count(*) FROM tail"); }
    qint64 chunks() { return ask("SELECT count(*) FROM chunk"); }

    /// That many records at 0, 1, 2, …, all of them as rows.
    void fillTail(std::size_t count)
    {
        const auto appender = opened()->appender();
        for (std::size_t done = 0; done < count; done += 1000)
            appender->append(agent, ramp(air, static_cast<double>(done), std::min<std::size_t>(1000, count - done)));
        ASSERT_EQ(rows(), static_cast<qint64>(count));
    }
};

TEST_F(TailTest, SingleRecordsAreRowsAndReadLikeAnyOthers)
{
    append(1, 10);
    append(2, kMissing);
    append(block({3}, {column(air, {30}), column(wind, {7})}));
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(chunks(), 0);
    EXPECT_EQ(values(air), (Values{10, kMissing, 30}));
    EXPECT_EQ(values(wind, 2), (Values{kMissing, 7}));
}

TEST_F(TailTest, EveryBitIsKept)
{
    const std::vector<std::uint64_t> patterns{0x8000000000000000, 0xFFF80000DEADBEEF, 0x7FF0000000000001,
                                              0x0000000000000001, 0xFFF0000000000000};
    append(block({-0.0}, {column(air, {std::bit_cast<double>(patterns[0])})}));
    for (std::size_t i = 1; i < patterns.size(); ++i)
        append(static_cast<double>(i), std::bit_cast<double>(patterns[i]));
    const plotix::RecordBlock records = read({air});
    EXPECT_TRUE(std::signbit(records.times[0]));
    for (std::size_t i = 0; i < patterns.size(); ++i)
        EXPECT_EQ(bitsOf(records.columns[0].values[i]), patterns[i]);
}

TEST_F(TailTest, AnElementThatIsNotValidKeepsItsBitsToo)
{
    append(1, kMissing);
    EXPECT_EQ(read({air}).columns[0].values[0], -999);
}

TEST_F(TailTest, TheRecordThatFillsAChunkMakesItOne)
{
    fillTail(kChunk - 1);
    EXPECT_EQ(chunks(), 0);
    append(kChunk - 1, 5);
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(ask("SELECT n FROM chunk"), qint64(kChunk));
    append(kChunk, 6);
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(values(air, kChunk - 2), (Values{kChunk - 2.0, 5, 6}));
}

TEST_F(TailTest, ARepeatedRecordReplacesWhatItBringsAndKeepsTheRest)
{
    append(block({10}, {column(air, {1}), column(wind, {5})}));
    append(20, 2);
    append(10, 11);
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(values(air), (Values{11, 2}));
    EXPECT_EQ(values(wind), (Values{5, kMissing}));
}

TEST_F(TailTest, ALateRecordGoesWhereItBelongs)
{
    for (const double time : {1, 2, 4, 5})
        append(time, time);
    append(3, 3);
    append(0.5, 0);
    EXPECT_EQ(rows(), 6);
    EXPECT_EQ(times(), (std::vector<double>{0.5, 1, 2, 3, 4, 5}));
    EXPECT_EQ(values(air), (Values{0, 1, 2, 3, 4, 5}));
}

TEST_F(TailTest, ARecordBeforeTheTailGoesIntoAChunk)
{
    store(ramp(air, 0, 3000));
    append(5000, 1);
    append(100.5, 2);
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(ask("SELECT n FROM chunk"), 3001);
    append(4000, 3);
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(values(air, 2999), (Values{2999, 3, 1}));
}

TEST_F(TailTest, ALateRecordThatFillsTheTailMakesItAChunk)
{
    fillTail(kChunk - 1);
    append(5.5, 1);
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(ask("SELECT n FROM chunk"), qint64(kChunk));
    EXPECT_EQ(values(air, 5, 6), (Values{5, 1, 6}));
}

TEST_F(TailTest, ManyRecordsTakeTheTailIn)
{
    fillTail(100);
    store(ramp(air, 100, 5000));
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(ask("SELECT n FROM chunk"), 5100);
    store(ramp(air, 50, 40'000));
    EXPECT_EQ(times().size(), 40'050U);
    EXPECT_EQ(values(air, 49, 51), (Values{49, 50, 51}));
}

TEST_F(TailTest, TheTailsOfAgentsAreApart)
{
    const plotix::RowId other = addAgent("Two");
    const plotix::RowId rain = addProperty(other, "rain");
    append(1, 1);
    opened()->appender()->append(other, ramp(rain, 100, 3));
    EXPECT_EQ(times(), std::vector<double>{1});
    EXPECT_EQ(countIn(*opened(), other), 3U);
    EXPECT_EQ(opened()->extent(other)->last, 102);
}

TEST_F(TailTest, AnotherConnectionsRecordsAreSeenByAnAppender)
{
    const auto appender = opened()->appender();
    appender->append(agent, ramp(air, 0, 1));
    store(ramp(air, 10, 3));
    appender->append(agent, block({5}, {column(air, {55})}));
    appender->append(agent, block({20}, {column(air, {66})}));
    EXPECT_EQ(times(), (std::vector<double>{0, 5, 10, 11, 12, 20}));
    EXPECT_EQ(values(air), (Values{0, 55, 10, 11, 12, 66}));
}

TEST_F(TailTest, RowsThatMakeNoSenseAreFoundWhenRead)
{
    fillTail(3);
    for (const char* sql :
         {"UPDATE tail SET data = x'00'", "UPDATE tail SET data = zeroblob(9)", "UPDATE tail SET data = zeroblob(20)",
          "DELETE FROM tail WHERE id % 1048576 = 1", "UPDATE tail SET id = id + 100000"}) {
        run(sql);
        EXPECT_THROW(read({air}), plotix::ReportableError) << sql;
        run("DELETE FROM tail");
        fillTail(3);
    }
}

}  // namespace
