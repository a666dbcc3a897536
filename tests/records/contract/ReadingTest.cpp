#include "tests/records/contract/RecordStoreContract.h"

#include <cmath>

namespace {

using plotix::RecordBlock;

constexpr std::size_t kChunk = 16384;

/// Which records a range answers, and how reading goes on.
class ReadingTest : public RecordStoreContract {};

TEST_P(ReadingTest, BoundsAreInclusive)
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

TEST_P(ReadingTest, WhatWasClosedWhileIdleIsOpenedAgain)
{
    store(ramp(air, 0, 10));
    const std::shared_ptr<plotix::RecordStore> records = opened();
    const std::vector<plotix::RowId> properties{air};
    records->read(agent, properties, {}, {});
    records->closeIdle();
    EXPECT_EQ(records->read(agent, properties, 3, 5)->times.size(), 3U);
}

TEST_P(ReadingTest, AnyRangeIsAsStored)
{
    store(ramp(air, 0, 50'000));
    for (const auto& [from, to] : {std::pair(0, 0), std::pair(16'383, 16'384), std::pair(16'384, 32'767),
                                   std::pair(100, 49'000), std::pair(16'390, 16'400), std::pair(49'999, 49'999)}) {
        const RecordBlock records = read({air}, from, to);
        ASSERT_EQ(records.times.size(), static_cast<std::size_t>(to - from) + 1);
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < records.times.size(); ++i)
            wrong +=
                records.times[i] != from + static_cast<double>(i) || records.columns[0].values[i] != records.times[i];
        EXPECT_EQ(wrong, 0U) << from << " to " << to;
    }
}

TEST_P(ReadingTest, OneReaderReadsAgainAndAgain)
{
    store(ramp(air, 0, 10));
    const auto reader = opened();
    EXPECT_EQ(reader->read(agent, {}, {}, {})->times.size(), 10U);
    store(ramp(air, 10, 5));
    EXPECT_EQ(reader->read(agent, {}, {}, {})->times.size(), 15U);
}

TEST_P(ReadingTest, WhatWasReadStaysWhenOthersWriteOn)
{
    store(ramp(air, 0, 3));
    const RecordBlock before = read({air});
    store(block({1}, {column(air, {99})}));
    EXPECT_EQ(before.columns[0].values[1], 1);
    EXPECT_EQ(values(air), (Values{0, 99, 2}));
}

TEST_P(ReadingTest, ProgressRisesToOne)
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
}

TEST_P(ReadingTest, StoppedReadingAnswersNothing)
{
    store(ramp(air, 0, 3 * kChunk));
    const auto stopHalfway = [](double fraction) { return fraction < 0.5; };
    EXPECT_FALSE(opened()->read(agent, std::vector{air}, {}, {}, stopHalfway));
}

TEST_P(ReadingTest, AStoppedReadLeavesTheStoreUsable)
{
    store(ramp(air, 0, 3 * kChunk));
    const auto records = opened();
    EXPECT_FALSE(records->read(agent, std::vector{air}, {}, {}, [](double) { return false; }));
    EXPECT_EQ(records->read(agent, {}, {}, {})->times.size(), 3 * kChunk);
}

TEST_P(ReadingTest, AnAgentThatIsNotThereHasNoRecords)
{
    store(ramp(air, 0, 3));
    EXPECT_EQ(opened()->read(agent + 1, std::vector{air}, {}, {})->times.size(), 0U);
    EXPECT_FALSE(opened()->extent(agent + 1));
    EXPECT_TRUE(opened()->overview(agent + 1, {}).runs.empty());
}

HELD_BY_EVERYTHING_READ(ReadingTest);

}  // namespace
