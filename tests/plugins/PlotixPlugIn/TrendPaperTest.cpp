#include "TrendViewFixture.h"

#include "plotkit/render/GraphRendering.h"
#include "plugins/PlotixPlugIn/reading/PaperGraph.h"

#include <QtGui/QPainter>

namespace {

class TrendPaper : public TrendViewFixture {
protected:
    QVariantMap contents() { return trend().reportContents(); }
    QVariantList rows() { return contents().value(QStringLiteral("rows")).toList(); }
    QImage onPaper()
    {
        QImage image(600, 300, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        trend().drawGraphOnPaper(&painter, QRectF(0, 0, 600, 300));
        return image;
    }
    static double meanLightness(const QImage& image)
    {
        double sum = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                sum += image.pixelColor(x, y).lightnessF();
        return sum / (image.width() * image.height());
    }
};

TEST_F(TrendPaper, ContentsAreEmptyWithoutAGraph)
{
    openTrend();
    EXPECT_TRUE(contents().isEmpty());
    onPaper();
}

TEST_F(TrendPaper, TheSpanIsThatOfTheGraphHoweverTheDatesMoved)
{
    openTrendWithData();
    panel().setFromDateValue(plotix::Date{kFrom - 86'400});
    const CPTPlotRange drawn = trend().graph()->plotSpace().xRange();
    EXPECT_EQ(contents().value(QStringLiteral("from")).toDouble(), drawn.location);
    EXPECT_EQ(contents().value(QStringLiteral("to")).toDouble(), drawn.end());
}

TEST_F(TrendPaper, HiddenLinesAreLeftOut)
{
    openTrendWithData();
    ASSERT_EQ(rows().size(), 2);
    trend().infoTableArray()->front()->show = false;
    ASSERT_EQ(rows().size(), 1);
    EXPECT_EQ(rows()[0].toMap().value(QStringLiteral("name")).toString(), trend().infoTableArray()->back()->tableName);
}

TEST_F(TrendPaper, RowsHaveTheColoursOfTheLinesOnPaper)
{
    openTrendWithData();
    trend().infoTableArray()->front()->color = Qt::yellow;
    EXPECT_EQ(rows()[0].toMap().value(QStringLiteral("color")).value<QColor>(), plotix::colorOnPaper(Qt::yellow));
}

TEST_F(TrendPaper, TheGraphIsDarkOnWhite)
{
    openTrendWithData();
    EXPECT_GT(meanLightness(onPaper()), 0.9);
    const QImage page = onPaper();
    int dark = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            dark += page.pixelColor(x, y).lightness() < 80 ? 1 : 0;
    EXPECT_GT(dark, 300);  // axes and labels
}

TEST_F(TrendPaper, TheViewLooksAsBeforeAfterwards)
{
    openTrendWithData();
    const auto picture = [this] {
        return plotkit::imageOfGraph(*trend().graph(), {600, 300}, 1.0, plotkit::DrawingReport::Silent);
    };
    trend().graph()->setTitle(QStringLiteral("Title"));
    const QRectF bounds = trend().graph()->bounds();
    const QImage before = picture();
    onPaper();
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(trend().graph()->bounds(), bounds);
}

TEST(ColorOnPaper, DarkColoursStayAndLightOnesBecomeLegible)
{
    EXPECT_EQ(plotix::colorOnPaper(Qt::blue), QColor(Qt::blue));
    EXPECT_LT(plotix::colorOnPaper(Qt::white).lightness(), 180);
    const QColor yellow = plotix::colorOnPaper(Qt::yellow);
    EXPECT_EQ(yellow.hslHue(), QColor(Qt::yellow).hslHue());
    EXPECT_LT(yellow.lightness(), 128);
    EXPECT_FALSE(plotix::colorOnPaper(QColor()).isValid());
}

}  // namespace
