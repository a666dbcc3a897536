#include "plugins/PlotixPlugIn/host/KTVDragData.h"
#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtCore/QMimeData>

namespace {

class PropertySetTest : public PropertyTableFixture {
protected:
    void remove(const QStringList& names) { EXPECT_TRUE(trend->removePropertiesAndRefresh(names)); }
    /// What the toolkit does for a drag over the view and its release there.
    void drop(const QByteArray& data, const QString& type)
    {
        QMimeData mimeData;
        mimeData.setData(type, data);
        QDragEnterEvent enter({100, 100}, Qt::CopyAction, &mimeData, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(trend->dragDropView(), &enter);
        if (!enter.isAccepted())
            return;
        QDropEvent drop({100, 100}, Qt::CopyAction, &mimeData, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(trend->dragDropView(), &drop);
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    }
    void drop(const QStringList& keys) { drop(dragDataFromPropertyNames(keys), host.agent()->uniqueIdentifier()); }
    bool acceptsDragOf(const QString& type)
    {
        QMimeData mimeData;
        mimeData.setData(type, dragDataFromPropertyNames({"pressure"}));
        QDragEnterEvent enter({100, 100}, Qt::CopyAction | Qt::MoveAction, &mimeData, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(trend->dragDropView(), &enter);
        QDragMoveEvent move({120, 100}, Qt::CopyAction | Qt::MoveAction, &mimeData, Qt::LeftButton, Qt::NoModifier);
        move.ignore();
        QApplication::sendEvent(trend->dragDropView(), &move);
        EXPECT_EQ(enter.isAccepted(), move.isAccepted());
        if (enter.isAccepted()) {
            EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        }
        return enter.isAccepted();
    }
};

TEST_F(PropertySetTest, ADroppedPropertyIsAppendedObservedAndFetched)
{
    open({"airTemperature"});
    drop(QStringList{"pressure"});
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure"}));
    EXPECT_EQ(pressure->observationCount(), 2U);
    EXPECT_EQ(fetchCount(), 2U);
    EXPECT_EQ(host.archiveManager().lastFetch().properties->size(), 2U);
}

TEST_F(PropertySetTest, RowsOfAddedPropertiesAppearWhenTheirRecordsArrive)
{
    openAndDeliver({"airTemperature"});
    drop(QStringList{"pressure"});
    EXPECT_EQ(rowNames(), QStringList("Air Temperature"));
    deliver(twoRows({"airTemperature", "pressure"}));
    EXPECT_EQ(rowNames(), (QStringList{"Air Temperature", "Pressure"}));
}

TEST_F(PropertySetTest, PlottedKeysAddNothingAndFetchNothing)
{
    open({"airTemperature", "pressure"});
    drop(QStringList{"pressure", "airTemperature"});
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure"}));
    EXPECT_EQ(fetchCount(), 1U);
    EXPECT_EQ(pressure->observationCount(), 2U);
}

TEST_F(PropertySetTest, OneNewKeyAmongThreeIsAddedAndFetchedOnce)
{
    open({"airTemperature", "pressure"});
    drop(QStringList{"pressure", "windSpeed", "airTemperature"});
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure", "windSpeed"}));
    EXPECT_EQ(fetchCount(), 2U);
}

TEST_F(PropertySetTest, AKeyNamedTwiceIsAddedOnce)
{
    open({"airTemperature"});
    drop(QStringList{"pressure", "pressure"});
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure"}));
}

TEST_F(PropertySetTest, AKeyTheAgentDoesNotHaveIsSkipped)
{
    open({"airTemperature"});
    drop(QStringList{"nothing"});
    EXPECT_EQ(fetchCount(), 1U);
    drop(QStringList{"nothing", "pressure"});
    EXPECT_EQ(propertyKeys(), (QStringList{"airTemperature", "pressure"}));
    EXPECT_EQ(fetchCount(), 2U);
}

TEST_F(PropertySetTest, AddingToAViewWithoutAListMakesOne)
{
    openWithoutTables();
    ASSERT_FALSE(trend->properties().has_value());
    trend->addProperties({"nothing"});
    EXPECT_FALSE(trend->properties().has_value());
    trend->addProperties({"pressure"});
    EXPECT_EQ(propertyKeys(), QStringList("pressure"));
}

TEST_F(PropertySetTest, DragDataIsAcceptedUnderTheAgentsTypeOnly)
{
    open({"airTemperature"});
    EXPECT_EQ(trend->dragType(), host.agent()->uniqueIdentifier());
    EXPECT_TRUE(acceptsDragOf(host.agent()->uniqueIdentifier()));
    EXPECT_FALSE(acceptsDragOf("another-agent"));
    drop(dragDataFromPropertyNames({"pressure"}), "another-agent");
    EXPECT_EQ(propertyKeys(), QStringList("airTemperature"));
}

TEST_F(PropertySetTest, UnreadableDragDataAddsNothing)
{
    open({"airTemperature"});
    drop("not drag data at all", host.agent()->uniqueIdentifier());
    drop(QByteArray(), host.agent()->uniqueIdentifier());
    EXPECT_EQ(propertyKeys(), QStringList("airTemperature"));
    EXPECT_EQ(fetchCount(), 1U);
}

TEST_F(PropertySetTest, ADropViewWhoseDelegateHasGoneTakesNothing)
{
    PropertyDragDropView view;
    EXPECT_FALSE(view.acceptDrops());
    open({});
    view.setDelegate(trend.get());
    EXPECT_TRUE(view.acceptDrops());
    trend.reset();
    EXPECT_EQ(view.delegate(), nullptr);
    QMimeData mimeData;
    view.concludeDragOperation(&mimeData);
    EXPECT_TRUE(view.performDragOperation(&mimeData));
    EXPECT_EQ(view.draggingEntered(&mimeData), Qt::CopyAction);
    EXPECT_EQ(view.draggingUpdated(&mimeData), Qt::CopyAction);
}

TEST_F(PropertySetTest, TheTrendViewItselfAllowsEveryDragOperation)
{
    open({});
    EXPECT_EQ(trend->draggingEntered(nullptr), ~quint64{0});
}

TEST_F(PropertySetTest, RemovingTakesPropertyPlotAndRow)
{
    openAndDeliver({"airTemperature", "pressure"});
    remove({"Air Temperature"});
    EXPECT_EQ(propertyKeys(), QStringList("pressure"));
    EXPECT_EQ(plotKeys(), QStringList("pressure"));
    EXPECT_EQ(rowNames(), QStringList("Pressure"));
}

// Despite its name it fetches nothing and rebuilds nothing; the rest of the view stays as it is.
TEST_F(PropertySetTest, RemovingFetchesNothingAndLeavesPlotDataAndBinders)
{
    openAndDeliver({"airTemperature", "pressure"});
    const auto plotData = trend->plotData();
    const auto kept = plot("pressure");
    remove({"Air Temperature"});
    EXPECT_EQ(fetchCount(), 1U);
    EXPECT_EQ(trend->plotData(), plotData);
    EXPECT_EQ(plot("pressure"), kept);
    EXPECT_TRUE(trend->binders()->contains("airTemperature"));
}

TEST_F(PropertySetTest, RemovingGoesByDisplayNameNotByKey)
{
    openAndDeliver({"airTemperature"});
    remove({"airTemperature"});
    EXPECT_EQ(propertyKeys(), QStringList("airTemperature"));
}

TEST_F(PropertySetTest, RemovingAnUnknownNameGoesOnWithTheNext)
{
    openAndDeliver({"airTemperature", "pressure"});
    remove({"Nothing", "Pressure"});
    EXPECT_EQ(propertyKeys(), QStringList("airTemperature"));
}

TEST_F(PropertySetTest, RemovingFromAViewWithoutAListIsHarmless)
{
    openWithoutTables();
    remove({"Air Temperature"});
    EXPECT_FALSE(trend->properties().has_value());
}

TEST_F(PropertySetTest, RemovingStopsObservingTheUnitOnly)
{
    openAndDeliver({"airTemperature"});
    host.log().clear();
    remove({"Air Temperature"});
    EXPECT_EQ(host.log().count("airTemperature.removeObserver"), 1);
    EXPECT_TRUE(host.log().contains("airTemperature.removeObserver unit"));
    EXPECT_EQ(airTemperature->observationCount(), 1U);
}

TEST_F(PropertySetTest, AColourChangeOfARemovedPropertyStillArrivesAndFindsNothing)
{
    openAndDeliver({"airTemperature", "pressure"});
    remove({"Air Temperature"});
    airTemperature->setColor(Qt::yellow);
    EXPECT_EQ(rowNames(), QStringList("Pressure"));
    EXPECT_EQ(row(0).color, QColor(Qt::blue));
}

TEST_F(PropertySetTest, ALaterUnitChangeBringsTheRemovedPlotBack)
{
    openAndDeliver({"airTemperature", "pressure"});
    remove({"Air Temperature"});
    pressure->setUnit("Pa");
    EXPECT_EQ(plotKeys(), (QStringList{"airTemperature", "pressure"}));
    EXPECT_EQ(rowNames(), QStringList("Pressure"));
    EXPECT_EQ(fetchCount(), 1U);
}

TEST_F(PropertySetTest, OnlyTheFirstRowOfARemovedNameGoes)
{
    openAndDeliver({"airTemperature"});
    controller().addObject(std::make_shared<InfoTableRow>(row(0)));
    remove({"Air Temperature"});
    EXPECT_EQ(rowNames(), QStringList("Air Temperature"));
}

TEST_F(PropertySetTest, MarkingListsTheDisplayedNamesInAscendingOrder)
{
    openAndDeliver({"airTemperature", "pressure", "windSpeed"});
    trend->infoTable()->sortByColumn(2, Qt::DescendingOrder);
    trend->markDeletedRows({2, 0});
    EXPECT_EQ(trend->deletionArray(), (QStringList{"Wind Speed", "Air Temperature"}));
    trend->markDeletedRows({});
    EXPECT_EQ(trend->deletionArray(), QStringList());
}

TEST_F(PropertySetTest, MarkingPastTheLastRowIsIgnored)
{
    openAndDeliver({"airTemperature"});
    trend->markDeletedRows({0, 7});
    EXPECT_EQ(trend->deletionArray(), QStringList("Air Temperature"));
}

TEST_F(PropertySetTest, DeleteInTheTableRemovesTheSelectedProperties)
{
    openAndDeliver({"airTemperature", "pressure", "windSpeed"});
    controller().setSelectionIndexes({0, 2});
    const auto kept = plot("pressure");
    QTest::keyClick(trend->infoTable(), Qt::Key_Delete);
    EXPECT_EQ(trend->deletionArray(), (QStringList{"Air Temperature", "Wind Speed"}));
    EXPECT_EQ(propertyKeys(), QStringList("pressure"));
    EXPECT_EQ(rowNames(), QStringList("Pressure"));
    EXPECT_EQ(trend->graph()->allPlots(), std::vector{kept});
    EXPECT_EQ(fetchCount(), 1U);
}

TEST_F(PropertySetTest, TheMenusRemoveRemovesAllSelectedProperties)
{
    openAndDeliver({"airTemperature", "pressure", "windSpeed"});
    controller().setSelectionIndexes({1, 2});
    trend->infoTable()->menuForEvent(nullptr)->actions()[0]->trigger();
    EXPECT_EQ(propertyKeys(), QStringList("airTemperature"));
}

TEST_F(PropertySetTest, DeletingEverythingLeavesAnEmptyList)
{
    openAndDeliver({"airTemperature"});
    trend->infoTable()->selectAll();
    QTest::keyClick(trend->infoTable(), Qt::Key_Backspace);
    ASSERT_TRUE(trend->properties().has_value());
    EXPECT_TRUE(trend->properties()->empty());
    EXPECT_TRUE(trend->infoTableArray()->empty());
}

}  // namespace
