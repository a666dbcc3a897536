#include "plugins/PlotixPlugIn/logic/ReportText.h"

#include <gtest/gtest.h>

namespace plotix {
namespace {

std::vector<ReportRow> rowsNamed(const QStringList& names)
{
    std::vector<ReportRow> rows;
    for (const QString& name : names)
        rows.push_back({.name = name});
    return rows;
}

TEST(ReportText, OneNameIsTheTitleAsItIs)
{
    EXPECT_EQ(reportTitle(rowsNamed({"A"})), "A");
}

TEST(ReportText, NoRowsHaveAnEmptyTitle)
{
    EXPECT_EQ(reportTitle({}), "");
}

// The blank of the last name comes after the circle's own.
TEST(ReportText, TwoBlanksStandBeforeTheLastName)
{
    EXPECT_EQ(reportTitle(rowsNamed({"A", "B"})), QString::fromUtf8("A ●  B"));
    EXPECT_EQ(reportTitle(rowsNamed({"A", "B", "C"})), QString::fromUtf8("A ● B ●  C"));
}

TEST(ReportText, TheWholeDocumentToTheLastCharacter)
{
    Report report;
    report.rows = {{"Air Temperature", QString::fromUtf8("°C"), 20.1F, 22.5F, 21.25F, 3},
                   {"Pressure", "hPa", 1013.25F, 1014.0F, 1013.6F, 2}};
    report.fromDate = "yesterday";
    report.toDate = "today";
    report.siteName = "Meadow";
    report.siteLocation = "Hillside";
    report.graph = "PNG";
    EXPECT_EQ(reportHtml(report),
              QString::fromUtf8("<html><header><h1>Air Temperature ●  Pressure</h1><h2>From yesterday to today</h2>"
                                "<h2><b>Meadow at Hillside</b></h2></header><body>"
                                "<img src=\"data:image/png;base64, UE5H\" alt=\"Plot\" />"
                                "<table><tr><th>Property</th><th>Unit</th><th>Minimum</th><th>Maximum</th>"
                                "<th>Average</th><th>No. of Points</th></tr>"
                                "<tr><td>Air Temperature</td><td>°C</td><td>20.1</td><td>22.5</td><td>21.25</td>"
                                "<td>3</td></tr>"
                                "<tr><td>Pressure</td><td>hPa</td><td>1013.25</td><td>1014</td><td>1013.6</td>"
                                "<td>2</td></tr></table></body></html>"));
}

// The content of a head is not printed, so the document has a header element.
TEST(ReportText, HeadingsStandInAHeaderElement)
{
    EXPECT_TRUE(reportHtml({}).startsWith("<html><header><h1></h1>"));
    EXPECT_FALSE(reportHtml({}).contains("<head>"));
}

TEST(ReportText, ABlankFollowsTheCommaOfTheImage)
{
    EXPECT_TRUE(reportHtml({}).contains("<img src=\"data:image/png;base64, \" alt=\"Plot\" />"));
}

TEST(ReportText, AbsentTextsReadNull)
{
    const QString html = reportHtml({});
    EXPECT_TRUE(html.contains("<h2>From (null) to (null)</h2>"));
    EXPECT_TRUE(html.contains("<h2><b>(null) at (null)</b></h2>"));
}

TEST(ReportText, WithoutRowsTheTableHoldsItsHeadingAlone)
{
    EXPECT_TRUE(reportHtml({}).endsWith("<th>No. of Points</th></tr></table></body></html>"));
}

// The printed page shows the names as they are, markup included.
TEST(ReportText, NothingIsEscaped)
{
    Report report;
    report.rows = rowsNamed({"<i>A</i> & B"});
    report.siteName = "<b>";
    const QString html = reportHtml(report);
    EXPECT_TRUE(html.contains("<h1><i>A</i> & B</h1>"));
    EXPECT_TRUE(html.contains("<td><i>A</i> & B</td>"));
    EXPECT_TRUE(html.contains("<h2><b><b> at "));
}

TEST(ReportText, ImageDataHaveNoLineBreaks)
{
    Report report;
    report.graph = QByteArray(5000, 'x');
    EXPECT_FALSE(reportHtml(report).contains('\n'));
    EXPECT_TRUE(reportHtml(report).contains(QString::fromLatin1(report.graph.toBase64())));
}

TEST(ReportText, PlaceholdersInNamesStayAsTheyAre)
{
    Report report;
    report.rows = rowsNamed({"%1 %2", "%@"});
    EXPECT_TRUE(reportHtml(report).contains(QString::fromUtf8("<h1>%1 %2 ●  %@</h1>")));
}

TEST(ReportText, FootersNameProgramDateAndPage)
{
    EXPECT_EQ(reportFooterLeft("plotix", "now"), "Prepared with plotix at now");
    EXPECT_EQ(reportFooterRight(2, 5), "Page 2 of 5");
}

TEST(ReportText, LetterLandscapeGivesTheGraph720By348)
{
    const ReportGeometry geometry = reportGeometry({792, 612}, {72, 90}, 1.0);
    EXPECT_EQ(geometry.content, QSizeF(720, 522));
    EXPECT_EQ(geometry.graph, QSizeF(720, 348));
    EXPECT_EQ(geometry.hostingView, QSizeF(1440, 696));
}

TEST(ReportText, ScalingFactorEnlargesTheContent)
{
    EXPECT_EQ(reportGeometry({792, 612}, {72, 90}, 2.0).content, QSizeF(1440, 1044));
}

}  // namespace
}  // namespace plotix
