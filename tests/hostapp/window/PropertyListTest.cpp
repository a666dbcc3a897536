#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/PropertyListView.h"
#include "plugins/PlotixPlugIn/host/KTVDragData.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtCore/QMimeData>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QMenu>

using plotix::PropertyListModel;
using plotix::PropertyListView;

namespace {

class PropertyListTest : public testing::Test {
protected:
    PropertyListTest()
        : station(site.addStation()),
          model(site.document),
          tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
    }

    QModelIndex row(int property, int agent = 0) { return model.index(property, 0, model.index(agent, 0)); }
    void tick(const QModelIndex& index) { model.setData(index, Qt::Checked, Qt::CheckStateRole); }
    std::optional<QStringList> draggedKeys(const QModelIndexList& indexes, const plotix::SiteAgent& agent)
    {
        const std::unique_ptr<QMimeData> data(model.mimeData(indexes));
        return propertyNamesFromDragData(data->data(agent.uniqueIdentifier()));
    }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> station;
    PropertyListModel model;
    QAbstractItemModelTester tester;
};

TEST_F(PropertyListTest, ListsAgentsAndTheirProperties)
{
    EXPECT_EQ(model.index(0, 0).data().toString(), QStringLiteral("Station"));
    EXPECT_EQ(row(0).data().toString(), QStringLiteral("Air Temperature"));
    EXPECT_EQ(row(0).siblingAtColumn(1).data().toString(), QStringLiteral("°C"));
}

TEST_F(PropertyListTest, DragCarriesTheKeysUnderTheAgentsIdentifier)
{
    const QModelIndexList wholeRows{row(0), row(0).siblingAtColumn(1), row(1), row(1).siblingAtColumn(1)};
    EXPECT_EQ(draggedKeys(wholeRows, *station), QStringList({"airTemperature", "pressure"}));
}

TEST_F(PropertyListTest, DragOfTwoAgentsKeepsTheirKeysApart)
{
    const auto other = site.document->addAgent(QStringLiteral("Cellar"));
    other->addProperty(QStringLiteral("Humidity"), QStringLiteral("%"));
    EXPECT_EQ(draggedKeys({row(1), row(0, 1)}, *station), QStringList({"pressure"}));
    EXPECT_EQ(draggedKeys({row(1), row(0, 1)}, *other), QStringList({"humidity"}));
}

TEST_F(PropertyListTest, PropertyNotOfferedIsNotListed)
{
    station->siteProperties()[0]->setVisible(false);
    PropertyListModel fresh(site.document);
    EXPECT_EQ(fresh.rowCount(fresh.index(0, 0)), 1);
}

TEST_F(PropertyListTest, TicksComeInTheDocumentsOrder)
{
    tick(row(1));
    tick(row(0));
    ASSERT_EQ(model.ticked().size(), 1U);
    EXPECT_EQ(model.ticked()[0].properties[0]->name(), QStringLiteral("Air Temperature"));
    EXPECT_EQ(model.ticked()[0].properties.size(), 2U);
}

TEST_F(PropertyListTest, TicksSurviveANewProperty)
{
    tick(row(1));
    station->addProperty(QStringLiteral("Wind"), QStringLiteral("m/s"));
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 3);
    EXPECT_EQ(row(1).data(Qt::CheckStateRole), Qt::Checked);
}

TEST_F(PropertyListTest, ChangedUnitRefreshesThePropertysRow)
{
    QModelIndex changed;
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                     [&](const QModelIndex& first) { changed = first; });
    station->siteProperties()[1]->setUnit(QStringLiteral("mbar"));
    EXPECT_EQ(changed, row(1));
    EXPECT_EQ(row(1).siblingAtColumn(1).data().toString(), station->siteProperties()[1]->unitSymbol());
}

TEST_F(PropertyListTest, SpaceTicksEverySelectedProperty)
{
    PropertyListView view;
    view.setPropertyListModel(&model);
    view.selectAll();
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(model.ticked().at(0).properties.size(), 2U);
}

TEST_F(PropertyListTest, UnitMenuOffersWhatTheUnitConvertsToAndChangesIt)
{
    PropertyListView view;
    view.setPropertyListModel(&model);
    const std::unique_ptr<QMenu> menu(view.makeMenuFor(station->siteProperties()[0]));
    const QList<QAction*> units = menu->actions().first()->menu()->actions();
    const auto named = [&](const QString& text) {
        return std::find_if(units.begin(), units.end(), [&](QAction* one) { return one->text() == text; });
    };
    ASSERT_NE(named("°C"), units.end());
    ASSERT_NE(named("°F"), units.end());
    EXPECT_TRUE((*named("°C"))->isChecked());
    EXPECT_EQ(named("hPa"), units.end());
    (*named("°F"))->trigger();
    EXPECT_EQ(station->siteProperties()[0]->unit(), QStringLiteral("°F"));
}

TEST_F(PropertyListTest, MenuOfAnAgentTicksAndUnticksAllItsProperties)
{
    PropertyListView view;
    view.setPropertyListModel(&model);
    const std::unique_ptr<QMenu> menu(view.makeMenuForAgent(model.index(0, 0)));
    menu->actions().at(0)->trigger();
    ASSERT_EQ(model.ticked().size(), 1U);
    EXPECT_EQ(model.ticked()[0].properties.size(), static_cast<std::size_t>(model.rowCount(model.index(0, 0))));
    menu->actions().at(1)->trigger();
    EXPECT_TRUE(model.ticked().empty());
}

TEST_F(PropertyListTest, RightClickOnAnAgentOpensItsMenu)
{
    PropertyListView view;
    view.setPropertyListModel(&model);
    view.show();
    const QPoint place = view.visualRect(model.index(0, 0)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, view.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(view.viewport(), &event);
    ASSERT_EQ(view.findChildren<QMenu*>().size(), 1);
    EXPECT_EQ(view.findChild<QMenu*>()->actions().first()->text(), QStringLiteral("&Tick All"));
}

class PropertyListMouseTest : public PropertyListTest {
protected:
    PropertyListMouseTest()
    {
        view.setPropertyListModel(&model);
        view.resize(300, 300);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
    }
    void doubleClick(int distanceFromLeft)
    {
        const QRect name = view.visualRect(row(0));
        const QPoint position(name.left() + distanceFromLeft, name.center().y());
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, position);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, position);
    }
    PropertyListView view;
};

TEST_F(PropertyListMouseTest, DoubleClickOnTheNameOpensTheColourPicker)
{
    doubleClick(80);
    ASSERT_EQ(view.findChildren<QColorDialog*>().size(), 1);
    view.findChildren<QColorDialog*>().first()->setCurrentColor(Qt::green);
    view.findChildren<QColorDialog*>().first()->accept();
    EXPECT_EQ(station->siteProperties()[0]->color(), QColor(Qt::green));
}

TEST_F(PropertyListMouseTest, DoubleClickOnTheTickBoxOnlyTicks)
{
    doubleClick(10);
    EXPECT_TRUE(view.findChildren<QColorDialog*>().isEmpty());
}

TEST_F(PropertyListTest, PropertyWithoutUnitHasAGreyedUnitMenu)
{
    const auto count = station->addProperty(QStringLiteral("Count"), {});
    PropertyListView view;
    view.setPropertyListModel(&model);
    const std::unique_ptr<QMenu> menu(view.makeMenuFor(count));
    EXPECT_FALSE(menu->actions().first()->isEnabled());
}

}  // namespace
