#include "base/PageCache.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <chrono>
#include <thread>

namespace {

using plotix::PageCache;
using plotix::RecordColumns;

/// Columns so long that threads share in finding out what is known of them.
class RunsReadingTest : public ArchiveFixture {
protected:
    static constexpr std::size_t kRecords = 2'200'000;

    RunsReadingTest() { store(ramp(air, 0, kRecords)); }
    RecordColumns columns(std::size_t times, std::optional<double> from = {})
    {
        // The caller is slow, so that helpers find out most.
        const auto slow = [](double) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            return true;
        };
        return *opened()->columns(agent, std::vector<plotix::RowId>(times, air), from, {},
                                  std::make_shared<PageCache>(), slow);
    }
};

TEST_F(RunsReadingTest, RunsAreInOrderWhoeverFindsThem)
{
    const RecordColumns known = columns(8);
    ASSERT_EQ(known.runs->count(), (kRecords + 511) / 512);
    for (const RecordColumns::Column& column : known.columns) {
        const plotix::ValueRuns runs = column.runs->unpacked();
        for (std::size_t run = 0; run < known.runs->count(); ++run) {
            ASSERT_EQ(known.runs->begin[run], run * 512);
            ASSERT_EQ(runs.least[run], static_cast<double>(run * 512));
            ASSERT_EQ(runs.first[run], runs.least[run]);
            ASSERT_EQ(runs.greatest[run], static_cast<double>(known.runs->begin[run + 1] - 1));
        }
    }
}

TEST_F(RunsReadingTest, TotalsAreThoseOfAllRecords)
{
    for (const RecordColumns::Column& column : columns(8).columns) {
        EXPECT_EQ(column.total->valid, kRecords);
        EXPECT_EQ(column.total->sum.value(), static_cast<double>(kRecords) * (kRecords - 1) / 2);
    }
}

TEST_F(RunsReadingTest, WithAnIndexThatIsDamagedTotalsStayThoseOfAllRecords)
{
    run("UPDATE run SET data = x'00' WHERE id % 1048576 > 0 AND id / 1048576 IN (3, 70)");
    run("UPDATE summary SET sum = 1 WHERE id / 1048576 IN (4, 71)");
    const RecordColumns known = columns(1);
    EXPECT_EQ(known.runs->count(), (kRecords + 511) / 512);
    EXPECT_EQ(known.columns[0].total->valid, kRecords);
    EXPECT_EQ(known.columns[0].total->sum.value(), static_cast<double>(kRecords) * (kRecords - 1) / 2);
}

TEST_F(RunsReadingTest, PagesThatAreFilledTogetherHaveWhatEachHasAlone)
{
    const RecordColumns known = columns(1, 1000);
    const auto& values = known.columns[0].values;
    const double first = values.valueAt(0);
    const plotix::PagedMemory::Hold held = values.holdAll();
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_EQ(values[i], first + static_cast<double>(i));
}

}  // namespace
