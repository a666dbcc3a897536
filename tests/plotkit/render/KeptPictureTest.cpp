#include "plotkit/render/GraphPainter.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtGui/QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

// What a painter keeps from frame to frame must never be visible: its picture equals that of a new painter.

namespace {

class KeptPictureTest : public testing::Test {
protected:
    KeptPictureTest()
    {
        shown.graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
        shown.graph.setPlotAreaFramePadding({20, 60, 60, 20});
        shown.graph.setTitle(QStringLiteral("Mill 4"));
        std::vector<double> x;
        std::vector<float> y;
        for (int index = 0; index < 40000; ++index) {
            x.push_back(index * 0.0025);
            y.push_back(static_cast<float>(50 + index * 7919 % 40));
        }
        shown.addPlot(QColor(200, 100, 50), std::move(x), std::move(y));
    }

    QImage painted(plotkit::GraphPainter& painter, QImage::Format format) const
    {
        QImage image(size, format);
        image.fill(Qt::black);
        QPainter to(&image);
        painter.paint(to, shown.graph, QRectF(QPointF(), size));
        return image;
    }

    void expectAsNew()
    {
        for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
            plotkit::GraphPainter anew;
            EXPECT_EQ(painted(kept, format), painted(anew, format));
        }
    }

    plotkit_test::RenderedGraph shown;
    plotkit::GraphPainter kept;
    QSize size{400, 300};
};

TEST_F(KeptPictureTest, PanningChangesWhatItMust)
{
    for (const double start : {0.0, 0.3, 7.0, -20.0}) {
        shown.graph.defaultPlotSpace()->setXRange({start, 100});
        expectAsNew();
    }
}

TEST_F(KeptPictureTest, AnotherSizeAndOtherLooksAreSeen)
{
    expectAsNew();
    size = QSize(401, 280);
    expectAsNew();
    shown.graph.setFill(CPTFill::withColor(Qt::darkBlue));
    expectAsNew();
    shown.graph.setFill(CPTFill::withColor(QColor(0, 0, 80, 100)));
    expectAsNew();
    CPTPlotAreaFrame frame = shown.graph.plotAreaFrame();
    frame.cornerRadius = 3;
    shown.graph.setPlotAreaFrame(frame);
    expectAsNew();
    shown.graph.setTitleTextStyle({.color = CPTColor(Qt::red)});
    expectAsNew();
}

TEST_F(KeptPictureTest, APlotStandsTheSameInAPictureAndInALayer)
{
    QImage direct = painted(kept, QImage::Format_RGB32);
    QImage layered(size, QImage::Format_RGB32);
    layered.fill(Qt::black);
    QPainter to(&layered);
    to.setClipRect(layered.rect());
    plotkit::GraphPainter().paint(to, shown.graph, QRectF(QPointF(), size));
    to.end();
    int most = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            most = std::max(most, std::abs(qRed(direct.pixel(x, y)) - qRed(layered.pixel(x, y))));
    EXPECT_LE(most, 2);  // rounding
}

}  // namespace
