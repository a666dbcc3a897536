#include "RecordingPaper.h"
#include "TrendViewFixture.h"

#include "plugins/PlotixPlugIn/host/KTVGraphicsContext.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

namespace {

using YAxis = KTVGraphicsContext::YAxis;

/// Draws page headers and footers on a small page of 400 × 200 points, y counted upward in the rectangles given.
class TrendReportPage : public TrendViewFixture {
protected:
    static constexpr int kHeight = 200;

    TrendReportPage() { openTrend(); }

    template <class Draw>
    static void onSurface(QPaintDevice& device, YAxis yAxis, Draw draw)
    {
        QPainter painter(&device);
        KTVGraphicsContext context(&painter, kHeight, yAxis);
        KTVGraphicsContext* previous = KTVGraphicsContext::setCurrentContext(&context);
        draw();
        EXPECT_EQ(KTVGraphicsContext::currentContext(), &context);
        KTVGraphicsContext::setCurrentContext(previous);
    }
    QImage header(const QRectF& rect, YAxis yAxis = YAxis::Unflipped)
    {
        QImage page(400, kHeight, QImage::Format_ARGB32_Premultiplied);
        page.fill(Qt::red);
        onSurface(page, yAxis, [&] { trend().webViewDrawHeaderInRect(nullptr, rect); });
        return page;
    }
    std::vector<RecordingPaper::Text> footer(const QRectF& rect, YAxis yAxis = YAxis::Unflipped)
    {
        RecordingPaper paper({400, kHeight});
        onSurface(paper, yAxis, [&] { trend().webViewDrawFooterInRect(nullptr, rect); });
        return paper.texts();
    }
    void printPage(qint64 page, qint64 count)
    {
        m_operation = KTVPrintOperation(count);
        m_operation.setCurrentPage(page);
        KTVPrintOperation::setCurrentOperation(&m_operation);
    }
    void TearDown() override { KTVPrintOperation::setCurrentOperation(nullptr); }

    /// The rectangle of pixels that are no longer red; y downward.
    static QRect drawnPart(const QImage& page, const QRect& within)
    {
        QRect part;
        for (int y = within.top(); y <= within.bottom(); ++y)
            for (int x = within.left(); x <= within.right(); ++x)
                if (page.pixelColor(x, y) != QColor(Qt::red))
                    part |= QRect(x, y, 1, 1);
        return part;
    }
    void giveReportLogo(const QSize& size)
    {
        QImage logo(size, QImage::Format_ARGB32);
        logo.fill(Qt::blue);
        host().bundle().setImage("report_logo", logo);
    }
    static constexpr QRect kLeftHalf{0, 0, 200, kHeight}, kRightHalf{200, 0, 200, kHeight};

private:
    KTVPrintOperation m_operation{0};
};

TEST_F(TrendReportPage, HeaderIs48AndFooter24PointsHigh)
{
    EXPECT_EQ(trend().webViewHeaderHeight(nullptr), 48.0F);
    EXPECT_EQ(trend().webViewFooterHeight(nullptr), 24.0F);
}

TEST_F(TrendReportPage, CustomerLogoLiesInTheLowerLeftCorner)
{
    // From 100 to 148 points above the lower edge: the logo ends at row 99, counted from the top.
    EXPECT_EQ(drawnPart(header({10, 100, 380, 48}), kLeftHalf), QRect(10, 68, 32, 32));
}

TEST_F(TrendReportPage, ReportLogoMeetsTheRightEdgeCentredVertically)
{
    giveReportLogo({256, 64});
    EXPECT_EQ(drawnPart(header({10, 100, 380, 48}), kRightHalf), QRect(262, 60, 128, 32));
}

// The logo begins 128 points left of the right edge, at the lower end, also when it is narrower.
TEST_F(TrendReportPage, NarrowReportLogoLiesAtTheLeftOfItsPlace)
{
    giveReportLogo({64, 64});
    EXPECT_EQ(drawnPart(header({10, 100, 380, 48}), kRightHalf), QRect(262, 60, 32, 32));
    giveReportLogo({256, 32});
    EXPECT_EQ(drawnPart(header({10, 100, 380, 48}), kRightHalf), QRect(262, 76, 128, 16));
}

// The customer's logo is the plug-in's own, the report's the host's; the other bundle's namesakes do not count.
TEST_F(TrendReportPage, EachLogoComesFromItsOwnBundle)
{
    QImage other(64, 64, QImage::Format_ARGB32);
    other.fill(Qt::green);
    const QImage before = header({10, 100, 380, 48});
    host().bundle().setImage("customer_logo", other);
    EXPECT_EQ(header({10, 100, 380, 48}), before);
    EXPECT_TRUE(drawnPart(before, kRightHalf).isEmpty());
}

TEST_F(TrendReportPage, MissingLogoLeavesItsPlaceEmpty)
{
    EXPECT_TRUE(drawnPart(header({10, 100, 380, 48}), kRightHalf).isEmpty());
}

// Copying replaces what was there, transparency included.
TEST_F(TrendReportPage, LogosAreCopiedNotLaidOver)
{
    const QImage page = header({10, 100, 380, 48});
    EXPECT_EQ(page.pixelColor(10, 68).alpha(), 0);
}

// The rectangle counts upward whatever context is current.
TEST_F(TrendReportPage, FlippedContextGivesTheSameHeader)
{
    giveReportLogo({256, 64});
    EXPECT_EQ(header({10, 100, 380, 48}, YAxis::Flipped), header({10, 100, 380, 48}, YAxis::Unflipped));
}

TEST_F(TrendReportPage, WithoutAContextNothingHappens)
{
    trend().webViewDrawHeaderInRect(nullptr, {0, 0, 400, 48});
    trend().webViewDrawFooterInRect(nullptr, {0, 0, 400, 24});
    EXPECT_EQ(KTVGraphicsContext::currentContext(), nullptr);
}

TEST_F(TrendReportPage, FooterNamesProgramAndTimeAtTheLowerLeft)
{
    const auto texts = footer({10, 40, 380, 24});
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_TRUE(texts[0].text.startsWith("Prepared with fakehost at 20")) << texts[0].text.toStdString();
    EXPECT_EQ(texts[0].baseline.x(), 10);
    // 40 points above the lower edge lies the text's lower edge, a descent below its baseline.
    const double descent = QFontMetricsF(pageFont("Gill Sans", 9)).descent();
    EXPECT_NEAR(texts[0].baseline.y(), kHeight - 40 - descent, 1e-6);
}

TEST_F(TrendReportPage, FooterEndsWithThePageAtTheRightEdge)
{
    printPage(2, 5);
    const auto texts = footer({10, 40, 380, 24});
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[1].text, "Page 2 of 5");
    const double width = QFontMetricsF(pageFont("Gill Sans", 9)).horizontalAdvance("Page 2 of 5");
    EXPECT_NEAR(texts[1].baseline.x(), 390 - width, 1e-6);
}

TEST_F(TrendReportPage, FlippedContextGivesTheSameFooter)
{
    printPage(1, 1);
    const auto one = footer({10, 40, 380, 24}, YAxis::Flipped), other = footer({10, 40, 380, 24});
    ASSERT_EQ(one.size(), other.size());
    for (std::size_t index = 0; index < one.size(); ++index)
        EXPECT_EQ(one[index].baseline, other[index].baseline);
}

TEST_F(TrendReportPage, WithoutAPrintOperationThereIsNoPage)
{
    EXPECT_EQ(footer({0, 0, 400, 24}).at(1).text, "Page 0 of 0");
}

TEST_F(TrendReportPage, FooterIsBlackInOneTypefaceAtOneHeight)
{
    const auto texts = footer({10, 40, 380, 24});
    ASSERT_EQ(texts.size(), 2U);
    for (const RecordingPaper::Text& text : texts) {
        EXPECT_EQ(text.color, QColor(Qt::black));
        EXPECT_EQ(text.font.family(), pageFont("Gill Sans", 9).family());
        EXPECT_EQ(text.font.pixelSize(), 9);
        EXPECT_FALSE(text.font.bold() || text.font.italic());
        EXPECT_EQ(text.baseline.y(), texts[0].baseline.y());
    }
}

TEST_F(TrendReportPage, FooterTellsTheTimeOfThePrinting)
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
    const QString written = footer({10, 40, 380, 24}).at(0).text.section(" at ", 1);
    QDateTime told = QDateTime::fromString(written, "yyyy-MM-dd HH:mm:ss");
    told.setTimeSpec(Qt::UTC);
    EXPECT_GE(told, before);
    EXPECT_LE(told, QDateTime::currentDateTimeUtc());
}

TEST_F(TrendReportPage, FooterIsBlackAndRightAlignedInPixels)
{
    printPage(2, 5);
    QImage page(400, kHeight, QImage::Format_ARGB32_Premultiplied);
    page.fill(Qt::red);
    onSurface(page, YAxis::Unflipped, [&] { trend().webViewDrawFooterInRect(nullptr, {10, 40, 380, 24}); });
    const QRect right = drawnPart(page, kRightHalf);
    EXPECT_GE(right.right(), 385);
    EXPECT_LE(right.right(), 390);
    EXPECT_LE(right.bottom(), kHeight - 40);
    EXPECT_GE(right.top(), kHeight - 40 - 14);
    // On red, black ink leaves neither green nor blue, and somewhere nothing at all.
    int darkest = 255;
    for (int y = right.top(); y <= right.bottom(); ++y)
        for (int x = right.left(); x <= right.right(); ++x) {
            const QColor pixel = page.pixelColor(x, y);
            EXPECT_EQ(pixel.green() + pixel.blue(), 0);
            darkest = std::min(darkest, pixel.red());
        }
    EXPECT_LT(darkest, 32);
}

}  // namespace
