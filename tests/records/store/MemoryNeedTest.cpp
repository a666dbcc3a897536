#include "records/store/MemoryNeed.h"

#include <gtest/gtest.h>

namespace {

using plotix::MemoryShortage;
using plotix::RecordOverview;

constexpr double kDay = 86'400, kYear = 365 * kDay;
constexpr std::uint64_t kDayOfTwo = 86'400 * plotix::bytesPerRecord(2);

class MemoryNeedTest : public testing::Test {
protected:
    /// A record a second from `first` on, in runs of a day.
    void recordEverySecond(double first, int days)
    {
        for (int day = 0; day < days; ++day)
            overview.runs.push_back({first + day * kDay, first + (day + 1) * kDay - 1, 86'400});
    }
    std::uint64_t estimated(std::optional<double> from = {}, std::optional<double> to = {})
    {
        return plotix::estimatedRecords({overview, 2, from, to});
    }
    std::optional<MemoryShortage> shortage(std::uint64_t budget, std::optional<double> from = {},
                                           std::optional<double> to = {})
    {
        return plotix::shortageOf({overview, 2, from, to}, budget);
    }

    RecordOverview overview;
};

TEST_F(MemoryNeedTest, ARecordCostsItsTimeAndEachValue)
{
    EXPECT_EQ(plotix::bytesPerRecord(0), 8U);
    EXPECT_EQ(plotix::bytesPerRecord(2), 34U);
}

TEST_F(MemoryNeedTest, RunsThatTheRangeCutsCountByTheirShare)
{
    recordEverySecond(0, 10);
    EXPECT_EQ(estimated(), 864'000U);
    EXPECT_NEAR(static_cast<double>(estimated(kDay / 2, 2 * kDay)), 1.5 * 86'400, 2);
    EXPECT_EQ(estimated(20 * kDay, 30 * kDay), 0U);
}

TEST_F(MemoryNeedTest, ARunOfOneMomentCountsWhole)
{
    overview.runs.push_back({5, 5, 1});
    EXPECT_EQ(estimated(5, 5), 1U);
}

TEST_F(MemoryNeedTest, NothingIsShortWhereEverythingFits)
{
    EXPECT_FALSE(shortage(1));
    recordEverySecond(0, 1);
    EXPECT_FALSE(shortage(kDayOfTwo));
    EXPECT_TRUE(shortage(kDayOfTwo - 1));
}

TEST_F(MemoryNeedTest, AShortageSaysWhatIsNeededAndHowLongARangeFits)
{
    recordEverySecond(0, 100);
    const auto missing = shortage(10 * kDayOfTwo, 0, 50 * kDay);
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->properties, 2U);
    EXPECT_NEAR(static_cast<double>(missing->needed), static_cast<double>(50 * kDayOfTwo), kDay);
    EXPECT_EQ(missing->budget, 10 * kDayOfTwo);
    EXPECT_EQ(missing->length, 50 * kDay);
    EXPECT_NEAR(missing->fittingLength, 10 * kDay, 2);
}

TEST_F(MemoryNeedTest, TimeWithoutRecordsCostsNothing)
{
    recordEverySecond(0, 20);
    recordEverySecond(kYear, 1);
    EXPECT_NEAR(shortage(2 * kDayOfTwo, {}, kYear + kDay)->fittingLength, kYear - 18 * kDay, 2);
}

}  // namespace
