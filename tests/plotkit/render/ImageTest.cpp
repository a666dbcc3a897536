#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtGui/QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace plotkit;
using plotkit_test::CountingDelegate;
using plotkit_test::countMarkedPixels;

/// Pictures of 120 × 120 points: the plot area is the square from 10 to 110, a point a value.
class ImageTest : public testing::Test {
protected:
    QImage draw(double density = 1, DrawingReport report = DrawingReport::Silent)
    {
        return imageOfGraph(rendered.graph, QSizeF(120, 120), density, report);
    }
    CPTXYGraph& graph() { return rendered.graph; }

    plotkit_test::RenderedGraph rendered;
    CountingDelegate delegate;
};

TEST_F(ImageTest, GraphWithoutFillIsTransparent)
{
    EXPECT_EQ(countMarkedPixels(draw()), 0);
}

TEST_F(ImageTest, FillOfAlphaZeroLeavesThePictureTransparentRoundTheFrame)
{
    graph().applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    graph().setPadding({20, 20, 20, 20});
    graph().setFill(CPTFill::withColor(CPTColor::fromRgbF(0.25F, 0.25F, 0.25F, 0.0F)));
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(2, 2).alpha(), 0);
    EXPECT_EQ(image.pixelColor(60, 60).alpha(), 255);
}

TEST_F(ImageTest, FrameCornersAreRound)
{
    graph().setPlotAreaFrame({.padding = {10, 10, 10, 10}, .fill = CPTFill::withColor(Qt::red), .cornerRadius = 10});
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(60, 0), QColor(Qt::red));
}

TEST_F(ImageTest, GradientRunsFromBottomToTop)
{
    graph().setFill({{{0.0, Qt::black}, {1.0, Qt::white}}});
    const QImage image = draw();
    EXPECT_LT(image.pixelColor(60, 118).red(), 10);
    EXPECT_GT(image.pixelColor(60, 1).red(), 245);
}

TEST_F(ImageTest, BorderLiesInsideTheFrame)
{
    graph().setPlotAreaFrame(
        {.padding = {10, 10, 10, 10}, .borderLineStyle = CPTLineStyle{.width = 4, .color = Qt::green}});
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 0), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(60, 3), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(60, 4).alpha(), 0);
}

TEST_F(ImageTest, PlotStandsWhereItsValuesAre)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25});
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 110 - 25), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(60, 110 - 75).alpha(), 0);
}

TEST_F(ImageTest, LaterPlotsLieOnTop)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {50, 50});
    rendered.addPlot(Qt::cyan, {0, 100}, {50, 50});
    EXPECT_EQ(draw().pixelColor(60, 60), QColor(Qt::cyan));
}

TEST_F(ImageTest, HiddenPlotIsNotDrawnAndReportsNothing)
{
    const CPTScatterPlotPtr plot = rendered.addPlot(Qt::yellow, {0, 100}, {25, 25});
    plot->setDelegate(&delegate);
    plot->setHidden(true);
    EXPECT_EQ(countMarkedPixels(draw(1, DrawingReport::TellDelegates)), 0);
    EXPECT_TRUE(delegate.drawn.isEmpty());
}

TEST_F(ImageTest, EveryVisiblePlotReportsOnceInOrder)
{
    for (const Qt::GlobalColor color : {Qt::yellow, Qt::cyan})
        rendered.addPlot(color, {0, 100}, {25, 25})->setDelegate(&delegate);
    draw(1, DrawingReport::Silent);
    EXPECT_TRUE(delegate.drawn.isEmpty());
    draw(1, DrawingReport::TellDelegates);
    EXPECT_EQ(delegate.drawn, (QStringList{"1", "2"}));
}

TEST_F(ImageTest, PlotOutsideTheRangesStillReports)
{
    rendered.addPlot(Qt::yellow, {500, 600}, {25, 25})->setDelegate(&delegate);
    draw(1, DrawingReport::TellDelegates);
    EXPECT_EQ(delegate.drawn, QStringList{"1"});
}

TEST_F(ImageTest, PlotsEndAtThePlotArea)
{
    rendered.addPlot(Qt::yellow, {-50, 150}, {50, 50});
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(11, 60), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(7, 60).alpha(), 0);
    EXPECT_EQ(image.pixelColor(113, 60).alpha(), 0);
}

// A fitted range has its extremes on the very edge of the plot area: half of the line would be missing there.
TEST_F(ImageTest, LineAlongTheEdgeOfThePlotAreaKeepsItsWidth)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {100, 100}, 4);
    const QImage image = draw();
    for (int y = 8; y < 12; ++y)
        EXPECT_EQ(image.pixelColor(60, y), QColor(Qt::yellow)) << y;
}

TEST_F(ImageTest, GridLinesFillWholePixels)
{
    rendered.useTicks(33.3, 1000);
    graph().axisSet()->xAxis()->setMajorGridLineStyle(CPTLineStyle{.width = 1, .color = Qt::white});
    for (const double density : {1.0, 2.0}) {
        const QImage image = draw(density);
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = image.pixelColor(x, image.height() / 2).alpha();
            EXPECT_TRUE(alpha == 0 || alpha == 255) << x << " at " << density;
        }
    }
}

TEST_F(ImageTest, RoundingAGridLineKeepsItsWeight)
{
    rendered.useTicks(50, 1000);
    graph().axisSet()->xAxis()->setMajorGridLineStyle(
        CPTLineStyle{.width = 1.5, .color = QColor::fromRgbF(1, 1, 1, 0.25F)});
    double sum = 0;
    const QImage image = draw();
    for (int x = 50; x < 70; ++x)
        sum += double(image.pixelColor(x, 60).alphaF());
    EXPECT_NEAR(sum, 1.5 * 0.25, 0.01);
}

TEST_F(ImageTest, AxisHeldByItsConstraintStandsAtTheEdge)
{
    graph().axisSet()->xAxis()->setAxisLineStyle(CPTLineStyle{.width = 2, .color = Qt::white});
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 109), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(60, 110), QColor(Qt::white));
}

TEST_F(ImageTest, TicksCrossTheAxis)
{
    rendered.useTicks(50, 1000);
    graph().axisSet()->xAxis()->setMajorTickLineStyle(CPTLineStyle{.width = 2, .color = Qt::white});
    graph().axisSet()->xAxis()->setMajorTickLength(8);
    const QImage image = draw();
    EXPECT_EQ(image.pixelColor(60, 107), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(60, 112), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(60, 104).alpha(), 0);
}

TEST_F(ImageTest, TitleIsDrawn)
{
    graph().setPlotAreaFramePadding({40, 10, 10, 10});
    graph().setTitle(QStringLiteral("Newark"));
    graph().setTitleTextStyle({.fontName = QStringLiteral("Helvetica-Bold"), .fontSize = 18, .color = Qt::white});
    EXPECT_GT(countMarkedPixels(draw()), 100);
}

TEST_F(ImageTest, LabelsAreDrawnInTheirColour)
{
    rendered.useTicks(50, 1000);
    graph().setPlotAreaFramePadding({10, 10, 40, 10});
    graph().axisSet()->xAxis()->setLabelTextStyle({.color = Qt::red});
    const QImage image = draw();
    EXPECT_GT(countMarkedPixels(image), 20);
    EXPECT_EQ(image.pixelColor(60, 30).alpha(), 0);
}

TEST_F(ImageTest, SameGraphGivesTheSamePixels)
{
    graph().applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    rendered.addPlot(Qt::yellow, {0, 30, 100}, {25, 90, 4});
    EXPECT_EQ(draw(1.5), draw(1.5));
}

TEST_F(ImageTest, DensityMultipliesPixelsNotPoints)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25});
    const QImage image = draw(2);
    EXPECT_EQ(image.size(), QSize(240, 240));
    EXPECT_EQ(image.devicePixelRatio(), 2.0);
    EXPECT_EQ(image.pixelColor(120, 220 - 50), QColor(Qt::yellow));
    int thickness = 0;
    for (int y = 0; y < image.height(); ++y)
        thickness += image.pixelColor(120, y).alpha() == 255 ? 1 : 0;
    EXPECT_EQ(thickness, 6);
}

TEST_F(ImageTest, FractionalDensityRoundsTheSize)
{
    EXPECT_EQ(imageOfGraph(graph(), QSizeF(101, 33), 1.5, DrawingReport::Silent).size(), QSize(152, 50));
}

TEST_F(ImageTest, SizesThatAreNoneGiveNoImage)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25})->setDelegate(&delegate);
    const double nan = std::nan("");
    for (const QSizeF& size : {QSizeF(0, 0), QSizeF(-5, 10), QSizeF(10, 0), QSizeF(nan, 10), QSizeF(1e6, 10)})
        EXPECT_TRUE(imageOfGraph(graph(), size, 1, DrawingReport::TellDelegates).isNull());
    for (const double density : {0.0, -1.0, nan, std::numeric_limits<double>::infinity()})
        EXPECT_TRUE(imageOfGraph(graph(), QSizeF(10, 10), density, DrawingReport::TellDelegates).isNull());
    EXPECT_TRUE(delegate.drawn.isEmpty());
}

TEST_F(ImageTest, TinyImagesAreDrawnWithoutAPlotArea)
{
    graph().applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25})->setDelegate(&delegate);
    const QImage image = imageOfGraph(graph(), QSizeF(5, 5), 1, DrawingReport::TellDelegates);
    EXPECT_EQ(image.size(), QSize(5, 5));
    EXPECT_EQ(delegate.drawn, QStringList{"1"});
}

TEST_F(ImageTest, RangesOfLengthZeroOrNotFiniteAreDrawn)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25});
    const double infinity = std::numeric_limits<double>::infinity();
    for (const CPTPlotRange& range : {CPTPlotRange{0, 0}, CPTPlotRange{std::nan(""), 1}, CPTPlotRange{0, infinity}}) {
        graph().defaultPlotSpace()->setXRange(range);
        graph().defaultPlotSpace()->setYRange(range);
        EXPECT_FALSE(draw().isNull());
    }
}

TEST_F(ImageTest, ReversedRangeMirrorsThePlot)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {25, 25});
    graph().defaultPlotSpace()->setYRange({100, -100});
    EXPECT_EQ(draw().pixelColor(60, 10 + 25), QColor(Qt::yellow));
}

TEST_F(ImageTest, DelegateMayRemoveEveryPlotWhileItIsTold)
{
    class Remover : public CPTPlotDelegate {
    public:
        explicit Remover(CPTXYGraph& graph) : m_graph(graph) {}
        void didFinishDrawing(CPTScatterPlot*) override
        {
            while (!m_graph.allPlots().empty())
                m_graph.removePlot(m_graph.allPlots().front());
        }

    private:
        CPTXYGraph& m_graph;
    } remover(graph());
    for (const Qt::GlobalColor color : {Qt::yellow, Qt::cyan})
        rendered.addPlot(color, {0, 100}, {25, 25})->setDelegate(&remover);
    draw(1, DrawingReport::TellDelegates);
    EXPECT_TRUE(graph().allPlots().empty());
}

TEST_F(ImageTest, PainterComesBackAsItWas)
{
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.translate(3, 4);
    paintGraph(painter, graph(), QRectF(0, 0, 40, 40), DrawingReport::Silent);
    EXPECT_EQ(painter.transform(), QTransform::fromTranslate(3, 4));
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

TEST_F(ImageTest, MovedAndScaledPainterDrawsTheSamePixelsElsewhere)
{
    rendered.addPlot(Qt::yellow, {0, 100}, {0, 80});
    const QImage expected = draw(2);
    QImage image(300, 300, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(30, 20);
    painter.scale(2, 2);
    paintGraph(painter, graph(), QRectF(0, 0, 120, 120), DrawingReport::Silent);
    painter.end();
    const QImage part = image.copy(30, 20, 240, 240);
    for (int y = 0; y < 240; y += 7)
        for (int x = 0; x < 240; x += 7)
            ASSERT_EQ(part.pixel(x, y), expected.pixel(x, y)) << x << ", " << y;
}

TEST(SmallImageTest, ADensityBelowOneShowsTheWholeGraph)
{
    plotkit_test::RenderedGraph rendered;
    rendered.addPlot(Qt::red, {0, 100}, {50, 50}, 6);
    const QImage image = plotkit::imageOfGraph(rendered.graph, {240, 240}, 0.5, plotkit::DrawingReport::Silent);
    EXPECT_EQ(image.size(), QSize(120, 120));
    EXPECT_EQ(image.pixelColor(100, 60), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(118, 60).alpha(), 0);
}

}  // namespace
