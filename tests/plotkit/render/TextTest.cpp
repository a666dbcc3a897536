#include "plotkit/render/GraphRendering.h"
#include "plotkit/render/GraphText.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtGui/QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace plotkit;
using plotkit_test::countMarkedPixels;

CPTTextStyle styleNamed(const char* name, double size = 12)
{
    return {.fontName = QString::fromLatin1(name), .fontSize = size, .color = Qt::white};
}

QImage drawText(const PlacedText& text, const QSize& size, TextPlacing placing)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawPlacedText(painter, text, styleNamed("Helvetica"), placing);
    return image;
}

TEST(GraphTextTest, FaceIsReadFromTheFontName)
{
    const QFont font = fontForStyle(styleNamed("Helvetica-BoldOblique"));
    EXPECT_EQ(font.family(), u"Helvetica");
    EXPECT_TRUE(font.bold());
    EXPECT_TRUE(font.italic());
    EXPECT_FALSE(fontForStyle(styleNamed("Helvetica")).bold());
}

TEST(GraphTextTest, NameWithAHyphenThatIsNoFaceStaysWhole)
{
    EXPECT_EQ(fontForStyle(styleNamed("Avant-Garde")).family(), u"Avant-Garde");
}

TEST(GraphTextTest, DensityScalesTheFont)
{
    EXPECT_EQ(fontForStyle(styleNamed("Helvetica"), 1.5).pixelSize(), 18);
    EXPECT_EQ(fontForStyle(styleNamed("Helvetica", std::nan(""))).pixelSize(), 1);
    EXPECT_EQ(fontForStyle(styleNamed("Helvetica", -4)).pixelSize(), 1);
}

TEST(GraphTextTest, LinesAddUpAndTheLongestOneCounts)
{
    const QSizeF one = sizeOfText(QStringLiteral("Nov-19"), styleNamed("Helvetica"));
    const QSizeF two = sizeOfText(QStringLiteral("Nov-19\n9"), styleNamed("Helvetica"));
    EXPECT_EQ(two.width(), one.width());
    EXPECT_EQ(two.height(), 2 * one.height());
    EXPECT_EQ(sizeOfText(QString(), styleNamed("Helvetica")), QSizeF(0, 0));
}

TEST(GraphTextTest, WidthHoldsAtEveryDensity)
{
    const QString text = QStringLiteral("Nov-19 1013.25 12:45PM");
    const double width = sizeOfText(text, styleNamed("Helvetica")).width();
    for (const double density : {1.0, 1.5, 2.0, 4.0}) {
        const QFontMetricsF metrics(fontForStyle(styleNamed("Helvetica"), density));
        EXPECT_NEAR(metrics.horizontalAdvance(text) / density, width, 2.0) << density;
    }
}

TEST(GraphTextTest, LongLinesStayInTheirBox)
{
    PlacedText text;
    text.text = QStringLiteral("A title much too long for the box that it was given");
    const QImage image = drawText(text, {200, 30}, {.box = {50, 5, 80, 20}});
    EXPECT_GT(countMarkedPixels(image.copy(50, 0, 80, 30)), 50);
    EXPECT_EQ(countMarkedPixels(image.copy(0, 0, 48, 30)), 0);
    EXPECT_EQ(countMarkedPixels(image.copy(133, 0, 67, 30)), 0);
}

TEST(GraphTextTest, TextReadingUpwardIsHigherThanWide)
{
    PlacedText text;
    text.text = QStringLiteral("Value of something");
    text.readsUpward = true;
    const QImage image = drawText(text, {100, 150}, {.box = {40, 10, 20, 130}});
    EXPECT_GT(countMarkedPixels(image.copy(40, 10, 20, 130)), 100);
    EXPECT_EQ(countMarkedPixels(image.copy(0, 0, 38, 150)), 0);
    EXPECT_EQ(countMarkedPixels(image.copy(62, 0, 38, 150)), 0);
}

TEST(GraphTextTest, HaloDarkensRoundALightText)
{
    PlacedText text;
    text.text = QStringLiteral("Time");
    const QImage plain = drawText(text, {60, 30}, {.box = {5, 5, 50, 20}});
    const QImage set = drawText(text, {60, 30}, {.box = {5, 5, 50, 20}, .hasHalo = true});
    EXPECT_GT(countMarkedPixels(set), countMarkedPixels(plain));
}

class TickTest : public testing::Test {
protected:
    /// Marked pixels in the row of the x ticks' lower halves, of a graph whose x axis has a tick every `interval`.
    int markedTickPixels(double interval)
    {
        plotkit_test::RenderedGraph rendered;
        rendered.useTicks(interval, 1000);
        CPTXYAxis& axis = *rendered.graph.axisSet()->xAxis();
        axis.setMajorTickLineStyle(CPTLineStyle{.width = 3, .color = Qt::white});
        axis.setMajorTickLength(8);
        const QImage image = imageOfGraph(rendered.graph, QSizeF(120, 120), 1, DrawingReport::Silent);
        return countMarkedPixels(image.copy(0, 112, 120, 1));
    }
};

TEST_F(TickTest, TicksStandApart)
{
    EXPECT_EQ(markedTickPixels(20), 6 * 3);
}

// Ticks of 3 points every 5 points are no scale but a bar: those without a label are left out.
TEST_F(TickTest, TicksThatWouldMergeAreLeftOut)
{
    EXPECT_LT(markedTickPixels(5), 21 * 3 / 2);
}

}  // namespace
