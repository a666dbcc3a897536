#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtWidgets/QCheckBox>

// Rows and properties of one name, rows without a property, selections: who is meant, and who stays.

namespace {

class InfoTableMerging : public PropertyTableFixture {
protected:
    void addRow(const InfoTableRow& row) { controller().addObject(std::make_shared<InfoTableRow>(row)); }
    /// A second property called "Pressure", under the key "gauge".
    void addNamesake()
    {
        host.agent()->addProperty({.name = "Pressure", .unit = "hPa", .propertyName = "gauge", .color = Qt::cyan});
    }
    static bool takesDelete(PropertyDetailsTableView& table)
    {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
        press.ignore();
        QApplication::sendEvent(&table, &press);
        return press.isAccepted();
    }
};

TEST_F(InfoTableMerging, FirstRowOfTheListDecidesAlsoInASortedTable)
{
    open({"airTemperature"});
    addRow({.show = false, .tableName = "Air Temperature", .propertyName = "airTemperature", .minimum = 1});
    addRow({.show = true, .tableName = "Air Temperature", .propertyName = "airTemperature", .minimum = 2});
    controller().setSortOrder([](const auto& one, const auto& other) { return one->minimum > other->minimum; });
    ASSERT_TRUE(row(0).show);
    deliver(twoRows({"airTemperature"}));
    EXPECT_FALSE(row(0).show);
    EXPECT_FALSE(row(1).show);
}

TEST_F(InfoTableMerging, OneChoiceHidesThePlotsOfAllRowsOfAName)
{
    open({"airTemperature", "pressure"});
    addRow({.show = false, .tableName = "Air Temperature", .propertyName = "airTemperature"});
    addRow({.show = true, .tableName = "Air Temperature", .propertyName = "pressure"});
    deliver(twoRows({"airTemperature", "pressure"}));
    EXPECT_TRUE(plot("airTemperature")->isHidden());
    EXPECT_TRUE(plot("pressure")->isHidden());
}

TEST_F(InfoTableMerging, SeveralDroppedKeysAreFetchedOnce)
{
    open({"airTemperature"});
    trend->addProperties({"pressure", "windSpeed"});
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure", "windSpeed"}));
    EXPECT_EQ(fetchCount(), 2U);
}

TEST_F(InfoTableMerging, RemovingANameTakesItsFirstPropertyAlone)
{
    addNamesake();
    openAndDeliver({"airTemperature", "pressure", "gauge"});
    EXPECT_TRUE(trend->removePropertiesAndRefresh({"Pressure"}));
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "gauge"}));
    EXPECT_EQ(plotKeys(), (QStringList{"airTemperature", "gauge"}));
}

TEST_F(InfoTableMerging, NameWithoutAPropertyKeepsItsRow)
{
    openAndDeliver({"airTemperature"});
    addRow({.tableName = "Something Else", .propertyName = "somethingElse"});
    trend->markDeletedRows({1});
    EXPECT_TRUE(trend->removeDeletedRows());
    EXPECT_EQ(rowNames(), (QStringList{"Air Temperature", "Something Else"}));
}

TEST_F(InfoTableMerging, DeleteWithoutADelegateGoesNoFurther)
{
    PropertyDetailsTableView table;
    EXPECT_TRUE(takesDelete(table));
    open({"airTemperature"});
    EXPECT_TRUE(takesDelete(*trend->infoTable()));
}

// The item speaks the user's language; the title is never seen.
TEST_F(InfoTableMerging, MenusTitleStaysAsItIsInEveryLanguage)
{
    host.bundle().translate("Contextual Menu", "Kontextmenü");
    host.bundle().translate("Remove", "Entfernen");
    open({"airTemperature"});
    const auto menu = trend->infoTable()->menuForEvent(nullptr);
    EXPECT_EQ(menu->title(), "Contextual Menu");
    EXPECT_EQ(menu->actions().at(0)->text(), "Entfernen");
    EXPECT_TRUE(menu->actions().at(0)->shortcut().isEmpty());
}

// Observation.

TEST_F(InfoTableMerging, ObservationOnceBegunCountsAsBegunForEver)
{
    openAndDeliver({"airTemperature"});
    trend->removePropertiesAndRefresh({"Air Temperature"});
    EXPECT_TRUE(trend->observersAdded());
    trend->removeObservers(nullptr);
    EXPECT_TRUE(trend->observersAdded());
}

// The notice alone decides, whatever unit the loaded values have.
TEST_F(InfoTableMerging, NoticeOfAnEqualUnitConvertsNothing)
{
    openAndDeliver({"airTemperature"});
    trend->setUnit("degF", "airTemperature");
    ASSERT_EQ(row(0).unit, "°F");
    trend->observeValueForKeyPath("unit", airTemperature.get(), {"degC", "degC"}, kUnit);
    EXPECT_EQ(row(0).unit, "°F");
}

TEST_F(InfoTableMerging, EverySelectedRowStaysSelectedWhenAColourChanges)
{
    openAndDeliver({"airTemperature", "pressure", "windSpeed"});
    controller().setSelectionIndexes({0, 2});
    pressure->setColor(Qt::yellow);
    EXPECT_EQ(controller().selectionIndexes(), (std::vector<std::size_t>{0, 2}));
}

TEST_F(InfoTableMerging, ToolTipFollowsTheDisplayedOrder)
{
    openAndDeliver({"airTemperature", "pressure"});
    trend->infoTable()->sortByColumn(2, Qt::DescendingOrder);
    trend->updateToolTip();
    EXPECT_EQ(trend->hostView()->toolTip(),
              "Color index:\rPressure is rgb(0, 0, 255)\rAir Temperature is rgb(255, 0, 0)");
}

// A rebuilt plot is visible until the table hides it again.
TEST_F(InfoTableMerging, UnitChangeHidesAHiddenPlotAgain)
{
    openAndDeliver({"airTemperature", "pressure"});
    trend->infoTable()->checkBoxForRow(1)->click();
    airTemperature->setUnit("degF");
    EXPECT_TRUE(plot("pressure")->isHidden());
    EXPECT_FALSE(plot("airTemperature")->isHidden());
}

// The details panel's flag.

TEST_F(InfoTableMerging, ShowingAndHidingTheDetailsLeavesTheFlagToTheButton)
{
    open({});
    trend->hidePropertyDetailsView();
    EXPECT_TRUE(trend->propertyDetailsShowing());
    trend->propertyDetailsDisclosureButton()->setChecked(false);
    trend->propertyDetailsDisclosureButtonAction(trend->propertyDetailsDisclosureButton());
    trend->showPropertyDetailsView();
    EXPECT_FALSE(trend->propertyDetailsShowing());
}

}  // namespace
