#include "plotkit/layout/AxisTicks.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace plotkit;

class LogarithmicTicksTest : public testing::Test {
protected:
    LogarithmicTicksTest() { axis.setLabelingPolicy(CPTAxisLabelingPolicy::Logarithmic); }
    static AxisMapping mapping(double low, double high) { return {{low, high - low}, 0, 200}; }
    std::vector<double> majors(double low, double high)
    {
        std::vector<double> values;
        for (const MajorTick& tick : majorTicks(planTicks(axis, mapping(low, high)), mapping(low, high)))
            values.push_back(tick.value);
        return values;
    }
    CPTXYAxis axis{CPTCoordinate::Y};
};

TEST_F(LogarithmicTicksTest, StandAtWholePowers)
{
    EXPECT_EQ(majors(-2.5, 1.5), (std::vector<double>{-2, -1, 0, 1}));
}

TEST_F(LogarithmicTicksTest, OfManyPowersSomeAreLeftOut)
{
    const std::vector<double> values = majors(0, 30);
    ASSERT_GE(values.size(), 3U);
    EXPECT_EQ(values[1] - values[0], 5);
}

TEST_F(LogarithmicTicksTest, MinorsStandAtTheDigitsBetween)
{
    const std::vector<double> minors = minorTicks(planTicks(axis, mapping(0, 2)), mapping(0, 2));
    ASSERT_EQ(minors.size(), 16U);
    EXPECT_DOUBLE_EQ(minors[0], std::log10(2.0));
}

TEST_F(LogarithmicTicksTest, WithinOnePowerTheyStandAtRoundValues)
{
    const std::vector<double> values = majors(std::log10(20.0), std::log10(80.0));
    ASSERT_GE(values.size(), 4U);
    EXPECT_NEAR(std::pow(10.0, values[0]), 20, 1e-9);
    EXPECT_NEAR(std::pow(10.0, values[1]), 30, 1e-9);
}

}  // namespace
