#include "tests/plugins/PlotixPlugIn/reading/comparing/ComparingFixture.h"

#include <QtWidgets/QToolTip>

namespace {

/// Nothing was recorded at the times that lines are compared with.
class EmptyComparisonTest : public ComparingFixture {};

TEST_F(EmptyComparisonTest, WithoutEarlierRecordsThePresentOnesAreShown)
{
    compareWith({"1d"});
    answerNothing();
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Pressure", "Wind"}));
    EXPECT_FALSE(isBusy());
}

/// Read, and nothing was there.
TEST_F(EmptyComparisonTest, WhatWasLookedForInVainIsSaidInTheTable)
{
    compareWith({"1d"});
    answer(nothingRecorded());
    EXPECT_EQ(columns(), QStringList({"average:1d", "difference:1d"}));
    EXPECT_EQ(cell("average:1d"), "nothing recorded");
    EXPECT_EQ(cell("difference:1d"), "–");
}

TEST_F(EmptyComparisonTest, WhatWasLookedForInVainIsSaidInTheLegend)
{
    trend().setReading({{"legend", QVariantMap{{"place", "below"}}}});
    compareWith({"1d"});
    answer(nothingRecorded());
    QStringList entries;
    for (const CPTLegend::Entry& entry : trend().graph()->legend().entries)
        entries << entry.text;
    EXPECT_EQ(plot(plotix::comparedKey("wind", "1d"))->title(), "Wind, a day earlier: nothing recorded");
    EXPECT_TRUE(entries.contains("Wind, a day earlier: nothing recorded")) << entries.join(';').toStdString();
}

TEST_F(EmptyComparisonTest, WhatWasLookedForInVainIsSaidInTheHeadOfItsLane)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}});
    compareWith({"1d"});
    answer(nothingRecorded());
    EXPECT_EQ(plot(plotix::comparedKey("wind", "1d"))->title(), "Wind, a day earlier: nothing recorded");
}

TEST_F(EmptyComparisonTest, WhatWasLookedForInVainIsSaidInTheMenu)
{
    compareWith({"1d"});
    answer(nothingRecorded());
    EXPECT_NE(action("A Day Earlier (nothing recorded)"), nullptr);
    EXPECT_TRUE(QToolTip::text().contains("Nothing was recorded a day earlier.")) << QToolTip::text().toStdString();
    refreshFor(kFrom + 600, kTo + 600);
    answer(minutes());
    answer(dayEarlier());
    EXPECT_NE(action("A Day Earlier"), nullptr) << "of other times there is something";
}

TEST_F(EmptyComparisonTest, TheMenuKnowsWhatLiesBeforeTheFirstRecord)
{
    host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{{kFrom - 2 * kDay}, {kTo}});
    compareWith({"1d"});
    answer(dayEarlier());
    EXPECT_NE(action("A Day Earlier"), nullptr);
    EXPECT_NE(action("A Week Earlier (nothing recorded)"), nullptr);
}

TEST_F(EmptyComparisonTest, TheMenuIsAboutTheRecordsThatAreShownNow)
{
    host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{{kFrom}, {kTo + 10 * kDay}});
    refreshFor(kFrom + 600, kTo + 600);
    answer(minutes());
    EXPECT_NE(action("A Week Earlier (nothing recorded)"), nullptr);
    refreshFor(kFrom + 8 * kDay, kTo + 8 * kDay);
    answer(minutes());
    EXPECT_NE(action("A Week Earlier"), nullptr);
}

TEST_F(EmptyComparisonTest, ALineWithoutEarlierRecordsMovesNoRangeAndMakesNoLane)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}});
    const CPTPlotRange values = plot("wind")->plotSpace()->yRange();
    compareWith({"1d"});
    answer(nothingRecorded());
    EXPECT_EQ(plot("wind")->plotSpace()->yRange(), values);
    EXPECT_EQ(plot(plotix::comparedKey("wind", "1d"))->plotSpace(), plot("wind")->plotSpace());
}

}  // namespace
