#include "base/ZoneNames.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

QString idOf(const char* text)
{
    const auto zone = zoneNamed(QString::fromUtf8(text));
    return zone ? QString::fromUtf8(zone->id()) : QString();
}

TEST(ZoneNamesTest, TheListHoldsPlacesAndUtc)
{
    EXPECT_TRUE(zoneNames().contains("Europe/Berlin"));
    EXPECT_TRUE(zoneNames().contains("UTC"));
    EXPECT_FALSE(zoneNames().contains("UTC+03:00"));
}

TEST(ZoneNamesTest, ZonesAreFoundAsPeopleWriteThem)
{
    EXPECT_EQ(idOf("Europe/Berlin"), "Europe/Berlin");
    EXPECT_EQ(idOf(" europe/berlin "), "Europe/Berlin");
    EXPECT_EQ(idOf("america/st johns"), "America/St_Johns");
    EXPECT_EQ(idOf("kathmandu"), "Asia/Kathmandu");
    EXPECT_EQ(idOf("utc"), "UTC");
}

TEST(ZoneNamesTest, OtherTextsAreNone)
{
    EXPECT_EQ(idOf(""), "");
    EXPECT_EQ(idOf("Atlantis"), "");
    EXPECT_EQ(idOf("Europe"), "");
}

TEST(ZoneNamesTest, AMistypedNameIsNearTheRightOne)
{
    EXPECT_EQ(nearestZoneName("Europe/Berlinn"), "Europe/Berlin");
    EXPECT_EQ(nearestZoneName("Pacific/Appia"), "Pacific/Apia");
    EXPECT_EQ(nearestZoneName("Katmandoo"), "Asia/Kathmandu");
    EXPECT_FALSE(nearestZoneName("").isEmpty());
}

}  // namespace

}  // namespace plotix
