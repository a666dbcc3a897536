#include "plugins/PlotixPlugIn/reading/overview/OverviewPicture.h"

#include "tests/plotkit/model/PagedSeriesMaking.h"

#include <QtGui/QPainter>
#include <gtest/gtest.h>

// The strip's picture of long lines is drawn when there is time for it.

namespace {

using namespace plotkit_test;

class OverviewPictureTest : public testing::Test {
protected:
    static TwinSeries line(std::size_t longestRun, double height)
    {
        TwinSeries made;
        for (int second = 0; second < 200'000; ++second)
            made.add(second, height * (second % 1000));
        made.cutRuns(longestRun, 1);
        return made;
    }
    void show(TwinSeries&& lines)
    {
        twin = std::move(lines);
        controller = std::make_shared<CPTSeriesController>(twin.paged());
        const auto plot = std::make_shared<CPTScatterPlot>();
        plot->setIdentifier(QStringLiteral("a"));
        plot->setDataLineStyle({.width = 1, .color = Qt::red});
        plot->bind(CPTScatterPlotBindingXValues, controller, QStringLiteral("arrangedObjects.x"));
        plot->bind(CPTScatterPlotBindingYValues, controller, QStringLiteral("arrangedObjects.y"));
        CPTXYGraph graph;
        graph.addPlot(plot);
        picture.take(graph, {QStringLiteral("a")}, std::nullopt);
    }
    QImage drawn(bool mayBeRough, double width = 300)
    {
        QImage image(400, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        picture.draw(painter, QRectF(0, 0, width, 32), mayBeRough);
        return image;
    }
    static QImage nothing()
    {
        QImage image(400, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        return image;
    }

    TwinSeries twin;
    CPTSeriesControllerPtr controller;
    plotix::OverviewPicture picture;
};

TEST_F(OverviewPictureTest, OfLongLinesWaitsUntilThereIsTime)
{
    show(line(4, 1));
    EXPECT_EQ(drawn(true), nothing());
    EXPECT_TRUE(picture.isRough());
    EXPECT_NE(drawn(false), nothing());
    EXPECT_FALSE(picture.isRough());
}

TEST_F(OverviewPictureTest, OfLongLinesIsTheOneBeforeUntilThereIsTime)
{
    show(line(4, 1));
    const QImage before = drawn(false);
    show(line(4, -1));
    EXPECT_EQ(drawn(true), before);
    EXPECT_TRUE(picture.isRough());
    EXPECT_NE(drawn(false), before);
}

TEST_F(OverviewPictureTest, OnceDrawnIsKept)
{
    show(line(4, 1));
    const QImage exact = drawn(false);
    EXPECT_EQ(drawn(true), exact);
    EXPECT_FALSE(picture.isRough());
}

TEST_F(OverviewPictureTest, OfShortLinesIsDrawnAtOnce)
{
    show(line(400, 1));
    EXPECT_NE(drawn(true), nothing());
    EXPECT_FALSE(picture.isRough());
}

TEST_F(OverviewPictureTest, OfQuiteAnotherSizeIsDrawnAtOnce)
{
    show(line(4, 1));
    drawn(false);
    drawn(true, 200);
    EXPECT_FALSE(picture.isRough());
}

}  // namespace
