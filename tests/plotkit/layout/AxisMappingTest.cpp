#include "plotkit/layout/AxisMapping.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace plotkit;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const QRectF kArea(10, 20, 200, 100);

TEST(AxisMappingTest, EndsAndMiddleOfXStandAtEdgesAndCentre)
{
    const AxisMapping x = xMapping({1000, 50}, kArea);
    EXPECT_DOUBLE_EQ(coordinateForValue(x, 1000), 10);
    EXPECT_DOUBLE_EQ(coordinateForValue(x, 1050), 210);
    EXPECT_DOUBLE_EQ(coordinateForValue(x, 1025), 110);
    EXPECT_DOUBLE_EQ(coordinateForValue(x, 900), -390);
}

TEST(AxisMappingTest, YGrowsUpward)
{
    const AxisMapping y = yMapping({-5, 10}, kArea);
    EXPECT_DOUBLE_EQ(coordinateForValue(y, -5), 120);
    EXPECT_DOUBLE_EQ(coordinateForValue(y, 5), 20);
}

TEST(AxisMappingTest, ANegativeLengthMirrors)
{
    const AxisMapping x = xMapping({50, -50}, kArea);
    EXPECT_DOUBLE_EQ(coordinateForValue(x, 50), 10);
    EXPECT_DOUBLE_EQ(coordinateForValue(x, 0), 210);
    EXPECT_DOUBLE_EQ(valuePerUnit(x), 0.25);
}

TEST(AxisMappingTest, ThereAndBackIsTheSameValue)
{
    for (const CPTPlotRange& range : {CPTPlotRange{1.7e9, 3600}, CPTPlotRange{1.7e9, -0.1}, CPTPlotRange{-3, 1e12}}) {
        const AxisMapping y = yMapping(range, kArea);
        for (const double place : {-50.0, 20.0, 77.7, 120.0})
            EXPECT_NEAR(coordinateForValue(y, valueForCoordinate(y, place)), place, 1e-3);
    }
}

TEST(AxisMappingTest, RangesThatTellNothingApartPlaceEverythingInTheMiddle)
{
    for (const CPTPlotRange& range : {CPTPlotRange{7, 0}, CPTPlotRange{7, std::nan("")}, CPTPlotRange{kInfinity, 1},
                                      CPTPlotRange{1e308, 1.7e308}}) {
        const AxisMapping x = xMapping(range, kArea);
        EXPECT_FALSE(x.isProper());
        EXPECT_EQ(coordinateForValue(x, 123), 110);
        EXPECT_EQ(coordinateForValue(x, kInfinity), 110);
        EXPECT_EQ(valuePerUnit(x), 0);
        EXPECT_EQ(rangePannedBy(x, 10).location, range.location);
    }
    EXPECT_EQ(valueForCoordinate(xMapping({7, 0}, kArea), 99), 7);
}

TEST(AxisMappingTest, AStretchWithoutLengthTellsNothingApart)
{
    const AxisMapping x = xMapping({0, 1}, QRectF(10, 10, 0, 5));
    EXPECT_EQ(coordinateForValue(x, 0.7), 10);
    EXPECT_EQ(valueForCoordinate(x, 33), 0);
}

TEST(AxisMappingTest, InfinityAndNanStayWhatTheyAre)
{
    const AxisMapping x = xMapping({0, 1}, kArea);
    EXPECT_EQ(coordinateForValue(x, kInfinity), kInfinity);
    EXPECT_EQ(coordinateForValue(x, -kInfinity), -kInfinity);
    EXPECT_TRUE(std::isnan(coordinateForValue(x, std::nan(""))));
}

TEST(AxisMappingTest, PanningMovesTheContentWithThePointer)
{
    const AxisMapping x = xMapping({100, 50}, kArea);
    EXPECT_EQ(rangePannedBy(x, 40), (CPTPlotRange{90, 50}));
    const AxisMapping y = yMapping({0, 10}, kArea);
    EXPECT_EQ(rangePannedBy(y, 10), (CPTPlotRange{1, 10}));
    EXPECT_EQ(rangePannedBy(y, kInfinity), (CPTPlotRange{0, 10}));
}

TEST(AxisMappingTest, PointsMapBothWays)
{
    const AxisMapping x = xMapping({0, 20}, kArea);
    const AxisMapping y = yMapping({0, 10}, kArea);
    EXPECT_EQ(pointForValue(x, y, {10, 5}), QPointF(110, 70));
    EXPECT_EQ(valueForPoint(x, y, {110, 70}), QPointF(10, 5));
}

}  // namespace
