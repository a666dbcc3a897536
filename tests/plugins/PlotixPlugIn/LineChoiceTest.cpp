#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/LineMenu.h"
#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtWidgets/QCheckBox>

// Which lines are shown, chosen in the table's menu, with its keys, and in the graph's menu.

namespace {

class LineChoiceTest : public PropertyTableFixture {
protected:
    LineChoiceTest()
    {
        openAndDeliver({"airTemperature", "pressure", "windSpeed"});
        trend->setReading({{"lineCommands", true}});
    }
    ~LineChoiceTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    PropertyDetailsTableView& table() { return *trend->infoTable(); }
    void select(const std::vector<std::size_t>& rows) { controller().setSelectionIndexes(rows); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&table(), key, modifiers); }
    /// The lines that are drawn; rows and check boxes must say the same.
    QStringList shown()
    {
        QStringList names;
        for (std::size_t row = 0; row < displayed().size(); ++row) {
            const InfoTableRow& object = *displayed()[row];
            const auto plot = trend->graph()->plotWithIdentifier(object.propertyName);
            EXPECT_EQ(plot->isHidden(), !object.show);
            EXPECT_EQ(table().checkBoxForRow(static_cast<int>(row))->isChecked(), object.show);
            if (object.show)
                names << object.tableName;
        }
        return names;
    }
    static QAction* item(const QMenu& menu, const QString& text)
    {
        for (QAction* action : menu.actions())
            if (action->text().section(u'\t', 0, 0) == text)
                return action;
        return nullptr;
    }
    std::unique_ptr<QMenu> graphMenu() { return trend->hostView()->findChild<LineMenu*>()->makeMenu(); }

    static inline const QStringList kAll{"Air Temperature", "Pressure", "Wind Speed"};
};

TEST_F(LineChoiceTest, TheTablesMenuShowsOnlyTheSelectedLinesAndAllAgain)
{
    select({0, 2});
    auto menu = table().menuForEvent(nullptr);
    EXPECT_EQ(menu->actions().first()->text(), "Remove");
    item(*menu, "Show Only This")->trigger();
    EXPECT_EQ(shown(), (QStringList{"Air Temperature", "Wind Speed"}));
    item(*menu, "Show All")->trigger();
    EXPECT_EQ(shown(), kAll);
}

TEST_F(LineChoiceTest, WithoutASelectionThereIsNothingToShowOnly)
{
    EXPECT_FALSE(item(*table().menuForEvent(nullptr), "Show Only This")->isEnabled());
    press(Qt::Key_O);
    EXPECT_EQ(shown(), kAll);
}

TEST_F(LineChoiceTest, KeysSelectHideAndShow)
{
    select({0});
    table().setCurrentIndex(table().model()->index(0, 0));
    press(Qt::Key_Down);
    EXPECT_EQ(table().selectedRowIndexes(), std::vector<std::size_t>{1});
    press(Qt::Key_O);
    EXPECT_EQ(shown(), QStringList{"Pressure"});
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Space);
    EXPECT_EQ(shown(), (QStringList{"Pressure", "Wind Speed"}));
    press(Qt::Key_Space);
    EXPECT_EQ(shown(), QStringList());
    press(Qt::Key_A);
    EXPECT_EQ(shown(), kAll);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table().selectedRowIndexes().size(), 3U);
}

TEST_F(LineChoiceTest, DeleteStillRemoves)
{
    select({1});
    press(Qt::Key_Delete);
    EXPECT_EQ(rowNames(), (QStringList{"Air Temperature", "Wind Speed"}));
}

TEST_F(LineChoiceTest, TheGraphsMenuHidesALine)
{
    const auto menu = graphMenu();
    QAction* pressureLine = item(*menu, "Pressure");
    EXPECT_TRUE(pressureLine->isChecked());
    pressureLine->trigger();
    EXPECT_EQ(shown(), (QStringList{"Air Temperature", "Wind Speed"}));
    EXPECT_FALSE(item(*graphMenu(), "Pressure")->isChecked());
}

TEST_F(LineChoiceTest, TheGraphsMenuShowsOneLineOnlyAndAllAgain)
{
    const auto menu = graphMenu();
    item(*item(*menu, "Show Only")->menu(), "Wind Speed")->trigger();
    EXPECT_EQ(shown(), QStringList{"Wind Speed"});
    item(*menu, "Show All")->trigger();
    EXPECT_EQ(shown(), kAll);
}

TEST_F(LineChoiceTest, TheGraphsMenuBeginsWithWhatTheHostOffers)
{
    trend->view()->addAction(new QAction("Refresh", trend->view()));
    EXPECT_EQ(graphMenu()->actions().first()->text(), "Refresh");
}

TEST_F(LineChoiceTest, ARightClickOnTheGraphOpensIt)
{
    show();
    const QPoint place = trend->hostView()->rect().center();
    QContextMenuEvent request(QContextMenuEvent::Mouse, place, trend->hostView()->mapToGlobal(place));
    QApplication::sendEvent(trend->hostView(), &request);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_NE(item(*menu, "Pressure"), nullptr);
    menu->close();
}

TEST_F(LineChoiceTest, WithoutTheOptionNothingOfItIsThere)
{
    trend->setReading({{"lineCommands", false}});
    EXPECT_EQ(table().menuForEvent(nullptr)->actions().size(), 1);
    select({1});
    press(Qt::Key_O);
    press(Qt::Key_Down);
    EXPECT_EQ(shown(), kAll);
    EXPECT_EQ(table().selectedRowIndexes(), std::vector<std::size_t>{1});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(trend->hostView()->findChild<LineMenu*>(), nullptr);
}

TEST_F(LineChoiceTest, ASwatchNamesTheLinesColour)
{
    trend->setReading({{"propertyColors", true}});
    const auto isOneColour = [this](const QColor& color) {
        return row(0).color == color &&
               trend->graph()->plotWithIdentifier("airTemperature")->dataLineStyle().color == color;
    };
    airTemperature->setColor(QColor("teal"));
    EXPECT_TRUE(isOneColour(QColor("teal")));
    airTemperature->setUnit("degF");  // rebuilds from records whose snapshots carry the old colour
    EXPECT_TRUE(isOneColour(QColor("teal")));
    deliverAgain(twoRows({"airTemperature"}));
    EXPECT_TRUE(isOneColour(QColor("teal")));
}

}  // namespace
