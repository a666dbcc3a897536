#include "plotkit/model/CPTXYGraph.h"
#include "tests/plotkit/model/SeriesBuilding.h"

#include <gtest/gtest.h>

namespace {

/// A graph with a second space, which one of its two plots uses.
class PlotSpacesTest : public testing::Test {
protected:
    PlotSpacesTest()
    {
        graph.addPlotSpace(second);
        graph.addPlot(plain.plot);
        graph.addPlot(named.plot);
        named.plot->setPlotSpace(second);
        graph.setNeedsDisplayHandler([this] { ++displays; });
        graph.setLayersNeedDisplayHandler([this] { ++layerDisplays; });
    }
    void expectDisplayNeeded(const std::function<void()>& change)
    {
        displays = 0;
        change();
        EXPECT_GT(displays, 0);
    }

    CPTXYGraph graph;
    CPTXYPlotSpacePtr second = std::make_shared<CPTXYPlotSpace>();
    plotkit_test::BoundPlot plain = plotkit_test::plotOf({0, 1}, {0, 1});
    plotkit_test::BoundPlot named = plotkit_test::plotOf({0, 1}, {500, 700});
    int displays = 0;
    int layerDisplays = 0;
};

TEST_F(PlotSpacesTest, TheDefaultSpaceIsTheFirstAndStays)
{
    EXPECT_EQ(graph.allPlotSpaces().front().get(), graph.defaultPlotSpace());
    const CPTXYPlotSpacePtr first = graph.allPlotSpaces().front();
    graph.removePlotSpace(first);
    graph.addPlotSpace(second);
    graph.addPlotSpace(nullptr);
    EXPECT_EQ(graph.allPlotSpaces(), (std::vector<CPTXYPlotSpacePtr>{first, second}));
}

TEST_F(PlotSpacesTest, WhoNamesNoSpaceStandsInTheDefaultOne)
{
    EXPECT_EQ(&graph.plotSpaceOf(*plain.plot), graph.defaultPlotSpace());
    EXPECT_EQ(&graph.plotSpaceOf(*named.plot), second.get());
    EXPECT_EQ(&graph.plotSpaceOf(graph.axes().yAxis()), graph.defaultPlotSpace());
}

TEST_F(PlotSpacesTest, ASpaceThatIsNotInTheGraphCountsAsTheDefaultOne)
{
    graph.removePlotSpace(second);
    EXPECT_EQ(&graph.plotSpaceOf(*named.plot), graph.defaultPlotSpace());
    graph.axisSet()->yAxis()->setPlotSpace(std::make_shared<CPTXYPlotSpace>());
    EXPECT_EQ(&graph.plotSpaceOf(graph.axes().yAxis()), graph.defaultPlotSpace());
}

TEST_F(PlotSpacesTest, EachSpaceIsFittedToItsOwnPlots)
{
    EXPECT_EQ(graph.plotsIn(*graph.defaultPlotSpace()), std::vector<CPTScatterPlotPtr>{plain.plot});
    second->scaleToFitPlots(graph.plotsIn(*second));
    EXPECT_EQ(second->yRange(), (CPTPlotRange{500, 200}));
}

TEST_F(PlotSpacesTest, ChangesOfSpacesAndOfTheirNamesNeedDisplay)
{
    expectDisplayNeeded([&] { second->setYRange({3, 4}); });
    expectDisplayNeeded([&] { plain.plot->setPlotSpace(second); });
    expectDisplayNeeded([&] { graph.axisSet()->yAxis()->setPlotSpace(second); });
    expectDisplayNeeded([&] { second->followXOf(graph.allPlotSpaces().front()); });
    expectDisplayNeeded([&] { graph.removePlotSpace(second); });
    displays = 0;
    second->setYRange({5, 6});
    EXPECT_EQ(displays, 0);
}

TEST_F(PlotSpacesTest, AFollowerShowsTheLeadersXAndPassesOverProposals)
{
    second->setXRange({7, 8});
    second->followXOf(graph.allPlotSpaces().front());
    graph.defaultPlotSpace()->setXRange({100, 50});
    second->setXRange({0, 3});
    second->scaleBy(2, {110, 0});
    EXPECT_EQ(second->xRange(), (CPTPlotRange{100, 50}));
    second->followXOf(nullptr);
    EXPECT_EQ(second->xRange(), (CPTPlotRange{7, 8}));
}

TEST_F(PlotSpacesTest, AFollowerOutlivesItsLeader)
{
    auto leader = std::make_shared<CPTXYPlotSpace>();
    leader->setXRange({100, 50});
    second->followXOf(leader);
    leader.reset();
    EXPECT_EQ(second->xRange(), (CPTPlotRange{0, 1}));
    second->setXRange({2, 3});
    EXPECT_EQ(second->xRange(), (CPTPlotRange{2, 3}));
}

TEST_F(PlotSpacesTest, AddedAxesComeAfterTheTwoThatStay)
{
    const auto axis = std::make_shared<CPTXYAxis>(CPTCoordinate::Y);
    CPTXYAxisSet& axes = *graph.axisSet();
    const CPTXYAxisPtr y = axes.axes()[1];
    expectDisplayNeeded([&] { axes.addAxis(axis); });
    axes.addAxis(axis);
    EXPECT_EQ(axes.axes().size(), 3U);
    EXPECT_EQ(axes.lastAxis(), y.get());
    expectDisplayNeeded([&] { axis->setTitle(QStringLiteral("Flow")); });
    axes.removeAxis(y);
    expectDisplayNeeded([&] { axes.removeAxis(axis); });
    EXPECT_EQ(axes.axes().size(), 2U);
}

TEST_F(PlotSpacesTest, WhatWasAddedMayOutliveTheGraph)
{
    auto passing = std::make_unique<CPTXYGraph>();
    const auto axis = std::make_shared<CPTXYAxis>(CPTCoordinate::Y);
    const auto space = std::make_shared<CPTXYPlotSpace>();
    passing->addPlotSpace(space);
    passing->axisSet()->addAxis(axis);
    passing.reset();
    axis->setTitle(QStringLiteral("Flow"));
    space->setYRange({1, 2});
    EXPECT_EQ(space->yRange(), (CPTPlotRange{1, 2}));
}

TEST_F(PlotSpacesTest, LayersNeedDisplayOfTheirOwn)
{
    class EmptyLayer : public CPTGraphLayer {
        void drawInGraph(QPainter&, const plotkit::GraphGeometry&) override {}
    };
    const auto layer = std::make_shared<EmptyLayer>();
    displays = 0;
    graph.addLayer(layer);
    graph.addLayer(layer);
    layer->setNeedsDisplay();
    EXPECT_EQ(graph.layers().size(), 1U);
    EXPECT_EQ(layerDisplays, 2);
    graph.removeLayer(layer);
    layer->setNeedsDisplay();
    EXPECT_EQ(layerDisplays, 3);
    EXPECT_EQ(displays, 0);
}

}  // namespace
