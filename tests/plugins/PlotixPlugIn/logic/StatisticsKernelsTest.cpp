#include "plugins/PlotixPlugIn/logic/StatisticsKernels.h"

#include "tests/support/EveryTarget.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace {

using plotix::StatisticsKernels;

class StatisticsKernelsTest : public testing::Test {
protected:
    void makeValues(std::size_t count)
    {
        std::normal_distribution<double> value(3, 1e3);
        values.resize(count);
        for (double& each : values)
            each = value(random);
    }

    std::mt19937_64 random{5};
    std::vector<double> values;
    const std::vector<const StatisticsKernels*> every = plotix::testing::everyTarget<StatisticsKernels>();
};

TEST_F(StatisticsKernelsTest, EveryProcessorAddsInTheOrderOfTheValues)
{
    for (std::size_t count = StatisticsKernels::kRow; count < 500; count += StatisticsKernels::kRow) {
        makeValues(count);
        const double sum = std::accumulate(values.begin(), values.end(), 0.1);
        for (const StatisticsKernels* kernels : every) {
            const StatisticsKernels::Found found = kernels->addUp(values.data(), count, 0.1);
            EXPECT_EQ(std::bit_cast<std::uint64_t>(found.sum), std::bit_cast<std::uint64_t>(sum)) << count;
            EXPECT_EQ(found.minimum, *std::min_element(values.begin(), values.end())) << count;
            EXPECT_EQ(found.maximum, *std::max_element(values.begin(), values.end())) << count;
            EXPECT_FALSE(found.hasNaN);
        }
    }
}

TEST_F(StatisticsKernelsTest, EveryProcessorSeesANaNWhereverItStands)
{
    makeValues(2 * StatisticsKernels::kRow);
    for (double& each : values) {
        const double kept = std::exchange(each, std::nan(""));
        for (const StatisticsKernels* kernels : every)
            EXPECT_TRUE(kernels->addUp(values.data(), values.size(), 0).hasNaN);
        each = kept;
    }
}

}  // namespace
