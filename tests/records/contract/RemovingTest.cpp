#include "base/ReportableError.h"
#include "tests/records/contract/RecordStoreContract.h"

namespace {

/// Taking elements out of records.
class RemovingTest : public RecordStoreContract {
protected:
    void remove(std::vector<plotix::RowId> properties, std::optional<double> from = {}, std::optional<double> to = {})
    {
        const auto writer = opened()->begin();
        writer->remove(agent, properties, from, to);
        writer->commit();
    }
    void storeBoth() { store(block({1, 2, 3}, {column(air, {10, 20, 30}), column(wind, {5, 6, 7})})); }
};

TEST_P(RemovingTest, OnePropertyGoesAndTheOthersStay)
{
    storeBoth();
    remove({air});
    EXPECT_EQ(values(air), (Values{std::nullopt, std::nullopt, std::nullopt}));
    EXPECT_EQ(values(wind), (Values{5, 6, 7}));
}

TEST_P(RemovingTest, BoundsBelongToTheSpan)
{
    storeBoth();
    remove({air}, 2, 3);
    EXPECT_EQ(values(air), (Values{10, std::nullopt, std::nullopt}));
}

TEST_P(RemovingTest, RecordsWithoutAnyElementGo)
{
    storeBoth();
    remove({air, wind}, 2, 2);
    EXPECT_EQ(times(), (std::vector<double>{1, 3}));
    EXPECT_EQ(values(wind), (Values{5, 7}));
}

TEST_P(RemovingTest, AllOfThemMayGo)
{
    storeBoth();
    remove({air, wind});
    EXPECT_FALSE(opened()->extent(agent));
    store(ramp(air, 1, 2));
    EXPECT_EQ(count(), 2U);
}

TEST_P(RemovingTest, AnotherAgentKeepsItsRecords)
{
    const plotix::RowId other = addAgent();
    const plotix::RowId rain = addProperty(other);
    const auto writer = opened()->begin();
    writer->store(other, ramp(rain, 0, 4));
    writer->commit();
    storeBoth();
    remove({air, wind, rain});
    EXPECT_EQ(countIn(*opened(), other), 4U);
}

TEST_P(RemovingTest, ManyRecordsLoseTheirMiddle)
{
    store(ramp(air, 0, 50'000));
    remove({air}, 10'000, 39'999);
    EXPECT_EQ(count(), 20'000U);
    EXPECT_EQ(opened()->extent(agent), (plotix::RecordExtent{0, 49'999}));
    EXPECT_TRUE(opened()->verify().isSound());
}

TEST_P(RemovingTest, WhatTheSameTransactionStoredGoesToo)
{
    const auto writer = opened()->begin();
    writer->store(agent, ramp(air, 0, 5));
    writer->remove(agent, std::vector{air}, 3, {});
    writer->store(agent, ramp(air, 10, 2));
    writer->commit();
    EXPECT_EQ(times(), (std::vector<double>{0, 1, 2, 10, 11}));
}

TEST_P(RemovingTest, WithoutCommitEverythingStays)
{
    storeBoth();
    opened()->begin()->remove(agent, std::vector{air, wind}, {}, {});
    EXPECT_EQ(count(), 3U);
}

TEST_P(RemovingTest, AfterCommitItIsRefused)
{
    const auto writer = opened()->begin();
    writer->commit();
    EXPECT_THROW(writer->remove(agent, std::vector{air}, {}, {}), plotix::ReportableError);
}

TEST_P(RemovingTest, AStoreIsInPlaceFromTheBeginning)
{
    EXPECT_NO_THROW(opened()->requireInPlace());
}

HELD_BY_EVERY_STORE(RemovingTest);

}  // namespace
