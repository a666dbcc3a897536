#include "PropertyTableFixture.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QCheckBox>

// What someone without a mouse reaches in a trend view, and what a screen reader is told about it.

namespace {

class KeyboardAccessTest : public PropertyTableFixture {
protected:
    void SetUp() override
    {
        openAndDeliver({"airTemperature", "pressure"});
        trend->view()->resize(1000, 700);
        show();
    }

    /// What Tab reaches, beginning with the from date, until it is back there. Within a date Tab goes from part to part
    /// first.
    QList<QWidget*> tabStops()
    {
        QList<QWidget*> stops;
        trend->view()->findChild<QWidget*>("fromDate")->setFocus();
        for (int presses = 0; presses < 100; ++presses) {
            if (stops.isEmpty() || stops.last() != focused()) {
                if (!focused() || stops.contains(focused()))
                    break;
                stops.append(focused());
            }
            QTest::keyClick(focused(), Qt::Key_Tab);
        }
        return stops;
    }
    static QWidget* focused() { return QApplication::focusWidget(); }

    bool takesTheFocus(const QWidget& widget) const
    {
        return widget.focusPolicy() != Qt::NoFocus && widget.isVisible() && widget.isEnabled() && !widget.focusProxy();
    }
    QList<QWidget*> focusableWidgets() const
    {
        QList<QWidget*> widgets;
        for (QWidget* widget : trend->view()->findChildren<QWidget*>())
            // A table's viewport and an editor's line are parts of them: each pair counts as one widget.
            if (takesTheFocus(*widget) && !qobject_cast<QAbstractScrollArea*>(widget->parentWidget()) &&
                !qobject_cast<QAbstractSpinBox*>(widget->parentWidget()))
                widgets.append(widget);
        return widgets;
    }
    /// As a screen reader does: the name given, or else the text on it.
    static QString spokenName(QWidget& widget)
    {
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&widget);
        return told ? told->text(QAccessible::Name) : QString();
    }

    QCheckBox* checkBox(int row) const { return trend->infoTable()->checkBoxForRow(row); }
};

TEST_F(KeyboardAccessTest, TabReachesEverythingOnceInTheOrderOfReading)
{
    const KTVDataClusterViewController& dates = *trend->dataClusterViewController();
    const QList<QWidget*> wanted{dates.fromDate(),
                                 dates.toDate(),
                                 dates.quickDatePopupButton(),
                                 dates.refreshButton(),
                                 trend->sharingButton(),
                                 trend->hostView(),
                                 trend->propertyDetailsDisclosureButton(),
                                 trend->infoTable(),
                                 checkBox(0),
                                 checkBox(1)};
    QStringList stops, names;
    for (QWidget* widget : tabStops())
        stops << spokenName(*widget);
    for (QWidget* widget : wanted)
        names << spokenName(*widget);
    EXPECT_EQ(stops.join(", ").toStdString(), names.join(", ").toStdString());
}

TEST_F(KeyboardAccessTest, EveryFocusableControlHasAName)
{
    const QList<QWidget*> widgets = focusableWidgets();
    EXPECT_GE(widgets.size(), 10);
    for (QWidget* widget : widgets)
        EXPECT_FALSE(spokenName(*widget).trimmed().isEmpty())
            << widget->metaObject()->className() << ' ' << qPrintable(widget->objectName());
}

TEST_F(KeyboardAccessTest, TheFocusShowsOnEveryTabStop)
{
    for (QWidget* widget : tabStops()) {
        widget->clearFocus();
        const QImage without = widget->grab().toImage();
        widget->setFocus(Qt::TabFocusReason);
        EXPECT_NE(widget->grab().toImage(), without) << qPrintable(spokenName(*widget));
    }
}

TEST_F(KeyboardAccessTest, SpaceHidesAndShowsAPlot)
{
    checkBox(0)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(checkBox(0), Qt::Key_Space);
    EXPECT_TRUE(plot("airTemperature")->isHidden());
    EXPECT_FALSE(row(0).show);
    QTest::keyClick(checkBox(0), Qt::Key_Space);
    EXPECT_FALSE(plot("airTemperature")->isHidden());
}

TEST_F(KeyboardAccessTest, TheTableEatsItsKeysAndTabStillLeavesIt)
{
    PropertyDetailsTableView* table = trend->infoTable();
    table->selectRow(0);
    table->setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_P, Qt::Key_Space})
        QTest::keyClick(table, key);
    EXPECT_EQ(table->selectedRowIndexes(), std::vector<std::size_t>{0});
    EXPECT_EQ(focused(), table);
    QTest::keyClick(table, Qt::Key_Tab);
    EXPECT_EQ(focused(), checkBox(0));
}

TEST_F(KeyboardAccessTest, SpaceOnThePanelsButtonHidesThePanel)
{
    trend->propertyDetailsDisclosureButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(focused(), Qt::Key_Space);
    EXPECT_FALSE(trend->propertyDetailsShowing());
    QTest::keyClick(focused(), Qt::Key_Space);
    EXPECT_TRUE(trend->propertyDetailsShowing());
}

TEST_F(KeyboardAccessTest, AHiddenPanelIsNoTabStop)
{
    trend->propertyDetailsDisclosureButton()->click();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !trend->propertyDetailsView()->isVisible(); }));
    const QList<QWidget*> stops = tabStops();
    EXPECT_FALSE(stops.contains(trend->infoTable()));
    EXPECT_FALSE(stops.contains(checkBox(0)));
}

TEST_F(KeyboardAccessTest, UnitColourAndDeletionLeaveTheArchiveAlone)
{
    host.log().clear();
    airTemperature->setUnit("degF");
    airTemperature->setColor(Qt::yellow);
    trend->infoTable()->selectRow(1);
    QTest::keyClick(trend->infoTable(), Qt::Key_Delete);
    EXPECT_EQ(row(0).unit, "°F");
    EXPECT_EQ(row(0).color, QColor(Qt::yellow));
    EXPECT_EQ(propertyKeys(), QStringList({"airTemperature"}));
    EXPECT_EQ(host.log().count("archiveManager."), 0);
    EXPECT_EQ(host.log().count("pressure.removeObserver unit"), 1);
}

}  // namespace
