#include "plugins/PlotixPlugIn/host/PlainToolTip.h"
#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

namespace {

class ObservationTest : public PropertyTableFixture {
protected:
    float firstValue(const QString& key) const { return static_cast<float>(plot(key)->series()->pointAt(0).y); }
    void notify(fakehost::FakeProperty& property, const QVariant& oldValue, const QVariant& newValue,
                ObservationTag tag)
    {
        trend->observeValueForKeyPath("anything", &property, {oldValue, newValue}, tag);
    }
};

TEST_F(ObservationTest, LoadingObservesUnitThenColourOfEachProperty)
{
    host.log().clear();
    open({"airTemperature", "pressure"});
    QStringList observations;
    for (const QString& line : host.log().lines())
        if (line.contains("addObserver"))
            observations.append(line);
    EXPECT_EQ(observations, (QStringList{"airTemperature.addObserver unit", "airTemperature.addObserver color",
                                         "pressure.addObserver unit", "pressure.addObserver color"}));
    EXPECT_TRUE(trend->observersAdded());
}

TEST_F(ObservationTest, AnEmptyListCountsAsObservedAndAnAbsentOneDoesNot)
{
    open({});
    EXPECT_TRUE(trend->observersAdded());
    openWithoutTables();
    EXPECT_FALSE(trend->observersAdded());
}

TEST_F(ObservationTest, EveryObservationEndsWithTheTrendView)
{
    openAndDeliver({"airTemperature", "pressure"});
    trend->addProperties({"windSpeed"});
    trend->removePropertiesAndRefresh({"Pressure"});
    trend.reset();
    EXPECT_EQ(airTemperature->observationCount(), 0U);
    EXPECT_EQ(pressure->observationCount(), 0U);
    EXPECT_EQ(windSpeed->observationCount(), 0U);
}

TEST_F(ObservationTest, TeardownTakesUnitThenColourAway)
{
    open({"airTemperature"});
    host.log().clear();
    trend.reset();
    EXPECT_EQ(host.log().lines().mid(0, 2),
              (QStringList{"airTemperature.removeObserver unit", "airTemperature.removeObserver color"}));
}

TEST_F(ObservationTest, AViewNeverLoadedTakesNothingAway)
{
    trend = KTVPlotixPlugIn::initWithAgent(host.agent(), &host.siteWindowController(), KTVPropertyList{airTemperature});
    host.log().clear();
    trend.reset();
    EXPECT_FALSE(host.log().contains("airTemperature.removeObserver"));
}

TEST_F(ObservationTest, AUnitChangeConvertsPlotAndRowWithoutAFetch)
{
    openAndDeliver({"airTemperature"});
    airTemperature->setUnit("degF");
    EXPECT_EQ(firstValue("airTemperature"), 50.0F);
    EXPECT_EQ(row(0).minimum, 50.0F);
    EXPECT_EQ(row(0).maximum, 68.0F);
    EXPECT_EQ(row(0).unit, "°F");
    EXPECT_EQ(fetchCount(), 1U);
}

TEST_F(ObservationTest, AUnitChangeRebuildsFromTheSameDictionary)
{
    openAndDeliver({"airTemperature"});
    const auto plotData = trend->plotData();
    const auto before = plot("airTemperature");
    airTemperature->setUnit("degF");
    EXPECT_EQ(trend->plotData(), plotData);
    EXPECT_NE(plot("airTemperature"), before);
}

TEST_F(ObservationTest, AUnitChangedBackAndForthDriftsByNothing)
{
    open({"airTemperature"});
    deliver(host.records().times({0, 60}).column("airTemperature", {20.1, 0.3}).build());
    const float before = firstValue("airTemperature");
    for (int count = 0; count < 50; ++count) {
        airTemperature->setUnit("degF");
        airTemperature->setUnit("degC");
    }
    EXPECT_EQ(firstValue("airTemperature"), before);
    EXPECT_EQ(row(0).minimum, 0.3F);
}

TEST_F(ObservationTest, TheSameUnitAgainRebuildsNothing)
{
    openAndDeliver({"airTemperature"});
    const auto before = plot("airTemperature");
    airTemperature->setUnit("degC");
    EXPECT_EQ(plot("airTemperature"), before);
}

TEST_F(ObservationTest, InvalidSnapshotsAreConvertedToo)
{
    open({"airTemperature"});
    deliver(host.records()
                .at(0)
                .invalid("airTemperature")
                .at(60)
                .coloured("airTemperature", 10, Qt::black)
                .at(120)
                .value("airTemperature", 20)
                .build());
    airTemperature->setUnit("degF");
    const auto column = trend->plotData()->columnForKey("airTemperature");
    for (std::size_t index = 0; index < 3; ++index)
        EXPECT_EQ(column->snapshotAt(index)->unit(), "degF") << index;
}

// The first property decides: when it has the unit already, the rest is left as it is.
TEST_F(ObservationTest, SettingTheUnitStopsWhenTheFirstSnapshotHasIt)
{
    open({"airTemperature"});
    deliver(host.records().at(0).coloured("airTemperature", 10, Qt::black).at(60).value("airTemperature", 20).build());
    const auto column = trend->plotData()->columnForKey("airTemperature");
    column->exceptions().at(0)->setUnit("degF");
    const auto before = plot("airTemperature");
    trend->setUnit("degF", "airTemperature");
    EXPECT_EQ(plot("airTemperature"), before);
    EXPECT_EQ(column->unit(), "degC");
}

TEST_F(ObservationTest, ElementsThatAreNoPropertiesAreNotTheFirst)
{
    open({"airTemperature"});
    deliver(host.records()
                .at(0)
                .notAProperty("airTemperature")
                .at(60)
                .value("airTemperature", 10)
                .at(120)
                .value("airTemperature", 20)
                .build());
    trend->setUnit("degF", "airTemperature");
    EXPECT_EQ(row(0).minimum, 50.0F);
}

TEST_F(ObservationTest, SettingTheUnitOfUnknownOrEmptyColumnsDoesNothing)
{
    open({"airTemperature"});
    trend->setUnit("degF", "airTemperature");  // nothing fetched yet
    EXPECT_EQ(trend->graph(), nullptr);
    deliver(host.records()
                .times({0, 60})
                .column("pressure", {1, 2})
                .column("airTemperature", {})
                .shortened("airTemperature", 0)
                .build());
    const auto before = plot("pressure");
    trend->setUnit("degF", "nothing");
    trend->setUnit("degF", "airTemperature");
    EXPECT_EQ(plot("pressure"), before);
}

TEST_F(ObservationTest, AColourChangeRestylesPlotAndRowWithoutAFetch)
{
    openAndDeliver({"airTemperature", "pressure"});
    const double width = plot("airTemperature")->dataLineStyle().width;
    airTemperature->setColor(Qt::yellow);
    EXPECT_EQ(plot("airTemperature")->dataLineStyle().color, QColor(Qt::yellow));
    EXPECT_EQ(plot("airTemperature")->dataLineStyle().width, width);
    EXPECT_EQ(plot("pressure")->dataLineStyle().color, QColor(Qt::blue));
    EXPECT_EQ(row(0).color, QColor(Qt::yellow));
    EXPECT_EQ(row(1).color, QColor(Qt::blue));
    EXPECT_EQ(fetchCount(), 1U);
}

// The plot takes the property's present colour, the row the colour in the notice.
TEST_F(ObservationTest, ThePlotTakesThePresentColourAndTheRowTheNoticed)
{
    openAndDeliver({"airTemperature"});
    notify(*airTemperature, QColor(Qt::red), QColor(Qt::magenta), kPropertyColor);
    EXPECT_EQ(plot("airTemperature")->dataLineStyle().color, QColor(Qt::red));
    EXPECT_EQ(row(0).color, QColor(Qt::magenta));
}

TEST_F(ObservationTest, ARebuildGivesThePlotTheSnapshotsColourAgainAndTheRowKeepsIts)
{
    openAndDeliver({"airTemperature"});
    airTemperature->setColor(Qt::yellow);
    airTemperature->setUnit("degF");
    EXPECT_EQ(plot("airTemperature")->dataLineStyle().color, QColor(Qt::red));
    EXPECT_EQ(row(0).color, QColor(Qt::yellow));
}

TEST_F(ObservationTest, AColourChangeReplacesOnlyItsOwnRowAndKeepsOrderAndSelection)
{
    openAndDeliver({"airTemperature", "pressure", "windSpeed"});
    const InfoTableArray before = displayed();
    controller().setSelectionIndexes({1});
    pressure->setColor(Qt::yellow);
    EXPECT_EQ(displayed()[0], before[0]);
    EXPECT_NE(displayed()[1], before[1]);
    EXPECT_EQ(displayed()[2], before[2]);
    EXPECT_EQ(controller().selectionIndexes(), std::vector<std::size_t>{1});
    EXPECT_EQ(trend->infoTable()->selectedRowIndexes(), std::vector<std::size_t>{1});
}

TEST_F(ObservationTest, AColourChangeBakesTheSortedOrderIntoTheRows)
{
    openAndDeliver({"airTemperature", "pressure"});
    trend->infoTable()->sortByColumn(2, Qt::DescendingOrder);
    ASSERT_EQ(trend->infoTableArray()->at(0)->tableName, "Air Temperature");
    airTemperature->setColor(Qt::yellow);
    EXPECT_EQ(trend->infoTableArray()->at(0)->tableName, "Pressure");
}

TEST_F(ObservationTest, ARowWhoseNameDoesNotMakeTheKeyIsNotRecoloured)
{
    openAndDeliver({"airTemperature"});
    displayed()[0]->tableName = "Outside";
    airTemperature->setColor(Qt::yellow);
    EXPECT_EQ(row(0).color, QColor(Qt::red));
}

TEST_F(ObservationTest, AColourChangeWithoutAPlotStillChangesTheRow)
{
    open({"airTemperature", "pressure"});
    deliver(twoRows({"pressure"}));
    airTemperature->setColor(Qt::yellow);
    EXPECT_EQ(row(0).color, QColor(Qt::yellow));
}

TEST_F(ObservationTest, AColourChangeBeforeAnyRecordsIsHarmless)
{
    open({"airTemperature"});
    airTemperature->setColor(Qt::yellow);
    EXPECT_EQ(displayed().size(), 0U);
}

TEST_F(ObservationTest, ADropObservedTwiceIsToldTwice)
{
    openAndDeliver({"airTemperature"});
    trend->removePropertiesAndRefresh({"Air Temperature"});
    trend->addProperties({"airTemperature"});
    EXPECT_EQ(airTemperature->observationCount(), 3U);  // "color" was never stopped
}

TEST_F(ObservationTest, TheTagDecidesAndNotTheKey)
{
    openAndDeliver({"airTemperature"});
    notify(*airTemperature, "degC", "degF", kUnit);
    EXPECT_EQ(row(0).unit, "°F");
    notify(*airTemperature, "degF", "degC", ObservationTag{"another"});
    EXPECT_EQ(row(0).unit, "°F");
}

TEST_F(ObservationTest, TheToolTipListsTheDisplayedRowsWithTheirColours)
{
    openAndDeliver({"airTemperature", "pressure"});
    trend->updateToolTip();
    EXPECT_EQ(trend->hostView()->toolTip(),
              "Color index:\rAir Temperature is rgb(255, 0, 0)\rPressure is rgb(0, 0, 255)");
}

TEST_F(ObservationTest, TheToolTipShowsNamesAsTheyAre)
{
    openAndDeliver({"airTemperature"});
    controller().arrangedObjects()[0]->tableName = "<b>x</b> & y";
    trend->updateToolTip();
    EXPECT_EQ(trend->hostView()->toolTip(), plainToolTip("Color index:\r<b>x</b> & y is rgb(255, 0, 0)"));
    EXPECT_FALSE(trend->hostView()->toolTip().contains("<b>"));
}

TEST_F(ObservationTest, NothingSetsTheToolTipByItself)
{
    openAndDeliver({"airTemperature"});
    airTemperature->setColor(Qt::yellow);
    EXPECT_EQ(trend->hostView()->toolTip(), QString());
}

}  // namespace
