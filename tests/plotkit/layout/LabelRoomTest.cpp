#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/GraphLayout.h"
#include "plotkit/model/CPTTickFormatters.h"
#include "tests/plotkit/layout/RuledText.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace plotkit;

class LabelRoomTest : public testing::Test {
protected:
    LabelRoomTest()
    {
        graph.setPlotAreaFramePadding({20, 60, 50, 20});
        graph.setLabelRoom(CPTLabelRoom::Grows);
        for (CPTXYAxis* axis : {graph.axisSet()->xAxis(), graph.axisSet()->yAxis()}) {
            axis->setAxisConstraints(CPTConstraints{0});
            axis->setMajorTickLength(12);
            axis->setTitleOffset(0);
        }
        graph.axisSet()->xAxis()->setTitle(QStringLiteral("Time"));
        graph.axisSet()->yAxis()->setTitle(QStringLiteral("Value"));
        graph.axisSet()->xAxis()->setLabelingPolicy(CPTAxisLabelingPolicy::Calendar);
        graph.axisSet()->xAxis()->setLabelFormatter(std::make_shared<CPTTickTimeFormatter>());
        graph.axisSet()->yAxis()->setLabelFormatter(std::make_shared<CPTTickNumberFormatter>());
        graph.defaultPlotSpace()->setXRange({1.4e9, 864'000});
    }

    GraphLayout layOut(double low, double length)
    {
        graph.defaultPlotSpace()->setYRange({low, length});
        return layOutGraph(graph, picture, sizeOfText);
    }

    void expectEveryTextBesideThePlots(const GraphLayout& layout)
    {
        for (const AxisLayout* axis : {&layout.xAxis(), &layout.yAxis()}) {
            ASSERT_FALSE(axis->labels.empty());
            ASSERT_TRUE(axis->title);
            std::set<QString> texts;
            for (const AxisLabel& label : axis->labels) {
                EXPECT_TRUE(texts.insert(label.text).second) << qPrintable(label.text);
                EXPECT_TRUE(layout.frame.contains(label.box)) << qPrintable(label.text);
                EXPECT_FALSE(label.box.intersects(layout.plotArea)) << qPrintable(label.text);
                EXPECT_FALSE(label.box.intersects(axis->title->box)) << qPrintable(label.text);
            }
            EXPECT_TRUE(layout.frame.contains(axis->title->box));
            EXPECT_FALSE(axis->title->box.intersects(layout.plotArea));
        }
    }

    CPTXYGraph graph;
    QRectF picture{0, 0, 800, 400};
};

TEST_F(LabelRoomTest, EveryLabelIsWholeAndItsOwnWhateverTheRange)
{
    const std::pair<double, double> ranges[] = {{0, 1},         {1.7995, 0.001}, {1'234'300, 600}, {-1'280, 160},
                                                {101'325, 0.1}, {-9e9, 1.8e10},  {0, 5'000},       {-0.5, 1}};
    for (const auto& [low, length] : ranges) {
        SCOPED_TRACE(low);
        expectEveryTextBesideThePlots(layOut(low, length));
    }
}

TEST_F(LabelRoomTest, EveryMomentIsItsOwnFromSecondsToDecades)
{
    for (double length = 0.1; length < 4e8; length *= 3) {
        SCOPED_TRACE(length);
        graph.defaultPlotSpace()->setXRange({1.4e9, length});
        expectEveryTextBesideThePlots(layOut(0, 1));
    }
}

TEST_F(LabelRoomTest, SmallGraphsKeepTheirPlots)
{
    picture = QRectF(0, 0, 160, 120);
    const GraphLayout layout = layOut(-9e9, 1.8e10);
    EXPECT_GT(layout.plotArea.width(), 0);
    EXPECT_GT(layout.plotArea.height(), 0);
}

TEST_F(LabelRoomTest, PaddingIsTheLeastThereIs)
{
    EXPECT_EQ(layOut(0, 5).plotArea.left(), 80);
    EXPECT_GT(layOut(1e9, 5).plotArea.left(), 80);
}

TEST_F(LabelRoomTest, GeometryIsThatOfTheLayout)
{
    const GraphLayout layout = layOut(1e9, 5);
    EXPECT_EQ(geometryOfGraph(graph, picture, sizeOfText).plotArea, layout.plotArea);
}

TEST_F(LabelRoomTest, WithoutItPaddingIsTheFrames)
{
    graph.setLabelRoom(CPTLabelRoom::Fixed);
    EXPECT_EQ(layOut(1e9, 5).plotArea, QRectF(80, 40, 680, 290));
}

}  // namespace
