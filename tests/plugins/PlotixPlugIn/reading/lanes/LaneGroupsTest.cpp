#include "plugins/PlotixPlugIn/reading/lanes/LaneGroups.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;

class LaneGroupsTest : public testing::Test {
protected:
    void line(const QString& name, const QString& unit, double lowest, double highest)
    {
        lines.push_back({name, name, unit, lowest, highest});
    }
    /// "a b|c": the lines of each lane, lane by lane.
    QString lanes(ArrangementKind kind)
    {
        QStringList all;
        for (const LaneGroup& group : laneGroups(lines, kind)) {
            QStringList names;
            for (const std::size_t index : group.lines)
                names << lines[index].name;
            all << names.join(u' ');
        }
        return all.join(u'|');
    }
    std::vector<ArrangedLine> lines;
};

TEST_F(LaneGroupsTest, OneScaleHasNoLanes)
{
    line("a", "°C", 0, 1);
    EXPECT_EQ(lanes(ArrangementKind::OneScale), QString());
}

TEST_F(LaneGroupsTest, LinesOfAUnitShareALaneWhereTheFirstOfThemStands)
{
    line("air", "°C", 0, 1);
    line("power", "kW", 0, 1);
    line("dew", "°C", 0, 1);
    EXPECT_EQ(lanes(ArrangementKind::LanePerUnit), QStringLiteral("air dew|power"));
    EXPECT_EQ(lanes(ArrangementKind::LanePerProperty), QStringLiteral("air|power|dew"));
}

TEST_F(LaneGroupsTest, AutomaticKeepsOneScaleForOneUnitAndMagnitude)
{
    line("supply", "°C", 30, 70);
    line("return", "°C", 20, 50);
    EXPECT_EQ(lanes(ArrangementKind::Automatic), QString());
}

TEST_F(LaneGroupsTest, AutomaticMakesLanesForTwoUnits)
{
    line("supply", "°C", 30, 70);
    line("power", "kW", 20, 50);
    EXPECT_EQ(lanes(ArrangementKind::Automatic), QStringLiteral("supply|power"));
}

TEST_F(LaneGroupsTest, AutomaticSetsALineApartThatOthersWouldPressFlat)
{
    line("pump", "kW", 0, 1);
    line("plant", "kW", 0, 4'000);
    line("boiler", "kW", 0, 900);
    EXPECT_EQ(lanes(ArrangementKind::Automatic), QStringLiteral("pump|plant boiler"));
}

TEST_F(LaneGroupsTest, AutomaticSetsLinesWithoutAUnitApartThatAreOfDifferentMagnitudes)
{
    line("temperature", "", 18, 24);
    line("pressure", "", 998, 1'013);
    line("humidity", "", 40, 70);
    line("flow", "", 0.1, 1.2);
    EXPECT_EQ(lanes(ArrangementKind::Automatic), QStringLiteral("temperature humidity|pressure|flow"));
}

TEST_F(LaneGroupsTest, AutomaticSetsALineWithoutAUnitApartThatHardlyMovesBesideAnother)
{
    line("pressure", "", 1'010, 1'013);
    line("power", "", 100, 5'200);
    EXPECT_EQ(lanes(ArrangementKind::Automatic), QStringLiteral("pressure|power"));
}

TEST_F(LaneGroupsTest, AutomaticComparesEveryLineOfALane)
{
    line("middle", "kW", 0, 30);
    line("small", "kW", 0, 2);
    line("large", "kW", 0, 800);
    EXPECT_EQ(lanes(ArrangementKind::Automatic), QStringLiteral("middle small|large"));
}

TEST_F(LaneGroupsTest, OneScaleDoesNotServeBeyondItsLimits)
{
    line("count", "", 0, 39'197);
    EXPECT_FALSE(doesOneScaleServe(lines));
    lines = {};
    line("signal", "mm", -0.001, 0.001);
    EXPECT_FALSE(doesOneScaleServe(lines));
}

TEST_F(LaneGroupsTest, AConstantAndALineWithoutValuesDoNotAskForLanes)
{
    line("constant", "", 20, 20);
    line("nothing", "", 1, 0);
    EXPECT_TRUE(doesOneScaleServe(lines));
}

TEST_F(LaneGroupsTest, KeysOfLanesStayWhenOtherLinesCome)
{
    line("air", "°C", 0, 1);
    const QString before = laneGroups(lines, ArrangementKind::LanePerUnit)[0].key;
    lines.insert(lines.begin(), {"dew", "dew", "°C", 0, 1});
    EXPECT_EQ(laneGroups(lines, ArrangementKind::LanePerUnit)[0].key, before);
}

TEST(CommonName, IsWhatAllNamesShare)
{
    EXPECT_EQ(commonName({"Supply temperature", "Return temperature"}), QStringLiteral("Temperature"));
    EXPECT_EQ(commonName({"wind_speed", "wind_gust"}), QStringLiteral("Wind"));
    EXPECT_EQ(commonName({"Air", "Power"}), QString());
    EXPECT_EQ(commonName({"Air temperature"}), QStringLiteral("Air temperature"));
}

TEST(ArrangementWords, AreReadBack)
{
    for (const auto kind : {ArrangementKind::OneScale, ArrangementKind::LanePerUnit, ArrangementKind::LanePerProperty,
                            ArrangementKind::Automatic})
        EXPECT_EQ(arrangementNamed(textOf(kind)), kind);
    EXPECT_FALSE(arrangementNamed("lanes"));
}

}  // namespace
