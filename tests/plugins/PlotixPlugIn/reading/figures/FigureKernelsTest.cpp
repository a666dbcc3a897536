#include "plugins/PlotixPlugIn/reading/figures/FigureKernels.h"

#include "tests/support/EveryTarget.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace {

using plotix::FigureKernels;

std::uint64_t bits(double value)
{
    return std::bit_cast<std::uint64_t>(value + 0.0);
}

class FigureKernelsTest : public testing::Test {
protected:
    void makePoints(std::size_t count)
    {
        times.assign(count, 0);
        values.assign(count, 0);
        double time = 1.7e9;
        for (std::size_t i = 0; i < count; ++i) {
            times[i] = time += random() % 20 == 0 ? 300.25 : 1.5;
            values[i] = std::normal_distribution<double>(3, 1e3)(random);
        }
    }

    std::mt19937_64 random{9};
    std::vector<double> times, values;
    const std::vector<const FigureKernels*> every = plotix::testing::everyTarget<FigureKernels>();
};

TEST_F(FigureKernelsTest, EveryProcessorGivesTheSameBits)
{
    for (std::size_t count = 1; count < 300; count += 1 + count / 7) {
        makePoints(count);
        const FigureKernels& last = *every.back();
        const auto values0 = last.values(values.data(), count);
        const auto pairs0 = last.pairs(times.data(), values.data(), count, 60);
        const auto sides0 = last.sides(times.data(), values.data(), count, 60, 100);
        for (const FigureKernels* kernels : every) {
            const auto found = kernels->values(values.data(), count);
            EXPECT_EQ(bits(found.sum), bits(values0.sum));
            EXPECT_EQ(found.minimum, values0.minimum);
            EXPECT_EQ(found.maximum, values0.maximum);
            EXPECT_EQ(bits(kernels->squares(values.data(), count, 3)), bits(last.squares(values.data(), count, 3)));
            const auto pairs = kernels->pairs(times.data(), values.data(), count, 60);
            EXPECT_EQ(bits(pairs.held), bits(pairs0.held)) << count;
            EXPECT_EQ(bits(pairs.straight), bits(pairs0.straight)) << count;
            EXPECT_EQ(bits(pairs.covered), bits(pairs0.covered)) << count;
            EXPECT_EQ(pairs.gaps, pairs0.gaps) << count;
            const auto sides = kernels->sides(times.data(), values.data(), count, 60, 100);
            EXPECT_EQ(bits(sides.heldAbove), bits(sides0.heldAbove)) << count;
            EXPECT_EQ(bits(sides.straightBelow), bits(sides0.straightBelow)) << count;
            EXPECT_EQ(bits(sides.straightAbove), bits(sides0.straightAbove)) << count;
            EXPECT_EQ(sides.crossings, sides0.crossings) << count;
        }
    }
}

TEST_F(FigureKernelsTest, FindsTheExtremesWhereverTheyStand)
{
    for (std::size_t count = 1; count < 40; ++count) {
        makePoints(count);
        for (const FigureKernels* kernels : every) {
            EXPECT_EQ(kernels->values(values.data(), count).minimum, *std::min_element(values.begin(), values.end()));
            EXPECT_EQ(kernels->values(values.data(), count).maximum, *std::max_element(values.begin(), values.end()));
        }
    }
}

TEST_F(FigureKernelsTest, SeesANaNWhereverItStands)
{
    makePoints(21);
    for (double& each : values) {
        const double kept = std::exchange(each, std::nan(""));
        for (const FigureKernels* kernels : every)
            EXPECT_TRUE(kernels->holdsNaN(values.data(), values.size()));
        each = kept;
    }
    for (const FigureKernels* kernels : every)
        EXPECT_FALSE(kernels->holdsNaN(values.data(), values.size()));
}

}  // namespace
