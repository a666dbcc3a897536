#include "plugins/PlotixPlugIn/logic/ValueTicks.h"

#include "base/SinglePrecision.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using plotix::majorIntervalForValueSpan;

namespace {

std::string patternFor(double span)
{
    return plotix::valueLabelFormatForSpan(span).pattern;
}

TEST(ValueInterval, IsATenthBelowFive)
{
    EXPECT_FLOAT_EQ(static_cast<float>(majorIntervalForValueSpan(4.9)), 0.49F);
    EXPECT_EQ(majorIntervalForValueSpan(0), 0);
}

TEST(ValueInterval, JumpsToWholeNumbersAtFive)
{
    EXPECT_EQ(majorIntervalForValueSpan(5.0), 1);
    EXPECT_EQ(majorIntervalForValueSpan(40), 4);
    EXPECT_EQ(majorIntervalForValueSpan(44), 4);
}

TEST(ValueInterval, RoundsHalvesAwayFromZero)
{
    EXPECT_EQ(majorIntervalForValueSpan(15), 2);
    EXPECT_EQ(majorIntervalForValueSpan(25), 3);
}

// Just below 5 as a double, 5 as the float it is read as.
TEST(ValueInterval, ReadsTheSpanAsAFloat)
{
    EXPECT_EQ(majorIntervalForValueSpan(4.9999999999), 1);
    EXPECT_EQ(majorIntervalForValueSpan(0.3), 0.1 * static_cast<double>(0.3F));
}

TEST(ValueInterval, OfAReversedSpanIsATenthOfIt)
{
    EXPECT_EQ(majorIntervalForValueSpan(-20), -2);
}

TEST(ValueInterval, OfNoNumberIsNoNumber)
{
    EXPECT_TRUE(std::isnan(majorIntervalForValueSpan(std::numeric_limits<double>::quiet_NaN())));
}

TEST(ValueLabels, ShowTwoDecimalsBelowSeven)
{
    EXPECT_EQ(patternFor(6.99), "#.##");
    EXPECT_EQ(plotix::valueLabelFormatForSpan(6.99).minimumFractionDigits, 2);
}

TEST(ValueLabels, ShowOneDecimalFromSevenOn)
{
    EXPECT_EQ(patternFor(7.0), "#.#");
    EXPECT_EQ(plotix::valueLabelFormatForSpan(7.0).minimumFractionDigits, 1);
}

TEST(ValueLabels, TestTheFloatAndNotTheDouble)
{
    EXPECT_EQ(patternFor(6.99999999999), "#.#");
}

TEST(SinglePrecision, GivesTheNearestFloat)
{
    EXPECT_EQ(plotix::singlePrecision(20.123456789), 20.123456789F);
}

TEST(SinglePrecision, BeyondTheRangeIsInfinity)
{
    EXPECT_EQ(plotix::singlePrecision(1e300), std::numeric_limits<float>::infinity());
    EXPECT_EQ(plotix::singlePrecision(-1e300), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(plotix::singlePrecision(std::numeric_limits<double>::quiet_NaN())));
}

}  // namespace
