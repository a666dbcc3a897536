#include "hostapp/site/WorthShowing.h"
#include "tests/support/stubsite/ScratchSite.h"

namespace {

/// Properties with the range of their values.
class WorthShowingTest : public testing::Test {
protected:
    WorthShowingTest() : agent(site.document->addAgent(QStringLiteral("Export"))) {}

    void add(const char* name, const char* unit, double lowest, double highest)
    {
        properties.push_back(agent->addProperty(QString::fromUtf8(name), QString::fromUtf8(unit)));
        extents.push_back({properties.back()->propertyName(), lowest, highest});
    }
    QStringList shown() const
    {
        QStringList names;
        for (const KTVPropertyPtr& property : plotix::worthShowing(properties, extents))
            names << property->name();
        return names;
    }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> agent;
    KTVPropertyList properties;
    std::vector<plotix::ValueExtent> extents;
};

TEST_F(WorthShowingTest, PartsOfTheDateAndNumbersOfRowsAreNotPlotted)
{
    for (const char* name : {"year", "Month", "day", "hour", "No.", "RecNo"})
        add(name, "", 1, 12);
    add("temp", "", 1, 12);
    EXPECT_EQ(shown(), QStringList{"temp"});
}

TEST_F(WorthShowingTest, OtherUnitsGetLanesOfTheirOwn)
{
    add("T1", "°C", 10, 20);
    add("Humidity", "%", 40, 60);
    add("T2", "°C", 12, 24);
    EXPECT_EQ(shown(), (QStringList{"T1", "Humidity", "T2"}));
}

TEST_F(WorthShowingTest, ThereAreThreeLanesAtMost)
{
    add("Air", "°C", 10, 20);
    add("Humidity", "%", 10, 20);
    add("Pressure", "hPa", 10, 20);
    add("Wind", "m/s", 10, 20);
    EXPECT_EQ(shown(), (QStringList{"Air", "Humidity", "Pressure"}));
}

TEST_F(WorthShowingTest, WhatHasNoUnitDoesNotJoinWhatHasOne)
{
    add("T1", "°C", 10, 20);
    add("Code", "", 12, 24);
    EXPECT_EQ(shown(), QStringList{"T1"});
}

TEST_F(WorthShowingTest, WithoutUnitsTheOrderOfMagnitudeDecides)
{
    add("a", "", 10, 40);
    add("b", "", 1000, 5000);
    add("c", "", 20, 60);
    EXPECT_EQ(shown(), (QStringList{"a", "c"}));
}

TEST_F(WorthShowingTest, AMagnitudeIsARatioNotANumberOfDigits)
{
    add("temp", "", 11, 100.04);
    add("dew point", "", -10, 78);
    add("pressure", "", 984, 1042);
    EXPECT_EQ(shown(), (QStringList{"temp", "dew point"}));
}

TEST_F(WorthShowingTest, ADirectionDoesNotCoverTheOthers)
{
    add("wind_dir", "", 0, 360);
    add("temp", "", 11, 100);
    add("director's room", "", 15, 25);
    EXPECT_EQ(shown(), (QStringList{"temp", "director's room"}));
}

TEST_F(WorthShowingTest, ADirectionAloneIsShown)
{
    add("Windrichtung", "", 0, 360);
    EXPECT_EQ(shown(), QStringList{"Windrichtung"});
}

TEST_F(WorthShowingTest, NoLineIsPressedFlatByAnother)
{
    add("Supply", "°C", 20, 24);
    add("Flue", "°C", 20, 900);
    add("Return", "°C", 18, 22);
    EXPECT_EQ(shown(), (QStringList{"Supply", "Return"}));
}

TEST_F(WorthShowingTest, AHandfulIsEnough)
{
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g"})
        add(name, "kW", 0, 10);
    EXPECT_EQ(shown().size(), 5);
}

TEST_F(WorthShowingTest, WhatNeverChangesIsShownOnlyWhereNothingElseIsThere)
{
    add("Set point", "°C", 21, 21);
    EXPECT_EQ(shown(), QStringList{"Set point"});
    add("Room", "°C", 20, 22);
    EXPECT_EQ(shown(), QStringList{"Room"});
}

TEST_F(WorthShowingTest, AMeasurementLeadsBeforeAState)
{
    add("Pump", "", 0, 1);
    add("Level", "", 100, 200);
    EXPECT_EQ(shown(), QStringList{"Level"});
}

TEST_F(WorthShowingTest, WithoutExtentsAllAreShown)
{
    add("a", "°C", 0, 1);
    extents.clear();
    EXPECT_EQ(shown(), QStringList{"a"});
}

}  // namespace
