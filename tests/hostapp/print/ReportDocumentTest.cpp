#include "hostapp/print/ReportDocument.h"

#include <QtCore/QBuffer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QPainter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextLayout>

#include <gtest/gtest.h>

namespace plotix {
namespace {

/// Lays out reports whose graph is 720 × 348 pixels on pages of 720 × 450 points.
class ReportDocumentTest : public testing::Test {
protected:
    static constexpr QSizeF kPage{720, 450};

    static QString html(const QString& title, int rows, const QSize& graph = {720, 348})
    {
        QImage image(graph, QImage::Format_RGB32);
        image.fill(Qt::green);
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        QString text = "<html><header><h1>" + title + "</h1><h2>From A to B</h2></header><body>";
        text += "<img src=\"data:image/png;base64, " + png.toBase64() + "\" alt=\"Plot\" />";
        text += "<table><tr><th>Property</th><th>Unit</th></tr>";
        for (int row = 0; row < rows; ++row)
            text += QStringLiteral("<tr><td>Row %1</td><td>hPa</td></tr>").arg(row);
        return text + "</table></body></html>";
    }

    ReportDocument::SharpGraph answerSharp(const QImage& image)
    {
        return [this, image](const QSizeF& size) {
            m_asked.push_back(size);
            return image;
        };
    }
    static QImage filled(const QSize& size, Qt::GlobalColor color)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        return image;
    }
    static QImage picture(ReportDocument& document, int page)
    {
        QImage image = filled(kPage.toSize(), Qt::white);
        QPainter painter(&image);
        document.drawPage(&painter, page);
        return image;
    }
    static int pixelsOf(const QImage& image, Qt::GlobalColor color)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == QColor(color) ? 1 : 0;
        return count;
    }

    std::vector<QSizeF> m_asked;
};

TEST_F(ReportDocumentTest, ThePictureTakesAsManyPointsAsItHasPixels)
{
    ReportDocument document({});
    document.layOut(html("A", 1), kPage);
    EXPECT_EQ(pixelsOf(picture(document, 0), Qt::green), 720 * 348);
}

TEST_F(ReportDocumentTest, TheGraphIsDrawnAnewAtTheSameSize)
{
    ReportDocument document(answerSharp(filled({2880, 1392}, Qt::blue)));
    document.layOut(html("A", 1), kPage);
    EXPECT_EQ(pixelsOf(picture(document, 0), Qt::blue), 720 * 348);
    ASSERT_EQ(m_asked.size(), 1U);
    EXPECT_EQ(m_asked[0], QSizeF(720, 348));
}

TEST_F(ReportDocumentTest, WithoutASharpGraphTheReportsOwnStays)
{
    ReportDocument document(answerSharp({}));
    document.layOut(html("A", 1), kPage);
    EXPECT_EQ(pixelsOf(picture(document, 0), Qt::green), 720 * 348);
}

TEST_F(ReportDocumentTest, OtherPicturesStayAsTheyAre)
{
    ReportDocument document(answerSharp(filled({2880, 1392}, Qt::blue)));
    document.layOut(html("A", 1, {32, 32}), kPage);
    EXPECT_EQ(pixelsOf(picture(document, 0), Qt::green), 32 * 32);
    EXPECT_TRUE(m_asked.empty());
}

// Names enter a report unescaped: one that holds an address must not have a file read.
TEST_F(ReportDocumentTest, NoFileIsRead)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("secret.png");
    ASSERT_TRUE(filled({50, 50}, Qt::magenta).save(file));
    ReportDocument document({});
    document.layOut("<html><body><img src=\"" + file + "\" /><img src=\"file://" + file + "\" /></body></html>", kPage);
    EXPECT_EQ(pixelsOf(picture(document, 0), Qt::magenta), 0);
}

/// A layout for every cell took three quarters of a minute here.
TEST_F(ReportDocumentTest, ManyRowsAreLaidOutInOneGo)
{
    ReportDocument document({});
    QElapsedTimer timer;
    timer.start();
    document.layOut(html("A", 300), kPage);
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_GT(document.pageCount(), 10);
}

TEST_F(ReportDocumentTest, AShortTableStandsBelowTheGraph)
{
    ReportDocument document({});
    document.layOut(html("A", 1), kPage);
    EXPECT_EQ(document.pageCount(), 1);
}

TEST_F(ReportDocumentTest, ATableThatDoesNotFitBelowTheGraphHasItsOwnPage)
{
    ReportDocument document({});
    document.layOut(html("A", 8), kPage);
    EXPECT_EQ(document.pageCount(), 2);
    document.layOut(html("A", 60), kPage);
    EXPECT_GE(document.pageCount(), 3);
}

// Long titles are set smaller before they push the graph off the first page.
TEST_F(ReportDocumentTest, ALongTitleLeavesTheGraphOnTheFirstPage)
{
    ReportDocument document({});
    QString title;
    for (int number = 0; number < 30; ++number)
        title += QStringLiteral("Temperature of Room %1 ● ").arg(number);
    document.layOut(html(title, 1), kPage);
    EXPECT_EQ(pixelsOf(picture(document, 0), Qt::green), 720 * 348);
    EXPECT_EQ(document.begin().text().trimmed(), title.trimmed());
    EXPECT_GT(document.begin().layout()->lineCount(), 1);
    EXPECT_LE(document.documentLayout()->blockBoundingRect(document.begin()).bottom(), kPage.height() - 348);
}

TEST_F(ReportDocumentTest, ATitleBeyondMeasureStillPrints)
{
    ReportDocument document({});
    document.layOut(html(QStringLiteral("Temperature ● ").repeated(2000), 1), kPage);
    int green = 0;
    for (int page = 0; page < document.pageCount(); ++page)
        green += pixelsOf(picture(document, page), Qt::green);
    EXPECT_EQ(green, 720 * 348);
}

TEST_F(ReportDocumentTest, EveryPageOfTheTableHasItsHeadings)
{
    ReportDocument document({});
    document.layOut(html("A", 60), kPage);
    ASSERT_GE(document.pageCount(), 3);
    const auto headingPart = [&](int page) { return picture(document, page).copy(0, 0, 720, 14); };
    EXPECT_EQ(headingPart(1), headingPart(2));
}

TEST_F(ReportDocumentTest, NoTextStillMakesAPage)
{
    ReportDocument document({});
    document.layOut({}, kPage);
    EXPECT_EQ(document.pageCount(), 1);
}

}  // namespace
}  // namespace plotix
