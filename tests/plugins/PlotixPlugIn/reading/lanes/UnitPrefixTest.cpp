#include "plugins/PlotixPlugIn/reading/lanes/UnitPrefix.h"

#include <gtest/gtest.h>

namespace {

using plotix::PrefixedUnit;
using plotix::prefixedUnit;

TEST(UnitPrefix, LargeNumbersGetALargerUnit)
{
    EXPECT_EQ(prefixedUnit("B/s", 547e6), (PrefixedUnit{"MB/s", 1e-6}));
    EXPECT_EQ(prefixedUnit("kWh", 25'000).symbol, QStringLiteral("MWh"));
    EXPECT_DOUBLE_EQ(prefixedUnit("kWh", 25'000).factor, 1e-3);
}

TEST(UnitPrefix, SmallNumbersGetASmallerUnit)
{
    EXPECT_EQ(prefixedUnit("m", 5e-6).symbol, QStringLiteral("µm"));
    EXPECT_DOUBLE_EQ(prefixedUnit("mm", 0.001).factor, 1e3);
    EXPECT_EQ(prefixedUnit("mm", 0.001).symbol, QStringLiteral("µm"));
}

TEST(UnitPrefix, ShortNumbersStayAsTheyAre)
{
    EXPECT_EQ(prefixedUnit("kW", 9'999), (PrefixedUnit{"kW", 1}));
    EXPECT_EQ(prefixedUnit("kW", 0.01), (PrefixedUnit{"kW", 1}));
    EXPECT_EQ(prefixedUnit("W", 0), (PrefixedUnit{"W", 1}));
}

TEST(UnitPrefix, UnitsThatTakeNoneKeepTheirNumbers)
{
    for (const char* unit : {"°C", "%", "m²", "m³", "ppm", "", "min", "mph"})
        EXPECT_EQ(prefixedUnit(QString::fromUtf8(unit), 5e7), (PrefixedUnit{QString::fromUtf8(unit), 1})) << unit;
}

TEST(UnitPrefix, ThereIsNoMillibyte)
{
    EXPECT_EQ(prefixedUnit("B", 0.001).symbol, QStringLiteral("B"));
}

}  // namespace
