#include "tests/hostapp/cli/CommandLineFixture.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace plotix {

namespace {

using InfoCommandTest = CommandLineTest;

TEST_F(InfoCommandTest, InfoGivesFullPrecisionAsJson)
{
    importWeather();
    ASSERT_EQ(run({"info", site(), "--json"}), 0);
    const QJsonObject info = QJsonDocument::fromJson(m_output.toUtf8()).object();
    EXPECT_EQ(info["site"].toString(), QStringLiteral("site"));
    const QJsonValue agent = info["agents"][0];
    EXPECT_EQ(agent["name"].toString(), QStringLiteral("EWR"));
    EXPECT_EQ(agent["records"].toInt(), 3);
    EXPECT_EQ(agent["first"].toString(), QStringLiteral("2015-01-01T00:00:00Z"));
    EXPECT_EQ(agent["last"].toString(), QStringLiteral("2015-01-02T00:00:00Z"));
    const QJsonValue pressure = agent["properties"][1];
    EXPECT_EQ(pressure["name"].toString(), QStringLiteral("Pressure"));
    EXPECT_EQ(pressure["propertyName"].toString(), QStringLiteral("pressure"));
    EXPECT_EQ(pressure["unit"].toString(), QStringLiteral("hPa"));
    EXPECT_EQ(pressure["valid"].toInt(), 3);
    EXPECT_EQ(pressure["minimum"].toDouble(), 1000);
    EXPECT_EQ(pressure["maximum"].toDouble(), 1002);
    EXPECT_EQ(pressure["average"].toDouble(), (1000 + 1001.25 + 1002) / 3);
}

TEST_F(InfoCommandTest, NamesFromFilesDoNothingToTheTerminal)
{
    importText("time,Le\x1b[2Jvel\n2015-01-01T00:00:00Z,1\n", QStringLiteral("\u202eevil"));
    EXPECT_FALSE(m_output.contains(QLatin1Char('\x1b'))) << m_output.toStdString();
    ASSERT_EQ(run({"info", site()}), 0);
    EXPECT_FALSE(m_output.contains(QLatin1Char('\x1b')) || m_output.contains(QChar(0x202e))) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains(QStringLiteral("\\u202eevil"))) << m_output.toStdString();
    ASSERT_EQ(run({"info", site(), "--json"}), 0);
    const QJsonObject agent = QJsonDocument::fromJson(m_output.toUtf8())["agents"][0].toObject();
    EXPECT_EQ(agent["name"].toString(), QStringLiteral("\u202eevil"));
}

TEST_F(InfoCommandTest, AMemoryBudgetThatIsNoneIsTold)
{
    importWeather();
    qputenv("PLOTIX_MEMORY_BUDGET", "plenty");
    EXPECT_EQ(run({"info", site()}), 0);
    qunsetenv("PLOTIX_MEMORY_BUDGET");
    EXPECT_TRUE(m_error.startsWith(QStringLiteral("plotix: PLOTIX_MEMORY_BUDGET is “plenty”")))
        << m_error.toStdString();
}

TEST_F(InfoCommandTest, InfoSpeaksToPeopleToo)
{
    importWeather();
    ASSERT_EQ(run({"info", site()}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("EWR: 3 records from 2015-01-01T00:00:00Z to 2015-01-02T00:00:00Z")));
    EXPECT_TRUE(
        m_output.contains(QStringLiteral("Air Temperature (°C), airTemperature: 2 valid, 1.5 to 2.5, average 2")));
}

}  // namespace

}  // namespace plotix
