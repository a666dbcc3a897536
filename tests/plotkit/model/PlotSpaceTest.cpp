#include "plotkit/model/CPTPlotSpace.h"
#include "tests/plotkit/model/SeriesBuilding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace {

using plotkit_test::BoundPlot;
using plotkit_test::plotOf;

/// Writes down what it is asked and answers what the test wants.
class RecordingDelegate : public CPTPlotSpaceDelegate {
public:
    bool plotSpaceShouldScaleBy(CPTXYPlotSpace*, double factor, QPointF) override
    {
        log.push_back(QStringLiteral("scale %1").arg(factor));
        return scales;
    }
    CPTPlotRange plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                CPTCoordinate coordinate) override
    {
        const CPTPlotRange& now = coordinate == CPTCoordinate::X ? space->xRange() : space->yRange();
        log.push_back(QStringLiteral("will %1 %2+%3 was %4+%5")
                          .arg(name(coordinate))
                          .arg(range.location)
                          .arg(range.length)
                          .arg(now.location)
                          .arg(now.length));
        return answer.value_or(range);
    }
    void plotSpaceDidChangePlotRangeForCoordinate(CPTXYPlotSpace* space, CPTCoordinate coordinate) override
    {
        const CPTPlotRange& now = coordinate == CPTCoordinate::X ? space->xRange() : space->yRange();
        log.push_back(QStringLiteral("did %1 %2+%3").arg(name(coordinate)).arg(now.location).arg(now.length));
    }
    bool plotSpaceShouldHandlePointingDeviceUpEvent(CPTXYPlotSpace*, QPointF) override { return true; }
    bool plotSpaceShouldHandlePointingDeviceCancelledEvent(CPTXYPlotSpace*) override { return true; }

    QStringList log;
    std::optional<CPTPlotRange> answer;
    bool scales = true;

private:
    static QString name(CPTCoordinate coordinate) { return coordinate == CPTCoordinate::X ? "x" : "y"; }
};

class PlotSpaceTest : public testing::Test {
protected:
    void fit(const std::vector<BoundPlot>& plots)
    {
        std::vector<CPTScatterPlotPtr> list;
        for (const BoundPlot& bound : plots)
            list.push_back(bound.plot);
        space.scaleToFitPlots(list);
    }
    void expectRanges(const CPTPlotRange& x, const CPTPlotRange& y) const
    {
        EXPECT_EQ(space.xRange(), x);
        EXPECT_EQ(space.yRange(), y);
    }

    RecordingDelegate delegate;
    CPTXYPlotSpace space;
};

TEST_F(PlotSpaceTest, ShowsZeroToOneAtFirst)
{
    expectRanges({0, 1}, {0, 1});
}

TEST_F(PlotSpaceTest, RangeWithoutDelegateIsTakenAsItStands)
{
    space.setXRange({5, -2});
    expectRanges({5, -2}, {0, 1});
}

TEST_F(PlotSpaceTest, DelegateIsAskedBeforeAndToldAfterTheChange)
{
    space.setDelegate(&delegate);
    space.setXRange({10, 20});
    EXPECT_EQ(delegate.log, (QStringList{"will x 10+20 was 0+1", "did x 10+20"}));
}

TEST_F(PlotSpaceTest, DelegatesAnswerIsStored)
{
    space.setDelegate(&delegate);
    delegate.answer = CPTPlotRange{3, 4};
    space.setYRange({10, 20});
    expectRanges({0, 1}, {3, 4});
}

TEST_F(PlotSpaceTest, ChangeIsToldOnceAndAnUnchangedRangeNotAtAll)
{
    int changes = 0;
    space.setChangeHandler([&changes] { ++changes; });
    space.setXRange({10, 20});
    space.setXRange({10, 20});
    EXPECT_EQ(changes, 1);
}

TEST_F(PlotSpaceTest, FitProposesTheUnionOfTheExtentsXFirst)
{
    space.setDelegate(&delegate);
    fit({plotOf({100, 200}, {5, -5}), plotOf({150, 300}, {7, 6})});
    EXPECT_EQ(delegate.log,
              (QStringList{"will x 100+200 was 0+1", "did x 100+200", "will y -5+12 was 0+1", "did y -5+12"}));
}

TEST_F(PlotSpaceTest, FitProposesAnExtentOfLengthZeroAsItStands)
{
    fit({plotOf({0}, {0})});
    expectRanges({0, 0}, {0, 0});
}

TEST_F(PlotSpaceTest, FitOfNegativeValuesDoesNotReachToZero)
{
    fit({plotOf({-20, -10}, {-4, -3})});
    expectRanges({-20, 10}, {-4, 1});
}

TEST_F(PlotSpaceTest, FitCountsHiddenPlots)
{
    const BoundPlot hidden = plotOf({0, 50}, {0, 9});
    hidden.plot->setHidden(true);
    fit({plotOf({10, 20}, {1, 2}), hidden});
    expectRanges({0, 50}, {0, 9});
}

TEST_F(PlotSpaceTest, FitWithoutPointsProposesNothing)
{
    space.setDelegate(&delegate);
    fit({});
    fit({plotOf({}, {})});
    space.scaleToFitPlots({nullptr, std::make_shared<CPTScatterPlot>()});
    EXPECT_TRUE(delegate.log.isEmpty());
}

TEST_F(PlotSpaceTest, ScalingKeepsThePointUnderThePointer)
{
    space.setXRange({100, 40});
    space.setYRange({0, 10});
    space.scaleBy(2, {110, 5});
    expectRanges({105, 20}, {2.5, 5});
}

TEST_F(PlotSpaceTest, ScalingAsksFirstAndStopsWhenDeclined)
{
    space.setDelegate(&delegate);
    delegate.scales = false;
    space.scaleBy(2, {0, 0});
    EXPECT_EQ(delegate.log, QStringList{"scale 2"});
    expectRanges({0, 1}, {0, 1});
}

TEST_F(PlotSpaceTest, ScalingByNonsenseIsIgnored)
{
    space.setDelegate(&delegate);
    for (const double factor : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()})
        space.scaleBy(factor, {0, 0});
    EXPECT_TRUE(delegate.log.isEmpty());
}

TEST_F(PlotSpaceTest, ScalingAboutNowhereLeavesThatAxis)
{
    space.scaleBy(2, {std::nan(""), 0});
    expectRanges({0, 1}, {0, 0.5});
}

}  // namespace
