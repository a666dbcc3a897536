#include "plugins/PlotixPlugIn/logic/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using plotix::numberText;

TEST(NumberTextTest, IsTheShortestTextOfTheFloatAndNotOfTheDouble)
{
    EXPECT_EQ(numberText(20.1F), "20.1");
    EXPECT_EQ(numberText(0.1F), "0.1");
    EXPECT_EQ(numberText(1013.25F), "1013.25");
}

TEST(NumberTextTest, WholeNumbersHaveNoPoint)
{
    EXPECT_EQ(numberText(0.0F), "0");
    EXPECT_EQ(numberText(-4.0F), "-4");
    EXPECT_EQ(numberText(1000000.0F), "1000000");
}

TEST(NumberTextTest, VeryLargeAndVerySmallNumbersHaveAnExponent)
{
    EXPECT_EQ(numberText(1e20F), "1e+20");
    EXPECT_EQ(numberText(2.5e-7F), "2.5e-07");
    EXPECT_EQ(numberText(0.00002F), "0.00002");
}

TEST(NumberTextTest, NumbersThatAreNone)
{
    EXPECT_EQ(numberText(std::numeric_limits<float>::infinity()), "inf");
    EXPECT_EQ(numberText(-std::numeric_limits<float>::infinity()), "-inf");
    EXPECT_EQ(numberText(std::numeric_limits<float>::quiet_NaN()), "nan");
}

TEST(NumberTextTest, ReadsBackToTheSameFloat)
{
    for (const float number : {3.4e38F, 1.17549435e-38F, 16777216.0F, 0.3F, 54.83F})
        EXPECT_EQ(numberText(number).toFloat(), number);
}

}  // namespace
