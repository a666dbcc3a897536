#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/layout/GraphLayout.h"
#include "tests/plotkit/layout/RuledText.h"

#include <gtest/gtest.h>

namespace {

using namespace plotkit;

/// Takes thirty points below the plots.
class BottomLayer : public CPTGraphLayer {
public:
    void drawInGraph(QPainter& /*painter*/, const GraphGeometry& /*geometry*/) override {}
    std::optional<CPTLayerRoom> room(const QSizeF& /*size*/) const override
    {
        return CPTLayerRoom{CPTLayerRoom::Edge::Bottom, 30};
    }
};

/// 400 × 300 points with a legend whose text is ten points high: five points a letter.
class LegendTest : public testing::Test {
protected:
    LegendTest() { graph.setPadding({}); }

    CPTScatterPlotPtr name(const QString& text)
    {
        auto plot = std::make_shared<CPTScatterPlot>();
        graph.addPlot(plot);
        legend.entries.push_back({plot, text});
        return plot;
    }
    GraphLayout layOut(CPTLegendPlace place, const QSizeF& size = {400, 300})
    {
        legend.place = place;
        legend.textStyle.fontSize = 10;
        graph.setLegend(legend);
        return layOutGraph(graph, QRectF({}, size), sizeOfText);
    }
    void nameMany(int count)
    {
        for (int number = 0; number < count; ++number)
            name(QStringLiteral("Line %1").arg(number));
    }
    static void expectWithin(const GraphLayout& layout)
    {
        for (const PlacedLegendEntry& entry : layout.legend.entries) {
            EXPECT_TRUE(layout.legend.area.contains(entry.sample)) << qPrintable(entry.text.text);
            EXPECT_TRUE(layout.legend.area.contains(entry.text.box)) << qPrintable(entry.text.text);
            EXPECT_FALSE(entry.sample.intersects(entry.text.box));
        }
    }

    CPTXYGraph graph;
    CPTLegend legend;
};

TEST_F(LegendTest, WithoutOneThePlotAreaIsTheWholeFrame)
{
    name("Air");
    EXPECT_EQ(layOut(CPTLegendPlace::None).plotArea, QRectF(0, 0, 400, 300));
    EXPECT_TRUE(layOut(CPTLegendPlace::None).legend.entries.empty());
}

TEST_F(LegendTest, BelowItStandsInOneRowInTheMiddle)
{
    name("Air (°C)");
    name("Dew point (°C)");
    const GraphLayout layout = layOut(CPTLegendPlace::Below);
    ASSERT_EQ(layout.legend.entries.size(), 2U);
    EXPECT_EQ(layout.plotArea.bottom(), layout.legend.area.top());
    const PlacedLegendEntry& first = layout.legend.entries[0];
    const PlacedLegendEntry& last = layout.legend.entries[1];
    EXPECT_EQ(first.sample.center().y(), last.sample.center().y());
    EXPECT_NEAR(first.sample.left(), 400 - last.text.box.right(), 1e-9);
    expectWithin(layout);
}

TEST_F(LegendTest, WhatDoesNotFitARowGoesIntoColumns)
{
    nameMany(7);
    const GraphLayout layout = layOut(CPTLegendPlace::Below, {250, 300});
    ASSERT_EQ(layout.legend.entries.size(), 7U);
    std::set<double> columns;
    for (const PlacedLegendEntry& entry : layout.legend.entries)
        columns.insert(entry.sample.left());
    EXPECT_EQ(columns.size(), 3U);
    expectWithin(layout);
}

TEST_F(LegendTest, AtTheRightItIsOneColumn)
{
    name("Air (°C)");
    name("Dew point (°C)");
    const GraphLayout layout = layOut(CPTLegendPlace::Right);
    ASSERT_EQ(layout.legend.entries.size(), 2U);
    EXPECT_EQ(layout.plotArea.right(), layout.legend.area.left());
    EXPECT_EQ(layout.legend.entries[0].sample.left(), layout.legend.entries[1].sample.left());
    expectWithin(layout);
}

TEST_F(LegendTest, HiddenPlotsAndPlotsThatAreGoneAreLeftOut)
{
    name("Air")->setHidden(true);
    name("Gone");
    graph.removePlot(graph.allPlots().back());
    EXPECT_TRUE(layOut(CPTLegendPlace::Below).legend.entries.empty());
    name("Wind");
    EXPECT_EQ(layOut(CPTLegendPlace::Below).legend.entries.size(), 1U);
}

TEST_F(LegendTest, ItTakesTwoFifthsAtMostAndCountsTheRest)
{
    nameMany(90);
    for (const CPTLegendPlace place : {CPTLegendPlace::Below, CPTLegendPlace::Right}) {
        const GraphLayout layout = layOut(place);
        ASSERT_TRUE(layout.legend.more);
        EXPECT_EQ(layout.legend.more->text, QStringLiteral("+%1").arg(90 - layout.legend.entries.size()));
        EXPECT_GE(layout.plotArea.height(), 0.55 * 300);
        EXPECT_GE(layout.plotArea.width(), 0.55 * 400);
        expectWithin(layout);
    }
}

TEST_F(LegendTest, ALongNameIsCutToTheRoomThereIs)
{
    name(QString(200, u'x'));
    for (const CPTLegendPlace place : {CPTLegendPlace::Below, CPTLegendPlace::Right}) {
        const GraphLayout layout = layOut(place);
        ASSERT_EQ(layout.legend.entries.size(), 1U);
        expectWithin(layout);
    }
}

TEST_F(LegendTest, WithoutRoomForARowThereIsNone)
{
    name("Air");
    EXPECT_TRUE(layOut(CPTLegendPlace::Below, {400, 20}).legend.area.isEmpty());
    EXPECT_TRUE(layOut(CPTLegendPlace::Right, {40, 300}).legend.area.isEmpty());
}

TEST_F(LegendTest, LabelsAndTitlesOfAxesKeepOffIt)
{
    name("Air");
    graph.setLabelRoom(CPTLabelRoom::Grows);
    CPTXYAxis& time = *graph.axisSet()->xAxis();
    time.setAxisConstraints(CPTConstraints{});
    time.setTitle("Time");
    graph.defaultPlotSpace()->setXRange({0, 100});
    const GraphLayout layout = layOut(CPTLegendPlace::Below);
    ASSERT_TRUE(layout.xAxis().title);
    EXPECT_LE(layout.xAxis().title->box.bottom(), layout.legend.area.top());
    EXPECT_LT(layout.plotArea.bottom(), layout.xAxis().title->box.top());
}

TEST_F(LegendTest, RoomsOfLayersStandBetweenItAndThePlots)
{
    name("Air");
    const auto layer = std::make_shared<BottomLayer>();
    graph.addLayer(layer);
    const GraphLayout layout = layOut(CPTLegendPlace::Below);
    const GraphGeometry geometry = geometryOfGraph(graph, {0, 0, 400, 300}, sizeOfText);
    EXPECT_EQ(geometry.roomOf(*layer).bottom(), layout.legend.area.top());
    EXPECT_EQ(geometry.roomOf(*layer).top(), layout.plotArea.bottom());
}

}  // namespace
