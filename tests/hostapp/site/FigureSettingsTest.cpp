#include "hostapp/site/FigureSettings.h"

#include <QtCore/QSettings>

#include <gtest/gtest.h>

namespace plotix {

namespace {

class FigureSettingsTest : public testing::Test {
protected:
    FigureSettingsTest() { QSettings().remove(QStringLiteral("FigurePresets")); }
    ~FigureSettingsTest() override { QSettings().remove(QStringLiteral("FigurePresets")); }

    static FigureSettings sized(double width, double height, FigureSettings::Unit unit, int dots)
    {
        return {.width = width, .height = height, .unit = unit, .dotsPerInch = dots};
    }
    const FigureSettings poster{400,  300,   FigureSettings::Unit::Millimetres, 150, "light", 24, "right", "all", 2,
                                true, "none"};
};

TEST_F(FigureSettingsTest, EveryUnitIsPointsAndPixels)
{
    using Unit = FigureSettings::Unit;
    EXPECT_EQ(pointsOf(sized(25.4, 50.8, Unit::Millimetres, 300)), QSizeF(72, 144));
    EXPECT_EQ(pixelsOf(sized(25.4, 50.8, Unit::Millimetres, 300)), QSizeF(300, 600));
    EXPECT_EQ(pixelsOf(sized(72, 36, Unit::Points, 144)), QSizeF(144, 72));
    EXPECT_EQ(pointsOf(sized(1200, 600, Unit::Pixels, 144)), QSizeF(600, 300));
}

TEST_F(FigureSettingsTest, WhatIsStoredIsReadBack)
{
    EXPECT_EQ(figureSettingsFrom(mapOf(poster)), poster);
    EXPECT_EQ(figureSettingsFrom({}), FigureSettings());
}

TEST_F(FigureSettingsTest, WhatIsOutOfItsLimitsIsPassedOver)
{
    const FigureSettings read = figureSettingsFrom(
        {{"unit", "ell"}, {"width", -3}, {"dpi", 1e9}, {"look", "neon"}, {"fontSize", 900}, {"lineWidth", "wide"}});
    EXPECT_EQ(read, FigureSettings());
}

TEST_F(FigureSettingsTest, OnlyPartsThatChangeAreChosen)
{
    EXPECT_TRUE(readingOf({}, {{"looks", QVariantMap{{"look", "paper"}}}}).isEmpty());
    FigureSettings dark;
    dark.look = "dark";
    EXPECT_EQ(readingOf(dark, {{"looks", QVariantMap{{"look", "paper"}, {"marks", "apart"}}}}),
              (QVariantMap{{"looks", QVariantMap{{"marks", "apart"}}}}));
}

TEST_F(FigureSettingsTest, TheValueLineIsLeftOutWhereThatIsChosen)
{
    const QVariantMap held{{"valueLine", QVariantMap{{"shown", true}, {"held", 5.0}}}};
    EXPECT_TRUE(readingOf({}, held).isEmpty()) << "as the trend has it";
    const QVariantMap column = readingOf(*figurePresetNamed("paper-column"), held);
    EXPECT_EQ(column.value("valueLine").toMap(), (QVariantMap{{"shown", true}}));
    EXPECT_FALSE(readingOf(*figurePresetNamed("paper-column"), {}).contains("valueLine"));
}

TEST_F(FigureSettingsTest, PresetsOfTheUserStandBehindOurs)
{
    EXPECT_TRUE(saveFigurePreset(" Poster ", poster));
    EXPECT_EQ(figurePresets().front().name, "paper-column");
    EXPECT_EQ(figurePresets().back().name, "Poster");
    EXPECT_EQ(figurePresetNamed("Poster"), poster);
    deleteFigurePreset("Poster");
    EXPECT_FALSE(figurePresetNamed("Poster"));
}

TEST_F(FigureSettingsTest, OursAreNeitherSavedOverNorDeleted)
{
    const auto before = figurePresetNamed("slide");
    EXPECT_FALSE(saveFigurePreset("slide", poster));
    EXPECT_FALSE(saveFigurePreset("  ", poster));
    deleteFigurePreset("slide");
    EXPECT_EQ(figurePresetNamed("slide"), before);
}

}  // namespace

}  // namespace plotix
