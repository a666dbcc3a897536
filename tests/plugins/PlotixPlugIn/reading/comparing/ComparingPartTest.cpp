#include "plugins/PlotixPlugIn/reading/comparing/ComparingPart.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"
#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"
#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolTip>

// Lines beside what they were earlier, in a trend on a screen. A day earlier every value was 10 less.

namespace {

constexpr double kDay = 86'400;

class ComparingPartTest : public ReadTrendFixture {
protected:
    void compareWith(const QStringList& comparisons)
    {
        trend().setReading({{"comparing", QVariantMap{{"with", comparisons}}}});
    }
    void compareWithADayEarlier()
    {
        compareWith({"1d"});
        answer(dayEarlier());
    }
    fakehost::RecordBuilder dayEarlier(double less = 10, double before = kDay) const
    {
        std::vector<double> times, air, pressure, wind;
        for (int minute = 0; minute <= 60; ++minute) {
            times.push_back(kFrom - before + minute * kMinute);
            air.push_back(minute - less);
            pressure.push_back(1000 - less);
            wind.push_back(5 - less);
        }
        return recordsAt(times).column("airTemperature", air).column("pressure", pressure).column("wind", wind);
    }
    fakehost::RecordBuilder nothingRecorded() const
    {
        return recordsAt({}).column("airTemperature", {}).column("pressure", {}).column("wind", {});
    }
    void answerFetch(int number, const fakehost::RecordBuilder& records)
    {
        host().archiveManager().answer(static_cast<std::size_t>(number), {records.build(), std::nullopt});
        drain();
    }
    plotix::ComparingPart& comparing() { return dynamic_cast<plotix::ComparingPart&>(part("comparing")); }
    std::vector<plotix::ReadLine> lines()
    {
        return dynamic_cast<plotix::MarksPart&>(part("marks")).readTrend().lines();
    }
    QStringList names()
    {
        QStringList names;
        for (const plotix::ReadLine& line : lines())
            names << line.name;
        return names;
    }
    CPTScatterPlotPtr plot(const QString& key) { return trend().graph()->plotWithIdentifier(key); }
    CPTScatterPlotPtr airEarlier() { return plot(plotix::comparedKey("airTemperature", "1d")); }
    plotix::TableFigures& table() { return *qobject_cast<plotix::TrendReader*>(trend().trendReader())->tableFigures(); }
    QString cell(const QString& identifier, const QString& key = "airTemperature")
    {
        table().finish();
        return table().cell(key, identifier).text.replace(QChar(QChar::Nbsp), ' ');
    }
    QStringList columns()
    {
        table().finish();
        QStringList identifiers;
        for (const auto& column : table().columns())
            identifiers << column.identifier;
        return identifiers;
    }
    QString valuesAt(double minuteCount)
    {
        trend().setReading({{"valueLine", QVariantMap{{"held", minute(minuteCount)}}}});
        action("Copy Values at the Line")->trigger();
        return QGuiApplication::clipboard()->text().replace(QChar(QChar::Nbsp), ' ');
    }
};

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

TEST_F(ComparingPartTest, WithoutEarlierRecordsThePresentOnesAreShown)
{
    compareWith({"1d"});
    answerNothing();
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Pressure", "Wind"}));
    EXPECT_FALSE(isBusy());
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

TEST_F(ComparingPartTest, TheReadoutSaysByHowMuchThePresentIsMore)
{
    compareWithADayEarlier();
    EXPECT_TRUE(valuesAt(30).contains("Air Temperature, a day earlier\t20 °C")) << valuesAt(30).toStdString();
    EXPECT_TRUE(valuesAt(30).contains("Air Temperature\t30 °C\t+10 K against a day earlier"))
        << valuesAt(30).toStdString();
}

TEST_F(ComparingPartTest, TheTableHasTheirAverageAndTheDifference)
{
    compareWithADayEarlier();
    EXPECT_EQ(columns(), QStringList({"average:1d", "difference:1d"}));
    EXPECT_EQ(cell("average:1d"), "20.0");
    EXPECT_EQ(cell("difference:1d"), "+10.0 K");
}

TEST_F(ComparingPartTest, TheirColumnsStandBehindTheTablesOwnAndMoveNoneOfThem)
{
    trend().setReading({{"statistics", QVariantMap{{"columns", QStringList{"median"}}}}});
    compareWithADayEarlier();
    columns();
    drain();
    const PropertyDetailsTableView& shown = *trend().infoTable();
    const auto placeOf = [&](const char* column) {
        return shown.horizontalHeader()->visualIndex(shown.infoTableModel()->columnNamed(QLatin1String(column)));
    };
    EXPECT_EQ(placeOf("median"), placeOf("unit") + 1) << "chosen figures stand before the table's";
    EXPECT_EQ(placeOf("average"), placeOf("minimum") + 2);
    EXPECT_EQ(placeOf("average:1d"), placeOf("points") + 1);
    EXPECT_EQ(placeOf("difference:1d"), placeOf("points") + 2);
    EXPECT_EQ(placeOf("median:1d"), placeOf("points") + 3);
    EXPECT_EQ(shown.horizontalScrollBar()->value(), 0);
}

TEST_F(ComparingPartTest, TheTableHasEveryFigureThatWasChosenForThemToo)
{
    trend().setReading({{"statistics", QVariantMap{{"columns", QStringList{"median"}}}}});
    compareWithADayEarlier();
    EXPECT_EQ(columns(), QStringList({"median", "average:1d", "difference:1d", "median:1d"}));
    EXPECT_EQ(cell("median:1d"), "20.0");
}

TEST_F(ComparingPartTest, ATimeInTheTableIsWhenItWasRecorded)
{
    trend().setReading({{"statistics", QVariantMap{{"columns", QStringList{"maximumTime"}}}}});
    compareWithADayEarlier();
    table().finish();
    EXPECT_DOUBLE_EQ(table().cell("airTemperature", "maximumTime").order, minute(60));
    EXPECT_DOUBLE_EQ(table().cell("airTemperature", "maximumTime:1d").order, minute(60) - kDay);
}

TEST_F(ComparingPartTest, NothingIsLeftWhenTheyAreTakenBack)
{
    compareWithADayEarlier();
    action("Compare with Nothing")->trigger();
    EXPECT_EQ(trend().graph()->allPlots().size(), 3U);
    EXPECT_TRUE(columns().isEmpty());
    EXPECT_FALSE(trend().reading().contains("comparing"));
}

TEST_F(ComparingPartTest, TakenBackAndChosenAgainTheyAreReadAgain)
{
    compareWithADayEarlier();
    compareWith({});
    compareWith({"1d"});
    EXPECT_FALSE(lastFetch().isAnswered);
}

TEST_F(ComparingPartTest, AreArchivedAsTheyWereChosen)
{
    compareWith({"2w", "no distance"});
    EXPECT_EQ(chosen("comparing"), (QVariantMap{{"with", QStringList{"14d"}}}));
    EXPECT_EQ(encodedAndDecoded()->reading().value("comparing"), QVariant(chosen("comparing")));
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

TEST_F(ComparingPartTest, ALineIsComparedAlone)
{
    QMenu menu;
    comparing().addLineItems(menu, {"wind"});
    menu.actions().front()->menu()->actions().front()->trigger();
    EXPECT_EQ(lastFetch().properties->size(), 1U);
    answer(dayEarlier());
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Pressure", "Wind", "Wind, a day earlier"}));
}

TEST_F(ComparingPartTest, WhatAllHaveIsTakenFromOneLineAndLeftToTheOthers)
{
    compareWithADayEarlier();
    QMenu menu;
    comparing().addLineItems(menu, {"wind"});
    menu.actions().front()->menu()->actions().front()->trigger();
    EXPECT_EQ(names().filter("earlier"), QStringList({"Air Temperature, a day earlier", "Pressure, a day earlier"}));
}

TEST_F(ComparingPartTest, DistancesAreTypedByKeyboard)
{
    press(Qt::Key_E);
    auto* dialog = trend().view()->findChild<QDialog*>();
    ASSERT_NE(dialog, nullptr);
    QTest::keyClicks(dialog->findChild<QLineEdit*>(), "7d, 36h");
    QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_EQ(chosen("comparing"), (QVariantMap{{"with", QStringList{"7d", "36h"}}}));
}

TEST_F(ComparingPartTest, WhatIsNoDistanceIsSaidWhileItIsTyped)
{
    press(Qt::Key_E);
    auto* dialog = trend().view()->findChild<QDialog*>();
    QTest::keyClicks(dialog->findChild<QLineEdit*>(), "7d, soon");
    bool isSaid = false;
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        isSaid = isSaid || label->text().contains("soon");
    EXPECT_TRUE(isSaid);
    QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_TRUE(chosen("comparing").isEmpty());
}

TEST_F(ComparingPartTest, ASpanIsLaidOverAnother)
{
    compareWith({"2012-12-31T12:00:00Z/2012-12-31T12:10:00Z@2013-01-01T12:20:00Z"});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{kFrom - kDay + 600});
    answer(dayEarlier());
    const auto key = plotix::comparedKey("wind", chosen("comparing").value("with").toStringList().front());
    EXPECT_EQ(plot(key)->series()->count(), 11U);
    EXPECT_EQ(plot(key)->series()->pointAt(0), (CPTPoint{minute(20), -5}));
}

TEST_F(ComparingPartTest, TheSpanBetweenTheMarksIsLaidOverTheValueLine)
{
    EXPECT_FALSE(action("Lay A–B Over the Value Line")->isEnabled()) << "there are no marks";
    trend().setReading({{"marks", QVariantMap{{"a", minute(0)}, {"b", minute(20)}}},
                        {"valueLine", QVariantMap{{"held", minute(30)}}}});
    press(Qt::Key_E, Qt::ShiftModifier);
    EXPECT_EQ(chosen("comparing").value("with").toStringList(),
              QStringList{"2013-01-01T12:00:00Z/2013-01-01T12:20:00Z@2013-01-01T12:30:00Z"});
    EXPECT_EQ(lastFetch().fromDate, plotix::Date{minute(0)});
    EXPECT_EQ(lastFetch().toDate, plotix::Date{minute(20)});
}

TEST_F(ComparingPartTest, TheSpanBetweenTheMarksIsLaidOverATypedTime)
{
    trend().setReading({{"marks", QVariantMap{{"a", minute(0)}, {"b", minute(20)}}}});
    action("Lay A–B Over a Time…")->trigger();
    auto* dialog = trend().view()->findChild<QDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QLineEdit*>()->setText("12:40");
    QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    answer(minutes());
    ASSERT_EQ(lines().size(), 6U);
    EXPECT_EQ(lines()[1].comparisonName, "from Tue, Jan 1, 2013, 12:00 PM");
    EXPECT_EQ(plot(lines()[1].key)->series()->pointAt(3), (CPTPoint{minute(43), 3}));
}

/// Read, and nothing was there.
TEST_F(ComparingPartTest, WhatWasLookedForInVainIsSaidInTheTable)
{
    compareWith({"1d"});
    answer(nothingRecorded());
    EXPECT_EQ(columns(), QStringList({"average:1d", "difference:1d"}));
    EXPECT_EQ(cell("average:1d"), "nothing recorded");
    EXPECT_EQ(cell("difference:1d"), "–");
}

TEST_F(ComparingPartTest, WhatWasLookedForInVainIsSaidInTheLegend)
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

TEST_F(ComparingPartTest, WhatWasLookedForInVainIsSaidInTheHeadOfItsLane)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}});
    compareWith({"1d"});
    answer(nothingRecorded());
    EXPECT_EQ(plot(plotix::comparedKey("wind", "1d"))->title(), "Wind, a day earlier: nothing recorded");
}

TEST_F(ComparingPartTest, WhatWasLookedForInVainIsSaidInTheMenu)
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

TEST_F(ComparingPartTest, TheMenuKnowsWhatLiesBeforeTheFirstRecord)
{
    host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{{kFrom - 2 * kDay}, {kTo}});
    compareWith({"1d"});
    answer(dayEarlier());
    EXPECT_NE(action("A Day Earlier"), nullptr);
    EXPECT_NE(action("A Week Earlier (nothing recorded)"), nullptr);
}

TEST_F(ComparingPartTest, TheMenuIsAboutTheRecordsThatAreShownNow)
{
    host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{{kFrom}, {kTo + 10 * kDay}});
    refreshFor(kFrom + 600, kTo + 600);
    answer(minutes());
    EXPECT_NE(action("A Week Earlier (nothing recorded)"), nullptr);
    refreshFor(kFrom + 8 * kDay, kTo + 8 * kDay);
    answer(minutes());
    EXPECT_NE(action("A Week Earlier"), nullptr);
}

TEST_F(ComparingPartTest, ALineWithoutEarlierRecordsMovesNoRangeAndMakesNoLane)
{
    trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}});
    const CPTPlotRange values = plot("wind")->plotSpace()->yRange();
    compareWith({"1d"});
    answer(nothingRecorded());
    EXPECT_EQ(plot("wind")->plotSpace()->yRange(), values);
    EXPECT_EQ(plot(plotix::comparedKey("wind", "1d"))->plotSpace(), plot("wind")->plotSpace());
}

TEST_F(ComparingPartTest, AveragesOfUnequalSpansSayOfHowMuchTheyAre)
{
    compareWith({"1d"});
    answer(recordsAt({kFrom - kDay, kFrom - kDay + kMinute, kFrom - kDay + 2 * kMinute})
               .column("airTemperature", {1, 2, 3})
               .column("pressure", {1, 2, 3})
               .column("wind", {1, 2, 3}));
    EXPECT_EQ(cell("average:1d"), "2.0 (3 % recorded)");
    EXPECT_EQ(cell("difference:1d"), "+28.0 K (100 % against 3 %)");
    EXPECT_TRUE(table().cell("airTemperature", "average:1d").hint.contains("then: 3"));
}

}  // namespace
