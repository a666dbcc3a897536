#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/GraphLayout.h"
#include "tests/plotkit/layout/RuledText.h"

#include <gtest/gtest.h>

namespace {

using namespace plotkit;
using Edge = CPTLayerRoom::Edge;

class RoomyLayer : public CPTGraphLayer {
public:
    explicit RoomyLayer(std::optional<CPTLayerRoom> room) : m_room(room) {}
    void drawInGraph(QPainter& /*painter*/, const GraphGeometry& /*geometry*/) override {}
    std::optional<CPTLayerRoom> room(const QSizeF& /*frame*/) const override { return m_room; }

private:
    std::optional<CPTLayerRoom> m_room;
};

/// 400 × 300 points; the frame is all of it, its padding 60 at the left and 50 below.
class LayerRoomTest : public testing::Test {
protected:
    LayerRoomTest()
    {
        graph.setPadding({});
        graph.setPlotAreaFramePadding({.top = 0, .left = 60, .bottom = 50, .right = 0});
    }
    std::shared_ptr<RoomyLayer> addLayer(Edge edge, double depth)
    {
        auto layer = std::make_shared<RoomyLayer>(CPTLayerRoom{edge, depth});
        graph.addLayer(layer);
        return layer;
    }
    GraphGeometry geometry() { return geometryOfGraph(graph, QRectF(0, 0, 400, 300), sizeOfText); }

    CPTXYGraph graph;
};

TEST_F(LayerRoomTest, ALayerThatNeedsNoneLeavesThePlotAreaAsItIs)
{
    graph.addLayer(std::make_shared<RoomyLayer>(std::nullopt));
    EXPECT_EQ(geometry().inside, geometry().frame);
    EXPECT_EQ(geometry().plotArea, QRectF(QPointF(60, 0), QPointF(400, 250)));
}

TEST_F(LayerRoomTest, RoomIsTakenInsideTheFrameAndOutsideTheLabels)
{
    const auto below = addLayer(Edge::Bottom, 40);
    EXPECT_EQ(geometry().roomOf(*below), QRectF(QPointF(0, 260), QPointF(400, 300)));
    EXPECT_EQ(geometry().plotArea, QRectF(QPointF(60, 0), QPointF(400, 210)));
}

TEST_F(LayerRoomTest, LaterLayersTakeFromWhatEarlierOnesLeave)
{
    const auto right = addLayer(Edge::Right, 100);
    const auto above = addLayer(Edge::Top, 30);
    EXPECT_EQ(geometry().roomOf(*right), QRectF(QPointF(300, 0), QPointF(400, 300)));
    EXPECT_EQ(geometry().roomOf(*above), QRectF(QPointF(0, 0), QPointF(300, 30)));
    EXPECT_EQ(geometry().plotArea, QRectF(QPointF(60, 30), QPointF(300, 250)));
}

TEST_F(LayerRoomTest, LabelsThatGrowStandBetweenRoomAndPlots)
{
    graph.setLabelRoom(CPTLabelRoom::Grows);
    graph.axisSet()->xAxis()->setAxisConstraints(CPTConstraints{});
    const auto below = addLayer(Edge::Bottom, 40);
    const GraphLayout layout = layOutGraph(graph, QRectF(0, 0, 400, 300), sizeOfText);
    ASSERT_FALSE(layout.xAxis().labels.empty());
    for (const AxisLabel& label : layout.xAxis().labels)
        EXPECT_LE(label.box.bottom(), geometry().roomOf(*below).top());
}

TEST_F(LayerRoomTest, MoreThanThereIsLeavesNoPlotAreaRatherThanANegativeOne)
{
    const auto below = addLayer(Edge::Bottom, 1000);
    EXPECT_EQ(geometry().roomOf(*below).height(), 300);
    EXPECT_TRUE(geometry().plotArea.isEmpty());
    EXPECT_GE(geometry().plotArea.height(), 0);
}

TEST_F(LayerRoomTest, ALayerOfNoGraphHasNoRoom)
{
    const RoomyLayer elsewhere(CPTLayerRoom{Edge::Top, 10});
    EXPECT_TRUE(geometry().roomOf(elsewhere).isEmpty());
}

TEST_F(LayerRoomTest, ATitleStandsAboveTheRoomsAtTheTop)
{
    const auto above = addLayer(Edge::Top, 30);
    graph.setTitle("Title");
    const double title = layOutGraph(graph, QRectF(0, 0, 400, 300), sizeOfText).title->box.bottom();
    EXPECT_EQ(geometry().roomOf(*above), QRectF(QPointF(0, title), QPointF(400, title + 30)));
    EXPECT_EQ(geometry().plotArea.top(), title + 30);
}

TEST_F(LayerRoomTest, ATitleWithoutSuchRoomsTakesNoneOfThePlots)
{
    addLayer(Edge::Bottom, 30);
    const QRectF before = geometry().plotArea;
    graph.setTitle("Title");
    EXPECT_EQ(geometry().plotArea, before);
}

}  // namespace
