#include "hostapp/document/SiteDocument.h"
#include "tests/e2e/ProgramTest.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>

#include <gtest/gtest.h>

namespace plotix {
namespace {

/// Reports of sites made from text files, as the program prints them, read back with a PDF viewer's tools.
class ReportTest : public ProgramTest {
protected:
    void importWeek(const QStringList& names)
    {
        QByteArray text = "time," + names.join(QLatin1Char(',')).toUtf8() + "\n";
        for (int hour = 0; hour < 168; ++hour) {
            text += QStringLiteral("2024-03-%1T%2:00:00Z")
                        .arg(hour / 24 + 1, 2, 10, QLatin1Char('0'))
                        .arg(hour % 24, 2, 10, QLatin1Char('0'))
                        .toUtf8();
            for (qsizetype column = 0; column < names.size(); ++column)
                text += "," + QByteArray::number(20.1 + static_cast<double>((hour * (column + 3)) % 24));
            text += "\n";
        }
        write(QStringLiteral("week.csv"), text);
        ASSERT_EQ(run({"import", path("week.csv"), "--site", path("week.plotix"), "--agent", "Meadow", "--only",
                       names.join(QLatin1Char(','))}),
                  0)
            << error().toStdString();
    }

    void report(const QStringList& more = {})
    {
        ASSERT_EQ(run(QStringList{"report", path("week.plotix"), "--output", path("report.pdf")} + more), 0)
            << error().toStdString();
    }

    /// As the view itself writes it.
    void classicReport(const QStringList& more = {}) { report(QStringList{"--form", "classic"} + more); }

    QString tool(const QString& name, const QStringList& arguments)
    {
        QProcess process;
        process.start(name, arguments);
        EXPECT_TRUE(process.waitForFinished()) << name.toStdString();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    QString text() { return tool("pdftotext", {"-layout", path("report.pdf"), "-"}); }
    int pageCount()
    {
        static const QRegularExpression pages("Pages:\\s+(\\d+)");
        return pages.match(tool("pdfinfo", {path("report.pdf")})).captured(1).toInt();
    }
    bool hasPageSize(const QString& size)
    {
        return tool("pdfinfo", {path("report.pdf")}).contains(QRegularExpression("Page size:\\s+" + size));
    }
    /// The first page, two pixels a point.
    QImage firstPage()
    {
        tool("pdftoppm", {"-r", "144", "-f", "1", "-singlefile", "-png", path("report.pdf"), path("page")});
        return QImage(path("page.png"));
    }
};

TEST_F(ReportTest, ASiteWithoutATrendOrRecordsIsRefusedInOneLine)
{
    SiteDocument::create(path("week.plotix"))->addAgent("Meadow");
    EXPECT_EQ(run({"report", path("week.plotix"), "--output", path("report.pdf")}), 1);
    EXPECT_EQ(error().count('\n'), 1) << error().toStdString();
    EXPECT_TRUE(error().contains("the site has no trend")) << error().toStdString();
    EXPECT_FALSE(QFile::exists(path("report.pdf")));
}

TEST_F(ReportTest, EveryRowIsFoundInThePdf)
{
    importWeek({"Air Temperature (°C)", "Pressure [hPa]", "Wind"});
    classicReport();
    const QString found = text();
    for (const char* row : {"Air Temperature\\s+°C\\s+20.1\\s", "Pressure\\s+hPa\\s+20.1\\s", "Wind\\s+20.1\\s"})
        EXPECT_TRUE(found.contains(QRegularExpression(QString::fromUtf8(row)))) << row << "\n" << found.toStdString();
    EXPECT_TRUE(found.contains(QString::fromUtf8("●")));
    EXPECT_TRUE(
        found.contains(QRegularExpression("Property\\s+Unit\\s+Minimum\\s+Maximum\\s+Average\\s+No. of Points")));
    EXPECT_TRUE(found.contains("Prepared with plotix at "));
    EXPECT_EQ(found.count("168"), 3);
}

TEST_F(ReportTest, PagesAreCountedRight)
{
    QStringList names;
    for (int number = 1; number <= 40; ++number)
        names << QStringLiteral("Sensor %1").arg(number);
    importWeek(names);
    classicReport({"--paper", "Letter"});
    const int pages = pageCount();
    EXPECT_GE(pages, 3);
    const QString found = text();
    for (int page = 1; page <= pages; ++page)
        EXPECT_TRUE(found.contains(QStringLiteral("Page %1 of %2").arg(page).arg(pages))) << page;
    for (const QString& name : names)
        EXPECT_TRUE(found.contains(QRegularExpression("\\b" + name + "\\s.*168"))) << name.toStdString();
}

TEST_F(ReportTest, LandscapeOnTheChosenPaper)
{
    importWeek({"Wind"});
    classicReport({"--paper", "Letter"});
    EXPECT_TRUE(hasPageSize("792 x 612"));
    classicReport({"--paper", "A4"});
    EXPECT_TRUE(hasPageSize("842 x 595"));
}

TEST_F(ReportTest, ThePictureIsSharp)
{
    importWeek({"Wind"});
    classicReport({"--paper", "Letter"});
    // Columns: page, number, kind, width, height; the graph has four pixels a point of its 720 × 348.
    const QString images = tool("pdfimages", {"-list", path("report.pdf")});
    EXPECT_TRUE(images.contains(QRegularExpression("image\\s+2880\\s+1392\\s"))) << images.toStdString();
}

TEST_F(ReportTest, GraphAndLogosStandWhereTheyBelong)
{
    importWeek({"Wind"});
    classicReport({"--paper", "Letter"});
    const QImage page = firstPage();
    ASSERT_EQ(page.size(), QSize(1584, 1224));
    const auto isInked = [&page](const QRect& points) {
        for (int y = points.top() * 2; y <= points.bottom() * 2; ++y)
            for (int x = points.left() * 2; x <= points.right() * 2; ++x)
                if (page.pixelColor(x, y).lightness() < 200)
                    return true;
        return false;
    };
    EXPECT_TRUE(isInked({36, 61, 32, 32}));    // the customer's logo, lower left in the header
    EXPECT_TRUE(isInked({628, 53, 128, 32}));  // the report's, right and centred
    EXPECT_FALSE(isInked({36, 46, 32, 13}));
    EXPECT_FALSE(isInked({200, 46, 350, 46}));
    EXPECT_FALSE(isInked({0, 0, 35, 611}));  // margins
    EXPECT_FALSE(isInked({757, 0, 34, 611}));
}

TEST_F(ReportTest, OneToTenPropertiesStandOnOnePage)
{
    QStringList names;
    for (int number = 1; number <= 10; ++number)
        names << QStringLiteral("Sensor %1").arg(number);
    importWeek(names);
    for (const char* paper : {"A4", "Letter"}) {
        report({"--paper", QLatin1String(paper)});
        EXPECT_EQ(pageCount(), 1) << paper;
    }
    const QString found = text();
    for (const QString& name : names)
        EXPECT_TRUE(found.contains(QRegularExpression("\\b" + name + "\\s.*168"))) << name.toStdString();
}

TEST_F(ReportTest, ThePageHasTheTrendsTitleAndTheSpanOfItsGraph)
{
    importWeek({"Wind"});
    report();
    const QString found = text();
    EXPECT_TRUE(found.startsWith("Meadow")) << found.toStdString();
    EXPECT_TRUE(found.contains("1 March 2024 00:00 to ")) << found.toStdString();
    EXPECT_TRUE(found.contains("7 March 2024 23:00 UTC")) << found.toStdString();
}

TEST_F(ReportTest, ThePageIsDarkOnWhite)
{
    importWeek({"Wind"});
    report();
    const QImage page = firstPage();
    int white = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            white += page.pixelColor(x, y) == QColor(Qt::white) ? 1 : 0;
    EXPECT_GT(white, page.width() * page.height() * 8 / 10);
}

TEST_F(ReportTest, AGermanReportHasGermanClocksDatesAndNumbers)
{
    importWeek({"level"});
    const QByteArray before = qgetenv("LC_ALL");
    qputenv("LC_ALL", "de_DE.UTF-8");
    qputenv("PLOTIX_LANGUAGE", "de");
    report();
    qputenv("LC_ALL", before);
    qunsetenv("PLOTIX_LANGUAGE");
    static const QRegularExpression halfOfTheDay("\\d\\s?[AP]M\\b");
    EXPECT_FALSE(text().contains(halfOfTheDay)) << text().toStdString();
    EXPECT_TRUE(text().contains("3. März")) << text().toStdString();
    EXPECT_TRUE(text().contains("Mittelwert"));
    EXPECT_TRUE(text().contains("20,1"));
}

TEST_F(ReportTest, UnknownViewNamesThoseThereAre)
{
    importWeek({"Wind"});
    EXPECT_EQ(run({"report", path("week.plotix"), "--view", "Nowhere", "--output", path("report.pdf")}), 1);
    EXPECT_TRUE(error().contains("there is no view"));
    EXPECT_TRUE(error().contains("there is: ")) << error().toStdString();
    EXPECT_FALSE(QFile::exists(path("report.pdf")));
}

TEST_F(ReportTest, FurtherColumnsArePrintedWithTheirFigures)
{
    importWeek({"Wind"});
    report({"--columns", "median,coverage"});
    EXPECT_TRUE(text().contains(QRegularExpression("Values\\s+Median\\s+Coverage"))) << text().toStdString();
    EXPECT_TRUE(text().contains(QRegularExpression("168\\s+30\\.\\d+\\s+100\\s%"))) << text().toStdString();
}

TEST_F(ReportTest, AColumnThatNobodyKnowsIsRefusedWithThoseThereAre)
{
    importWeek({"Wind"});
    EXPECT_EQ(run({"report", path("week.plotix"), "--columns", "mode", "--output", path("report.pdf")}), 1);
    EXPECT_TRUE(error().contains("no column “mode”")) << error().toStdString();
    EXPECT_TRUE(error().contains("median")) << error().toStdString();
}

// Building a report moves the view's dates and resizes its graph; none of that is stored in the site.
TEST_F(ReportTest, TheSiteStaysAsItIsStored)
{
    importWeek({"Wind"});
    const auto storedViews = [this] {
        std::vector<QByteArray> states;
        for (const ArchivedPlugIn& view : SiteDocument::open(path("week.plotix"))->archivedPlugIns())
            states.push_back(view.state);
        return states;
    };
    const std::vector<QByteArray> before = storedViews();
    classicReport();
    ASSERT_EQ(before.size(), 1U);
    EXPECT_EQ(storedViews(), before);
}

}  // namespace
}  // namespace plotix
