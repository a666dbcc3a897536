#include "plotkit/model/CPTScatterPlot.h"
#include "tests/plotkit/model/SeriesBuilding.h"

#include <gtest/gtest.h>

namespace {

using plotkit_test::bindBoth;
using plotkit_test::seriesOf;

class ScatterPlotTest : public testing::Test {
protected:
    CPTSeriesControllerPtr controller = std::make_shared<CPTSeriesController>(seriesOf({1, 2}, {3, 4}));
    CPTScatterPlot plot;
};

TEST_F(ScatterPlotTest, HasPointsOnlyWhenBothBindingsStand)
{
    plot.bind(CPTScatterPlotBindingXValues, controller, QStringLiteral("arrangedObjects.x"));
    EXPECT_EQ(plot.series(), nullptr);
    plot.bind(CPTScatterPlotBindingYValues, controller, QStringLiteral("arrangedObjects.y"));
    EXPECT_EQ(plot.series(), controller->content());
}

TEST_F(ScatterPlotTest, BindingsReadBack)
{
    bindBoth(plot, controller);
    EXPECT_EQ(plot.boundKeyPath(CPTScatterPlotBindingXValues), u"arrangedObjects.x");
    EXPECT_EQ(plot.boundKeyPath(CPTScatterPlotBindingYValues), u"arrangedObjects.y");
    EXPECT_EQ(plot.boundController(), controller);
}

TEST_F(ScatterPlotTest, ForeignKeyPathGivesNoPoints)
{
    plot.bind(CPTScatterPlotBindingXValues, controller, QStringLiteral("arrangedObjects.x"));
    plot.bind(CPTScatterPlotBindingYValues, controller, QStringLiteral("arrangedObjects.z"));
    EXPECT_EQ(plot.series(), nullptr);
}

TEST_F(ScatterPlotTest, PointsGoWithTheirController)
{
    bindBoth(plot, controller);
    controller.reset();
    EXPECT_EQ(plot.series(), nullptr);
}

TEST_F(ScatterPlotTest, BindingToAnotherControllerDropsTheOtherBinding)
{
    bindBoth(plot, controller);
    const auto other = std::make_shared<CPTSeriesController>(seriesOf({9}, {9}));
    plot.bind(CPTScatterPlotBindingXValues, other, QStringLiteral("arrangedObjects.x"));
    EXPECT_EQ(plot.series(), nullptr);
    plot.bind(CPTScatterPlotBindingYValues, other, QStringLiteral("arrangedObjects.y"));
    EXPECT_EQ(plot.series(), other->content());
}

TEST_F(ScatterPlotTest, BindingToNothingUnbinds)
{
    bindBoth(plot, controller);
    plot.bind(CPTScatterPlotBindingXValues, nullptr, QStringLiteral("arrangedObjects.x"));
    EXPECT_EQ(plot.series(), nullptr);
    EXPECT_TRUE(plot.boundKeyPath(CPTScatterPlotBindingYValues).isEmpty());
}

TEST_F(ScatterPlotTest, NewContentOfTheControllerIsAChangeToldOnce)
{
    bindBoth(plot, controller);
    int changes = 0;
    plot.setChangeHandler([&changes] { ++changes; });
    controller->setContent(seriesOf({5}, {5}));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(plot.series()->count(), 1U);
}

TEST_F(ScatterPlotTest, ControllerMayOutliveThePlot)
{
    int changes = 0;
    {
        CPTScatterPlot passing;
        bindBoth(passing, controller);
        passing.setChangeHandler([&changes] { ++changes; });
    }
    controller->setContent(seriesOf({5}, {5}));
    EXPECT_EQ(changes, 0);
}

}  // namespace
