#include "records/store/Records.h"

#include "tests/records/BlockFixture.h"

#include <cmath>

namespace {

using plotix::Records;
using plotix::RecordsView;

class RecordsTest : public BlockFixture {
protected:
    static RecordsView viewOf(const plotix::RecordBlock& block) { return RecordsView::of(block); }
    static std::vector<double> timesOf(const Records& records)
    {
        const RecordsView view = records.view();
        return {view.times, view.times + view.size};
    }
};

TEST_F(RecordsTest, OrderedMeansStrictlyAscending)
{
    EXPECT_TRUE(viewOf(block({}, {})).isOrdered());
    EXPECT_TRUE(viewOf(block({1}, {})).isOrdered());
    EXPECT_TRUE(viewOf(block({1, 2}, {})).isOrdered());
    EXPECT_FALSE(viewOf(block({1, 1}, {})).isOrdered());
    EXPECT_FALSE(viewOf(block({2, 1}, {})).isOrdered());
}

TEST_F(RecordsTest, OrderingKeepsTheLastOfEqualTimes)
{
    const auto input = block({2, 1, 2, 2}, {column(1, {10, 20, 30, 40})});
    const Records ordered = Records::ordered(viewOf(input));
    EXPECT_EQ(timesOf(ordered), (std::vector<double>{1, 2}));
    EXPECT_EQ(ordered.view().columns[0].values[1], 40);
}

TEST_F(RecordsTest, MergingWithNothingIsTheOther)
{
    const auto some = block({1, 2}, {column(1, {10, 20})});
    const auto none = block({}, {});
    EXPECT_EQ(timesOf(Records::merged(viewOf(some), viewOf(none))), (std::vector<double>{1, 2}));
    EXPECT_EQ(timesOf(Records::merged(viewOf(none), viewOf(some))), (std::vector<double>{1, 2}));
    EXPECT_TRUE(Records::merged(viewOf(none), viewOf(none)).isEmpty());
}

TEST_F(RecordsTest, AppendingFillsMissingColumnsWithAbsentElements)
{
    const auto first = block({1}, {column(1, {10})});
    const auto second = block({2}, {column(2, {20})});
    Records records;
    records.append(viewOf(first));
    records.append(viewOf(second));
    EXPECT_EQ(records.view().columns.size(), 2U);
    EXPECT_TRUE(std::isnan(records.view().columns[0].values[1]));
    EXPECT_TRUE(std::isnan(records.view().columns[1].values[0]));
}

TEST_F(RecordsTest, DroppingKeepsTheRest)
{
    const auto input = block({1, 2, 3}, {column(1, {10, 20, 30})});
    Records records;
    records.append(viewOf(input));
    records.dropFirst(2);
    EXPECT_EQ(timesOf(records), std::vector<double>{3});
    EXPECT_EQ(records.view().columns[0].values[0], 30);
}

}  // namespace
