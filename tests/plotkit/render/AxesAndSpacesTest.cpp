#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtGui/QPainter>
#include <QtGui/QPicture>

#include <gtest/gtest.h>

// Facts about pixels and lines, each for both ways of drawing a graph: as pixels, and as the paths of a page.

namespace {

using namespace plotkit;

enum class Way { Pixels, Paths };

/// Pictures of 120 × 120 points: the plot area is the square from 10 to 110, a point a value.
class AxesAndSpacesTest : public testing::TestWithParam<Way> {
protected:
    QImage draw()
    {
        if (GetParam() == Way::Pixels)
            return imageOfGraph(rendered.graph, QSizeF(120, 120), 1, DrawingReport::Silent);
        QPicture page;  // not made of pixels, like a page
        QPainter onPage(&page);
        paintGraph(onPage, rendered.graph, QRectF(0, 0, 120, 120), DrawingReport::Silent);
        onPage.end();
        QImage image(120, 120, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter(&image).drawPicture(0, 0, page);
        return image;
    }

    CPTXYPlotSpacePtr addSpace(const CPTPlotRange& y)
    {
        auto space = std::make_shared<CPTXYPlotSpace>();
        space->followXOf(rendered.graph.allPlotSpaces().front());
        space->setYRange(y);
        rendered.graph.addPlotSpace(space);
        return space;
    }

    plotkit_test::RenderedGraph rendered;
};

INSTANTIATE_TEST_SUITE_P(Ways, AxesAndSpacesTest, testing::Values(Way::Pixels, Way::Paths),
                         [](const auto& each) { return each.param == Way::Pixels ? "Pixels" : "Paths"; });

TEST_P(AxesAndSpacesTest, APlotStandsWhereItsOwnSpaceShowsIt)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {1250, 1250})->setPlotSpace(addSpace({1000, 1000}));
    rendered.addPlot(Qt::cyan, {0, 100}, {75, 75});
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 110 - 25), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(60, 110 - 75), QColor(Qt::cyan));
}

TEST_P(AxesAndSpacesTest, AnotherSpacesRangeMovesOnlyItsOwnPlots)
{
    const CPTXYPlotSpacePtr space = addSpace({1000, 1000});
    rendered.addPlot(Qt::yellow, {0, 100}, {1250, 1250})->setPlotSpace(space);
    rendered.addPlot(Qt::cyan, {0, 100}, {75, 75});
    space->setYRange({750, 1000});
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 110 - 50), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(60, 110 - 75), QColor(Qt::cyan));
}

TEST_P(AxesAndSpacesTest, ASecondAxisIsDrawnAtTheOtherEdgeWithItsOwnTicksAndLabels)
{
    rendered.graph.setPlotAreaFramePadding({10, 10, 10, 60});
    const auto axis = std::make_shared<CPTXYAxis>(CPTCoordinate::Y);
    axis->setPlotSpace(addSpace({1000, 1000}));
    axis->setAxisConstraints(CPTConstraints{.upperOffset = 0});
    axis->setAxisLineStyle(CPTLineStyle{.width = 2, .color = Qt::white});
    axis->setLabelingPolicy(CPTAxisLabelingPolicy::FixedInterval);
    axis->setMajorIntervalLength(500);
    axis->setMajorTickLength(8);
    axis->setMajorTickLineStyle(CPTLineStyle{.width = 2, .color = Qt::green});
    axis->setMinorTickLineStyle(std::nullopt);
    axis->setLabelTextStyle({.color = Qt::red});
    rendered.graph.axisSet()->addAxis(axis);
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 30), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(63, 60), QColor(Qt::green));  // 1500, half way up
    EXPECT_EQ(plotkit_test::countMarkedPixels(image.copy(0, 0, 56, 120)), 0);
    EXPECT_GT(plotkit_test::countMarkedPixels(image.copy(68, 50, 52, 20)), 20);
}

TEST_P(AxesAndSpacesTest, AConstantValueOnTheAxisIsSeen)
{
    rendered.graph.axisSet()->xAxis()->setAxisLineStyle(CPTLineStyle{.width = 4, .color = Qt::white});
    rendered.addPlot(Qt::yellow, {0, 100}, {0, 0}, 2);
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 109), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(60, 110), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(60, 108), QColor(Qt::white));
}

TEST_P(AxesAndSpacesTest, AnAxisOutsideThePlotAreaHasNoLineAnywhere)
{
    for (CPTXYAxis* axis : {rendered.graph.axisSet()->xAxis(), rendered.graph.axisSet()->yAxis()}) {
        axis->setAxisLineStyle(CPTLineStyle{.width = 4, .color = Qt::white, .cap = CPTLineCap::Square});
        axis->setAxisConstraints(std::nullopt);
        axis->setOrthogonalPosition(-50);
    }
    EXPECT_EQ(plotkit_test::countMarkedPixels(draw()), 0);
}

TEST(AxesOnAPageTest, AnAxisOutsideThePlotAreaLeavesNoMarkInThePdf)
{
    plotkit_test::RenderedGraph rendered;
    CPTXYAxis& axis = *rendered.graph.axisSet()->xAxis();
    axis.setAxisConstraints(std::nullopt);
    axis.setOrthogonalPosition(-50);
    const auto pdf = [&] { return pdfOfGraph(rendered.graph, QSizeF(120, 120), DrawingReport::Silent); };
    const QByteArray withoutStyle = pdf();
    axis.setAxisLineStyle(CPTLineStyle{.width = 4, .color = Qt::white, .cap = CPTLineCap::Square});
    EXPECT_EQ(pdf(), withoutStyle);
    axis.setOrthogonalPosition(50);
    EXPECT_NE(pdf(), withoutStyle);
}

}  // namespace
