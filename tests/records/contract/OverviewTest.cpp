#include "tests/records/contract/RecordStoreContract.h"

namespace {

using plotix::RecordExtent;
using plotix::RecordOverview;

/// What is known without reading: runs, their summaries, and the span they cover.
class OverviewTest : public RecordStoreContract {
protected:
    RecordOverview overview(std::optional<double> from = {}, std::optional<double> to = {})
    {
        return opened()->overview(agent, std::vector{wind, air}, from, to);
    }

    /// Each run's summaries are those of the values in its stretch of time.
    void expectTrue(const RecordOverview& told)
    {
        const auto records = opened();
        for (const RecordOverview::Column& column : told.columns) {
            ASSERT_EQ(column.summaries.size(), told.runs.size());
            for (std::size_t i = 0; i < told.runs.size(); ++i) {
                const auto [t0, t1, size] = told.runs[i];
                EXPECT_EQ(records->read(agent, {}, t0, t1)->times.size(), size);
                const auto counted =
                    records->statistics(agent, column.property, t0, t1, plotix::StatisticsFrom::Values);
                EXPECT_EQ(column.summaries[i].valid, counted.valid);
                EXPECT_EQ(column.summaries[i].minimum, counted.minimum);
                EXPECT_EQ(column.summaries[i].maximum, counted.maximum);
                EXPECT_NEAR(column.summaries[i].sum, counted.average * static_cast<double>(counted.valid), 1e-3);
            }
        }
    }
};

TEST_P(OverviewTest, WithoutRecordsThereAreNoRuns)
{
    EXPECT_TRUE(overview().runs.empty());
    EXPECT_EQ(overview().columns.size(), 2U);
    EXPECT_FALSE(opened()->extent(agent));
    EXPECT_FALSE(opened()->extent());
}

TEST_P(OverviewTest, RunsFollowEachOtherAndHoldEveryRecord)
{
    store(ramp(air, 0, 40'000));
    store(ramp(wind, 50'000, 3));
    const RecordOverview told = overview();
    EXPECT_EQ(told.records(), 40'003U);
    for (std::size_t i = 1; i < told.runs.size(); ++i)
        EXPECT_LT(told.runs[i - 1].t1, told.runs[i].t0);
    EXPECT_EQ(told.runs.front().t0, 0);
    EXPECT_EQ(told.runs.back().t1, 50'002);
}

TEST_P(OverviewTest, TellsWhetherThereAreMoreRecords)
{
    store(ramp(air, 0, 40'000));
    store(ramp(wind, 50'000, 3));
    for (const auto& [from, to] : {std::pair(0, 60'000), std::pair(50'000, 50'002), std::pair(20'000, 20'001)}) {
        const std::size_t records = overview(from, to).records();
        EXPECT_TRUE(opened()->hasMoreThan(records - 1, agent, from, to));
        EXPECT_FALSE(opened()->hasMoreThan(records, agent, from, to));
    }
    EXPECT_FALSE(opened()->hasMoreThan(0, agent, 60'001, {}));
}

TEST_P(OverviewTest, SummariesAreOfTheRunsValuesInTheOrderAskedFor)
{
    store(ramp(air, 0, 40'000));
    store(block({7.5, 60'000}, {column(air, {-4, std::nullopt}), column(wind, {1, 2})}));
    const RecordOverview told = overview();
    EXPECT_EQ(told.columns[0].property, wind);
    EXPECT_EQ(told.columns[1].property, air);
    expectTrue(told);
}

TEST_P(OverviewTest, ItCoversTheRunsOfTheRangeAlone)
{
    store(ramp(air, 0, 40'000));
    store(ramp(air, 100'000, 5));
    EXPECT_TRUE(overview(200'000, {}).runs.empty());
    EXPECT_TRUE(overview({}, -1).runs.empty());
    const RecordOverview part = overview(16'390, 16'400);
    ASSERT_FALSE(part.runs.empty());
    EXPECT_LE(part.runs.front().t0, 16'390);
    EXPECT_GE(part.runs.back().t1, 16'400);
    EXPECT_LT(part.records(), 40'005U);
    expectTrue(part);
}

TEST_P(OverviewTest, TheExtentIsFromTheFirstRecordToTheLast)
{
    store(block({30}, {column(air, {1})}));
    EXPECT_EQ(extent(), (RecordExtent{30, 30}));
    store(ramp(wind, 100, 20'000));
    store(block({-7.25}, {}));
    EXPECT_EQ(extent(), (RecordExtent{-7.25, 20'099}));
    opened()->appender()->append(agent, ramp(air, 30'000, 1));
    EXPECT_EQ(extent(), (RecordExtent{-7.25, 30'000}));
}

TEST_P(OverviewTest, TheExtentOfAllIsThatOfEveryAgent)
{
    const plotix::RowId second = addAgent(), third = addAgent();
    const plotix::RowId rain = addProperty(third);
    store(ramp(air, 100, 20'000));
    EXPECT_EQ(opened()->extent(), extent());
    EXPECT_FALSE(opened()->extent(second));
    opened()->appender()->append(third, ramp(rain, 50, 3));
    EXPECT_EQ(opened()->extent(third), (RecordExtent{50, 52}));
    EXPECT_EQ(opened()->extent(), (RecordExtent{50, 20'099}));
}

TEST_P(OverviewTest, TheExtentIsThatOfTheRuns)
{
    for (const double first : {5000.0, 0.0, 30'000.0}) {
        store(ramp(air, first, 4000));
        const RecordOverview told = overview();
        EXPECT_EQ(extent(), (RecordExtent{told.runs.front().t0, told.runs.back().t1}));
    }
}

HELD_BY_EVERYTHING_READ(OverviewTest);

}  // namespace
