#include "plugins/PlotixPlugIn/reading/lanes/LaneScale.h"
#include "plugins/PlotixPlugIn/reading/lanes/OffScaleMarks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace plotix;

CPTPointSeriesPtr seriesOf(const std::vector<float>& values)
{
    std::vector<double> times(values.size());
    for (std::size_t index = 0; index < times.size(); ++index)
        times[index] = static_cast<double>(index);
    return std::make_shared<const CPTPointSeries>(SharedArray<double>::fromVector(times),
                                                  SharedArray<float>::fromVector(values), ValidityBitmap(),
                                                  values.size());
}

class LaneScaleTest : public testing::Test {
protected:
    std::optional<CPTPlotRange> fitted(const std::vector<float>& values)
    {
        return fittedLaneRange({seriesOf(values)}, settings, shown);
    }
    void expectRange(const std::optional<CPTPlotRange>& range, double lowest, double highest)
    {
        ASSERT_TRUE(range);
        EXPECT_NEAR(range->minLimit(), lowest, 1e-6);
        EXPECT_NEAR(range->maxLimit(), highest, 1e-6);
    }
    LaneSettings settings;
    CPTPlotRange shown{0, 1};
};

TEST_F(LaneScaleTest, AFitShowsAllValuesWithAMargin)
{
    expectRange(fitted({10, 30}), 9, 31);
}

TEST_F(LaneScaleTest, OneValueStandsInTheMiddle)
{
    const auto range = fitted({20, 20});
    ASSERT_TRUE(range && range->length > 0);
    EXPECT_DOUBLE_EQ(range->location + range->length / 2, 20);
}

TEST_F(LaneScaleTest, NoValuesGiveNoRange)
{
    EXPECT_FALSE(fitted({}));
}

TEST_F(LaneScaleTest, ARobustFitLeavesOutWhatIsFarOff)
{
    settings.fit = LaneFit::Robust;
    std::vector<float> values;
    for (int index = 0; index < 100; ++index)
        values.push_back(static_cast<float>(index % 10));
    values.push_back(1'048);
    const auto range = fitted(values);
    ASSERT_TRUE(range);
    EXPECT_LT(range->maxLimit(), 30);
    EXPECT_GT(range->maxLimit(), 9);
}

TEST_F(LaneScaleTest, ARobustFitOfMostlyOneValueShowsAll)
{
    settings.fit = LaneFit::Robust;
    expectRange(fitted({0, 0, 0, 0, 0, 0, 0, 100}), -5, 105);
}

TEST_F(LaneScaleTest, GrowOnlyKeepsWhatWasShown)
{
    settings.fit = LaneFit::GrowOnly;
    shown = {-100, 50};
    expectRange(fitted({10, 30}), -100, 31);
}

TEST_F(LaneScaleTest, AFixedRangeIsAsTyped)
{
    settings = {.fit = LaneFit::Fixed, .lowest = -3, .highest = 7};
    expectRange(fitted({10, 30}), -3, 7);
    settings = {.fit = LaneFit::Fixed, .isLogarithmic = true, .lowest = 0.01, .highest = 1000};
    expectRange(fitted({10, 30}), -2, 3);
}

TEST_F(LaneScaleTest, ALogarithmicSeriesHoldsPowersAndDropsWhatHasNone)
{
    const CPTPointSeriesPtr powers = logarithmicSeries(*seriesOf({1, 100, 0, -5, 0.001F}));
    EXPECT_EQ(powers->count(), 3U);
    EXPECT_FLOAT_EQ(powers->y()[1], 2);
    EXPECT_FALSE(powers->isPoint(2));
    EXPECT_FLOAT_EQ(powers->extent()->minY, -3);
}

TEST_F(LaneScaleTest, TextsOfFitsAreReadBack)
{
    for (const auto fit : {LaneFit::AllValues, LaneFit::Robust, LaneFit::GrowOnly, LaneFit::Fixed})
        EXPECT_EQ(laneFitNamed(textOf(fit)), fit);
}

TEST(OffScale, ValuesBeyondAreCountedInRuns)
{
    std::vector<float> values(5000, 5);
    values[100] = 50;
    values[103] = 70;
    values[4000] = -9;
    const OffScaleRuns runs = offScaleRuns(*seriesOf(values), 0, values.size(), 0, 10, 10);
    ASSERT_TRUE(runs.above.size() == 1 && runs.below.size() == 1);
    EXPECT_EQ(runs.above[0].count, 2U);
    EXPECT_EQ(runs.above[0].farthest, 70);
    EXPECT_EQ(runs.below[0].first, 4000U);
}

TEST(OffScale, CountsAreThoseOfEveryValueLookedAt)
{
    std::mt19937 random(7);
    std::normal_distribution<float> normal;
    std::vector<float> values(50'000);
    for (float& value : values)
        value = normal(random);
    const OffScaleRuns runs = offScaleRuns(*seriesOf(values), 123, 45'678, -2, 3, 40);
    std::size_t below = 0, above = 0;
    for (const OffScaleRun& run : runs.below)
        below += run.count;
    for (const OffScaleRun& run : runs.above)
        above += run.count;
    EXPECT_EQ(below, std::count_if(values.begin() + 123, values.begin() + 45'678, [](float v) { return v < -2; }));
    EXPECT_EQ(above, std::count_if(values.begin() + 123, values.begin() + 45'678, [](float v) { return v > 3; }));
}

}  // namespace
