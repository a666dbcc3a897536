#include "tests/plugins/PlotixPlugIn/reading/comparing/ComparingFixture.h"

namespace {

/// What is read to compare with, and how it is drawn beside the lines.
class ComparingPartTest : public ComparingFixture {};

TEST_F(ComparingPartTest, ReadsTheSameSpanADayEarlier)
{
    compareWith({"1d"});
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom - kDay});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kTo - kDay});
    EXPECT_EQ(lastFetch().properties->size(), 3U);
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Pressure", "Wind"})) << "until the records are there";
}

TEST_F(ComparingPartTest, LinesStandBehindThoseTheyAreComparedWith)
{
    compareWithADayEarlier();
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Air Temperature, a day earlier", "Pressure",
                                    "Pressure, a day earlier", "Wind", "Wind, a day earlier"}));
}

TEST_F(ComparingPartTest, AreDrawnAtPresentTimesFainterAndDashed)
{
    compareWithADayEarlier();
    EXPECT_EQ(airEarlier()->series()->pointAt(7), (CPTPoint{minute(7), -3}));
    const CPTLineStyle own = plot("airTemperature")->dataLineStyle();
    const CPTLineStyle style = airEarlier()->dataLineStyle();
    EXPECT_EQ(style.color.rgb(), own.color.rgb());
    EXPECT_LT(style.color.alphaF(), own.color.alphaF());
    EXPECT_LT(style.width, own.width);
    EXPECT_FALSE(style.dashPattern.empty());
}

TEST_F(ComparingPartTest, TheirPlotsComeAfterThoseOfTheTrend)
{
    compareWithADayEarlier();
    EXPECT_EQ(trend().graph()->allPlots()[2]->identifier(), "wind");
    EXPECT_EQ(trend().graph()->allPlots()[3], airEarlier());
    EXPECT_EQ(trend().graph()->allPlots().size(), 6U);
}

TEST_F(ComparingPartTest, ShareTheColumnsOfTheirRecords)
{
    compareWith({"1d"});
    const KTVRecordDictionaryPtr earlier = dayEarlier().build();
    answer(earlier);
    const auto records =
        dynamic_cast<plotix::MarksPart&>(part("marks")).readTrend().recordsOf(plotix::comparedKey("wind", "1d"));
    EXPECT_EQ(records->columnForKey(plotix::comparedKey("wind", "1d")), earlier->columnForKey("wind"));
}

TEST_F(ComparingPartTest, ValuesThatWouldLeaveThePictureAreBroughtIntoItAndTimesStay)
{
    const CPTPlotRange times = trend().graph()->plotSpace().xRange();
    compareWith({"1d"});
    answer(dayEarlier(200));
    EXPECT_LE(trend().graph()->plotSpace().yRange().minLimit(), -200);
    EXPECT_EQ(trend().graph()->plotSpace().xRange(), times);
}

TEST_F(ComparingPartTest, ARefreshReadsThemBesideTheRecordsAndShowsBothAtOnce)
{
    compareWithADayEarlier();
    const CPTScatterPlotPtr before = airEarlier();
    refreshFor(kFrom + 600, kTo + 600);
    answer(minutes());
    EXPECT_EQ(airEarlier(), before) << "nothing is shown before both are there";
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom + 600 - kDay});
    answer(dayEarlier(20));
    ASSERT_NE(airEarlier(), nullptr);
    EXPECT_EQ(airEarlier()->series()->pointAt(0), (CPTPoint{minute(0) + 600, -10})) << "of the span alone";
}

TEST_F(ComparingPartTest, ManyAreComparedAtOnceWithDifferentDashes)
{
    compareWith({"1d", "7d"});
    answer(dayEarlier(20, 7 * kDay));
    EXPECT_EQ(plot(plotix::comparedKey("wind", "7d")), nullptr) << "the other ones are still being read";
    host().archiveManager().answer(static_cast<std::size_t>(fetchCount() - 2), {dayEarlier().build()});
    drain();
    EXPECT_EQ(plot(plotix::comparedKey("wind", "7d"))->series()->pointAt(0), (CPTPoint{minute(0), -15}));
    EXPECT_NE(airEarlier()->dataLineStyle().dashPattern,
              plot(plotix::comparedKey("airTemperature", "7d"))->dataLineStyle().dashPattern);
}

TEST_F(ComparingPartTest, HideWithTheirLine)
{
    compareWithADayEarlier();
    trend().setPlotForPropertyName("airTemperature", true);
    EXPECT_TRUE(airEarlier()->isHidden());
    EXPECT_FALSE(lines()[1].isShown);
    trend().setPlotForPropertyName("airTemperature", false);
    EXPECT_FALSE(airEarlier()->isHidden());
}

TEST_F(ComparingPartTest, FollowTheColourOfTheirLine)
{
    compareWithADayEarlier();
    dynamic_cast<fakehost::FakeProperty&>(*property("airTemperature")).setColor(QColor(1, 2, 3));
    EXPECT_EQ(airEarlier()->dataLineStyle().color.rgb(), QColor(1, 2, 3).rgb());
}

TEST_F(ComparingPartTest, FollowTheUnitOfTheirLineWithoutReadingAgain)
{
    compareWithADayEarlier();
    const int fetches = fetchCount();
    property("airTemperature")->setUnit("K");
    EXPECT_EQ(fetchCount(), fetches);
    EXPECT_NEAR(airEarlier()->series()->pointAt(7).y, 270.15, 0.01);
    EXPECT_EQ(lines()[1].unitSymbol, lines()[0].unitSymbol);
}

TEST_F(ComparingPartTest, GoIntoTheLaneOfTheirLine)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}});
    compareWithADayEarlier();
    EXPECT_EQ(airEarlier()->plotSpace(), plot("airTemperature")->plotSpace());
    EXPECT_NE(airEarlier()->plotSpace(), plot("wind")->plotSpace());
    EXPECT_EQ(airEarlier()->title(), "Air Temperature, a day earlier");
}

TEST_F(ComparingPartTest, ATrendThatIsOpenedReadsThemBeforeItIsShown)
{
    makeTrend({"wind"});
    compareWith({"1d"});
    open();
    answer(minutes());
    EXPECT_EQ(trend().graph(), nullptr);
    answer(dayEarlier());
    EXPECT_NE(plot(plotix::comparedKey("wind", "1d")), nullptr);
}

TEST_F(ComparingPartTest, CancellingStopsTheReading)
{
    compareWith({"1d"});
    trend().cancel(nullptr);
    const auto last = static_cast<std::size_t>(fetchCount() - 1);
    EXPECT_TRUE(host().archiveManager().reportProgress(last, 0.5));
    EXPECT_FALSE(isBusy());
}

TEST_F(ComparingPartTest, AReadingThatGaveWayToAnotherDoesNotEndTheBusyState)
{
    compareWith({"1d"});
    const int first = fetchCount() - 1;
    compareWith({"1d", "2d"});
    answerFetch(first, dayEarlier());
    EXPECT_TRUE(isBusy());
    answerFetch(first + 1, dayEarlier());
    answerFetch(first + 2, dayEarlier(20, 2 * kDay));
    EXPECT_FALSE(isBusy());
    EXPECT_NE(airEarlier(), nullptr);
}

TEST_F(ComparingPartTest, ChosenWhileRecordsAreReadItIsReadForThese)
{
    compareWithADayEarlier();
    refreshFor(kFrom + 600, kTo + 600);
    answer(minutes());
    const int first = fetchCount();
    compareWith({"1d", "2d"});
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{kFrom + 600 - 2 * kDay});
    answerFetch(first, dayEarlier());
    answerFetch(first + 1, dayEarlier(20, 2 * kDay));
    const CPTScatterPlotPtr twoDays = plot(plotix::comparedKey("airTemperature", "2d"));
    ASSERT_NE(twoDays, nullptr);
    EXPECT_EQ(twoDays->series()->pointAt(0), (CPTPoint{minute(10), -10})) << "of the span that is shown now";
    EXPECT_EQ(airEarlier()->series()->pointAt(0), (CPTPoint{minute(10), 0}));
}

TEST_F(ComparingPartTest, TakenBackWhileRecordsAreReadNothingIsReadAgain)
{
    compareWithADayEarlier();
    refreshFor(kFrom + 600, kTo + 600);
    answer(minutes());
    const int asked = fetchCount();
    compareWith({});
    EXPECT_EQ(fetchCount(), asked);
    answer(dayEarlier());
    EXPECT_EQ(airEarlier(), nullptr);
    EXPECT_FALSE(isBusy());
}

}  // namespace
