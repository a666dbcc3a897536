#include "plotkit/layout/PlotMovement.h"

#include <gtest/gtest.h>

namespace {

using plotkit::PlotMovement;

class PlotMovementTest : public testing::Test {
protected:
    std::optional<CPTPlotRange> show(double from, double length) { return movement.next(0, {from, length}); }
    static std::optional<CPTPlotRange> range(double from, double length) { return CPTPlotRange{from, length}; }

    PlotMovement movement;
};

TEST_F(PlotMovementTest, NothingComesNextWhereNothingMoved)
{
    EXPECT_EQ(show(100, 10), std::nullopt);
    EXPECT_EQ(show(100, 10), std::nullopt);
}

TEST_F(PlotMovementTest, ARangeThatMovesOnIsFollowedByTheOneBesideIt)
{
    show(100, 10);
    EXPECT_EQ(show(101, 10), range(111, 10));
    EXPECT_EQ(show(99, 10), range(89, 10));
}

TEST_F(PlotMovementTest, AReversedRangeGoesOnTheWayItWent)
{
    show(100, -10);
    EXPECT_EQ(show(101, -10), range(111, -10));
}

TEST_F(PlotMovementTest, AFrameThatIsPaintedAgainChangesNoDirection)
{
    show(100, 10);
    show(101, 10);
    EXPECT_EQ(show(101, 10), range(111, 10));
}

TEST_F(PlotMovementTest, AZoomEndsTheMovement)
{
    show(100, 10);
    show(101, 10);
    EXPECT_EQ(show(101, 5), std::nullopt);
    EXPECT_EQ(show(101, 5), std::nullopt);
}

TEST_F(PlotMovementTest, EachPlotMovesByItself)
{
    show(100, 10);
    EXPECT_EQ(movement.next(1, {100, 10}), std::nullopt);
    EXPECT_EQ(show(101, 10), range(111, 10));
    EXPECT_EQ(movement.next(1, {100, 10}), std::nullopt);
}

TEST_F(PlotMovementTest, TheNearestPartLiesBesideWhatIsShown)
{
    EXPECT_EQ(PlotMovement::nearest({110, 10}, {100, 10}, 0.25), (CPTPlotRange{110, 2.5}));
    EXPECT_EQ(PlotMovement::nearest({90, 10}, {100, 10}, 0.25), (CPTPlotRange{97.5, 2.5}));
    EXPECT_EQ(PlotMovement::nearest({110, -10}, {100, -10}, 0.25), (CPTPlotRange{100, 2.5}));
}

}  // namespace
