#include "plotkit/render/GraphFrames.h"
#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/render/CrossLayer.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <gtest/gtest.h>

namespace {

using namespace plotkit;

/// Pictures of 120 × 120 points: the plot area is the square from 10 to 110, a point a value.
class GraphLayersTest : public testing::Test {
protected:
    GraphLayersTest()
    {
        rendered.graph.setFill(CPTFill::withColor(Qt::darkGray));
        rendered.addPlot(Qt::yellow, {0, 100}, {50, 50});
        rendered.graph.axisSet()->xAxis()->setLabelFormatter(formatter);
    }

    QImage frame(GraphChange change, QSize size = {120, 120}, double density = 1)
    {
        QImage image(size * density, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.scale(density, density);
        isPainted = frames.paint(painter, rendered.graph, QRectF(QPointF(), size), change);
        return image;
    }

    /// What a painter that keeps nothing paints.
    QImage fresh(QSize size = {120, 120}, double density = 1)
    {
        QImage image(size * density, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.scale(density, density);
        paintGraph(painter, rendered.graph, QRectF(QPointF(), size), DrawingReport::Silent);
        return image;
    }

    plotkit_test::RenderedGraph rendered;
    std::shared_ptr<CrossLayer> layer = std::make_shared<CrossLayer>();
    std::shared_ptr<CountingFormatter> formatter = std::make_shared<CountingFormatter>();
    GraphFrames frames;
    bool isPainted = false;
};

TEST_F(GraphLayersTest, PicturesShowLayersAbovePlots)
{
    rendered.graph.addLayer(layer);
    const QImage image = imageOfGraph(rendered.graph, QSizeF(120, 120), 2, DrawingReport::Silent);
    EXPECT_EQ(image.pixelColor(120, 120), QColor(Qt::magenta));
    EXPECT_EQ(image.pixelColor(120, 10), QColor(Qt::darkGray));
    EXPECT_EQ(image.pixelColor(60, 120), QColor(Qt::yellow));
}

TEST_F(GraphLayersTest, PdfPagesShowLayers)
{
    const QSizeF size(120, 120);
    const QByteArray without = pdfOfGraph(rendered.graph, size, DrawingReport::Silent);
    rendered.graph.addLayer(layer);
    EXPECT_NE(pdfOfGraph(rendered.graph, size, DrawingReport::Silent), without);
    EXPECT_EQ(layer->drawings, 1);
    rendered.graph.removeLayer(layer);
    EXPECT_EQ(pdfOfGraph(rendered.graph, size, DrawingReport::Silent), without);
}

TEST_F(GraphLayersTest, LaterLayersLieOnTop)
{
    const auto upper = std::make_shared<CrossLayer>();
    upper->color = Qt::blue;
    rendered.graph.addLayer(layer);
    rendered.graph.addLayer(upper);
    EXPECT_EQ(fresh().pixelColor(60, 80), QColor(Qt::blue));
}

TEST_F(GraphLayersTest, ALayerThatMovesPaintsNothingBeneathItAgain)
{
    rendered.graph.addLayer(layer);
    frame(GraphChange::Anything);
    EXPECT_TRUE(isPainted);
    const int written = formatter->written;
    layer->value = 20;
    const QImage moved = frame(GraphChange::LayersOnly);
    EXPECT_FALSE(isPainted);
    EXPECT_EQ(formatter->written, written);
    EXPECT_EQ(layer->drawings, 2);
    EXPECT_EQ(moved, fresh());
}

TEST_F(GraphLayersTest, AKeptPictureIsUsedUntilAnythingMayHaveChanged)
{
    rendered.graph.addLayer(layer);
    const QImage before = frame(GraphChange::Anything);
    rendered.addPlot(Qt::cyan, {0, 100}, {20, 20});
    EXPECT_EQ(frame(GraphChange::LayersOnly), before);
    EXPECT_EQ(frame(GraphChange::Anything), fresh());
    EXPECT_NE(fresh(), before);
}

TEST_F(GraphLayersTest, AnotherSizeOrDensityPaintsAnew)
{
    rendered.graph.addLayer(layer);
    frame(GraphChange::Anything);
    EXPECT_EQ(frame(GraphChange::LayersOnly, {140, 90}), fresh({140, 90}));
    EXPECT_TRUE(isPainted);
    EXPECT_EQ(frame(GraphChange::LayersOnly, {140, 90}, 2), fresh({140, 90}, 2));
    EXPECT_TRUE(isPainted);
}

TEST_F(GraphLayersTest, WithoutLayersNothingIsKept)
{
    rendered.graph.addLayer(layer);
    frame(GraphChange::Anything);
    rendered.graph.removeLayer(layer);
    EXPECT_EQ(frame(GraphChange::LayersOnly), fresh());
    EXPECT_TRUE(isPainted);
}

}  // namespace
