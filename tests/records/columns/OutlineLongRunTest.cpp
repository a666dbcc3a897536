#include "records/columns/OutlineCodec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

// The extremes of all runs of an outline, for tables.

namespace {

using plotix::ValueRuns;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class OutlineLongRunTest : public testing::Test {
protected:
    static ValueRuns runs(std::size_t count)
    {
        std::mt19937 random(static_cast<unsigned>(count));
        std::normal_distribution<double> value;
        ValueRuns made;
        for (std::size_t run = 0; run < count; ++run) {
            made.least.push_back(value(random));
            made.greatest.push_back(made.least.back() + 1);
        }
        return made;
    }
};

TEST_F(OutlineLongRunTest, ReachesFromTheLeastToTheGreatest)
{
    for (std::size_t count = 1; count < 40; ++count) {
        const ValueRuns all = runs(count), joined = plotix::outlinecodec::longRunOf(all);
        EXPECT_EQ(joined.least, std::vector{*std::min_element(all.least.begin(), all.least.end())});
        EXPECT_EQ(joined.greatest, std::vector{*std::max_element(all.greatest.begin(), all.greatest.end())});
    }
}

TEST_F(OutlineLongRunTest, IsUnknownWhereAnyRunIs)
{
    for (std::size_t run = 0; run < 21; ++run) {
        ValueRuns all = runs(21);
        all.least[run] = all.greatest[run] = std::nan("");
        EXPECT_TRUE(std::isnan(plotix::outlinecodec::longRunOf(all).least[0]));
    }
}

TEST_F(OutlineLongRunTest, RunsWithoutValuesDoNotCount)
{
    ValueRuns all{{kInfinity, 3}, {-kInfinity, 4}, {}};
    EXPECT_EQ(plotix::outlinecodec::longRunOf(all).least[0], 3);
    EXPECT_EQ(plotix::outlinecodec::longRunOf(all).greatest[0], 4);
}

TEST_F(OutlineLongRunTest, OfZerosTheFirstOneStays)
{
    for (const bool isNegativeFirst : {false, true}) {
        ValueRuns all{std::vector<double>(19, 5), std::vector<double>(19, 5), {}};
        all.least[9] = isNegativeFirst ? -0.0 : 0.0;  // in a later lane than the one that follows
        all.least[16] = isNegativeFirst ? 0.0 : -0.0;
        EXPECT_EQ(std::signbit(plotix::outlinecodec::longRunOf(all).least[0]), isNegativeFirst);
    }
}

}  // namespace
