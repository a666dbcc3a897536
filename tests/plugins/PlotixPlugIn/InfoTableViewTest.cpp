#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

namespace {

class RecordingTableDelegate : public PropertyDetailsTableViewDelegate {
public:
    bool respondsToMarkDeletedRows() const override { return responds; }
    void markDeletedRows(const std::vector<std::size_t>& indexes) override { marked.push_back(indexes); }
    bool removeDeletedRows() override
    {
        ++removals;
        return true;
    }

    bool responds = true;
    std::vector<std::vector<std::size_t>> marked;
    int removals = 0;
};

class InfoTableView : public testing::Test {
protected:
    InfoTableView()
    {
        addRow({.color = Qt::red, .tableName = "Beta", .unit = "hPa", .minimum = 20.1F, .points = 7});
        addRow({.color = Qt::blue, .tableName = "Gamma", .unit = "°C", .minimum = 9, .points = 70});
        addRow({.color = Qt::green, .tableName = "Alpha", .unit = "%", .minimum = 100, .points = 8});
        table.setArrayController(&controller);
        table.setTableDelegate(&delegate);
        table.resize(900, 220);
    }

    void addRow(const InfoTableRow& row) { controller.addObject(std::make_shared<InfoTableRow>(row)); }
    void show()
    {
        table.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    }
    QString text(int row, int column) const { return table.model()->index(row, column).data().toString(); }
    QStringList names() const
    {
        QStringList names;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            names.append(text(row, InfoTableModel::Property));
        return names;
    }
    void clickHeader(int column)
    {
        const QHeaderView* header = table.horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 10, header->height() / 2});
    }
    void select(const std::vector<std::size_t>& rows) { controller.setSelectionIndexes(rows); }
    QPoint pointIn(int row) const { return table.visualRect(table.model()->index(row, 2)).center(); }
    std::unique_ptr<QMenu> rightPress(const QPoint& position)
    {
        const QMouseEvent press(QEvent::MouseButtonPress, position, table.viewport()->mapToGlobal(position),
                                Qt::RightButton, Qt::RightButton, Qt::NoModifier);
        return table.menuForEvent(&press);
    }
    using Rows = std::vector<std::size_t>;

    InfoTableArrayController controller;
    RecordingTableDelegate delegate;
    PropertyDetailsTableView table;
};

TEST_F(InfoTableView, HasTheColumnsOfTheReportAndTwoMore)
{
    QStringList titles;
    for (int column = 0; column < table.model()->columnCount(); ++column)
        titles.append(table.model()->headerData(column, Qt::Horizontal).toString());
    EXPECT_EQ(titles,
              (QStringList{"Show", "Color", "Property", "Unit", "Minimum", "Maximum", "Average", "No. of Points"}));
}

TEST_F(InfoTableView, ShowsNumbersPlainlyAndToTheRight)
{
    EXPECT_EQ(text(0, InfoTableModel::Minimum), "20.1");
    EXPECT_EQ(text(1, InfoTableModel::Points), "70");
    const auto alignment = table.model()->index(0, InfoTableModel::Minimum).data(Qt::TextAlignmentRole).toInt();
    EXPECT_TRUE(alignment & Qt::AlignRight);
}

TEST_F(InfoTableView, DrawsTheColourOfARow)
{
    show();
    const QRect cell = table.visualRect(table.model()->index(0, InfoTableModel::Color));
    const QImage image = table.viewport()->grab().toImage();
    EXPECT_EQ(image.pixelColor(cell.center()), QColor(Qt::red));
}

TEST_F(InfoTableView, FollowsRowsThatComeAndGo)
{
    controller.removeObject(controller.arrangedObjects()[1]);
    EXPECT_EQ(names(), (QStringList{"Beta", "Alpha"}));
    addRow({.tableName = "Delta"});
    EXPECT_EQ(names(), (QStringList{"Beta", "Alpha", "Delta"}));
    controller.removeAllObjects();
    EXPECT_EQ(names(), QStringList());
    EXPECT_EQ(table.checkBoxForRow(0), nullptr);
}

TEST_F(InfoTableView, ClickingAHeaderSortsUpThenDownThenBackToTheRowsOwnOrder)
{
    show();
    clickHeader(InfoTableModel::Property);
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta", "Gamma"}));
    clickHeader(InfoTableModel::Property);
    EXPECT_EQ(names(), (QStringList{"Gamma", "Beta", "Alpha"}));
    clickHeader(InfoTableModel::Property);
    EXPECT_EQ(names(), (QStringList{"Beta", "Gamma", "Alpha"}));
}

TEST_F(InfoTableView, NumbersSortAsNumbers)
{
    table.sortByColumn(InfoTableModel::Minimum, Qt::AscendingOrder);
    EXPECT_EQ(names(), (QStringList{"Gamma", "Beta", "Alpha"}));
    table.sortByColumn(InfoTableModel::Points, Qt::DescendingOrder);
    EXPECT_EQ(names(), (QStringList{"Gamma", "Alpha", "Beta"}));
}

TEST_F(InfoTableView, SortingLeavesTheListItselfAlone)
{
    table.sortByColumn(InfoTableModel::Property, Qt::AscendingOrder);
    EXPECT_EQ(controller.content()->at(0)->tableName, "Beta");
}

TEST_F(InfoTableView, NewRowsTakeTheirPlaceInTheSortedOrder)
{
    table.sortByColumn(InfoTableModel::Property, Qt::AscendingOrder);
    addRow({.tableName = "Beetle"});
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beetle", "Beta", "Gamma"}));
}

TEST_F(InfoTableView, TheSelectionOfTableAndControllerAreAlike)
{
    table.selectRow(1);
    EXPECT_EQ(controller.selectionIndexes(), Rows{1});
    select({0, 2});
    EXPECT_EQ(table.selectedRowIndexes(), (Rows{0, 2}));
    select({});
    EXPECT_EQ(table.selectedRowIndexes(), Rows{});
}

TEST_F(InfoTableView, TheSelectedRowsStaySelectedWhenSortedAndWhenOthersGo)
{
    select({0});
    table.sortByColumn(InfoTableModel::Property, Qt::AscendingOrder);
    EXPECT_EQ(table.selectedRowIndexes(), Rows{1});
    controller.removeObject(controller.arrangedObjects()[0]);
    EXPECT_EQ(table.selectedRowIndexes(), Rows{0});
    EXPECT_EQ(controller.selectedObjects()[0]->tableName, "Beta");
}

TEST_F(InfoTableView, ACheckBoxWritesTheRowBeforeItTells)
{
    bool shownWhenTold = true;
    QObject::connect(&table, &PropertyDetailsTableView::showClicked, &table, [&](QWidget* sender) {
        EXPECT_EQ(table.rowForView(sender), 1);
        shownWhenTold = controller.arrangedObjects()[1]->show;
    });
    table.checkBoxForRow(1)->click();
    EXPECT_FALSE(shownWhenTold);
}

TEST_F(InfoTableView, CheckBoxesFollowTheRowsWithoutTelling)
{
    QSignalSpy clicks(&table, &PropertyDetailsTableView::showClicked);
    controller.arrangedObjects()[0]->show = false;
    controller.rearrangeObjects();
    EXPECT_FALSE(table.checkBoxForRow(0)->isChecked());
    table.sortByColumn(InfoTableModel::Property, Qt::AscendingOrder);
    EXPECT_TRUE(table.checkBoxForRow(0)->isChecked());
    EXPECT_FALSE(table.checkBoxForRow(1)->isChecked());
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(InfoTableView, ViewsOfNoRowHaveNoRow)
{
    QWidget stranger;
    EXPECT_EQ(table.rowForView(&stranger), -1);
    EXPECT_EQ(table.rowForView(nullptr), -1);
    EXPECT_EQ(table.rowForView(&table), -1);
    EXPECT_EQ(table.rowForView(table.viewport()), -1);
    EXPECT_EQ(table.rowForView(table.checkBoxForRow(2)), 2);
    EXPECT_EQ(table.rowForView(table.checkBoxForRow(2)->parentWidget()), 2);
}

TEST_F(InfoTableView, EachCheckBoxIsATabStopWithAName)
{
    show();
    table.setFocus();
    for (int row = 0; row < 3; ++row) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), table.checkBoxForRow(row));
    }
    EXPECT_EQ(table.checkBoxForRow(2)->accessibleName(), "Show Alpha");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(controller.arrangedObjects()[2]->show);
}

TEST_F(InfoTableView, AReplacedRowKeepsTheFocusInItsCheckBox)
{
    show();
    table.checkBoxForRow(1)->setFocus();
    const auto rows = controller.arrangedObjects();
    controller.removeObject(rows[2]);
    addRow(*rows[2]);
    EXPECT_EQ(QApplication::focusWidget(), table.checkBoxForRow(1));
}

TEST_F(InfoTableView, DeleteKeysRemoveTheSelectedRows)
{
    select({0, 2});
    QTest::keyClick(&table, Qt::Key_Delete);
    QTest::keyClick(&table, Qt::Key_Backspace);
    EXPECT_EQ(delegate.marked, (std::vector<Rows>{{0, 2}, {0, 2}}));
    EXPECT_EQ(delegate.removals, 2);
}

TEST_F(InfoTableView, TheThreeDeleteCharactersRemove)
{
    for (const char16_t character : {u'\uF728', u'\uF73E', u'\u007F'}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(QChar(character)));
        QApplication::sendEvent(&table, &press);
    }
    EXPECT_EQ(delegate.removals, 3);
}

TEST_F(InfoTableView, TheDeleteCharacterThatControlMakesOfAnotherKeyRemovesNothing)
{
    select({1});
    QKeyEvent controlEight(QEvent::KeyPress, Qt::Key_8, Qt::ControlModifier, QString(QChar(u'\u007F')));
    QApplication::sendEvent(&table, &controlEight);
    EXPECT_EQ(delegate.removals, 0);
    QTest::keyClick(&table, Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(delegate.removals, 1);
}

TEST_F(InfoTableView, DeleteAsksWhetherTheDelegateResponds)
{
    delegate.responds = false;
    QTest::keyClick(&table, Qt::Key_Delete);
    EXPECT_EQ(delegate.removals, 0);
}

TEST_F(InfoTableView, RemoveDoesNotAsk)
{
    delegate.responds = false;
    select({1});
    table.remove();
    EXPECT_EQ(delegate.marked, std::vector<Rows>{{1}});
    EXPECT_EQ(delegate.removals, 1);
}

TEST_F(InfoTableView, WithoutADelegateDeletingDoesNothing)
{
    table.setTableDelegate(nullptr);
    QTest::keyClick(&table, Qt::Key_Delete);
    table.remove();
    EXPECT_EQ(names().size(), 3);
}

TEST_F(InfoTableView, EveryOtherKeyIsEatenAndDoesNothing)
{
    select({0});
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_G,
                              Qt::Key_Return, Qt::Key_Escape, Qt::Key_F5, Qt::Key_Shift}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        press.ignore();
        QApplication::sendEvent(&table, &press);
        EXPECT_TRUE(press.isAccepted()) << key;
    }
    QTest::keyClicks(&table, "gamma");
    QTest::keyClick(&table, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows{0});
    EXPECT_EQ(table.currentIndex().row() > 0, false);
    EXPECT_EQ(delegate.removals, 0);
}

TEST_F(InfoTableView, AMenusShortcutOnDeleteDoesNotWin)
{
    QKeyEvent override(QEvent::ShortcutOverride, Qt::Key_Delete, Qt::NoModifier);
    override.ignore();
    QApplication::sendEvent(&table, &override);
    EXPECT_TRUE(override.isAccepted());
    QKeyEvent other(QEvent::ShortcutOverride, Qt::Key_Q, Qt::ControlModifier);
    other.ignore();
    QApplication::sendEvent(&table, &other);
    EXPECT_FALSE(other.isAccepted());
}

TEST_F(InfoTableView, TheMenuHasOneItemAndRemovesThroughIt)
{
    select({1, 2});
    const auto menu = table.menuForEvent(nullptr);
    EXPECT_EQ(menu->title(), "Contextual Menu");
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions()[0]->text(), "Remove");
    EXPECT_TRUE(menu->actions()[0]->shortcut().isEmpty());
    menu->actions()[0]->trigger();
    EXPECT_EQ(delegate.marked, (std::vector<Rows>{{1, 2}}));
}

TEST_F(InfoTableView, ARightPressOnAnUnselectedRowSelectsOnlyThatRow)
{
    show();
    select({0, 1});
    EXPECT_NE(rightPress(pointIn(2)), nullptr);
    EXPECT_EQ(table.selectedRowIndexes(), Rows{2});
    EXPECT_EQ(controller.selectionIndexes(), Rows{2});
}

TEST_F(InfoTableView, ARightPressInsideTheSelectionKeepsIt)
{
    show();
    select({0, 1});
    EXPECT_NE(rightPress(pointIn(1)), nullptr);
    EXPECT_EQ(table.selectedRowIndexes(), (Rows{0, 1}));
}

TEST_F(InfoTableView, ARightPressOutsideEveryRowKeepsTheSelectionAndStillGivesTheMenu)
{
    show();
    select({1});
    EXPECT_NE(rightPress({20, table.viewport()->height() - 3}), nullptr);
    EXPECT_EQ(table.selectedRowIndexes(), Rows{1});
}

TEST_F(InfoTableView, AnEventThatIsNoRightPressGivesTheMenuAndKeepsTheSelection)
{
    show();
    select({1});
    const QMouseEvent controlClick(QEvent::MouseButtonPress, pointIn(2), table.viewport()->mapToGlobal(pointIn(2)),
                                   Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_NE(table.menuForEvent(&controlClick), nullptr);
    const QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, pointIn(2), pointIn(2));
    EXPECT_NE(table.menuForEvent(&menuKey), nullptr);
    EXPECT_EQ(table.selectedRowIndexes(), Rows{1});
}

TEST_F(InfoTableView, AControlClickAddsOrTakesARowAndOpensNoMenu)
{
    show();
    select({0});
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::ControlModifier, pointIn(2));
    EXPECT_EQ(table.selectedRowIndexes(), (Rows{0, 2}));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::ControlModifier, pointIn(0));
    EXPECT_EQ(table.selectedRowIndexes(), Rows{2});
}

TEST_F(InfoTableView, TheToolkitsRightClickShowsTheMenuOverTheRowItSelected)
{
    show();
    select({0, 1});
    QTest::mousePress(table.viewport(), Qt::RightButton, {}, pointIn(2));
    EXPECT_EQ(table.selectedRowIndexes(), (Rows{0, 1}));  // the press itself selects nothing
    QContextMenuEvent request(QContextMenuEvent::Mouse, pointIn(2), table.viewport()->mapToGlobal(pointIn(2)));
    QApplication::sendEvent(table.viewport(), &request);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), "Contextual Menu");
    EXPECT_EQ(table.selectedRowIndexes(), Rows{2});
    menu->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(InfoTableView, PropertyFillsAWideViewAndTheSavedWidthStaysItsOwn)
{
    const QVariantMap layout = table.dictionaryForAutosavingLayout();
    table.resize(1400, 200);
    table.show();
    EXPECT_EQ(table.horizontalHeader()->length(), table.viewport()->width());
    EXPECT_EQ(table.dictionaryForAutosavingLayout(), layout);
    table.resize(500, 200);
    EXPECT_LT(table.viewport()->width(), table.horizontalHeader()->length());
    EXPECT_EQ(table.dictionaryForAutosavingLayout(), layout);
}

TEST_F(InfoTableView, TheLayoutComesBack)
{
    table.setColumnWidth(InfoTableModel::Property, 333);
    table.horizontalHeader()->moveSection(7, 0);
    table.sortByColumn(InfoTableModel::Unit, Qt::DescendingOrder);
    const QVariantMap layout = table.dictionaryForAutosavingLayout();

    PropertyDetailsTableView other;
    other.setArrayController(&controller);
    other.adjustLayoutForAutosavedDictionary(layout);
    EXPECT_EQ(other.dictionaryForAutosavingLayout(), layout);
    EXPECT_EQ(other.columnWidth(InfoTableModel::Property), 333);
    EXPECT_EQ(other.horizontalHeader()->logicalIndex(0), 7);
    EXPECT_EQ(other.horizontalHeader()->sortIndicatorSection(), InfoTableModel::Unit);
}

TEST_F(InfoTableView, ARestoredSortOrderSortsTheRows)
{
    table.adjustLayoutForAutosavedDictionary({{"sortColumn", "tableName"}, {"sortAscending", false}});
    EXPECT_EQ(names(), (QStringList{"Gamma", "Beta", "Alpha"}));
}

TEST_F(InfoTableView, AnEmptyOrDamagedLayoutLeavesTheTableAsItIs)
{
    const QVariantMap before = table.dictionaryForAutosavingLayout();
    table.adjustLayoutForAutosavedDictionary({});
    table.adjustLayoutForAutosavedDictionary({{"columns", 7}});
    const QVariantMap unknown{{"identifier", "nothing"}, {"width", 50}};
    const QVariantMap noWidth{{"identifier", "show"}, {"width", -4}};
    table.adjustLayoutForAutosavedDictionary({{"columns", QVariantList{unknown, "x", noWidth, noWidth}}});
    EXPECT_EQ(table.dictionaryForAutosavingLayout(), before);
}

TEST_F(InfoTableView, AControllerThatGoesTakesItsRowsAlong)
{
    auto shortLived = std::make_unique<InfoTableArrayController>();
    shortLived->addObject(std::make_shared<InfoTableRow>());
    table.setArrayController(shortLived.get());
    ASSERT_EQ(table.model()->rowCount(), 1);
    shortLived.reset();
    EXPECT_EQ(table.model()->rowCount(), 0);
    table.selectAll();
    table.sortByColumn(InfoTableModel::Unit, Qt::AscendingOrder);
    addRow({});  // the former controller is not followed any more
    EXPECT_EQ(table.model()->rowCount(), 0);
}

}  // namespace
