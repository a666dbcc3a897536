#include "plotkit/render/ClippedPaths.h"
#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

#include <gtest/gtest.h>

namespace {

using namespace plotkit;
using plotkit_test::CountingDelegate;
using plotkit_test::countMarkedPixels;

class SvgTest : public testing::Test {
protected:
    QByteArray draw(const QSizeF& size = {120, 120}) { return svgOfGraph(rendered.graph, size, DrawingReport::Silent); }
    /// The drawing, one pixel a point.
    QImage seen(const QSizeF& size = {120, 120})
    {
        QSvgRenderer renderer(draw(size));
        EXPECT_TRUE(renderer.isValid());
        QImage image(size.toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter, QRectF(QPointF(), size));
        return image;
    }
    QImage asImage() { return imageOfGraph(rendered.graph, {120, 120}, 1, DrawingReport::Silent); }

    plotkit_test::RenderedGraph rendered;
    CountingDelegate delegate;
};

TEST_F(SvgTest, SaysItsSizeInMillimetres)
{
    const QByteArray svg = draw(QSizeF(85, 60) * 72 / 25.4);
    EXPECT_TRUE(svg.contains("width=\"85mm\" height=\"60mm\"")) << svg.left(300).constData();
}

TEST_F(SvgTest, HoldsNeitherImagesNorFonts)
{
    rendered.graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    rendered.graph.setTitle(QStringLiteral("Newark"));
    rendered.addPlot(Qt::yellow, {0, 30, 100}, {25, 90, 4});
    const QByteArray svg = draw({400, 300});
    EXPECT_FALSE(svg.contains("<image"));
    EXPECT_FALSE(svg.contains("<text"));
}

TEST_F(SvgTest, SameGraphGivesTheSameBytes)
{
    rendered.graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    rendered.graph.setTitle(QStringLiteral("Newark"));
    EXPECT_EQ(draw(), draw());
}

TEST_F(SvgTest, LinesStandWhereTheyDoInAnImage)
{
    rendered.addPlot(Qt::red, {0, 100}, {50, 50});
    rendered.addPlot(Qt::blue, {50, 50.001, 50.002}, {0, 100, 0});
    for (const QPoint& place : {QPoint(30, 60), QPoint(90, 60), QPoint(60, 30), QPoint(60, 90), QPoint(30, 30)})
        EXPECT_EQ(seen().pixelColor(place), asImage().pixelColor(place)) << place.x() << ' ' << place.y();
}

TEST_F(SvgTest, TextsCoverAsMuchAsInAnImage)
{
    for (CPTXYAxis* axis : {rendered.graph.axisSet()->xAxis(), rendered.graph.axisSet()->yAxis()})
        axis->setLabelTextStyle({.color = CPTColor(Qt::black)});
    rendered.graph.setPlotAreaFramePadding({30, 30, 30, 30});
    const int inImage = countMarkedPixels(asImage());
    ASSERT_GT(inImage, 100);
    EXPECT_NEAR(countMarkedPixels(seen()), inImage, 0.3 * inImage);
}

TEST_F(SvgTest, WhatLeavesThePlotAreaIsCutOff)
{
    const CPTScatterPlotPtr plot = rendered.addPlot(Qt::red, {0, 40, 60, 100}, {50, 300, -300, 50});
    plot->setAreaFill({Qt::blue, false, {}});
    const QImage image = seen();
    EXPECT_EQ(image.pixelColor(30, 108).alpha() > 0, asImage().pixelColor(30, 108).alpha() > 0);
    for (int x = 0; x < 120; ++x)
        for (const int y : {3, 6, 113, 116})
            ASSERT_EQ(image.pixelColor(x, y).alpha(), 0) << x << ' ' << y;
}

TEST_F(SvgTest, VisiblePlotsReport)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25})->setDelegate(&delegate);
    svgOfGraph(rendered.graph, {120, 120}, DrawingReport::TellDelegates);
    EXPECT_EQ(delegate.drawn.size(), 1);
}

TEST_F(SvgTest, AnEmptySizeIsNoDrawing)
{
    EXPECT_TRUE(draw({0, 120}).isEmpty());
}

TEST(ClippedPathsTest, ALineThatComesBackIsBroken)
{
    QPainterPath line(QPointF(0, 5));
    line.lineTo(5, 20);
    line.lineTo(10, 5);
    const QPainterPath within = linesWithin(line, QRectF(0, 0, 10, 10));
    EXPECT_EQ(within.boundingRect(), QRectF(QPointF(0, 5), QPointF(10, 10)));
    EXPECT_EQ(within.toSubpathPolygons().size(), 2);
    EXPECT_TRUE(linesWithin(line, QRectF(20, 20, 5, 5)).isEmpty());
}

}  // namespace
