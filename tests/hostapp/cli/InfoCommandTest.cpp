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
