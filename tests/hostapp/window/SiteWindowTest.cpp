#include "hostapp/window/SiteWindow.h"

#include "hostapp/document/ArchiveManager.h"
#include "hostapp/window/EmptyStateView.h"
#include "tests/hostapp/window/SiteWindowFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>

using plotix::Date;
using plotix::SiteWindow;

namespace {

using SiteWindowTest = SiteWindowFixture;

TEST_F(SiteWindowTest, SiteWithoutMeasurementsOffersToImport)
{
    ScratchSite empty;
    SiteWindow fresh(empty.document, services());
    EXPECT_EQ(fresh.emptyState()->title(), QStringLiteral("This site has no measurements yet"));
    EXPECT_EQ(fresh.emptyState()->findChildren<QPushButton*>().size(), 1);
}

TEST_F(SiteWindowTest, NewTrendButtonOfTheEmptyStateShowsEveryProperty)
{
    openWindow();
    EXPECT_EQ(window->emptyState()->title(), QStringLiteral("This site has no trend yet"));
    window->emptyState()->findChildren<QPushButton*>().first()->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->selectedPlugIn() != nullptr; }));
    EXPECT_EQ(selectedStub().arguments().tables->size(), 2U);
}

TEST_F(SiteWindowTest, NewTrendIsMadeOfTheTickedPropertiesSelectedAndStored)
{
    site.store(*station, {1.0e9, 1.0e9 + 60});
    openWindow();
    EXPECT_FALSE(window->actions().newTrend->isEnabled());
    tick(1);
    window->actions().newTrend->trigger();
    ASSERT_TRUE(window->selectedPlugIn());
    EXPECT_EQ(window->selectedPlugIn()->title(), QStringLiteral("Pressure"));
    EXPECT_GE(selectedStub().arguments().toDate->seconds, 1.0e9 + 60);
    EXPECT_EQ(site.document->archivedPlugIns().size(), 1U);
    EXPECT_TRUE(window->propertyList().ticked().empty());
}

TEST_F(SiteWindowTest, TrendsAndTheSelectedOneComeBack)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    addTrend(QStringLiteral("Month"));
    addTrend(QStringLiteral("Year"));
    window->selectPlugIn(window->controller().sourceList().plugInAt(1));
    reopen();
    EXPECT_EQ(window->controller().sourceList().rowCount(), 3);
    EXPECT_EQ(window->selectedPlugIn()->title(), QStringLiteral("Month"));
}

TEST_F(SiteWindowTest, ViewsOfTrendsNotLookedAtAreNotLoaded)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    addTrend(QStringLiteral("Month"));
    reopen();
    EXPECT_TRUE(window->controller().sourceList().plugInAt(1)->isViewLoaded());
    EXPECT_FALSE(window->controller().sourceList().plugInAt(0)->isViewLoaded());
}

TEST_F(SiteWindowTest, RenamingIsStoredAtOnce)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    auto& list = window->controller().sourceList();
    list.setData(list.index(0), QStringLiteral("Seven Days"), Qt::EditRole);
    const auto other = plotix::SiteDocument::open(site.path());
    plotix::PlugInStore store(other, &module);
    EXPECT_EQ(store.load(nullptr).at(0)->title(), QStringLiteral("Seven Days"));
}

TEST_F(SiteWindowTest, DeletingTakesTheTrendOutOfTheSite)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().deleteTrend->trigger();
    EXPECT_TRUE(site.document->archivedPlugIns().empty());
    EXPECT_EQ(window->emptyState()->title(), QStringLiteral("This site has no trend yet"));
}

TEST_F(SiteWindowTest, DeletingTheSelectedTrendShowsANeighbour)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    const KTVPlugInPtr month = addTrend(QStringLiteral("Month"));
    window->controller().removePlugIn(month);
    ASSERT_TRUE(window->selectedPlugIn());
    EXPECT_EQ(window->selectedPlugIn()->title(), QStringLiteral("Week"));
}

TEST_F(SiteWindowTest, MenusReachTheSelectedTrendByName)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().refresh->trigger();
    window->actions().fit->trigger();
    EXPECT_EQ(selectedStub().log(), QStringList({"refresh", "fitAll"}));
}

TEST_F(SiteWindowTest, ATrendsViewCarriesTheCommandsForItsOwnMenus)
{
    openWindow();
    const KTVPlugInPtr trend = addTrend(QStringLiteral("Week"));
    EXPECT_EQ(trend->view()->actions().first(), window->actions().refresh);
    addTrend(QStringLiteral("Month"));
    window->selectPlugIn(trend);
    EXPECT_EQ(trend->view()->actions().count(window->actions().refresh), 1);
}

TEST_F(SiteWindowTest, ActionsThatCannotActAreGreyedWithAReason)
{
    openWindow();
    EXPECT_FALSE(window->actions().refresh->isEnabled());
    EXPECT_EQ(window->actions().refresh->toolTip(), QStringLiteral("Select a trend first."));
    addTrend(QStringLiteral("Week"));
    EXPECT_TRUE(window->actions().refresh->isEnabled());
    EXPECT_FALSE(window->actions().exportPDF->isEnabled());  // the stub has no such operation
    EXPECT_EQ(window->actions().exportPDF->toolTip(), QStringLiteral("This view cannot do that."));
}

TEST_F(SiteWindowTest, ZoomTogglesHoldOneKeyAtATime)
{
    openWindow();
    window->actions().zoomTimeOnly->trigger();
    EXPECT_EQ(desktop.heldModifiers(window.get()), Qt::AltModifier);
    window->actions().zoomValuesOnly->trigger();
    EXPECT_EQ(desktop.heldModifiers(window.get()), Qt::ShiftModifier);
    window->actions().zoomValuesOnly->trigger();
    EXPECT_EQ(desktop.heldModifiers(window.get()), Qt::NoModifier);
}

TEST_F(SiteWindowTest, ZoomTogglesCountInTheSitesOwnWindowsAlone)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().zoomTimeOnly->trigger();
    window->actions().openInWindow->trigger();
    const QWidget* separate = site.document->windowControllers().at(0)->window();
    EXPECT_EQ(desktop.heldModifiers(separate), Qt::AltModifier);
    ScratchSite elsewhere;
    const SiteWindow other(elsewhere.document, services());
    EXPECT_EQ(desktop.heldModifiers(&other), Qt::NoModifier);
}

TEST_F(SiteWindowTest, SeparateWindowTakesTheViewAndGivesItBack)
{
    openWindow();
    const KTVPlugInPtr trend = addTrend(QStringLiteral("Week"));
    window->actions().openInWindow->trigger();
    ASSERT_EQ(site.document->windowControllers().size(), 1U);
    EXPECT_EQ(site.document->windowControllers()[0]->contentViewController(), trend);
    EXPECT_NE(trend->view()->window(), window.get());
    site.document->windowControllers()[0]->window()->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return site.document->windowControllers().empty(); }));
    EXPECT_EQ(trend->view()->window(), window.get());
}

TEST_F(SiteWindowTest, ItemsAreFoundByClassAndByObject)
{
    openWindow();
    const KTVPlugInPtr trend = addTrend(QStringLiteral("Week"));
    auto& controller = window->controller();
    EXPECT_EQ(controller.itemsWithRepresentedObjectsOfClass(QStringLiteral("StubTrend")).size(), 1U);
    EXPECT_EQ(controller.itemsWithRepresentedObjectsOfClass(QStringLiteral("KTVPlugIn")).size(), 1U);
    EXPECT_TRUE(controller.itemsWithRepresentedObjectsOfClass(QStringLiteral("Other")).empty());
    EXPECT_EQ(controller.findSourceListItemWithRepresentedObject(trend.get())->title(), QStringLiteral("Week"));
    EXPECT_EQ(controller.findSourceListItemWithRepresentedObject(nullptr), nullptr);
    EXPECT_EQ(site.document->agents()[0]->siteWindowController(), &controller);
}

TEST_F(SiteWindowTest, WhyRecordsAreUnreadableIsSaidWithoutASecondAlert)
{
    openWindow();
    emit site.document->recordsNotRead(QStringLiteral("damaged"), plotix::RecordFailure::Unreadable);
    EXPECT_EQ(shownBox(), nullptr);
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("damaged"));
}

TEST_F(SiteWindowTest, ATitleIsShownAsItIs)
{
    openWindow();
    const KTVPlugInPtr trend = addTrend(QStringLiteral("<b>Week</b> & <i>more</i>"));
    window->actions().openInWindow->trigger();
    EXPECT_EQ(window->emptyState()->title(), QStringLiteral("<b>Week</b> & <i>more</i>"));
    for (const QLabel* label : window->emptyState()->findChildren<QLabel*>())
        EXPECT_TRUE(!label->text().contains(u'<') || label->textFormat() == Qt::PlainText);
}

TEST_F(SiteWindowTest, ANewTrendSuitsTheLookOfItsWindow)
{
    const QPalette before = QApplication::palette();
    openWindow();
    QApplication::setPalette(QPalette(Qt::white));
    addTrend(QStringLiteral("light"));
    EXPECT_EQ(selectedStub().reading().value("looks").toMap().value("look"), "light");
    QApplication::setPalette(QPalette(QColor(40, 40, 40)));
    addTrend(QStringLiteral("dark"));
    EXPECT_FALSE(selectedStub().reading().value("looks").toMap().contains("look"));
    QApplication::setPalette(before);
}

TEST_F(SiteWindowTest, RecordsThatCannotBeShownAreToldOnce)
{
    openWindow();
    for (int i = 0; i < 3; ++i)
        emit site.document->recordsNotRead(QStringLiteral("too many"), plotix::RecordFailure::TooMany);
    ASSERT_EQ(window->findChildren<QMessageBox*>().size(), 1);
    EXPECT_EQ(shownBox()->text(), QStringLiteral("The records could not be shown"));
    EXPECT_EQ(shownBox()->informativeText(), QStringLiteral("too many"));
}

}  // namespace
