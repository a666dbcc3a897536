#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"

#include <gtest/gtest.h>

namespace {

using plotix::PartLayer;

class AskingLayer : public CPTGraphLayer {
public:
    void drawInGraph(QPainter& /*painter*/, const plotkit::GraphGeometry& /*geometry*/) override {}
    void stop() { isStopped = true; }

    bool isStopped = false;
};
using Place = PartLayer<AskingLayer>::Place;

class PartLayerTest : public testing::Test {
protected:
    std::shared_ptr<AskingLayer> made = std::make_shared<AskingLayer>();
    bool putInto(const CPTXYGraphPtr& into, Place place = Place::Above)
    {
        return layer.put(into, place, [this] { return made; });
    }

    CPTXYGraphPtr graph = std::make_shared<CPTXYGraph>();
    PartLayer<AskingLayer> layer;
};

TEST_F(PartLayerTest, IsPutIntoAGraphOnce)
{
    EXPECT_FALSE(layer);
    EXPECT_TRUE(putInto(graph));
    EXPECT_FALSE(putInto(graph));
    EXPECT_EQ(graph->layers().size(), 1U);
    EXPECT_EQ(layer.graph(), graph);
}

TEST_F(PartLayerTest, StandsBeneathTheOthersWhereThatIsWanted)
{
    graph->addLayer(std::make_shared<AskingLayer>());
    putInto(graph, Place::Beneath);
    EXPECT_EQ(graph->layers().front(), made);
}

TEST_F(PartLayerTest, LeavesAGraphForAnother)
{
    const auto other = std::make_shared<CPTXYGraph>();
    putInto(graph);
    putInto(other);
    EXPECT_TRUE(graph->layers().empty());
    EXPECT_EQ(other->layers().size(), 1U);
}

TEST_F(PartLayerTest, IsToldToAskNoMoreBeforeItGoes)
{
    putInto(graph);
    layer.remove();
    EXPECT_TRUE(made->isStopped);
    EXPECT_TRUE(graph->layers().empty());
    EXPECT_FALSE(layer);
}

TEST_F(PartLayerTest, GoesWithItsPart)
{
    {
        PartLayer<AskingLayer> ofAPart;
        ofAPart.put(graph, Place::Above, [this] { return made; });
    }
    EXPECT_TRUE(made->isStopped);
    EXPECT_TRUE(graph->layers().empty());
}

TEST_F(PartLayerTest, OutlivesItsGraph)
{
    putInto(graph);
    graph.reset();
    EXPECT_EQ(layer.graph(), nullptr);
    layer.remove();
    EXPECT_FALSE(layer);
}

}  // namespace
