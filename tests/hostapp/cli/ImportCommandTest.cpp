#include "tests/hostapp/cli/CommandLineFixture.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <csignal>

namespace plotix {

namespace {

using ImportCommandTest = CommandLineTest;

TEST_F(ImportCommandTest, ImportMakesSiteAgentAndFirstTrend)
{
    importWeather();
    EXPECT_TRUE(m_output.contains(QStringLiteral("3 records"))) << m_output.toStdString();
    ASSERT_EQ(m_services.stored.size(), 1U);
    const TrendRequest& trend = m_services.stored.front();
    EXPECT_EQ(trend.title, QStringLiteral("EWR"));
    EXPECT_EQ(trend.agent->name(), QStringLiteral("EWR"));
    EXPECT_EQ(trend.properties.size(), 2U);  // each in a lane of its unit
    EXPECT_EQ(trend.from, Date{1420070400});
    EXPECT_EQ(trend.to, Date{1420156800});
}

TEST_F(ImportCommandTest, ASecondImportMakesNoSecondTrend)
{
    importWeather();
    importWeather();
    EXPECT_EQ(m_services.stored.size(), 1U);
    importText("time,a\n2015-01-01,1\n", QStringLiteral("JFK"));
    EXPECT_EQ(m_services.stored.size(), 2U);
}

TEST_F(ImportCommandTest, ImportOptionsReachTheImporter)
{
    const QString file = write("o.csv", "origin,when,temp,x\nEWR,3/4/2015 12:00,50,1\nJFK,oops,1,1\nEWR,bad,1,1\n"
                                        "EWR,3/4/2015 13:00,60,1\n");
    ASSERT_EQ(run({"import",       file,   "--site",          site(),      "--agent", "EWR",
                   "--time",       "when", "--time-zone",     "+02:00",    "--where", "origin=EWR",
                   "--only",       "temp", "--unit",          "temp=degF", "--name",  "temp=Air Temperature",
                   "--date-order", "dmy",  "--skip-bad-rows", "--json"}),
              0)
        << m_error.toStdString();
    const QJsonObject summary = QJsonDocument::fromJson(m_output.toUtf8()).object();
    EXPECT_EQ(summary["records"].toInt(), 2);
    EXPECT_EQ(summary["otherRows"].toInt(), 1);
    EXPECT_EQ(summary["badRows"].toInt(), 1);
    EXPECT_EQ(summary["first"].toString(), QStringLiteral("2015-04-03T10:00:00Z"));
    EXPECT_EQ(summary["columns"][0]["propertyName"].toString(), QStringLiteral("airTemperature"));
    EXPECT_EQ(summary["columns"][0]["unit"].toString(), QStringLiteral("°F"));
}

TEST_F(ImportCommandTest, AFailedImportLeavesNothing)
{
    expectFailure({"import", write("bad.csv", "time,a\n3/4/2015,1\n4/4/2015,2\n"), "--site", site()}, 1,
                  QStringLiteral("bad.csv: no date in the file tells the day from the month"));
    EXPECT_FALSE(QFile::exists(site()));
    EXPECT_TRUE(m_services.stored.empty());
}

TEST_F(ImportCommandTest, AFileSortedByStationIsToldByItsStations)
{
    QByteArray text = "time,station,a\n";
    for (const char* station : {"North", "South"})
        for (int minute = 0; minute < 1000; ++minute)
            text += QStringLiteral("2015-01-01 %1:%2,%3,%4\n")
                        .arg(minute / 60, 2, 10, QLatin1Char('0'))
                        .arg(minute % 60, 2, 10, QLatin1Char('0'))
                        .arg(QLatin1String(station))
                        .arg(minute + (*station == 'N' ? 0 : 500))
                        .toUtf8();
    expectFailure({"import", write("two.csv", text), "--site", site()}, 1,
                  QStringLiteral("take those of one with --where \"station=North\""));
}

TEST_F(ImportCommandTest, ANewSiteIsNamedLikeOne)
{
    write("data.csv", "time,a\n2015-01-01T00:00:00Z,1\n");
    expectFailure({"import", path("data.csv"), "--site", path("new.csv")}, 1, QStringLiteral("must end in .plotix"));
    expectFailure({"record", path("new.csv"), "--for", "1"}, 1, QStringLiteral("must end in .plotix"));
    EXPECT_FALSE(QFile::exists(path("new.csv")));
}

TEST_F(ImportCommandTest, CancellingAnImportLeavesNothing)
{
    m_services.progress = [](double) { return false; };
    expectFailure({"import", write("a.csv", "time,a\n2015-01-01,1\n"), "--site", site()}, 1,
                  QStringLiteral("cancelled"));
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(ImportCommandTest, AnInterruptFromTheKeyboardCancels)
{
    m_services.progress = [](double) {
        std::raise(SIGINT);
        return true;
    };
    expectFailure({"import", write("a.csv", "time,a\n2015-01-01,1\n"), "--site", site()}, 1,
                  QStringLiteral("cancelled"));
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(ImportCommandTest, ATerminalGetsABarThatVanishes)
{
    m_isTerminal = true;
    importWeather();
    EXPECT_TRUE(m_error.contains(QStringLiteral("Importing data.csv  ["))) << m_error.toStdString();
    EXPECT_TRUE(m_error.endsWith(QStringLiteral("\r\x1b[K")));
}

TEST_F(ImportCommandTest, ValuesMarkedAsBadAreCountedInTheSummary)
{
    const QString file = write("q.csv", "time,TI-101,TI-101 Status\n2015-01-01,1,Good\n2015-01-02,2,Bad\n");
    ASSERT_EQ(run({"import", file, "--site", site()}), 0) << m_error.toStdString();
    EXPECT_TRUE(
        m_output.contains(QStringLiteral("ti101: TI-101, 1 value, 1 value is marked as bad by “TI-101 Status”")))
        << m_output.toStdString();
}

TEST_F(ImportCommandTest, TheUserSaysWhichColumnJudgesWhichAndByWhichWords)
{
    const QString file = write("q.csv", "time,a,b,Code\n2015-01-01,1,5,0\n2015-01-02,2,6,7\n2015-01-03,3,7,9\n");
    expectFailure({"import", file, "--site", site(), "--quality", "Code=a"}, 1, QStringLiteral("with --bad WORD,…"));
    ASSERT_EQ(run({"import", file, "--site", site(), "--quality", "Code=a", "--bad", "7,9", "--json"}), 0)
        << m_error.toStdString();
    const QJsonObject summary = QJsonDocument::fromJson(m_output.toUtf8()).object();
    EXPECT_EQ(summary["columns"][0]["marked"].toInt(), 2);
    EXPECT_EQ(summary["columns"][0]["quality"].toString(), QStringLiteral("Code"));
    EXPECT_EQ(summary["columns"][1]["marked"].toInt(), 0);
}

TEST_F(ImportCommandTest, QualityCanBeIgnored)
{
    const QString file = write("q.csv", "time,a,a Status\n2015-01-01,1,Good\n2015-01-02,2,Bad\n");
    ASSERT_EQ(run({"import", file, "--site", site(), "--ignore-quality", "--json"}), 0) << m_error.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(m_output.toUtf8()).object()["columns"][0]["valid"].toInt(), 2);
}

}  // namespace

}  // namespace plotix
