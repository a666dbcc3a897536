#include "tests/hostapp/cli/CommandLineFixture.h"

namespace plotix {

namespace {

using ReportCommandTest = CommandLineTest;

TEST_F(ReportCommandTest, ReportIsAskedForAndWritten)
{
    importWeather();
    ASSERT_EQ(run({"report", site(), "--view", "EWR", "--paper", "Letter", "--output", path("report.pdf")}), 0)
        << m_error.toStdString();
    EXPECT_EQ(contents(path("report.pdf")), "a report");
    EXPECT_EQ(m_services.reported.at(0).view, "EWR");
    EXPECT_EQ(m_services.reported.at(0).paper, Paper::Letter);
    EXPECT_EQ(m_services.reported.at(0).document->path(), site());
}

TEST_F(ReportCommandTest, ReportTakesTheUsualPaperAndTheOnlyViewUnlessTold)
{
    importWeather();
    ASSERT_EQ(run({"report", site(), "--output", path("report.pdf")}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_services.reported.at(0).view.isEmpty());
    EXPECT_FALSE(m_services.reported.at(0).paper);
    EXPECT_EQ(m_services.reported.at(0).form, ReportForm::Page);
}

TEST_F(ReportCommandTest, ReportIsAPdfOnOneOfTwoPapers)
{
    expectFailure({"report", site(), "--output", path("report.png")}, 2, "must end in .pdf");
    expectFailure({"report", site(), "--paper", "A3", "--output", path("report.pdf")}, 2, "A3");
    expectFailure({"report", path("nowhere.plotix"), "--output", path("report.pdf")}, 1, "there is no site");
}

TEST_F(ReportCommandTest, TheViewsOwnFormCanBeChosen)
{
    importWeather();
    ASSERT_EQ(run({"report", site(), "--form", "classic", "--output", path("report.pdf")}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.reported.at(0).form, ReportForm::Classic);
    EXPECT_TRUE(m_services.reported.at(0).statistics.isEmpty());
}

TEST_F(ReportCommandTest, ColumnsAndWhatTheyAreAboutAreHandedOn)
{
    importWeather();
    ASSERT_EQ(
        run({"report", site(), "--columns", "median, coverage", "--over", "visible", "--output", path("report.pdf")}),
        0)
        << m_error.toStdString();
    EXPECT_EQ(m_services.reported.at(0).statistics,
              (QVariantMap{{"columns", QStringList{"median", "coverage"}}, {"over", "visible"}}));
}

TEST_F(ReportCommandTest, TheViewsOwnFormHasNoOtherColumns)
{
    expectFailure({"report", site(), "--form", "classic", "--columns", "median", "--output", path("report.pdf")}, 2,
                  "leave out --columns");
    expectFailure({"report", site(), "--over", "everything", "--output", path("report.pdf")}, 2, "everything");
}

TEST_F(ReportCommandTest, ASiteIsNotReplacedByItsReport)
{
    importWeather();
    QFile::copy(site(), path("site.pdf"));
    expectFailure({"report", site(), "--output", path("site.pdf")}, 1, "a site or another database");
    EXPECT_EQ(contents(path("site.pdf")), contents(site()));
    EXPECT_TRUE(m_services.reported.empty());
}

}  // namespace

}  // namespace plotix
