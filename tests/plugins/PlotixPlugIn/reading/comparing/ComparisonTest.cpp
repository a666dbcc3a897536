#include "plugins/PlotixPlugIn/reading/comparing/Comparison.h"

#include "plugins/PlotixPlugIn/reading/comparing/ComparisonChoices.h"

#include <gtest/gtest.h>

namespace {

using plotix::comparisonFrom;

QString nameOfText(const char* text)
{
    return nameOf(*comparisonFrom(text));
}

TEST(ComparisonTest, IsCalledByTheLargestUnitThatSaysIt)
{
    EXPECT_EQ(nameOfText("1d"), "a day earlier");
    EXPECT_EQ(nameOfText("7d"), "a week earlier");
    EXPECT_EQ(nameOfText("3w"), "3 weeks earlier");
    EXPECT_EQ(nameOfText("10d"), "10 days earlier");
    EXPECT_EQ(nameOfText("1mo"), "a month earlier");
    EXPECT_EQ(nameOfText("24mo"), "2 years earlier");
    EXPECT_EQ(nameOfText("36h"), "36 h earlier");
    EXPECT_EQ(nameOfText("1mo 3d"), "1mo 3d earlier");
}

TEST(ComparisonTest, ASpanIsWrittenAndReadBack)
{
    const QString text = "2013-07-01T00:00:00Z/2013-07-08T12:30:00.250Z@2013-08-05T00:00:00Z";
    EXPECT_EQ(textOf(*comparisonFrom(text)), text);
}

TEST(ComparisonTest, WhatIsNoneIsRefused)
{
    for (const char* text : {"", "soon", "2013-07-01T00:00:00Z/2013-07-08T00:00:00Z",
                             "2013-07-08T00:00:00Z/2013-07-01T00:00:00Z@2013-08-05T00:00:00Z",
                             "2013-07-01T00:00:00Z/2013-07-08T00:00:00Z@2013-07-01T00:00:00Z"})
        EXPECT_EQ(comparisonFrom(text), std::nullopt) << text;
}

TEST(ComparisonTest, ASpanStandsWhereItIsLaidWhateverIsShown)
{
    const auto laid = comparisonFrom("1970-01-01T00:00:10Z/1970-01-01T00:00:20Z@1970-01-01T00:01:00Z");
    EXPECT_EQ(stretchesOf(*laid, {1e6, 2e6}, QTimeZone::utc()), (std::vector<plotix::EarlierStretch>{{{10, 20}, 50}}));
}

TEST(ComparisonChoicesTest, ALinesOwnComparisonsComeAfterThoseOfAll)
{
    plotix::ComparisonChoices choices{{"7d"}, {{"a", {"1d", "7d"}}}};
    EXPECT_EQ(choices.of("a"), QStringList({"7d", "1d"}));
    EXPECT_EQ(choices.of("b"), QStringList({"7d"}));
    EXPECT_EQ(choices.together(), QStringList({"7d", "1d"}));
    EXPECT_EQ(choices.keysOf("7d"), QStringList());
    EXPECT_EQ(choices.keysOf("1d"), QStringList({"a"}));
}

TEST(ComparisonChoicesTest, AreWrittenAndReadBack)
{
    const plotix::ComparisonChoices choices{{"7d"}, {{"a", {"1d"}}}};
    EXPECT_EQ(plotix::comparisonChoicesFrom(plotix::mapFromChoices(choices)), choices);
    EXPECT_TRUE(plotix::mapFromChoices(plotix::ComparisonChoices()).isEmpty());
}

}  // namespace
