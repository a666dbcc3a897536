#include "base/ReportableError.h"
#include "tests/records/contract/RecordStoreContract.h"

namespace {

using plotix::ReportableError;

/// Records one by one, as they come.
class AppendingTest : public RecordStoreContract {
protected:
    void append(double time, double value) { appender->append(agent, block({time}, {column(air, {value})})); }

    std::unique_ptr<plotix::RecordAppender> appender = opened()->appender();
};

TEST_P(AppendingTest, RecordsAreThereAtOnceAndInOrder)
{
    const auto reader = opened();
    for (int second = 0; second < 100; ++second) {
        append(second, second * 2);
        ASSERT_EQ(countIn(*reader, agent), static_cast<std::size_t>(second) + 1);
    }
    EXPECT_EQ(values(air, 10, 12), (Values{20, 22, 24}));
}

TEST_P(AppendingTest, TheLastTimeIsTheArchives)
{
    EXPECT_FALSE(extent());
    append(5, 1);
    store(ramp(air, 100, 3));
    EXPECT_EQ(extent()->last, 102);
}

TEST_P(AppendingTest, AFailedBlockLeavesNothingAndMayBeTriedAgain)
{
    append(1, 1);
    EXPECT_THROW(appender->append(agent, block({2}, {column(4711, {2})})), ReportableError);
    EXPECT_EQ(times(), std::vector<double>{1});
    append(2, 2);
    EXPECT_EQ(times(), (std::vector<double>{1, 2}));
}

TEST_P(AppendingTest, AnotherWriterIsWaitedForAndWritesBetweenTwoRecords)
{
    append(1, 1);
    {
        const auto other = opened()->begin();
        appender->setPatience(1);
        EXPECT_THROW(append(2, 2), ReportableError);
    }
    append(2, 2);
    store(ramp(air, 10, 2));
    append(20, 3);
    EXPECT_EQ(times(), (std::vector<double>{1, 2, 10, 11, 20}));
}

TEST_P(AppendingTest, ALateRecordGoesWhereItBelongs)
{
    for (const double time : {1, 2, 4, 5, 3})
        append(time, time * 10);
    append(0.5, 5);
    EXPECT_EQ(times(), (std::vector<double>{0.5, 1, 2, 3, 4, 5}));
    EXPECT_EQ(values(air), (Values{5, 10, 20, 30, 40, 50}));
}

TEST_P(AppendingTest, ARepeatedRecordReplacesWhatItBringsAndKeepsTheRest)
{
    appender->append(agent, block({10}, {column(air, {1}), column(wind, {5})}));
    append(10, 11);
    EXPECT_EQ(values(air), (Values{11}));
    EXPECT_EQ(values(wind), (Values{5}));
}

TEST_P(AppendingTest, EveryBitIsKept)
{
    for (const std::uint64_t bits : {0x8000000000000000ULL, 0xFFF80000DEADBEEFULL, 0x7FF0000000000001ULL, 1ULL}) {
        append(static_cast<double>(count()), std::bit_cast<double>(bits));
        EXPECT_EQ(bitsOf(read({air}).columns[0].values[count() - 1]), bits);
    }
}

TEST_P(AppendingTest, TwoAppendersTakeTurns)
{
    const auto other = opened()->appender();
    for (int second = 0; second < 10; ++second)
        (second % 2 == 0 ? *appender : *other).append(agent, ramp(air, second, 1));
    EXPECT_EQ(times(), (std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

HELD_BY_EVERY_STORE(AppendingTest);

}  // namespace
