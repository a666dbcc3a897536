#include "plugins/PlotixPlugIn/reading/looks/LineLook.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;

TEST(LineLookTest, WhatWasNotChosenIsNotWritten)
{
    EXPECT_TRUE(dictionaryFromLineLook({}).isEmpty());
    EXPECT_TRUE(LineLook().isEmpty());
    const LineLook wide{.width = 2};
    EXPECT_EQ(dictionaryFromLineLook(wide), (QVariantMap{{"width", 2.0}}));
}

TEST(LineLookTest, EverythingIsReadBack)
{
    LineLook look{.interpolation = CPTScatterPlotInterpolation::HoldLast,
                  .width = 1.5,
                  .dash = LineDash::DashDot,
                  .color = QColor(1, 2, 3),
                  .pointSize = 6,
                  .fill = LineFill{LineFill::Kind::ToLine, "pressure"},
                  .fillColor = QColor(4, 5, 6, 7)};
    EXPECT_EQ(lineLookFromDictionary(dictionaryFromLineLook(look)), look);
    look.fill = LineFill{LineFill::Kind::ToZero};
    EXPECT_EQ(lineLookFromDictionary(dictionaryFromLineLook(look)), look);
}

// Stored: never change.
TEST(LineLookTest, NamesStayAsTheyAre)
{
    const QVariantMap stored{{"interpolation", "steps"}, {"dash", "dash-dot"},     {"color", "#010203"},
                             {"fill", "line"},           {"fillLine", "pressure"}, {"pointSize", 4.0}};
    const LineLook look = lineLookFromDictionary(stored);
    EXPECT_EQ(look.interpolation, CPTScatterPlotInterpolation::HoldLast);
    EXPECT_EQ(look.dash, LineDash::DashDot);
    EXPECT_EQ(look.fill, (LineFill{LineFill::Kind::ToLine, "pressure"}));
    EXPECT_EQ(dictionaryFromLineLook(look), stored);
}

TEST(LineLookTest, WhatCannotBeDrawnIsPassedOver)
{
    const QVariantMap broken{{"interpolation", "spline"}, {"width", 0},     {"dash", 7},     {"color", "no colour"},
                             {"pointSize", -1},           {"fill", "line"}, {"other", true}, {"fillColor", 12}};
    EXPECT_TRUE(lineLookFromDictionary(broken).isEmpty());
    EXPECT_TRUE(lineLookFromDictionary({{"width", "wide"}, {"pointSize", 1e9}}).isEmpty());
}

}  // namespace
