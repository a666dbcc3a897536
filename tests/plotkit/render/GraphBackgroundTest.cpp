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
        QImage image(size * density, format);
        image.fill(ground);
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
        EXPECT_EQ(painted([&](plotkit::GraphCanvas& canvas) {
                      background.draw(canvas, graph, {rect, frame, panels});
                  }),
                  painted([&](plotkit::GraphCanvas& canvas) {
                      canvas.fillRect(rect, graph.fill());
                      canvas.drawRoundedFrame(frame, style.fill, style.borderLineStyle, style.cornerRadius);
                      for (const auto& panel : panels)
                          canvas.drawRoundedFrame(panel.rect, panel.fill, std::nullopt, 0);
                  }))
            << size.width() << " x " << size.height() << " at " << density;
    }

    /// Over a picture that was there, against over nothing.
    void expectReplaced()
    {
        const QRectF rect(QPointF(), size);
        const QRectF frame = rect.adjusted(margin, margin, -margin, -margin);
        format = QImage::Format_ARGB32_Premultiplied;
        const auto drawOver = [&](plotkit::Beneath beneath) {
            return painted([&](plotkit::GraphCanvas& canvas) {
                background.draw(canvas, graph, {rect, frame, panels}, beneath);
            });
        };
        ground = Qt::magenta;
        const QImage replaced = drawOver(plotkit::Beneath::Nothing);
        ground = Qt::transparent;
        EXPECT_EQ(replaced, drawOver(plotkit::Beneath::Picture)) << density << ' ' << isClipped;
    }

    QImage::Format format = QImage::Format_RGB32;
    QColor ground = Qt::magenta;
    CPTXYGraph graph;
    std::vector<plotkit::GraphBackground::Places::Panel> panels;
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

TEST_F(GraphBackgroundTest, IsAsDrawnWithPanels)
{
    const CPTFill fill = CPTFill::withColor(QColor(255, 255, 255, 30));
    panels = {{QRectF(90.3, 40, 350, 80.5), fill}, {QRectF(90.3, 140, 350, 80), fill}};
    for (const double each : {1.0, 1.5, 2.0})
        for (const QColor& below : {QColor(0, 0, 80), QColor(0, 0, 80, 0)}) {
            graph.setFill(CPTFill::withColor(below));
            density = each;
            expectAsDrawn();
            panels.back().fill = CPTFill::withColor(QColor(each > 1 ? 0 : 255, 0, 0, 99));
        }
}

TEST_F(GraphBackgroundTest, ReplacesWhatWasThereWhereNothingIsBeneath)
{
    for (const QColor& fill : {QColor(0, 0, 80), QColor(0, 0, 80, 100), QColor(0, 0, 80, 0)})
        for (const double each : {1.0, 1.5})
            for (const bool clipped : {false, true}) {
                graph.setFill(CPTFill::withColor(fill));
                density = each;
                isClipped = clipped;
                expectReplaced();
            }
}

TEST_F(GraphBackgroundTest, AFrameOfOneColourIsAsThePainterDrawsIt)
{
    const CPTLineStyle line{.width = 1.2, .color = CPTColor(255, 200, 90, 120)};
    const auto frames = [&](plotkit::GraphCanvas& canvas) {
        canvas.drawRoundedFrame({10.2, 20, 300, 200}, CPTFill::withColor(QColor(9, 99, 200, 50)), std::nullopt, 0);
        canvas.drawRoundedFrame({-50, 40.7, 900, 900}, CPTFill::none(), line, 0);  // an edge each, without the corners
        canvas.drawRoundedFrame({-50, -50, 300.4, 900}, CPTFill::none(), line, 0);
    };
    for (const double each : {1.0, 1.5, 2.0}) {
        density = each;
        isClipped = false;
        const QImage blended = painted(frames);
        isClipped = true;  // then the painter draws them
        EXPECT_EQ(blended, painted(frames)) << density;
    }
}

}  // namespace
