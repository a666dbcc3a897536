#include "tests/hostapp/cli/CommandLineFixture.h"

namespace plotix {

namespace {

using ExportCommandTest = CommandLineTest;

TEST_F(ExportCommandTest, ExportWritesEveryDigit)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_EQ(contents(path("out.csv")),
              QByteArray("time,Air Temperature (°C),Pressure (hPa)\n2015-01-01T00:00:00Z,1.5,1000\n"
                         "2015-01-01T00:01:00.25Z,,1001.25\n2015-01-02T00:00:00Z,2.5,1002\n"));
}

TEST_F(ExportCommandTest, ExportTakesAPart)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--properties", "pressure", "--from", "2015-01-01T00:01:00Z", "--to",
                   "2015-01-01T12:00Z", "--output", path("out.csv")}),
              0);
    EXPECT_EQ(contents(path("out.csv")), QByteArray("time,Pressure (hPa)\n2015-01-01T00:01:00.25Z,1001.25\n"));
}

TEST_F(ExportCommandTest, NoSiteIsWrittenOver)
{
    importWeather();
    const QByteArray before = contents(site());
    expectFailure({"export", site(), "--output", site()}, 2, QStringLiteral("must end in .csv, .txt or .xlsx"));
    QFile::link(site(), path("link.csv"));
    expectFailure({"export", site(), "--output", path("link.csv")}, 1, path("link.csv"));
    expectFailure({"export", site(), "--output", path("link.csv")}, 1, QStringLiteral("a site or another database"));
    EXPECT_EQ(contents(site()), before);
}

TEST_F(ExportCommandTest, AnEarlierExportIsReplaced)
{
    importWeather();
    write("out.csv", "time,a\n");
    ASSERT_EQ(run({"export", site(), "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_TRUE(contents(path("out.csv")).startsWith("time,Air"));
}

TEST_F(ExportCommandTest, ADecimalCommaComesWithSemicolons)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--decimal", "comma", "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_TRUE(contents(path("out.csv")).contains("\n2015-01-01T00:00:00Z;1,5;1000\n"));
    expectFailure({"export", site(), "--decimal", "comma", "--delimiter", "comma", "--output", path("out.csv")}, 2,
                  QStringLiteral("--decimal comma needs another --delimiter"));
}

TEST_F(ExportCommandTest, LocalTimesAndTabsOnRequest)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--clock", "local", "--delimiter", "tab", "--output", path("out.txt")}), 0);
    EXPECT_TRUE(contents(path("out.txt")).contains("\n2015-01-01T00:00:00+00:00\t1.5\t1000\n"));
}

TEST_F(ExportCommandTest, TimesAndSpansAreByTheClocksOfAZone)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--zone", "Asia/Kathmandu", "--from", "2015-01-01T05:45", "--to",
                   "2015-01-01T05:45", "--output", path("out.csv")}),
              0)
        << m_error.toStdString();
    EXPECT_TRUE(contents(path("out.csv")).endsWith("\n2015-01-01T05:45:00+05:45,1.5,1000\n"))
        << contents(path("out.csv")).toStdString();
}

TEST_F(ExportCommandTest, TheZoneUtcIsWrittenAsUtc)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--zone", "utc", "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_TRUE(contents(path("out.csv")).contains("\n2015-01-01T00:00:00Z,1.5,1000\n"));
}

TEST_F(ExportCommandTest, OnlyOneOptionSaysByWhichClocks)
{
    importWeather();
    expectFailure({"export", site(), "--zone", "utc", "--clock", "local", "--output", path("out.csv")}, 2,
                  QStringLiteral("--clock and --zone"));
}

TEST_F(ExportCommandTest, ASpreadsheetIsAZipArchive)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--output", path("out.xlsx")}), 0) << m_error.toStdString();
    EXPECT_TRUE(contents(path("out.xlsx")).startsWith("PK"));
    expectFailure({"export", site(), "--output", path("out.xlsx"), "--formulas", "perhaps"}, 2,
                  QStringLiteral("--formulas"));
}

struct RoundTripCase {
    const char* name;
    QByteArray text;  ///< as export writes it
};

class RoundTrip : public CommandLineTest, public testing::WithParamInterface<RoundTripCase> {};

TEST_P(RoundTrip, ExportAndImportAreInverse)
{
    importText(GetParam().text);
    ASSERT_EQ(run({"export", site(), "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_EQ(contents(path("out.csv")), GetParam().text);
    ASSERT_EQ(run({"import", path("out.csv"), "--site", path("second.plotix")}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"export", path("second.plotix"), "--output", path("again.csv")}), 0);
    EXPECT_EQ(contents(path("again.csv")), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Files, RoundTrip,
    testing::Values(
        RoundTripCase{"Exotic",
                      "time,a\n2015-01-01T00:00:00Z,-0\n2015-01-01T00:00:01Z,5e-324\n2015-01-01T00:00:02Z,inf\n"
                      "2015-01-01T00:00:03Z,-inf\n2015-01-01T00:00:04Z,0.1\n2015-01-01T00:00:05Z,\n"},
        RoundTripCase{"FractionsOfSeconds", "time,a\n1969-12-31T23:59:59.9Z,1\n2015-01-01T00:00:00.0000002Z,2\n"},
        RoundTripCase{"EarlyAndLateYears", "time,a\n0001-01-01T00:00:00Z,1\n9999-12-31T23:59:59Z,2\n"},
        RoundTripCase{"TimesOutsideTheCalendar", "time (s),a\n-1e+300,1\n1e+300,2\n"},
        RoundTripCase{"NameLikeAUnit", "time,Level (m) ()\n2015-01-01T00:00:00Z,1\n"},
        RoundTripCase{"NameWithComma", "time,\"Wind, roof (m/s)\",b\n2015-01-01T00:00:00Z,1,2\n"}),
    [](const auto& row) { return row.param.name; });

TEST_F(ExportCommandTest, InvalidValuesAreWrittenWithTheirQualityOnRequest)
{
    const QString file = write("q.csv", "time,a,a Status\n2015-01-01T00:00:00Z,1,Good\n2015-01-02T00:00:00Z,2,Bad\n");
    ASSERT_EQ(run({"import", file, "--site", site()}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"export", site(), "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_EQ(contents(path("out.csv")), QByteArray("time,a\n2015-01-01T00:00:00Z,1\n2015-01-02T00:00:00Z,\n"));
    ASSERT_EQ(run({"export", site(), "--quality", "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_EQ(contents(path("out.csv")),
              QByteArray("time,a,a Quality\n2015-01-01T00:00:00Z,1,Good\n2015-01-02T00:00:00Z,2,Bad\n"));
}

}  // namespace

}  // namespace plotix
