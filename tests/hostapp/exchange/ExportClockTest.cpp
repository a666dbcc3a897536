#include "hostapp/exchange/ExportClock.h"

#include "tests/support/PinnedZone.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

class ExportClockTest : public testing::Test {
protected:
    PinnedZone zone{"Europe/Berlin"};
    ExportClock local{ExportForm::Clock::Local};
};

TEST_F(ExportClockTest, LocalTimesSayHowFarTheyAreFromUtc)
{
    EXPECT_EQ(local.text(1'705'000'800.25), "2024-01-11T20:20:00.25+01:00");
    EXPECT_EQ(local.text(1'720'000'800), "2024-07-03T12:00:00+02:00");
    EXPECT_EQ(ExportClock(ExportForm::Clock::Utc).text(1'720'000'800), "2024-07-03T10:00:00Z");
}

TEST_F(ExportClockTest, TheRepeatedHourIsToldApart)
{
    EXPECT_EQ(local.text(1'729'989'000), "2024-10-27T02:30:00+02:00");
    EXPECT_EQ(local.text(1'729'992'600), "2024-10-27T02:30:00+01:00");
}

TEST_F(ExportClockTest, WestAndHalfHours)
{
    zone.use("America/St_Johns");
    EXPECT_EQ(local.text(0), "1969-12-31T20:30:00-03:30");
}

TEST_F(ExportClockTest, OnlyNamesLikeFormulasGetAnApostrophe)
{
    for (const char* name : {"=A1", "+1", "-1", "@x"})
        EXPECT_EQ(cellName(QLatin1String(name), true), QLatin1Char('\'') + QLatin1String(name));
    EXPECT_EQ(cellName("Air", true), "Air");
    EXPECT_EQ(cellName("=A1", false), "=A1");
    EXPECT_EQ(cellName("", true), "");
}

TEST_F(ExportClockTest, AnotherZoneIsNamedAndKeepsItsOwnOffsets)
{
    ExportClock kathmandu(ExportForm::Clock::Local, QTimeZone("Asia/Kathmandu"));
    EXPECT_EQ(kathmandu.text(1'720'000'800), "2024-07-03T15:45:00+05:45");
    EXPECT_EQ(kathmandu.name(), "time (Asia/Kathmandu)");
    ExportClock berlin(ExportForm::Clock::Local, QTimeZone("Europe/Berlin"));
    EXPECT_EQ(berlin.text(1'729'989'000), "2024-10-27T02:30:00+02:00");
    EXPECT_EQ(berlin.text(1'729'992'600), "2024-10-27T02:30:00+01:00");
}

}  // namespace

}  // namespace plotix
