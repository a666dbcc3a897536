#include "base/SinglePrecision.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtTest/QSignalSpy>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QTableView>

namespace {

class InfoTableTest : public PropertyTableFixture {
protected:
    void deliverTemperatures(const std::vector<double>& values)
    {
        open({"airTemperature"});
        std::vector<double> times;
        for (std::size_t index = 0; index < values.size(); ++index)
            times.push_back(60.0 * static_cast<double>(index));
        deliver(host.records().times(times).column("airTemperature", values).build());
    }
    void expectRow(float minimum, float maximum, float average, int points, const QString& unit)
    {
        ASSERT_EQ(displayed().size(), 1U);
        EXPECT_EQ(row(0).minimum, minimum);
        EXPECT_EQ(row(0).maximum, maximum);
        EXPECT_EQ(row(0).average, average);
        EXPECT_EQ(row(0).points, points);
        EXPECT_EQ(row(0).unit, unit);
    }
    void addRow(const InfoTableRow& row) { controller().addObject(std::make_shared<InfoTableRow>(row)); }
};

TEST_F(InfoTableTest, ThreeFiveFour)
{
    deliverTemperatures({3, 5, 4});
    expectRow(3, 5, 4, 3, "°C");
    EXPECT_EQ(row(0).tableName, "Air Temperature");
    EXPECT_EQ(row(0).propertyName, "airTemperature");
    EXPECT_EQ(row(0).color, QColor(Qt::red));
    EXPECT_TRUE(row(0).show);
}

TEST_F(InfoTableTest, ASingleValueIsEverything)
{
    deliverTemperatures({4.5});
    expectRow(4.5, 4.5, 4.5, 1, "°C");
}

TEST_F(InfoTableTest, OnlyInvalidValuesGiveZerosAndADash)
{
    open({"airTemperature"});
    deliver(host.records().at(0).invalid("airTemperature").at(60).invalid("airTemperature").build());
    expectRow(0, 0, 0, 0, "-");
}

TEST_F(InfoTableTest, APropertyWithoutRecordsHasARowButNoPlot)
{
    open({"pressure", "airTemperature"});
    deliver(twoRows({"airTemperature"}));
    EXPECT_EQ(rowNames(), (QStringList{"Pressure", "Air Temperature"}));
    EXPECT_EQ(row(0).points, 0);
    EXPECT_EQ(row(0).unit, "-");
    EXPECT_EQ(plotKeys(), QStringList("airTemperature"));
}

TEST_F(InfoTableTest, TheTableTakesAnAnswersRowsAllAtOnce)
{
    open({"pressure", "airTemperature"});
    const auto* table = trend->view()->findChild<QTableView*>();
    ASSERT_TRUE(table);
    QSignalSpy inserted(table->model(), &QAbstractItemModel::rowsInserted);
    deliver(twoRows({"airTemperature", "pressure"}));
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(table->model()->rowCount(), 2);
}

TEST_F(InfoTableTest, ARecordKeyBesideThePropertiesHasAPlotButNoRow)
{
    open({"airTemperature"});
    deliver(twoRows({"airTemperature", "pressure"}));
    EXPECT_EQ(rowNames(), QStringList("Air Temperature"));
    EXPECT_EQ(plotKeys(), (QStringList{"airTemperature", "pressure"}));
}

TEST_F(InfoTableTest, OnlyTheAverageIsRounded)
{
    deliverTemperatures({20.123456, 20.654321});
    expectRow(20.123456F, 20.654321F, 20.39F, 2, "°C");
}

// 20.384999999 has the four significant digits 20.38; the float nearest to it is larger than 20.385.
TEST_F(InfoTableTest, TheAverageIsRoundedInDoublePrecisionBeforeItIsNarrowed)
{
    ASSERT_NE(KTVConverter::roundValue(static_cast<double>(20.384999999F), 10), 20.38);
    deliverTemperatures({20.384999999, 20.384999999});
    EXPECT_EQ(row(0).average, 20.38F);
}

// Sums of floats would lose the two ones beside the large value.
TEST_F(InfoTableTest, TheSumRunsOverDoubles)
{
    deliverTemperatures({16777216, 1, 1, 2});
    EXPECT_EQ(row(0).average, plotix::singlePrecision(KTVConverter::roundValue(16777220.0 / 4, 10)));
}

TEST_F(InfoTableTest, SnapshotsThatAreNeverPlottedCount)
{
    open({"airTemperature"});
    deliver(host.records()
                .at(0)
                .value("airTemperature", 1)
                .at(60)
                .neverPlotted("airTemperature", 9)
                .at(120)
                .value("airTemperature", 2)
                .build());
    expectRow(1, 9, 4, 3, "°C");
    EXPECT_EQ(plot("airTemperature")->series()->count(), 2U);
}

TEST_F(InfoTableTest, ElementsThatAreNoPropertiesAreSkipped)
{
    open({"airTemperature"});
    deliver(host.records()
                .at(0)
                .notAProperty("airTemperature")
                .at(60)
                .value("airTemperature", 7)
                .at(120)
                .value("airTemperature", 9)
                .build());
    expectRow(7, 9, 8, 2, "°C");
}

TEST_F(InfoTableTest, AnUpdateReplacesTheRow)
{
    deliverTemperatures({1, 2, 3});
    const InfoTableRowPtr before = displayed()[0];
    deliverAgain(twoRows({"airTemperature"}));
    ASSERT_EQ(displayed().size(), 1U);
    EXPECT_NE(displayed()[0], before);
    EXPECT_EQ(row(0).maximum, 20);
}

TEST_F(InfoTableTest, AHiddenRowStaysHiddenAndItsPlotIsHiddenAgain)
{
    openAndDeliver({"airTemperature", "pressure"});
    displayed()[0]->show = false;
    deliverAgain(twoRows({"airTemperature", "pressure"}));
    EXPECT_FALSE(row(0).show);
    EXPECT_TRUE(plot("airTemperature")->isHidden());
    EXPECT_FALSE(plot("pressure")->isHidden());
}

TEST_F(InfoTableTest, ARowsColourSurvivesAnUpdate)
{
    openAndDeliver({"airTemperature"});
    displayed()[0]->color = Qt::yellow;
    deliverAgain(twoRows({"airTemperature"}));
    EXPECT_EQ(row(0).color, QColor(Qt::yellow));
    EXPECT_EQ(airTemperature->color(), QColor(Qt::red));
}

TEST_F(InfoTableTest, MatchedRowsStandInTheOrderOfThePropertiesBehindTheOthers)
{
    open({"airTemperature", "pressure"});
    addRow({.tableName = "Pressure", .propertyName = "pressure"});
    addRow({.tableName = "Something Else", .propertyName = "somethingElse"});
    addRow({.tableName = "Air Temperature", .propertyName = "airTemperature"});
    deliver(twoRows({"airTemperature", "pressure"}));
    EXPECT_EQ(rowNames(), (QStringList{"Something Else", "Air Temperature", "Pressure"}));
}

TEST_F(InfoTableTest, EveryRowOfANameIsReplacedAndTheFirstOneSuppliesShowAndColour)
{
    open({"airTemperature"});
    addRow({.show = false, .color = Qt::cyan, .tableName = "Air Temperature", .propertyName = "airTemperature"});
    addRow({.show = true, .color = Qt::gray, .tableName = "Air Temperature", .propertyName = "airTemperature"});
    deliver(twoRows({"airTemperature"}));
    ASSERT_EQ(rowNames(), (QStringList{"Air Temperature", "Air Temperature"}));
    for (const InfoTableRowPtr& each : displayed()) {
        EXPECT_FALSE(each->show);
        EXPECT_EQ(each->color, QColor(Qt::cyan));
        EXPECT_EQ(each->points, 2);
    }
    EXPECT_NE(displayed()[0], displayed()[1]);
}

// A property of the same name with another key: the old row's plot is hidden.
TEST_F(InfoTableTest, VisibilityIsSetUnderTheOldRowsKey)
{
    open({"airTemperature", "pressure"});
    addRow({.show = false, .tableName = "Air Temperature", .propertyName = "pressure"});
    deliver(twoRows({"airTemperature", "pressure"}));
    EXPECT_TRUE(plot("pressure")->isHidden());
    EXPECT_FALSE(plot("airTemperature")->isHidden());
}

TEST_F(InfoTableTest, TheKeptMappingIsFilledButDecidesNothing)
{
    open({"airTemperature"});
    EXPECT_FALSE(trend->infoTablePropertyShowMapping().has_value());
    deliver(twoRows({"airTemperature"}));
    EXPECT_EQ(*trend->infoTablePropertyShowMapping(), (std::map<QString, int>{{"Air Temperature", 1}}));
    displayed()[0]->show = false;
    deliverAgain(twoRows({"airTemperature"}));
    EXPECT_EQ(trend->infoTablePropertyShowMapping()->at("Air Temperature"), 1);
    EXPECT_FALSE(row(0).show);
}

TEST_F(InfoTableTest, HidingAPlotByItsKey)
{
    openAndDeliver({"airTemperature", "pressure"});
    trend->setPlotForPropertyName("pressure", true);
    trend->setPlotForPropertyName("nothing", true);
    EXPECT_TRUE(plot("pressure")->isHidden());
    EXPECT_FALSE(plot("airTemperature")->isHidden());
    trend->setPlotForPropertyName("pressure", false);
    EXPECT_FALSE(plot("pressure")->isHidden());
}

TEST_F(InfoTableTest, ClickingACheckBoxHidesAndShowsThePlot)
{
    openAndDeliver({"airTemperature", "pressure"});
    QCheckBox* checkBox = trend->infoTable()->checkBoxForRow(1);
    checkBox->click();
    EXPECT_FALSE(row(1).show);
    EXPECT_TRUE(plot("pressure")->isHidden());
    checkBox->click();
    EXPECT_TRUE(row(1).show);
    EXPECT_FALSE(plot("pressure")->isHidden());
}

TEST_F(InfoTableTest, ACheckBoxActsOnItsRowAlsoInASortedTable)
{
    openAndDeliver({"airTemperature", "pressure"});
    trend->infoTable()->sortByColumn(2, Qt::DescendingOrder);
    ASSERT_EQ(rowNames(), (QStringList{"Pressure", "Air Temperature"}));
    trend->infoTable()->checkBoxForRow(0)->click();
    EXPECT_TRUE(plot("pressure")->isHidden());
}

TEST_F(InfoTableTest, AnActionOnItsOwnLeavesTheRowsShowAlone)
{
    openAndDeliver({"airTemperature"});
    QCheckBox* checkBox = trend->infoTable()->checkBoxForRow(0);
    checkBox->setChecked(false);  // without the click that writes the row
    trend->showClicked(checkBox);
    EXPECT_TRUE(plot("airTemperature")->isHidden());
    EXPECT_TRUE(row(0).show);
}

TEST_F(InfoTableTest, AnActionOfAViewOutsideTheTableDoesNothing)
{
    openAndDeliver({"airTemperature"});
    QCheckBox stranger;
    trend->showClicked(&stranger);
    trend->showClicked(nullptr);
    EXPECT_FALSE(plot("airTemperature")->isHidden());
}

TEST_F(InfoTableTest, TheTableAndTheTrendViewShareOneList)
{
    openAndDeliver({"airTemperature", "pressure"});
    EXPECT_EQ(*trend->infoTableArray(), displayed());
    EXPECT_EQ(trend->infoTable()->model()->rowCount(), 2);
}

TEST_F(InfoTableTest, WithoutALoadedViewNoRowsAreMade)
{
    trend = KTVPlotixPlugIn::initWithAgent(host.agent(), &host.siteWindowController(), KTVPropertyList{airTemperature});
    trend->updateInfoTable();
    trend->setPlotForPropertyName("airTemperature", true);
    EXPECT_TRUE(trend->infoTableArray()->empty());
}

TEST_F(InfoTableTest, AViewThatIsGoneLeavesTheRows)
{
    openAndDeliver({"airTemperature"});
    delete trend->view();
    trend->updateInfoTable();
    EXPECT_EQ(trend->infoTableArray()->size(), 1U);
}

TEST_F(InfoTableTest, ARefreshKeepsTheSelection)
{
    openAndDeliver({"airTemperature", "pressure", "windSpeed"});
    controller().setSelectionIndexes({0, 2});
    deliverAgain(twoRows({"airTemperature", "pressure", "windSpeed"}));
    EXPECT_EQ(controller().selectionIndexes(), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(trend->infoTable()->selectedRowIndexes(), (std::vector<std::size_t>{0, 2}));
}

TEST_F(InfoTableTest, TheSecondOfTwoRowsOfOneNameStaysSelectedAlone)
{
    open({"airTemperature"});
    addRow({.tableName = "Air Temperature", .propertyName = "airTemperature"});
    addRow({.tableName = "Air Temperature", .propertyName = "airTemperature"});
    controller().setSelectionIndexes({1});
    deliver(twoRows({"airTemperature"}));
    EXPECT_EQ(controller().selectionIndexes(), std::vector<std::size_t>{1});
}

}  // namespace
