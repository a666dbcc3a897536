#include "hostapp/print/PageReport.h"

#include "base/ReportableError.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtGui/QPainter>
#include <QtPrintSupport/QPrinter>

#include <gtest/gtest.h>

namespace plotix {
namespace {

class PageReportTest : public testing::Test {
protected:
    void giveRows(int count)
    {
        for (int number = 1; number <= count; ++number)
            contents.rows.push_back({Qt::red, QStringLiteral("Sensor %1").arg(number), {}, 1, 2, 1.5, 10});
    }
    QString tool(const QString& name, const QStringList& arguments)
    {
        QProcess process;
        process.start(name, arguments);
        EXPECT_TRUE(process.waitForFinished()) << name.toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    /// Onto a printer that writes a file.
    int print(const std::function<void(QPrinter&)>& setUp = {})
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFileName(path);
        printer.setPageOrientation(QPageLayout::Landscape);
        if (setUp)
            setUp(printer);
        return PageReport(contents, QLocale::c()).print(printer);
    }
    QString text() { return tool("pdftotext", {"-layout", path, "-"}); }
    QString info() { return tool("pdfinfo", {path}); }
    QString pdfText()
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(PageReport(contents, QLocale::c()).pdf({595, 842}));
        file.close();
        return text();
    }

    void SetUp() override
    {
        contents.title = QStringLiteral("Trend");
        contents.to = 86'400;
    }

    ReportContents contents;
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("report.pdf"));
};

TEST_F(PageReportTest, NamesAreShownAsTheyAre)
{
    contents.title = QStringLiteral("A <b>bold</b> & plain");
    contents.rows.push_back({Qt::red, QStringLiteral("Level < 5 & <i>x</i>"), QStringLiteral("m"), 1, 2, 1.5, 10});
    const QString found = pdfText();
    EXPECT_TRUE(found.contains("A <b>bold</b> & plain")) << found.toStdString();
    EXPECT_TRUE(found.contains("Level < 5 & <i>x</i>")) << found.toStdString();
}

TEST_F(PageReportTest, TheKeyHasTheLinesColour)
{
    giveRows(1);
    contents.rows[0].color = QColor(1, 200, 3);
    pdfText();
    tool("pdftoppm", {"-r", "72", "-singlefile", "-png", path, folder.filePath("page")});
    const QImage page(folder.filePath("page.png"));
    int found = 0;
    for (int y = 0; y < page.height(); ++y)
        found += page.pixelColor(42, y) == QColor(1, 200, 3) ? 1 : 0;
    EXPECT_GE(found, 2);
}

TEST_F(PageReportTest, TheGraphIsDrawnOnceInsideThePage)
{
    std::vector<QRectF> drawn;
    contents.drawGraph = [&drawn](QPainter&, const QRectF& rect) { drawn.push_back(rect); };
    giveRows(40);
    EXPECT_GT(print(), 1);
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_TRUE(QRectF(36, 36, 770, 523).contains(drawn[0]));
}

TEST_F(PageReportTest, AnUprightSheetStaysUpright)
{
    giveRows(3);
    print([](QPrinter& printer) {
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageOrientation(QPageLayout::Portrait);
    });
    EXPECT_TRUE(info().contains(QRegularExpression("Page size:\\s+59[45].* x 84[12]"))) << info().toStdString();
}

TEST_F(PageReportTest, OnlyTheChosenPagesArePrinted)
{
    giveRows(100);
    const int count = print();
    ASSERT_GE(count, 4);
    print([](QPrinter& printer) {
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
    });
    EXPECT_TRUE(info().contains(QRegularExpression("Pages:\\s+2\\b"))) << info().toStdString();
    EXPECT_TRUE(text().contains(QStringLiteral("Page 2 of %1").arg(count)));
    EXPECT_FALSE(text().contains(QStringLiteral("Page 1 of")));
}

TEST_F(PageReportTest, ARangeBehindTheLastPageIsToldAndNothingPrinted)
{
    giveRows(3);
    EXPECT_THROW(print([](QPrinter& printer) {
                     printer.setPrintRange(QPrinter::PageRange);
                     printer.setFromTo(5, 6);
                 }),
                 ReportableError);
}

TEST_F(PageReportTest, LongNamesAndTitlesKeepTheirBeginningAndEnd)
{
    giveRows(1);
    contents.rows[0].name = QStringLiteral("Begin") + QString(300, QLatin1Char('x')) + QStringLiteral("End");
    const QString found = pdfText();
    EXPECT_TRUE(found.contains("Beginx")) << found.toStdString();
    EXPECT_TRUE(found.contains("xEnd")) << found.toStdString();
}

TEST_F(PageReportTest, FootnotesFollowTheTableWithTheirNumbersAndAreNeverCut)
{
    giveRows(2);
    contents.footnotes = {{3, "6 May 14:00", "Pump replaced", "Ada"},
                          {4, "7 May", QStringLiteral("very ").repeated(80) + "long", {}}};
    const QString printed = pdfText().simplified();
    EXPECT_TRUE(printed.contains("3 6 May 14:00: Pump replaced (Ada)")) << printed.toStdString();
    EXPECT_TRUE(printed.contains("very long")) << printed.toStdString();
    EXPECT_TRUE(info().contains(QRegularExpression("Pages: +1")));
}

TEST_F(PageReportTest, ManyFootnotesGoOnOnFurtherPages)
{
    giveRows(12);
    for (int number = 1; number <= 60; ++number)
        contents.footnotes.push_back({number, "noon", QStringLiteral("note<%1>").arg(number), {}});
    const QString printed = pdfText();
    for (int number = 1; number <= 60; ++number)
        EXPECT_EQ(printed.count(QStringLiteral("note<%1>").arg(number)), 1) << number;
}

}  // namespace
}  // namespace plotix
