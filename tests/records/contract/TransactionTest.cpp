#include "base/ReportableError.h"
#include "tests/records/contract/RecordStoreContract.h"

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

namespace {

using plotix::ReportableError;

/// All or nothing, and what others see meanwhile.
class TransactionTest : public RecordStoreContract {};

TEST_P(TransactionTest, NothingIsStoredWithoutCommit)
{
    store(ramp(air, 0, 5));
    {
        const auto writer = opened()->begin();
        writer->store(agent, ramp(air, 3, 50000));
    }
    EXPECT_EQ(times().size(), 5U);
}

TEST_P(TransactionTest, AReaderBesideAnOpenWriterSeesTheOldState)
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

TEST_P(TransactionTest, ReadersBesideABusyWriterSeeWholeTransactions)
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

TEST_P(TransactionTest, ASecondWriterWaitsAndThenSaysSo)
{
    const auto writer = opened()->begin();
    try {
        const auto second = opened()->begin();
        FAIL() << "two writers";
    } catch (const ReportableError& error) {
        EXPECT_TRUE(error.message().contains("being written")) << error.what();
    }
}

TEST_P(TransactionTest, WhatCannotBeStoredIsRefused)
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

TEST_P(TransactionTest, SeveralAgentsAreStoredTogetherOrNotAtAll)
{
    const plotix::RowId other = addAgent();
    const plotix::RowId rain = addProperty(other);
    for (const bool isKept : {false, true}) {
        const auto writer = opened()->begin();
        writer->store(agent, ramp(air, 0, 5));
        writer->store(other, ramp(rain, 0, 7));
        writer->store(agent, ramp(air, 5, 5));
        if (isKept)
            writer->commit();
        EXPECT_EQ(count(), isKept ? 10U : 0U);
        EXPECT_EQ(countIn(*opened(), other), isKept ? 7U : 0U);
    }
}

TEST_P(TransactionTest, ABlockThatIsRefusedLeavesWhatCameBefore)
{
    const auto writer = opened()->begin();
    writer->store(agent, ramp(air, 0, 5));
    EXPECT_THROW(writer->store(agent, ramp(wind + 1, 10, 5)), ReportableError);
    writer->store(agent, ramp(air, 5, 5));
    writer->commit();
    EXPECT_EQ(times(), (std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_P(TransactionTest, LaterBlocksOfATransactionReplaceEarlierOnes)
{
    const auto writer = opened()->begin();
    writer->store(agent, block({1, 2}, {column(air, {10, 20}), column(wind, {5, 6})}));
    writer->store(agent, block({2, 3}, {column(air, {21, 30})}));
    writer->commit();
    EXPECT_EQ(values(air), (Values{10, 21, 30}));
    EXPECT_EQ(values(wind), (Values{5, 6, std::nullopt}));
}

TEST_P(TransactionTest, WhatIsPreparedIsNotStoredYet)
{
    const auto writer = opened()->begin();
    writer->store(agent, ramp(air, 0, 5));
    writer->prepare();
    EXPECT_EQ(count(), 0U);
    writer->commit();
    EXPECT_EQ(count(), 5U);
}

TEST_P(TransactionTest, WhatIsPreparedGoesWithoutCommit)
{
    {
        const auto writer = opened()->begin();
        writer->store(agent, ramp(air, 0, 5));
        writer->prepare();
    }
    EXPECT_EQ(count(), 0U);
}

TEST_P(TransactionTest, TheNextMayBeginWhenOneIsStoredOrGone)
{
    const auto first = opened()->begin();
    first->commit();
    opened()->begin();
    EXPECT_NO_THROW(opened()->begin());
}

HELD_BY_EVERY_STORE(TransactionTest);

}  // namespace
