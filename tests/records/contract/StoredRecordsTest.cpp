#include "tests/records/contract/RecordStoreContract.h"

#include <cmath>

namespace {

using plotix::RecordExtent;

constexpr std::size_t kChunk = 16384;
const auto kMissing = std::nullopt;

/// What was stored comes back: in order, each time once, every bit, with what is missing.
class StoredRecordsTest : public RecordStoreContract {};

TEST_P(StoredRecordsTest, AnEmptyArchiveAnswersNoRecords)
{
    EXPECT_EQ(times(), std::vector<double>{});
    EXPECT_EQ(read({air}).columns.size(), 1U);
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(extent());
    EXPECT_EQ(opened()->statistics(agent, air).valid, 0U);
}

TEST_P(StoredRecordsTest, StoredRecordsComeBack)
{
    store(block({10, 20, 30}, {column(air, {1.5, kMissing, -0.25}), column(wind, {kMissing, 7, 8})}));
    EXPECT_EQ(times(), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(values(air), (Values{1.5, kMissing, -0.25}));
    EXPECT_EQ(values(wind), (Values{kMissing, 7, 8}));
}

TEST_P(StoredRecordsTest, EveryBitOfADoubleIsKept)
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

TEST_P(StoredRecordsTest, AnElementThatIsNotValidKeepsItsBitsToo)
{
    store(block({1, 2}, {column(air, {kMissing, 5})}));
    EXPECT_EQ(read({air}).columns[0].values[0], -999);
}

TEST_P(StoredRecordsTest, AWhollyValidColumnHasNoBitmap)
{
    store(ramp(air, 0, 3 * kChunk));
    EXPECT_TRUE(read({air}).columns[0].validity.isAllValid());
    EXPECT_FALSE(read({wind}).columns[0].validity.isAllValid());
}

TEST_P(StoredRecordsTest, APropertyWithoutValuesIsAllInvalid)
{
    store(ramp(air, 0, 3));
    EXPECT_EQ(values(wind), (Values{kMissing, kMissing, kMissing}));
    EXPECT_TRUE(std::isnan(read({wind}).columns[0].values[1]));
}

TEST_P(StoredRecordsTest, TimesMayBeStoredWithoutValues)
{
    store(block({1, 2}, {}));
    EXPECT_EQ(times(), (std::vector<double>{1, 2}));
    EXPECT_EQ(values(air), (Values{kMissing, kMissing}));
}

TEST_P(StoredRecordsTest, WithinABlockTimesAreSortedAndTheLastOneWins)
{
    store(block({30, 10, 20, 10}, {column(air, {3, 1, 2, 99})}));
    EXPECT_EQ(times(), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(values(air), (Values{99, 2, 3}));
}

TEST_P(StoredRecordsTest, ALaterInvalidElementReplacesAnEarlierValue)
{
    store(block({10, 10}, {column(air, {1, kMissing})}));
    EXPECT_EQ(values(air), (Values{kMissing}));
}

TEST_P(StoredRecordsTest, ARecordStoredAgainReplacesWhatItBringsAndKeepsTheRest)
{
    store(block({10, 20}, {column(air, {1, 2}), column(wind, {5, 6})}));
    store(block({20}, {column(air, {22})}));
    EXPECT_EQ(times(), (std::vector<double>{10, 20}));
    EXPECT_EQ(values(air), (Values{1, 22}));
    EXPECT_EQ(values(wind), (Values{5, 6}));
}

TEST_P(StoredRecordsTest, LateRecordsGoWhereTheyBelong)
{
    store(ramp(air, 0, 2 * kChunk));
    store(block({-5, 100.5, kChunk + 0.5, 1e6}, {column(air, {1, 2, 3, 4})}));
    EXPECT_EQ(values(air, -10, 0), (Values{1, 0}));
    EXPECT_EQ(values(air, 100, 101), (Values{100, 2, 101}));
    EXPECT_EQ(values(air, kChunk, kChunk + 1), (Values{kChunk, 3, kChunk + 1.0}));
    EXPECT_EQ(values(air, 40000), (Values{4}));
    EXPECT_EQ(times().size(), 2 * kChunk + 4);
}

TEST_P(StoredRecordsTest, APropertyThatBeginsLaterIsInvalidBefore)
{
    store(ramp(air, 0, 100));
    store(ramp(wind, 100, 100));
    EXPECT_EQ(values(wind, 98, 101), (Values{kMissing, kMissing, 100, 101}));
    EXPECT_EQ(values(air, 98, 101), (Values{98, 99, kMissing, kMissing}));
}

TEST_P(StoredRecordsTest, AgentsAreApart)
{
    const plotix::RowId other = addAgent();
    const plotix::RowId rain = addProperty(other);
    store(ramp(air, 0, 5));
    storeFor(other, ramp(rain, 100, 3));
    EXPECT_EQ(times().size(), 5U);
    EXPECT_EQ(countIn(*opened(), other), 3U);
    EXPECT_EQ(opened()->extent(other), (RecordExtent{100, 102}));
}

TEST_P(StoredRecordsTest, TheBitsOfATimeAreKept)
{
    store(block({-0.0, 0.1}, {column(air, {1, 2})}));
    EXPECT_TRUE(std::signbit(read({air}).times[0]));
    EXPECT_EQ(bitsOf(read({air}).times[1]), bitsOf(0.1));
}

TEST_P(StoredRecordsTest, AnEmptyBlockStoresNothing)
{
    store(block({}, {column(air, {})}));
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(extent());
}

TEST_P(StoredRecordsTest, ColumnsStandInTheOrderAskedFor)
{
    store(block({1}, {column(air, {10}), column(wind, {20})}));
    const plotix::RecordBlock records = read({wind, air});
    EXPECT_EQ(records.columns[0].property, wind);
    EXPECT_EQ(records.columns[0].values[0], 20);
    EXPECT_EQ(records.columns[1].values[0], 10);
}

HELD_BY_EVERY_STORE(StoredRecordsTest);

}  // namespace
