#include "plugins/PlotixPlugIn/reading/looks/GraphLook.h"

#include "plotkit/render/GraphRendering.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;

class GraphLookTest : public testing::Test {
protected:
    GraphLookTest() : graph(std::make_shared<CPTXYGraph>(QRectF()))
    {
        graph->applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
        graph->setPlotAreaFramePadding({20, 60, 50, 20});
        before = picture();
    }
    QImage picture() const { return plotkit::imageOfGraph(*graph, {300, 200}, 1, plotkit::DrawingReport::Silent); }
    CPTXYAxis& yAxis() { return *graph->axisSet()->yAxis(); }
    CPTXYPlotSpacePtr addStrip()
    {
        const auto space = std::make_shared<CPTXYPlotSpace>();
        CPTStrip strip{.top = 0, .bottom = 0.5, .headRoom = 10};
        strip.fill = CPTFill::withColor(Qt::black);
        strip.titleTextStyle.color = Qt::white;
        space->setStrip(strip);
        graph->addPlotSpace(space);
        return space;
    }

    CPTXYGraphPtr graph;
    QImage before;
    GraphDress dress;
};

TEST_F(GraphLookTest, PaperIsDarkOnWhite)
{
    dress.wear(graph, {GraphLook::Paper});
    EXPECT_EQ(picture().pixelColor(150, 20), QColor(Qt::white));
    EXPECT_LT(yAxis().labelTextStyle().color.lightness(), 80);
}

TEST_F(GraphLookTest, DarkTakesEverythingOffAgain)
{
    for (const GraphLook look : {GraphLook::Paper, GraphLook::Light}) {
        dress.wear(graph, {look, 9});
        EXPECT_NE(picture(), before);
        dress.wear(graph, {GraphLook::Dark});
        EXPECT_EQ(picture(), before);
    }
}

TEST_F(GraphLookTest, DarkChangesNothingAtFirst)
{
    int changes = 0;
    graph->setNeedsDisplayHandler([&changes] { ++changes; });
    dress.wear(graph, {GraphLook::Dark});
    EXPECT_EQ(changes, 0);
}

TEST_F(GraphLookTest, AFontSizeIsThatOfAllTexts)
{
    dress.wear(graph, {GraphLook::Dark, 7});
    EXPECT_EQ(yAxis().labelTextStyle().fontSize, 7);
    EXPECT_EQ(yAxis().titleTextStyle().fontSize, 7);
    EXPECT_EQ(graph->titleTextStyle().fontSize, 7);
    EXPECT_EQ(yAxis().labelTextStyle().color, QColor(Qt::white));
}

TEST_F(GraphLookTest, WhatOthersRestyleIsPutBackAsTheyLeftIt)
{
    dress.wear(graph, {GraphLook::Paper});
    CPTTextStyle mine = yAxis().labelTextStyle();
    mine.color = Qt::yellow;
    yAxis().setLabelTextStyle(mine);
    dress.wear(graph, {GraphLook::Paper});
    EXPECT_LT(yAxis().labelTextStyle().color.lightness(), 120);  // yellow, darkened
    dress.wear(graph, {GraphLook::Dark});
    EXPECT_EQ(yAxis().labelTextStyle().color, QColor(Qt::yellow));
}

TEST_F(GraphLookTest, AnAxisCopiedFromADressedOneIsPutBackLikeIt)
{
    const CPTTextStyle plain = yAxis().labelTextStyle();
    dress.wear(graph, {GraphLook::Paper});
    const auto second = std::make_shared<CPTXYAxis>(yAxis());
    graph->axisSet()->addAxis(second);
    dress.wear(graph, {GraphLook::Paper});
    dress.wear(graph, {GraphLook::Dark});
    EXPECT_EQ(second->labelTextStyle(), plain);
}

TEST_F(GraphLookTest, StripsAreDressedToo)
{
    const CPTXYPlotSpacePtr space = addStrip();
    const CPTStrip plain = space->strip();
    dress.wear(graph, {GraphLook::Light, 8});
    EXPECT_EQ(space->strip().fill, CPTFill::withColor(CPTColor(Qt::white)));
    EXPECT_LT(space->strip().titleTextStyle.color.lightness(), 80);
    EXPECT_EQ(space->strip().keyTextStyle.fontSize, 8);
    dress.wear(graph, {GraphLook::Dark});
    EXPECT_EQ(space->strip(), plain);
}

TEST_F(GraphLookTest, NoGraphIsNothing)
{
    dress.wear(nullptr, {GraphLook::Paper, 7});
}

TEST_F(GraphLookTest, NamesAreReadBack)
{
    for (const GraphLook look : {GraphLook::Dark, GraphLook::Light, GraphLook::Paper})
        EXPECT_EQ(lookNamed(nameOfLook(look)), look);
    EXPECT_FALSE(lookNamed("neon"));
}

}  // namespace
