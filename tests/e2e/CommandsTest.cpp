#include "tests/e2e/ProgramTest.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>

#include <cmath>
#include <map>

namespace plotix {

namespace {

using Commands = ProgramTest;

/// Counts, extremes and averages that awk finds in one column of one station's rows.
struct AwkColumn {
    int count = 0;
    double minimum = 0, maximum = 0, average = 0;
};

AwkColumn askAwk(const QString& file, const QString& station, int column)
{
    const QString program =
        QStringLiteral("$1==\"%1\" && $%2!=\"NA\" {v=$%2+0; if(!n||v<lo)lo=v; if(!n||v>hi)hi=v; s+=v; n++} "
                       "END {printf \"%d %.17g %.17g %.17g\", n, lo, hi, s/n}")
            .arg(station)
            .arg(column);
    QProcess awk;
    awk.start(QStringLiteral("awk"), {QStringLiteral("-F,"), program, file});
    EXPECT_TRUE(awk.waitForFinished());
    const QList<QByteArray> words = awk.readAllStandardOutput().split(' ');
    if (words.size() != 4) {
        ADD_FAILURE() << "awk gave no answer";
        return {};
    }
    return {words[0].toInt(), words[1].toDouble(), words[2].toDouble(), words[3].toDouble()};
}

void expectColumn(const QJsonObject& property, const AwkColumn& expected)
{
    const std::string name = property["propertyName"].toString().toStdString();
    EXPECT_EQ(property["valid"].toInt(), expected.count) << name;
    EXPECT_EQ(property["minimum"].toDouble(), expected.minimum) << name;
    EXPECT_EQ(property["maximum"].toDouble(), expected.maximum) << name;
    // awk adds from left to right; the program may add more exactly.
    EXPECT_NEAR(property["average"].toDouble(), expected.average, std::abs(expected.average) * 1e-12) << name;
}

QJsonObject propertyOf(const QJsonObject& agent, const QString& key)
{
    for (const QJsonValue& property : agent["properties"].toArray())
        if (property["propertyName"].toString() == key)
            return property.toObject();
    ADD_FAILURE() << key.toStdString() << " is missing";
    return {};
}

TEST_F(Commands, AirportWeatherImportsAsAwkCountsIt)
{
    PLOTIX_MEASUREMENTS(file, "airport-weather-2013.csv");
    const std::map<QString, int> records = {{"EWR", 8703}, {"JFK", 8706}, {"LGA", 8706}};
    for (const auto& [agent, count] : records)
        ASSERT_EQ(run({"import", file, "--site", "nyc.plotix", "--agent", agent, "--where", "origin=" + agent, "--time",
                       "time_hour", "--unit", "temp=°F", "--unit", "pressure=mbar", "--name", "temp=Air Temperature"}),
                  0)
            << error().toStdString();
    const QJsonArray agents = runForJson({"info", "nyc.plotix", "--json"})["agents"].toArray();
    ASSERT_EQ(agents.size(), 3);
    const std::map<QString, int> columns = {{"airTemperature", 6}, {"dewp", 7},       {"humid", 8},
                                            {"windDir", 9},        {"windSpeed", 10}, {"windGust", 11},
                                            {"precip", 12},        {"pressure", 13},  {"visib", 14}};
    for (const QJsonValue& value : agents) {
        const QJsonObject agent = value.toObject();
        const QString name = agent["name"].toString();
        EXPECT_EQ(agent["records"].toInt(), records.at(name));
        EXPECT_EQ(agent["first"].toString(), QStringLiteral("2013-01-01T06:00:00Z"));
        EXPECT_EQ(agent["last"].toString(), QStringLiteral("2013-12-30T23:00:00Z"));
        for (const auto& [key, column] : columns)
            expectColumn(propertyOf(agent, key), askAwk(file, name, column));
        EXPECT_EQ(propertyOf(agent, "airTemperature")["unit"].toString(), QStringLiteral("°F"));
        EXPECT_EQ(propertyOf(agent, "airTemperature")["name"].toString(), QStringLiteral("Air Temperature"));
    }
}

TEST_F(Commands, AirportWeatherComesBackBitForBit)
{
    PLOTIX_MEASUREMENTS(file, "airport-weather-2013.csv");
    ASSERT_EQ(run({"import", file, "--site", "a.plotix", "--agent", "EWR", "--where", "origin=EWR", "--time",
                   "time_hour", "--unit", "temp=°F"}),
              0);
    ASSERT_EQ(run({"export", "a.plotix", "--output", "a.csv"}), 0) << error().toStdString();
    ASSERT_EQ(run({"import", "a.csv", "--site", "b.plotix", "--agent", "EWR"}), 0) << error().toStdString();
    ASSERT_EQ(run({"export", "b.plotix", "--output", "b.csv"}), 0);
    EXPECT_EQ(contents("a.csv"), contents("b.csv"));
    EXPECT_EQ(contents("a.csv").count('\n'), 8704);
    EXPECT_EQ(runForJson({"info", "a.plotix", "--json"})["agents"],
              runForJson({"info", "b.plotix", "--json"})["agents"]);
}

TEST_F(Commands, RoomClimateIsMatchedAndExplained)
{
    PLOTIX_MEASUREMENTS(file, "room-climate-2015.csv");
    ASSERT_EQ(run({"import", file, "--site", "room.plotix", "--time-zone", "UTC"}), 0) << error().toStdString();
    EXPECT_TRUE(
        output().startsWith("The header names 7 columns and the rows have 8: the first column, which has no name, "
                            "counts the rows"))
        << output().toStdString();
    const QJsonValue agent = runForJson({"info", "room.plotix", "--json"})["agents"][0];
    EXPECT_EQ(agent["records"].toInt(), 2665);
    EXPECT_EQ(agent["first"].toString(), QStringLiteral("2015-02-02T14:19:00Z"));
    EXPECT_EQ(propertyOf(agent.toObject(), "co2")["valid"].toInt(), 2665);
    EXPECT_EQ(agent["properties"].toArray().size(), 6);
}

class Drawings : public ProgramTest {
protected:
    /// A day of two properties.
    void importDay()
    {
        QByteArray text = "time,Air Temperature (°C),Humidity (%)\n";
        for (int minute = 0; minute < 1440; ++minute)
            text += QStringLiteral("2015-06-01T%1:%2:00Z,%3,%4\n")
                        .arg(minute / 60, 2, 10, QLatin1Char('0'))
                        .arg(minute % 60, 2, 10, QLatin1Char('0'))
                        .arg(20 + 5 * std::sin(minute / 230.0))
                        .arg(60 - 10 * std::sin(minute / 230.0))
                        .toUtf8();
        write("day.csv", text);
        ASSERT_EQ(run({"import", "day.csv", "--site", "day.plotix"}), 0) << error().toStdString();
    }
};

TEST_F(Drawings, HaveTheSizeAskedForAndAreTheSameTwice)
{
    importDay();
    for (const char* name : {"one.png", "two.png"}) {
        ASSERT_EQ(run({"render", "day.plotix", "--properties", "airTemperature", "--size", "900x400", "--title",
                       "A day", "--output", name}),
                  0)
            << error().toStdString();
    }
    const QImage image = QImage::fromData(contents("one.png"));
    EXPECT_EQ(image.size(), QSize(900, 400));
    EXPECT_NE(image.pixelColor(450, 200), image.pixelColor(2, 200)) << "nothing is drawn";
    EXPECT_EQ(contents("one.png"), contents("two.png"));
}

TEST_F(Drawings, AreVectorsInPdf)
{
    importDay();
    ASSERT_EQ(run({"render", "day.plotix", "--output", "day.pdf"}), 0) << error().toStdString();
    EXPECT_TRUE(contents("day.pdf").startsWith("%PDF-"));
    EXPECT_LT(QFileInfo(path("day.pdf")).size(), 1 << 20);
}

TEST_F(Drawings, MayBeBare)
{
    importDay();
    ASSERT_EQ(run({"render", "day.plotix", "--bare", "--size", "640x320", "--output", "bare.png"}), 0)
        << error().toStdString();
    EXPECT_FALSE(QImage::fromData(contents("bare.png")).isNull());
}

TEST_F(Drawings, OfAComputedPropertyAreThoseOfARecordedOne)
{
    importDay();
    ASSERT_EQ(run({"edit", "day.plotix", "--compute", "Same = (\"Air Temperature\" * 3 + \"Air Temperature\") / 4",
                   "--color", "#56b4e9"}),
              0)
        << error().toStdString();
    for (const char* property : {"airTemperature", "same"})  // on one scale and without a recipe: both name the line
        ASSERT_EQ(run({"render", "day.plotix", "--arrangement", "one-scale", "--no-recipe", "--properties", property,
                       "--output", property + QString(".png")}),
                  0)
            << error().toStdString();
    EXPECT_EQ(contents("same.png"), contents("airTemperature.png"));
}

TEST_F(Commands, FailuresAreOneLineAndLeaveNothing)
{
    write("bad.csv", "time,a\n3/4/2015,1\n4/4/2015,2\n");
    EXPECT_EQ(run({"import", "bad.csv", "--site", "bad.plotix"}), 1);
    EXPECT_EQ(error().count('\n'), 1) << error().toStdString();
    EXPECT_TRUE(error().contains("bad.csv: no date in the file tells the day from the month")) << error().toStdString();
    EXPECT_FALSE(QFileInfo::exists(path("bad.plotix")));
    EXPECT_EQ(run({"render", "none.plotix", "--output", "a.png"}), 1);
    EXPECT_FALSE(QFileInfo::exists(path("a.png")));
}

TEST_F(Commands, WrongUsageIsStatusTwo)
{
    EXPECT_EQ(run({"frobnicate"}), 2);
    EXPECT_EQ(error().count('\n'), 1) << error().toStdString();
    EXPECT_EQ(run({"render"}), 2);
    EXPECT_EQ(run({"--help"}), 0);
}

TEST_F(Commands, ForeignFilesAreRefusedAndKept)
{
    write("foreign.plotix", "this is no site");
    EXPECT_EQ(run({"info", "foreign.plotix"}), 1);
    EXPECT_EQ(error().count('\n'), 1) << error().toStdString();
    EXPECT_EQ(contents("foreign.plotix"), "this is no site");
}

TEST_F(Commands, TheDemonstrationIsDrawnWhereThereIsNoDisplay)
{
    ASSERT_EQ(run({}), 0) << error().toStdString();
    EXPECT_EQ(output().count('\n'), 2) << output().toStdString();
    EXPECT_FALSE(QImage::fromData(contents("plotix-demonstration.png")).isNull());
    EXPECT_TRUE(contents("plotix-demonstration.pdf").startsWith("%PDF-"));
    const QJsonValue agent = runForJson({"info", "home/Demonstration.plotix", "--json"})["agents"][0];
    EXPECT_GE(agent["records"].toInt(), 730 * 1440);
    EXPECT_EQ(agent["properties"].toArray().size(), 8);
}

TEST_F(Drawings, OfACaseAreThoseOfItsSite)
{
    ASSERT_EQ(run({}), 0) << error().toStdString();
    const QString site = QStringLiteral("home/Demonstration.plotix");
    ASSERT_EQ(run({"case", site, "--trend", "wind and gusts", "--output", "wind.plotix"}), 0) << error().toStdString();
    EXPECT_TRUE(output().contains(" records of 2 properties, 0 notes, ")) << output().toStdString();
    EXPECT_EQ(run({"verify", "wind.plotix"}), 0);
    const QJsonObject records = runForJson({"info", "wind.plotix", "--json"})["agents"][0].toObject();
    const QString from = records["first"].toString(), to = records["last"].toString();
    for (const QString& file : {site, QStringLiteral("wind.plotix")})
        ASSERT_EQ(run({"render", file, "--properties", "windSpeed,windGust", "--from", from, "--to", to, "--no-recipe",
                       "--output", QFileInfo(file).baseName() + ".png"}),
                  0)
            << error().toStdString();
    EXPECT_EQ(contents("wind.png"), contents("Demonstration.png"));
}

}  // namespace

}  // namespace plotix
