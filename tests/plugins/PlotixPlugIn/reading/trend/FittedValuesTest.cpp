#include "plugins/PlotixPlugIn/reading/trend/FittedValues.h"

#include <gtest/gtest.h>

namespace {

using plotix::fittedValues;

TEST(FittedValues, LeaveATwentiethAtEitherEnd)
{
    EXPECT_EQ(fittedValues(10, 30), (CPTPlotRange{9, 22}));
}

TEST(FittedValues, OfOneValueAloneStandRoundIt)
{
    const CPTPlotRange range = fittedValues(50, 50);
    EXPECT_NEAR(range.minLimit(), 44.5, 1e-9);
    EXPECT_NEAR(range.maxLimit(), 55.5, 1e-9);
    EXPECT_GT(fittedValues(0, 0).length, 0);
}

}  // namespace
