#include "plugins/PlotixPlugIn/host/KTVGraphicsContext.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVPrintInfo.h"

#include <QtGui/QFontInfo>
#include <QtGui/QPainter>

#include <gtest/gtest.h>

namespace {

using YAxis = KTVGraphicsContext::YAxis;
using Surface = KTVGraphicsContext::Surface;

TEST(PrintInfo, PaperIsMeasuredAsItLies)
{
    KTVPrintInfo settings;
    settings.setPaperSize({792, 612});
    EXPECT_EQ(settings.paperSize(), QSizeF(612, 792));
    settings.setOrientation(KTVPaperOrientation::Landscape);
    EXPECT_EQ(settings.paperSize(), QSizeF(792, 612));
}

TEST(PrintInfo, SquarePaperLiesAnyWay)
{
    KTVPrintInfo settings;
    settings.setPaperSize({500, 500});
    settings.setOrientation(KTVPaperOrientation::Landscape);
    EXPECT_EQ(settings.paperSize(), QSizeF(500, 500));
}

TEST(PrintInfo, HasSharedSettingsWithoutAHost)
{
    ASSERT_NE(KTVPrintInfo::sharedPrintInfo(), nullptr);
    EXPECT_EQ(KTVPrintInfo::sharedPrintInfo(), KTVHostServices::installed().printInfo);
}

TEST(PrintInfo, NumbersAreThoseOfTheContract)
{
    EXPECT_EQ(static_cast<int>(KTVPaginationMode::Automatic), 0);
    EXPECT_EQ(static_cast<int>(KTVPaperOrientation::Landscape), 1);
}

TEST(PrintOperation, IsCurrentUntilAnotherOneIs)
{
    EXPECT_EQ(KTVPrintOperation::currentOperation(), nullptr);
    KTVPrintOperation operation(5);
    operation.setCurrentPage(2);
    EXPECT_EQ(KTVPrintOperation::setCurrentOperation(&operation), nullptr);
    EXPECT_EQ(KTVPrintOperation::currentOperation()->currentPage(), 2);
    EXPECT_EQ(KTVPrintOperation::setCurrentOperation(nullptr), &operation);
}

/// Draws on a red surface of 100 × 50 points.
class GraphicsContext : public testing::Test {
protected:
    GraphicsContext() { m_image.fill(Qt::red); }

    template <class Draw>
    const QImage& draw(YAxis yAxis, Surface surface, Draw action)
    {
        QPainter painter(&m_image);
        KTVGraphicsContext context(&painter, 50, yAxis, surface);
        action(context);
        return m_image;
    }
    static QImage filled(const QSize& size, const QColor& color)
    {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(color);
        return image;
    }

private:
    QImage m_image{100, 50, QImage::Format_ARGB32_Premultiplied};
};

TEST_F(GraphicsContext, UnflippedCountsFromTheLowerEdge)
{
    const QImage& image = draw(YAxis::Unflipped, Surface::Pixels, [](KTVGraphicsContext& context) {
        context.copyImage(filled({10, 10}, Qt::blue), {5, 0}, {0, 0, 10, 10}, 1.0);
    });
    EXPECT_EQ(image.pixelColor(5, 49), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(14, 40), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(5, 39), QColor(Qt::red));
}

TEST_F(GraphicsContext, FlippedCountsFromTheUpperEdge)
{
    const QImage& image = draw(YAxis::Flipped, Surface::Pixels, [](KTVGraphicsContext& context) {
        context.copyImage(filled({10, 10}, Qt::blue), {5, 10}, {0, 0, 10, 10}, 1.0);
    });
    EXPECT_EQ(image.pixelColor(5, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(5, 10), QColor(Qt::red));
}

TEST_F(GraphicsContext, ASourceLargerThanTheImageLeavesTheRestAlone)
{
    const QImage& image = draw(YAxis::Unflipped, Surface::Pixels, [](KTVGraphicsContext& context) {
        context.copyImage(filled({10, 10}, Qt::blue), {0, 0}, {0, 0, 32, 32}, 1.0);
    });
    EXPECT_EQ(image.pixelColor(9, 40), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(10, 49), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(9, 39), QColor(Qt::red));
}

TEST_F(GraphicsContext, PartOfAnImageBeginsAtItsLowerLeft)
{
    QImage picture = filled({10, 10}, Qt::blue);
    for (int x = 0; x < 10; ++x)
        picture.setPixelColor(x, 9, Qt::green);
    const QImage& image = draw(YAxis::Unflipped, Surface::Pixels, [&picture](KTVGraphicsContext& context) {
        context.copyImage(picture, {0, 0}, {0, 0, 10, 1}, 1.0);
    });
    EXPECT_EQ(image.pixelColor(3, 49), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(3, 48), QColor(Qt::red));
}

TEST_F(GraphicsContext, CopiesTransparencyOntoPixels)
{
    const QImage& image = draw(YAxis::Unflipped, Surface::Pixels, [](KTVGraphicsContext& context) {
        context.copyImage(filled({10, 10}, Qt::transparent), {0, 0}, {0, 0, 10, 10}, 1.0);
    });
    EXPECT_EQ(image.pixelColor(0, 49).alpha(), 0);
}

// A print preview shows the page on an opaque picture, where copied transparency would be black.
TEST_F(GraphicsContext, PaperShowsWhiteThroughTransparency)
{
    const QImage& image = draw(YAxis::Unflipped, Surface::Paper, [](KTVGraphicsContext& context) {
        context.copyImage(filled({10, 10}, Qt::transparent), {0, 0}, {0, 0, 10, 10}, 1.0);
    });
    EXPECT_EQ(image.pixelColor(0, 49), QColor(Qt::white));
}

TEST_F(GraphicsContext, ANullImageDrawsNothing)
{
    const QImage& image = draw(YAxis::Unflipped, Surface::Pixels, [](KTVGraphicsContext& context) {
        context.copyImage({}, {0, 0}, {0, 0, 10, 10}, 1.0);
    });
    EXPECT_EQ(image.pixelColor(0, 49), QColor(Qt::red));
}

TEST(PageText, IsNoLargerThanItsBox)
{
    const QFont font = pageFont(QStringLiteral("Helvetica"), 9);
    EXPECT_EQ(boundingSizeOfText("A long text", {5, 3}, 0, font), QSizeF(5, 3));
    const QSizeF free = boundingSizeOfText("A long text", {10'000, 10'000}, 3, font);
    EXPECT_GT(free.width(), 30);
    EXPECT_LT(free.width(), 60);
}

TEST(PageText, AMissingFontHasAStandIn)
{
    const QFont font = pageFont(QStringLiteral("No Such Font"), 9);
    EXPECT_EQ(font.family(), "Helvetica");
    EXPECT_EQ(font.pixelSize(), 9);
}

}  // namespace
