#include "hostapp/site/TrendReading.h"

#include "hostapp/site/MakeTrend.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

namespace {

class TrendReadingTest : public testing::Test {
protected:
    TrendReadingTest() : trend(StubTrend::make({site.addStation(), nullptr, {}, {}, {}})) {}

    ScratchSite site;
    std::shared_ptr<StubTrend> trend;
};

TEST_F(TrendReadingTest, WhatWeRecommendIsTurnedOnOnce)
{
    plotix::chooseReading(trend.get());
    for (const char* option : {"readableLabels", "propertyColors", "lineCommands"})
        EXPECT_EQ(trend->reading().value(option), QVariant(true)) << option;
    plotix::chooseReading(trend.get());
    EXPECT_EQ(trend->readingCount(), 1);
}

TEST_F(TrendReadingTest, WhatWasChosenStays)
{
    trend->setReading({{"readableLabels", false}});
    plotix::chooseReading(trend.get());
    EXPECT_EQ(trend->reading().value("readableLabels"), QVariant(false));
}

TEST_F(TrendReadingTest, ANewTrendTakesTheLookOfItsWindowUnlessItHasOne)
{
    trend->setReading({{"looks", QVariantMap{{"marks", "apart"}}}});
    plotix::chooseLookOfNew(trend.get(), "light");
    EXPECT_EQ(trend->reading().value("looks"), QVariant(QVariantMap{{"marks", "apart"}, {"look", "light"}}));
    plotix::chooseLookOfNew(trend.get(), "paper");
    EXPECT_EQ(trend->reading().value("looks").toMap().value("look"), "light");
}

TEST_F(TrendReadingTest, InADarkWindowNoLookIsChosen)
{
    plotix::chooseLookOfNew(trend.get(), "dark");
    plotix::chooseLookOfNew(trend.get(), {});
    EXPECT_FALSE(trend->reading().contains("looks"));
}

TEST_F(TrendReadingTest, NoPlugInIsNoMistake)
{
    plotix::chooseReading(nullptr);
    EXPECT_FALSE(trend->reading().contains("readableLabels"));
}

TEST_F(TrendReadingTest, EveryTrendThatIsMadeHasIt)
{
    StubModule module;
    const KTVPlugInPtr made =
        plotix::makeTrend(module, {site.document, site.document->agents().front(), {}, {}, {}, {}});
    ASSERT_TRUE(made);
    EXPECT_TRUE(static_cast<StubTrend&>(*made).reading().contains("readableLabels"));
}

}  // namespace
