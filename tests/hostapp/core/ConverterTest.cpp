#include "hostapp/core/Converter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

double rounded(double value, int toNearest = 10)
{
    return plotix::Converter().roundedValue(value, toNearest);
}

struct Row {
    const char* name;
    double value;
    int toNearest;
    double expected;
};

class ConverterTest : public testing::TestWithParam<Row> {};

TEST_P(ConverterTest, Rounds)
{
    EXPECT_EQ(rounded(GetParam().value, GetParam().toNearest), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ConverterTest,
    testing::Values(Row{"FourDigitsWhereTheNearestTenthHasFewer", 54.83274, 10, 54.83},
                    Row{"TheNearestTenthWhereThatHasMoreDigits", 1013.2534, 10, 1013.3},
                    Row{"SmallValuesKeepFourDigits", 0.00482531, 10, 0.004825}, Row{"WholeNumbersStay", 4, 10, 4},
                    Row{"Negative", -1013.2534, 10, -1013.3}, Row{"NegativeFourDigits", -54.83274, 10, -54.83},
                    Row{"JustBelowAThousand", 999.96, 10, 1000}, Row{"HundredsKeepOneDecimal", 123.456, 10, 123.5},
                    Row{"Large", 123456789.04, 10, 123456789.0}, Row{"LargeTenths", 123456789.06, 10, 123456789.1},
                    Row{"ToWholeNumbers", 12345.6, 1, 12346}, Row{"ToHundredths", 1013.2534, 100, 1013.25},
                    Row{"ToQuarters", 1013.2, 4, 1013.25}, Row{"Zero", 0, 10, 0},
                    Row{"NoPartLeavesTheValue", 54.83274, 0, 54.83274},
                    Row{"NegativePartLeavesTheValue", 54.83274, -10, 54.83274}),
    [](const testing::TestParamInfo<Row>& row) { return row.param.name; });

TEST(ConverterTest, WhatIsNoFiniteNumberStays)
{
    EXPECT_TRUE(std::isnan(rounded(std::nan(""))));
    EXPECT_EQ(rounded(std::numeric_limits<double>::infinity()), std::numeric_limits<double>::infinity());
    EXPECT_EQ(rounded(1.7e308), 1.7e308);
}

TEST(ConverterTest, NegativeZeroStays)
{
    EXPECT_TRUE(std::signbit(rounded(-0.0)));
}

}  // namespace
