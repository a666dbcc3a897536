#include "base/ReportableError.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

namespace {

using plotix::ColumnStatistics;
using plotix::RecordExtent;
using plotix::ReportableError;

constexpr std::size_t kChunk = 16384;
const auto kMissing = std::nullopt;

class RecordArchiveTest : public ArchiveFixture {};

TEST_F(RecordArchiveTest, AnEmptyArchiveAnswersNoRecords)
{
    EXPECT_EQ(times(), std::vector<double>{});
    EXPECT_EQ(read({air}).columns.size(), 1U);
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(extent());
    EXPECT_EQ(opened()->statistics(agent, air).valid, 0U);
}

TEST_F(RecordArchiveTest, StoredRecordsComeBack)
{
    store(block({10, 20, 30}, {column(air, {1.5, kMissing, -0.25}), column(wind, {kMissing, 7, 8})}));
    EXPECT_EQ(times(), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(values(air), (Values{1.5, kMissing, -0.25}));
    EXPECT_EQ(values(wind), (Values{kMissing, 7, 8}));
}

TEST_F(RecordArchiveTest, BoundsAreInclusive)
{
    store(ramp(air, 0, 10));
    EXPECT_EQ(times(3, 5), (std::vector<double>{3, 4, 5}));
    EXPECT_EQ(values(air, 3, 5), (Values{3, 4, 5}));
    EXPECT_EQ(times(8.5), (std::vector<double>{9}));
    EXPECT_EQ(times({}, 0), (std::vector<double>{0}));
    EXPECT_EQ(times(3.2, 3.8), std::vector<double>{});
    EXPECT_EQ(times(5, 3), std::vector<double>{});
    EXPECT_EQ(times(std::nan(""), 5), std::vector<double>{});
    EXPECT_EQ(times(100, 200), std::vector<double>{});
}

TEST_F(RecordArchiveTest, EveryBitOfADoubleIsKept)
{
    const std::vector<std::uint64_t> patterns{
        0x8000000000000000, 0x0000000000000001, 0x800FFFFFFFFFFFFF, 0x7FF0000000000000, 0xFFF0000000000000,
        0x7FF8000000000000, 0xFFF80000DEADBEEF, 0x7FF0000000000001, 0x7FEFFFFFFFFFFFFF, 0x3FB999999999999A};
    std::vector<double> stamps, stored;
    for (const std::uint64_t pattern : patterns) {
        stamps.push_back(static_cast<double>(stamps.size()) + 0.000001);
        stored.push_back(std::bit_cast<double>(pattern));
    }
    store(block(stamps, {{air, plotix::SharedArray<double>::fromVector(stored), {}}}));
    const plotix::RecordBlock records = read({air});
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        EXPECT_EQ(bitsOf(records.columns[0].values[i]), patterns[i]);
        EXPECT_EQ(bitsOf(records.times[i]), bitsOf(stamps[i]));
        EXPECT_TRUE(records.columns[0].validity.isValid(i));
    }
}

TEST_F(RecordArchiveTest, AnElementThatIsNotValidKeepsItsBitsToo)
{
    store(block({1, 2}, {column(air, {kMissing, 5})}));
    EXPECT_EQ(read({air}).columns[0].values[0], -999);
}

TEST_F(RecordArchiveTest, AWhollyValidColumnHasNoBitmap)
{
    store(ramp(air, 0, 3 * kChunk));
    EXPECT_TRUE(read({air}).columns[0].validity.isAllValid());
    EXPECT_FALSE(read({wind}).columns[0].validity.isAllValid());
}

TEST_F(RecordArchiveTest, APropertyWithoutValuesIsAllInvalid)
{
    store(ramp(air, 0, 3));
    EXPECT_EQ(values(wind), (Values{kMissing, kMissing, kMissing}));
    EXPECT_TRUE(std::isnan(read({wind}).columns[0].values[1]));
}

TEST_F(RecordArchiveTest, TimesMayBeStoredWithoutValues)
{
    store(block({1, 2}, {}));
    EXPECT_EQ(times(), (std::vector<double>{1, 2}));
    EXPECT_EQ(values(air), (Values{kMissing, kMissing}));
}

TEST_F(RecordArchiveTest, WithinABlockTimesAreSortedAndTheLastOneWins)
{
    store(block({30, 10, 20, 10}, {column(air, {3, 1, 2, 99})}));
    EXPECT_EQ(times(), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(values(air), (Values{99, 2, 3}));
}

TEST_F(RecordArchiveTest, ALaterInvalidElementReplacesAnEarlierValue)
{
    store(block({10, 10}, {column(air, {1, kMissing})}));
    EXPECT_EQ(values(air), (Values{kMissing}));
}

TEST_F(RecordArchiveTest, ARecordStoredAgainReplacesWhatItBringsAndKeepsTheRest)
{
    store(block({10, 20}, {column(air, {1, 2}), column(wind, {5, 6})}));
    store(block({20}, {column(air, {22})}));
    EXPECT_EQ(times(), (std::vector<double>{10, 20}));
    EXPECT_EQ(values(air), (Values{1, 22}));
    EXPECT_EQ(values(wind), (Values{5, 6}));
}

TEST_F(RecordArchiveTest, LateRecordsGoWhereTheyBelong)
{
    store(ramp(air, 0, 2 * kChunk));
    store(block({-5, 100.5, kChunk + 0.5, 1e6}, {column(air, {1, 2, 3, 4})}));
    EXPECT_EQ(values(air, -10, 0), (Values{1, 0}));
    EXPECT_EQ(values(air, 100, 101), (Values{100, 2, 101}));
    EXPECT_EQ(values(air, kChunk, kChunk + 1), (Values{kChunk, 3, kChunk + 1.0}));
    EXPECT_EQ(values(air, 40000), (Values{4}));
    EXPECT_EQ(times().size(), 2 * kChunk + 4);
}

TEST_F(RecordArchiveTest, ALateRecordRewritesOneChunkOnly)
{
    store(ramp(air, 0, 4 * kChunk));
    const qint64 before = ask("SELECT count(*) FROM chunk");
    store(block({100.5}, {column(air, {1})}));
    EXPECT_EQ(before, 4);
    EXPECT_EQ(ask("SELECT count(*) FROM chunk"), 5);
    EXPECT_EQ(ask("SELECT count(*) FROM chunk WHERE id IN (2, 3, 4)"), 3);
}

TEST_F(RecordArchiveTest, RecordsOneByOneDoNotLeaveOneChunkEach)
{
    for (int i = 0; i < 100; ++i)
        store(block({static_cast<double>(i)}, {column(air, {i})}));
    EXPECT_EQ(times().size(), 100U);
    EXPECT_LE(ask("SELECT count(*) FROM chunk"), 7);
}

TEST_F(RecordArchiveTest, LongRunsFillTheirChunks)
{
    for (int i = 0; i < 10; ++i)
        store(ramp(air, i * 10000.0, 10000));
    EXPECT_EQ(times().size(), 100000U);
    EXPECT_LE(ask("SELECT count(*) FROM chunk"), 8);
    EXPECT_EQ(ask("SELECT max(n) FROM chunk"), qint64(kChunk));
}

TEST_F(RecordArchiveTest, APropertyThatBeginsLaterIsInvalidBefore)
{
    store(ramp(air, 0, 100));
    store(ramp(wind, 100, 100));
    EXPECT_EQ(values(wind, 98, 101), (Values{kMissing, kMissing, 100, 101}));
    EXPECT_EQ(values(air, 98, 101), (Values{98, 99, kMissing, kMissing}));
}

TEST_F(RecordArchiveTest, AgentsAreApart)
{
    const plotix::RowId other = addAgent("Two");
    const plotix::RowId rain = addProperty(other, "rain");
    store(ramp(air, 0, 5));
    storeFor(other, ramp(rain, 100, 3));
    EXPECT_EQ(times().size(), 5U);
    EXPECT_EQ(countIn(*opened(), other), 3U);
    EXPECT_EQ(opened()->extent(other), (RecordExtent{100, 102}));
}

TEST_F(RecordArchiveTest, NothingIsStoredWithoutCommit)
{
    store(ramp(air, 0, 5));
    {
        const auto writer = opened()->begin();
        writer->store(agent, ramp(air, 3, 50000));
    }
    EXPECT_EQ(times().size(), 5U);
}

TEST_F(RecordArchiveTest, AReaderBesideAnOpenWriterSeesTheOldState)
{
    store(ramp(air, 0, 5));
    const auto reader = opened();
    const auto writer = opened()->begin();
    writer->store(agent, ramp(air, 2, 40000));
    EXPECT_EQ(reader->read(agent, {}, {}, {})->times.size(), 5U);
    EXPECT_EQ(times().size(), 5U);
    writer->commit();
    EXPECT_EQ(reader->read(agent, {}, {}, {})->times.size(), 40002U);
}

TEST_F(RecordArchiveTest, ReadersBesideABusyWriterSeeWholeTransactions)
{
    constexpr std::size_t kEach = 700;
    constexpr int kTransactions = 60;
    std::atomic<bool> done = false;
    std::atomic<int> wrong = 0, looks = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 2; ++i)
        readers.emplace_back([&] {
            std::size_t before = 0;
            while (!done) {
                const auto records = opened()->read(agent, std::vector{air}, {}, {});
                const std::size_t count = records->times.size();
                wrong += count < before || count % kEach != 0 ||
                         (count > 0 && records->columns[0].values[count - 1] != static_cast<double>(count - 1));
                before = count;
                ++looks;
            }
        });
    for (std::size_t i = 0; i < kTransactions; ++i)
        store(ramp(air, static_cast<double>(i * kEach), kEach));
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(looks, 0);
}

TEST_F(RecordArchiveTest, ASecondWriterWaitsAndThenSaysSo)
{
    const auto writer = opened()->begin();
    try {
        const auto second = opened()->begin();
        FAIL() << "two writers";
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains("being written")) << error.what();
    }
}

TEST_F(RecordArchiveTest, StatisticsAreOfTheValidValues)
{
    store(block({1, 2, 3, 4}, {column(air, {3, kMissing, 5, 4}), column(wind, {-2, -8, kMissing, kMissing})}));
    const ColumnStatistics first = opened()->statistics(agent, air);
    EXPECT_EQ(first.valid, 3U);
    EXPECT_EQ(first.minimum, 3);
    EXPECT_EQ(first.maximum, 5);
    EXPECT_EQ(first.average, 4);
    EXPECT_EQ(opened()->statistics(agent, wind).maximum, -2);
}

TEST_F(RecordArchiveTest, StatisticsLeaveOutWhatIsNoNumber)
{
    store(block({1, 2, 3}, {column(air, {std::nan(""), 4, std::nan("")})}));
    EXPECT_EQ(opened()->statistics(agent, air).valid, 1U);
    EXPECT_EQ(opened()->statistics(agent, air).average, 4);
}

TEST_F(RecordArchiveTest, StatisticsOfBothInfinitiesHaveNoAverage)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    store(block({1, 2}, {column(air, {infinity, -infinity})}));
    const ColumnStatistics all = opened()->statistics(agent, air);
    EXPECT_EQ(all.minimum, -infinity);
    EXPECT_EQ(all.maximum, infinity);
    EXPECT_TRUE(std::isnan(all.average));
}

TEST_F(RecordArchiveTest, StatisticsOfARangeCutChunksAtItsEnds)
{
    store(ramp(air, 0, 3 * kChunk));
    const ColumnStatistics part = opened()->statistics(agent, air, 100, 40000);
    EXPECT_EQ(part.valid, 39901U);
    EXPECT_EQ(part.minimum, 100);
    EXPECT_EQ(part.maximum, 40000);
    EXPECT_DOUBLE_EQ(part.average, 20050);
}

TEST_F(RecordArchiveTest, StatisticsFollowReplacedValues)
{
    store(block({1, 2}, {column(air, {3, 1000})}));
    store(block({2}, {column(air, {5})}));
    EXPECT_EQ(opened()->statistics(agent, air).maximum, 5);
}

TEST_F(RecordArchiveTest, ProgressRisesToOne)
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

TEST_F(RecordArchiveTest, StoppedReadingAnswersNothing)
{
    store(ramp(air, 0, 3 * kChunk));
    const auto stopHalfway = [](double fraction) { return fraction < 0.5; };
    EXPECT_FALSE(opened()->read(agent, std::vector{air}, {}, {}, stopHalfway));
}

TEST_F(RecordArchiveTest, WhatCannotBeStoredIsRefused)
{
    const auto writer = opened()->begin();
    EXPECT_THROW(writer->store(agent, block({std::nan("")}, {column(air, {1})})), ReportableError);
    EXPECT_THROW(writer->store(agent, block({std::numeric_limits<double>::infinity()}, {column(air, {1})})),
                 ReportableError);
    EXPECT_THROW(writer->store(agent, block({1, 2}, {column(air, {1})})), ReportableError);
    EXPECT_THROW(writer->store(agent, block({1}, {column(air, {1}), column(air, {2})})), ReportableError);
    EXPECT_THROW(writer->store(agent, block({1}, {column(wind + 1, {1})})), ReportableError);
    EXPECT_THROW(writer->store(agent + 1, block({1}, {column(air, {1})})), ReportableError);
    writer->commit();
    EXPECT_EQ(times().size(), 0U);
    EXPECT_THROW(writer->store(agent, ramp(air, 0, 1)), ReportableError);
}

TEST_F(RecordArchiveTest, SegmentsOfTheWrongLengthAreFoundWhenRead)
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

TEST_F(RecordArchiveTest, ImpossibleChunksAreFoundWhenRead)
{
    store(ramp(air, 0, 2000));
    run("UPDATE chunk SET n = 1000000000000");
    EXPECT_THROW(read({air}), ReportableError);
    run("UPDATE chunk SET n = -1");
    EXPECT_THROW(read({air}), ReportableError);
}

TEST_F(RecordArchiveTest, ImpossibleChunksAreFoundWhenALateRecordBelongsIntoThem)
{
    store(ramp(air, 0, 2000));
    for (const char* sql : {"UPDATE chunk SET n = 1125899906842624", "UPDATE chunk SET n = 0"}) {
        run(sql);
        EXPECT_THROW(store(ramp(air, 5, 1)), ReportableError) << sql;
    }
}

TEST_F(RecordArchiveTest, ValidityOfTheWrongLengthIsFoundWhenRead)
{
    store(ramp(air, 0, 2000));
    store(block({1, 2}, {column(air, {kMissing, 5})}));
    run("UPDATE segment SET valid = x'0000' WHERE valid IS NOT NULL");
    EXPECT_THROW(read({air}), ReportableError);
}

}  // namespace
