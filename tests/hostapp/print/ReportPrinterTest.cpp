#include "hostapp/print/ReportPrinter.h"

#include "base/ReportableError.h"
#include "plugins/PlotixPlugIn/host/KTVGraphicsContext.h"
#include "plugins/PlotixPlugIn/host/KTVWebUIDelegate.h"
#include "tests/support/fakehost/FakeHost.h"

#include <QtCore/QLocale>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtPrintSupport/QPrinter>

#include <gtest/gtest.h>

namespace plotix {
namespace {

/// A view with a report that a test chooses; remembers where it was asked to draw.
class PrintedView : public KTVPlugIn, public KTVWebUIDelegate {
public:
    static std::shared_ptr<PrintedView> make(const KTVAgentPtr& agent)
    {
        std::shared_ptr<PrintedView> view(new PrintedView);
        return view->initWithAgent(agent, nullptr) ? view : nullptr;
    }

    KTVPrintInfo* customPrintInfo() override
    {
        KTVPrintInfo* setup = KTVPrintInfo::sharedPrintInfo();
        setup->setOrientation(KTVPaperOrientation::Landscape);
        setup->setLeftMargin(36);
        setup->setRightMargin(36);
        setup->setTopMargin(45);
        setup->setBottomMargin(45);
        return setup;
    }
    std::optional<QString> htmlContentForPrinting() override { return html; }
    float webViewHeaderHeight(QObject*) override { return 48; }
    float webViewFooterHeight(QObject*) override { return 24; }
    void webViewDrawHeaderInRect(QObject*, const QRectF& rect) override
    {
        headers.push_back(rect);
        contextWasFlipped = KTVGraphicsContext::currentContext()->isFlipped();
        KTVGraphicsContext::currentContext()->drawText("HEADER", rect.topLeft(), pageFont("Helvetica", 9), Qt::black);
    }
    void webViewDrawFooterInRect(QObject*, const QRectF& rect) override
    {
        const KTVPrintOperation* operation = KTVPrintOperation::currentOperation();
        pages << QStringLiteral("%1/%2").arg(operation->currentPage()).arg(operation->pageCount());
        footers.push_back(rect);
        KTVGraphicsContext::currentContext()->drawText("FOOTER " + pages.last(), rect.topLeft(),
                                                       pageFont("Helvetica", 9), Qt::black);
    }

    std::optional<QString> html = QStringLiteral("<html><body><h1>Report</h1></body></html>");
    std::vector<QRectF> headers, footers;
    QStringList pages;
    bool contextWasFlipped = true;

private:
    PrintedView() = default;
};

class ReportPrinterTest : public testing::Test {
protected:
    QString runTool(const QString& tool, const QStringList& arguments)
    {
        QProcess process;
        process.start(tool, arguments);
        EXPECT_TRUE(process.waitForFinished()) << tool.toStdString();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    QString save(const QByteArray& pdf)
    {
        QFile file(m_folder.filePath("report.pdf"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(pdf);
        return file.fileName();
    }
    QString pdfText() { return runTool("pdftotext", {"-layout", save(ReportPrinter(m_view, {}).pdf()), "-"}); }
    QString pdfInfo() { return runTool("pdfinfo", {save(ReportPrinter(m_view, {}).pdf())}); }
    void giveRows(int count)
    {
        QString html = "<html><body><table><tr><th>Property</th></tr>";
        for (int row = 0; row < count; ++row)
            html += QStringLiteral("<tr><td>Row%1</td></tr>").arg(row);
        m_view->html = html + "</table></body></html>";
    }

    fakehost::FakeHost m_host;
    std::shared_ptr<PrintedView> m_view = PrintedView::make(m_host.agent());
    QTemporaryDir m_folder;
};

TEST_F(ReportPrinterTest, HeaderAndFooterLieInPageCoordinates)
{
    ReportPrinter(m_view, {}).pdf();
    ASSERT_EQ(m_view->headers.size(), 1U);
    EXPECT_EQ(m_view->headers[0], QRectF(36, 612 - 45 - 48, 720, 48));
    EXPECT_EQ(m_view->footers[0], QRectF(36, 45, 720, 24));
    EXPECT_FALSE(m_view->contextWasFlipped);
}

TEST_F(ReportPrinterTest, EveryPageHasHeaderAndFooterWithItsNumber)
{
    giveRows(100);
    ReportPrinter(m_view, {}).pdf();
    ASSERT_GE(m_view->pages.size(), 3);
    const qsizetype pages = m_view->pages.size();
    EXPECT_EQ(m_view->pages.first(), QStringLiteral("1/%1").arg(pages));
    EXPECT_EQ(m_view->pages.last(), QStringLiteral("%1/%1").arg(pages));
    EXPECT_TRUE(pdfInfo().contains(QRegularExpression(QStringLiteral("Pages:\\s+%1\\n").arg(pages))));
}

TEST_F(ReportPrinterTest, NothingIsCurrentAfterwards)
{
    ReportPrinter(m_view, {}).pdf();
    EXPECT_EQ(KTVGraphicsContext::currentContext(), nullptr);
    EXPECT_EQ(KTVPrintOperation::currentOperation(), nullptr);
}

TEST_F(ReportPrinterTest, TextCanBeSelectedAndNoRowIsLost)
{
    giveRows(100);
    const QString text = pdfText();
    for (int row = 0; row < 100; ++row)
        EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("Row%1\\b").arg(row)))) << row;
    EXPECT_TRUE(text.contains("HEADER"));
    EXPECT_TRUE(text.contains("FOOTER 1/"));
}

TEST_F(ReportPrinterTest, LandscapeOfTheChosenPaper)
{
    EXPECT_TRUE(pdfInfo().contains(QRegularExpression("Page size:\\s+792 x 612")));
    m_host.printInfo().setPaperSize(paperSize(Paper::A4));
    EXPECT_TRUE(pdfInfo().contains(QRegularExpression("Page size:\\s+842 x 595")));
}

TEST_F(ReportPrinterTest, AViewWithoutAReportIsRefused)
{
    m_view->html = std::nullopt;
    EXPECT_THROW(ReportPrinter(m_view, {}).pdf(), ReportableError);
    EXPECT_EQ(KTVGraphicsContext::currentContext(), nullptr);
}

TEST_F(ReportPrinterTest, OnlyViewsThatDrawHeadersHaveAReport)
{
    EXPECT_TRUE(hasReport(m_view.get()));
    EXPECT_FALSE(hasReport(nullptr));
}

TEST_F(ReportPrinterTest, APrinterTakesTheSamePages)
{
    giveRows(100);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(m_folder.filePath("printed.pdf"));
    const int pages = ReportPrinter(m_view, {}).print(printer);
    const QString info = runTool("pdfinfo", {m_folder.filePath("printed.pdf")});
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+%1\\n").arg(pages))));
    EXPECT_TRUE(info.contains(QRegularExpression("Page size:\\s+792 x 612")));
}

TEST(Paper, SizesStandUpright)
{
    EXPECT_EQ(paperSize(Paper::A4), QSizeF(595, 842));
    EXPECT_EQ(paperSize(Paper::Letter), QSizeF(612, 792));
}

TEST(Paper, TheCountryDecidesWhatIsUsual)
{
    const QLocale before;
    QLocale::setDefault(QLocale("en_US"));
    EXPECT_EQ(usualPaper(), Paper::Letter);
    QLocale::setDefault(QLocale("de_DE"));
    EXPECT_EQ(usualPaper(), Paper::A4);
    QLocale::setDefault(before);
}

}  // namespace
}  // namespace plotix
