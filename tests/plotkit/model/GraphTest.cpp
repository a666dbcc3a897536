#include "plotkit/model/CPTXYGraph.h"
#include "tests/plotkit/model/SeriesBuilding.h"

#include <gtest/gtest.h>

namespace {

using plotkit_test::BoundPlot;
using plotkit_test::plotOf;
using plotkit_test::seriesOf;

CPTColor grey(double level)
{
    return CPTColor::fromRgbF(float(level), float(level), float(level));
}

class GraphTest : public testing::Test {
protected:
    void SetUp() override
    {
        graph.setNeedsDisplayHandler([this] { ++displays; });
    }
    void expectDisplayNeeded(const std::function<void()>& change)
    {
        displays = 0;
        change();
        EXPECT_GT(displays, 0);
    }

    CPTXYGraph graph;
    int displays = 0;
};

TEST_F(GraphTest, RangeChangesNeedDisplay)
{
    expectDisplayNeeded([this] { graph.defaultPlotSpace()->setXRange({0, 7}); });
    expectDisplayNeeded([this] { graph.defaultPlotSpace()->setYRange({0, 7}); });
}

TEST_F(GraphTest, AxisChangesNeedDisplay)
{
    expectDisplayNeeded([this] { graph.axisSet()->firstAxis()->setMajorIntervalLength(5); });
    expectDisplayNeeded([this] { graph.axisSet()->lastAxis()->setTitle(QStringLiteral("Value")); });
}

TEST_F(GraphTest, PlotChangesNeedDisplay)
{
    const BoundPlot bound = plotOf({0, 1}, {0, 1});
    expectDisplayNeeded([&] { graph.addPlot(bound.plot); });
    expectDisplayNeeded([&] { bound.plot->setHidden(true); });
    expectDisplayNeeded([&] { bound.plot->setDataLineStyle({.width = 3}); });
    expectDisplayNeeded([&] { bound.controller->setContent(seriesOf({1}, {1})); });
    expectDisplayNeeded([&] { graph.removePlot(bound.plot); });
}

TEST_F(GraphTest, GraphStylesNeedDisplay)
{
    expectDisplayNeeded([this] { graph.setFill(CPTFill::withColor(Qt::red)); });
    expectDisplayNeeded([this] { graph.setPlotAreaFramePadding({1, 2, 3, 4}); });
    expectDisplayNeeded([this] { graph.setTitle(QStringLiteral("Title")); });
    expectDisplayNeeded([this] { graph.setBounds({0, 0, 10, 10}); });
}

TEST_F(GraphTest, RemovedPlotNoLongerReachesTheGraph)
{
    const BoundPlot bound = plotOf({0, 1}, {0, 1});
    graph.addPlot(bound.plot);
    graph.removePlot(bound.plot);
    displays = 0;
    bound.plot->setHidden(true);
    EXPECT_EQ(displays, 0);
}

TEST_F(GraphTest, EveryPlotOfACopiedListCanBeRemoved)
{
    graph.addPlot(std::make_shared<CPTScatterPlot>());
    graph.addPlot(std::make_shared<CPTScatterPlot>());
    while (!graph.allPlots().empty())
        graph.removePlot(graph.allPlots().front());
    EXPECT_TRUE(graph.allPlots().empty());
}

TEST_F(GraphTest, PlotsAreAddedOnceAndNullNever)
{
    const auto plot = std::make_shared<CPTScatterPlot>();
    graph.addPlot(plot);
    graph.addPlot(plot);
    graph.addPlot(nullptr);
    graph.removePlot(nullptr);
    EXPECT_EQ(graph.allPlots().size(), 1U);
}

TEST_F(GraphTest, PlotIsFoundByItsIdentifier)
{
    const auto plot = std::make_shared<CPTScatterPlot>();
    plot->setIdentifier(QStringLiteral("airTemperature"));
    graph.addPlot(plot);
    EXPECT_EQ(graph.plotWithIdentifier(QStringLiteral("airTemperature")), plot);
    EXPECT_EQ(graph.plotWithIdentifier(QStringLiteral("pressure")), nullptr);
}

TEST_F(GraphTest, PlotMayOutliveTheGraph)
{
    const BoundPlot bound = plotOf({0, 1}, {0, 1});
    {
        CPTXYGraph passing;
        passing.addPlot(bound.plot);
    }
    bound.plot->setHidden(true);
    EXPECT_TRUE(bound.plot->isHidden());
}

TEST_F(GraphTest, SameBoundsAgainNeedNoDisplay)
{
    graph.setBounds({0, 0, 10, 10});
    displays = 0;
    graph.setBounds({0, 0, 10, 10});
    EXPECT_EQ(displays, 0);
}

TEST_F(GraphTest, NewAxesLabelAutomaticallyWithOneDecimal)
{
    EXPECT_EQ(graph.axisSet()->xAxis()->labelingPolicy(), CPTAxisLabelingPolicy::Automatic);
    EXPECT_EQ(graph.axisSet()->yAxis()->labelFormatter()->stringForNumber(0.25), u"0.2");
    EXPECT_EQ(graph.axisSet()->yAxis()->labelFormatter()->stringForNumber(20), u"20.0");
}

TEST_F(GraphTest, PaddingIsTwentyOnEverySide)
{
    const CPTPadding twenty{20, 20, 20, 20};
    EXPECT_EQ(graph.padding(), twenty);
}

class ThemeTest : public GraphTest {
protected:
    void SetUp() override { graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme)); }
};

TEST_F(ThemeTest, UnknownThemeIsNoneAndChangesNothing)
{
    const CPTFill before = graph.fill();
    EXPECT_EQ(CPTTheme::themeNamed(QStringLiteral("Plain")), nullptr);
    graph.applyTheme(nullptr);
    EXPECT_EQ(graph.fill(), before);
}

TEST_F(ThemeTest, GraphFillRunsFromDarkToLighterToDark)
{
    const CPTFill expected{{{0.0, grey(0.1)}, {0.5, grey(0.3)}, {1.0, grey(0.1)}}};
    EXPECT_EQ(graph.fill(), expected);
}

TEST_F(ThemeTest, FrameIsLighterAtTheTopWithAWideBorderAndRoundCorners)
{
    const CPTFill expected{{{0.0, grey(0.1)}, {1.0, grey(0.3)}}};
    EXPECT_EQ(graph.plotAreaFrame().fill, expected);
    EXPECT_EQ(graph.plotAreaFrame().borderLineStyle->width, 4.0);
    EXPECT_EQ(graph.plotAreaFrame().borderLineStyle->color, grey(0.2));
    EXPECT_EQ(graph.plotAreaFrame().cornerRadius, 10.0);
}

TEST_F(ThemeTest, AxesAreGreyWithWhiteTexts)
{
    for (CPTXYAxis* axis : {graph.axisSet()->xAxis(), graph.axisSet()->yAxis()}) {
        EXPECT_EQ(axis->axisLineStyle()->width, 2.0);
        EXPECT_EQ(axis->axisLineStyle()->color, grey(0.5));
        EXPECT_EQ(axis->majorTickLength(), 7.0);
        EXPECT_EQ(axis->minorTickLength(), 5.0);
        EXPECT_EQ(axis->labelTextStyle().color, CPTColor(Qt::white));
        EXPECT_EQ(axis->titleTextStyle().color, CPTColor(Qt::white));
        EXPECT_EQ(axis->labelTextStyle().fontSize, 12.0);
    }
}

TEST_F(ThemeTest, PlotsAndFramePaddingStay)
{
    const auto plot = std::make_shared<CPTScatterPlot>();
    plot->setDataLineStyle({.width = 3, .color = Qt::red});
    graph.addPlot(plot);
    graph.setPlotAreaFramePadding({20, 60, 50, 20});
    graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    EXPECT_EQ(plot->dataLineStyle().color, CPTColor(Qt::red));
    const CPTPadding padding{20, 60, 50, 20};
    EXPECT_EQ(graph.plotAreaFrame().padding, padding);
}

}  // namespace
