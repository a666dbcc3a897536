#include "plotkit/render/GraphBackground.h"

#include <QtGui/QPainter>
#include <gtest/gtest.h>

// A background, kept or stretched, is what drawing fill and frame gives.

namespace {

class GraphBackgroundTest : public testing::Test {
protected:
    GraphBackgroundTest() { graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme)); }

    template <class Work>
    QImage painted(const Work& work) const
    {
        QImage image(size * density, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        painter.scale(density, density);
        if (isClipped)
            painter.setClipRect(QRectF(QPointF(), size));
        plotkit::GraphCanvas canvas(painter);
        work(canvas);
        return image;
    }

    void expectAsDrawn()
    {
        const QRectF rect(QPointF(), size);
        const QRectF frame = rect.adjusted(margin, margin, -margin, -margin);
        const CPTPlotAreaFrame& style = graph.plotAreaFrame();
        EXPECT_EQ(painted([&](plotkit::GraphCanvas& canvas) { background.draw(canvas, graph, rect, frame); }),
                  painted([&](plotkit::GraphCanvas& canvas) {
                      canvas.fillRect(rect, graph.fill());
                      canvas.drawRoundedFrame(frame, style.fill, style.borderLineStyle, style.cornerRadius);
                  }))
            << size.width() << " x " << size.height() << " at " << density;
    }

    CPTXYGraph graph;
    plotkit::GraphBackground background;
    QSize size{500, 300};
    double density = 1;
    double margin = 20;
    bool isClipped = false;
};

TEST_F(GraphBackgroundTest, IsAsDrawnAtEverySize)
{
    for (const QSize each : {QSize(500, 300), QSize(499, 299), QSize(90, 80), QSize(900, 300), QSize(300, 1200)})
        for (const bool clipped : {false, true}) {
            size = each;
            isClipped = clipped;
            expectAsDrawn();
        }
}

TEST_F(GraphBackgroundTest, IsAsDrawnAtEveryDensity)
{
    for (const double each : {1.0, 1.5, 2.0, 3.0}) {
        density = each;
        expectAsDrawn();
    }
}

TEST_F(GraphBackgroundTest, IsAsDrawnWhereTheFrameTouchesOrCrossesTheEdge)
{
    for (const double each : {0.0, 0.5, -3.0, 140.0, 149.9, 200.0}) {
        margin = each;
        expectAsDrawn();
    }
}

TEST_F(GraphBackgroundTest, IsAsDrawnWithWideBordersAndCorners)
{
    CPTPlotAreaFrame frame = graph.plotAreaFrame();
    for (const double width : {0.3, 1.0, 7.0, 60.0})
        for (const double corner : {0.0, 2.5, 40.0, 1000.0}) {
            frame.borderLineStyle = CPTLineStyle{.width = width, .color = CPTColor(255, 200, 90, 120)};
            frame.cornerRadius = corner;
            graph.setPlotAreaFrame(frame);
            expectAsDrawn();
        }
}

}  // namespace
