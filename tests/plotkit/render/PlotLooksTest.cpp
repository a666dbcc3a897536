#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>

// What a plot may look like besides a solid straight line, on screen and on a page of vectors alike.

namespace {

using namespace plotkit;

const QSize kSize(420, 420);

class PlotLooksTest : public testing::Test {
protected:
    CPTScatterPlotPtr add(std::vector<double> x, std::vector<float> y, const QColor& color = Qt::red)
    {
        return rendered.addPlot(color, std::move(x), std::move(y));
    }
    /// Twenty thousand samples that alternate between two values.
    CPTScatterPlotPtr addAlternating(float low, float high)
    {
        std::vector<double> x(20001);
        std::vector<float> y(x.size());
        for (std::size_t index = 0; index < x.size(); ++index) {
            x[index] = static_cast<double>(index) / 200;
            y[index] = index % 2 == 0 ? low : high;
        }
        return add(std::move(x), std::move(y));
    }
    QImage image() { return imageOfGraph(rendered.graph, kSize, 1, DrawingReport::Silent); }
    /// Null where pages cannot be turned into pictures.
    QImage page()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("page.pdf")));
        if (!file.open(QIODevice::WriteOnly))
            return {};
        file.write(pdfOfGraph(rendered.graph, kSize, DrawingReport::Silent));
        file.close();
        QProcess::execute(QStringLiteral("pdftoppm"),
                          {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-png"),
                           QStringLiteral("-singlefile"), file.fileName(), folder.filePath(QStringLiteral("page"))});
        return QImage(folder.filePath(QStringLiteral("page.png")));
    }
    static bool hasPages() { return !QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty(); }
    /// How red the picture is at a value: 0 … 1.
    static double redAt(const QImage& picture, double x, double y)
    {
        const double side = kSize.width() - 20;
        const QColor color = picture.pixelColor(10 + static_cast<int>(x * side / 100),
                                                kSize.height() - 10 - 1 - static_cast<int>(y * side / 100));
        return (color.redF() - color.greenF()) * color.alphaF();
    }
    /// The same fact of the picture and of the page.
    void expectRed(bool isRed, double x, double y)
    {
        EXPECT_EQ(redAt(image(), x, y) > 0.15, isRed) << "picture at " << x << ", " << y;
        if (hasPages()) {
            EXPECT_EQ(redAt(page(), x, y) > 0.15, isRed) << "page at " << x << ", " << y;
        }
    }

    plotkit_test::RenderedGraph rendered;
};

TEST_F(PlotLooksTest, HoldingTheLastValueIsDrawingItsCorners)
{
    const CPTScatterPlotPtr plot = add({0, 30, 60, 100}, {20, 80, 50, 10});
    plot->setInterpolation(CPTScatterPlotInterpolation::HoldLast);
    const QImage held = image();
    const QByteArray heldPage = pdfOfGraph(rendered.graph, kSize, DrawingReport::Silent);
    rendered.graph.removePlot(plot);
    add({0, 30, 30, 60, 60, 100, 100}, {20, 20, 80, 80, 50, 50, 10});
    EXPECT_EQ(image(), held);
    EXPECT_EQ(pdfOfGraph(rendered.graph, kSize, DrawingReport::Silent), heldPage);
}

TEST_F(PlotLooksTest, AHeldValueEndsBeforeAGap)
{
    const CPTScatterPlotPtr plot = add({0, 10, 20, 70, 80}, {20, 20, 20, 80, 80});
    plot->setInterpolation(CPTScatterPlotInterpolation::HoldLast);
    plot->setGapThreshold(15);
    expectRed(true, 15, 20);
    expectRed(false, 40, 20);
    expectRed(true, 75, 80);
}

TEST_F(PlotLooksTest, PointsOnlyLeavesOutWhatLiesBetween)
{
    const CPTScatterPlotPtr plot = add({10, 50, 90}, {20, 80, 20});
    plot->setInterpolation(CPTScatterPlotInterpolation::PointsOnly);
    plot->setPointSize(9);
    expectRed(true, 50, 80);
    expectRed(true, 50.9, 80);
    expectRed(false, 30, 50);
}

TEST_F(PlotLooksTest, CrowdedPointsLeaveOutWhatLiesBetween)
{
    addAlternating(30, 70)->setInterpolation(CPTScatterPlotInterpolation::PointsOnly);
    expectRed(true, 50, 30);
    expectRed(true, 50, 70);
    expectRed(false, 50, 50);
}

TEST_F(PlotLooksTest, PointsOfALineStandOnIt)
{
    const CPTScatterPlotPtr plot = add({10, 50, 90}, {50, 50, 50});
    plot->setPointSize(12);
    expectRed(true, 30, 50);
    expectRed(true, 50, 51.3);
    expectRed(false, 30, 51.3);
}

TEST_F(PlotLooksTest, WithoutASizePointsAreAsWideAsTheLine)
{
    const CPTScatterPlotPtr plot = add({10, 50, 90}, {50, 50, 50});
    EXPECT_EQ(plot->drawnPointSize(), 0);
    plot->setInterpolation(CPTScatterPlotInterpolation::PointsOnly);
    EXPECT_EQ(plot->drawnPointSize(), 3);
    for (const double size : {-1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        plot->setPointSize(size);
        EXPECT_EQ(plot->pointSize(), 0);
    }
}

TEST_F(PlotLooksTest, DashesLeaveOutPartsOfTheLine)
{
    const CPTScatterPlotPtr plot = add({10, 90}, {50, 50});
    CPTLineStyle style = plot->dataLineStyle();
    style.dashPattern = {40, 40};
    plot->setDataLineStyle(style);
    expectRed(true, 15, 50);
    expectRed(false, 25, 50);
    expectRed(true, 35, 50);
}

TEST_F(PlotLooksTest, ACrowdedBandIsDrawnWholeThoughDashed)
{
    const CPTScatterPlotPtr plot = addAlternating(30, 70);
    const QImage solid = image();
    CPTLineStyle style = plot->dataLineStyle();
    style.dashPattern = {12, 8};
    plot->setDataLineStyle(style);
    EXPECT_EQ(image(), solid);
    expectRed(true, 50, 50);
}

TEST_F(PlotLooksTest, ATranslucentDashedLineIsNowhereTwiceAsStrong)
{
    const CPTScatterPlotPtr plot = addAlternating(49.5F, 50.5F);
    plot->setDataLineStyle({.width = 3, .color = QColor(255, 0, 0, 128), .dashPattern = {20, 10}});
    const QImage picture = image();
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            ASSERT_LE(picture.pixelColor(column, row).alpha(), 130);
}

TEST_F(PlotLooksTest, AFillReachesToZero)
{
    rendered.graph.defaultPlotSpace()->setYRange({-50, 100});
    const CPTScatterPlotPtr plot = add({0, 50, 50, 100}, {30, 30, -30, -30});
    plot->setAreaFill(CPTAreaFill::toZero(QColor(255, 0, 0, 100)));
    expectRed(true, 25, 65);   // 15: the picture's scale is that of 0 to 100
    expectRed(false, 25, 45);  // −5
    expectRed(true, 75, 35);   // −15
    expectRed(false, 75, 55);  // 5
}

TEST_F(PlotLooksTest, AFillInALogarithmicSpaceReachesToItsFoot)
{
    rendered.graph.defaultPlotSpace()->setYScaleType(CPTScaleType::Logarithmic);
    rendered.graph.defaultPlotSpace()->setYRange({-50, 100});
    const CPTScatterPlotPtr plot = add({0, 100}, {30, 30});
    plot->setAreaFill(CPTAreaFill::toZero(QColor(255, 0, 0, 100)));
    expectRed(true, 50, 5);  // far beneath 1, whose logarithm is zero
    expectRed(true, 50, 70);
    expectRed(false, 50, 90);
}

TEST_F(PlotLooksTest, AFillLiesBetweenTwoLines)
{
    const CPTScatterPlotPtr low = add({0, 100}, {20, 20}, Qt::blue);
    const CPTScatterPlotPtr high = add({20, 60}, {80, 80}, Qt::blue);
    high->setAreaFill(CPTAreaFill::toPlot(low, QColor(255, 0, 0, 100)));
    expectRed(true, 40, 50);
    expectRed(false, 10, 50);
    expectRed(false, 70, 50);
    expectRed(false, 40, 10);
}

TEST_F(PlotLooksTest, AFillIsAsStrongEverywhere)
{
    const CPTScatterPlotPtr plot = addAlternating(30, 70);
    plot->setDataLineStyle({.width = 0});
    plot->setAreaFill(CPTAreaFill::toZero(QColor(255, 0, 0, 100)));
    const QImage picture = image();
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            ASSERT_LE(picture.pixelColor(column, row).alpha(), 101);
    EXPECT_EQ(picture.pixelColor(200, 300).alpha(), 100);
}

TEST_F(PlotLooksTest, FillsLieBeneathAllLines)
{
    add({0, 100}, {20, 20}, Qt::blue);
    const CPTScatterPlotPtr filled = add({0, 100}, {80, 80}, Qt::blue);
    const QColor before = image().pixelColor(200, 329);
    filled->setAreaFill(CPTAreaFill::toZero(Qt::red));
    EXPECT_EQ(before, QColor(Qt::blue));
    EXPECT_EQ(image().pixelColor(200, 329), before);
}

TEST_F(PlotLooksTest, WhatCannotBeFilledIsLeftOut)
{
    const CPTScatterPlotPtr low = add({0, 100}, {20, 20}, Qt::blue);
    const CPTScatterPlotPtr high = add({0, 100}, {80, 80}, Qt::blue);
    const QImage plain = image();
    high->setAreaFill(CPTAreaFill::toPlot(high, Qt::red));
    EXPECT_EQ(image(), plain);
    high->setAreaFill(CPTAreaFill::toPlot(std::make_shared<CPTScatterPlot>(), Qt::red));
    EXPECT_EQ(image(), plain);
    high->setAreaFill(CPTAreaFill::toPlot(low, CPTColor()));
    EXPECT_EQ(image(), plain);
    high->setAreaFill(CPTAreaFill::toPlot(low, Qt::red));
    EXPECT_NE(image(), plain);
    low->setHidden(true);
    EXPECT_LT(redAt(image(), 50, 50), 0.1);
}

TEST_F(PlotLooksTest, GridLinesMayBeDashedToo)
{
    rendered.useTicks(50, 200);
    rendered.graph.axisSet()->xAxis()->setMajorGridLineStyle(
        CPTLineStyle{.width = 2, .color = Qt::red, .dashPattern = {6, 4}});
    const QImage picture = image();
    int red = 0;
    for (int row = 10; row < 410; ++row)
        red += qAlpha(picture.pixel(210, row)) > 128 ? 1 : 0;
    EXPECT_EQ(red, 240);
}

TEST_F(PlotLooksTest, LooksOfAPlotAreChangesOfTheGraph)
{
    const CPTScatterPlotPtr plot = add({0, 100}, {20, 20});
    int changes = 0;
    rendered.graph.setNeedsDisplayHandler([&changes] { ++changes; });
    plot->setInterpolation(CPTScatterPlotInterpolation::HoldLast);
    plot->setPointSize(5);
    plot->setAreaFill(CPTAreaFill::toZero(Qt::red));
    EXPECT_EQ(changes, 3);
}

}  // namespace
