#include "hostapp/window/SiteWindow.h"

#include "hostapp/document/ArchiveManager.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/EmptyStateView.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/importing/ImportDialog.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QDropEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>

using plotix::Date;
using plotix::SiteWindow;

namespace {

class SiteWindowTest : public testing::Test {
protected:
    SiteWindowTest() : station(site.addStation()) {}
    void TearDown() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void openWindow() { window = std::make_unique<SiteWindow>(site.document, services()); }
    plotix::WindowServices services() { return {&module, &desktop, &help}; }
    void reopen()
    {
        window->close();
        window.reset();
        station.reset();
        site.reopen();
        openWindow();
    }
    KTVPlugInPtr addTrend(const QString& title)
    {
        return window->controller().newTrend(site.document->agents()[0], {}, Date{0}, Date{10}, title);
    }
    StubTrend& selectedStub() { return dynamic_cast<StubTrend&>(*window->selectedPlugIn()); }
    void tick(int property)
    {
        auto& list = window->propertyList();
        list.setData(list.index(property, 0, list.index(0, 0)), Qt::Checked, Qt::CheckStateRole);
    }
    QMessageBox* shownBox()
    {
        const auto boxes = window->findChildren<QMessageBox*>();
        return boxes.isEmpty() ? nullptr : boxes.last();
    }

    ScratchSite site;
    StubModule module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
    std::shared_ptr<plotix::SiteAgent> station;
    std::unique_ptr<SiteWindow> window;
};

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

TEST_F(SiteWindowTest, AnExportBeforeTheFirstAnswerSaysThatThereIsNoPicture)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().exportPNG->trigger();
    EXPECT_EQ(selectedStub().log(), QStringList{"exportToPNG"});
    selectedStub().loseGraph();
    window->actions().exportPNG->trigger();
    EXPECT_EQ(selectedStub().log().size(), 1);
    ASSERT_NE(shownBox(), nullptr);
    EXPECT_EQ(shownBox()->text(), QStringLiteral("There is no picture to export"));
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

class SiteWindowDropTest : public SiteWindowTest {
protected:
    bool enter(const QString& file)
    {
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(window.get(), &event);
        return event.isAccepted();
    }
    void drop()
    {
        QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
    }
    QMimeData data;
};

TEST_F(SiteWindowDropTest, TakesOneFileAndNoFolder)
{
    openWindow();
    EXPECT_TRUE(enter(site.path()));
    EXPECT_FALSE(enter(QFileInfo(site.path()).path()));
    EXPECT_FALSE(enter(QStringLiteral("/nowhere/at-all.csv")));
}

TEST_F(SiteWindowDropTest, DroppedSiteIsOpened)
{
    openWindow();
    QSignalSpy opened(window.get(), &SiteWindow::openSiteRequested);
    ASSERT_TRUE(enter(site.path()));
    drop();
    ASSERT_TRUE(opened.wait(5'000));
    EXPECT_EQ(opened[0][0].toString(), site.path());
}

TEST_F(SiteWindowDropTest, ADroppedFigureIsShownInTheWindowOfItsSite)
{
    openWindow();
    plotix::ShownView view;
    view.siteFile = "other.plotix";
    view.agent = "Boiler";
    QFile figure(site.file(QStringLiteral("figure.svg")));
    ASSERT_TRUE(figure.open(QIODevice::WriteOnly));
    figure.write(plotix::withRecipe(plotix::FileKind::Svg, "<?xml version=\"1.0\"?><svg><defs></defs></svg>",
                                    plotix::recipeOf(view)));
    figure.close();
    QSignalSpy asked(window.get(), &SiteWindow::openViewRequested);
    ASSERT_TRUE(enter(figure.fileName()));
    drop();
    ASSERT_TRUE(asked.wait(5'000));
    EXPECT_EQ(asked[0][0].value<plotix::ShownView>(), view);
    EXPECT_EQ(asked[0][1].toString(), QFileInfo(figure).absolutePath());
}

TEST_F(SiteWindowTest, ALinkToTheTrendInFrontGoesIntoTheClipboard)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().copyLink->trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QStringLiteral("plotix:garden.plotix?trend=Week&agent=")));
}

TEST_F(SiteWindowTest, ALinkToTheMarkedStretchNamesItsSpan)
{
    openWindow();
    const KTVPlugInPtr trend = addTrend(QStringLiteral("Week"));
    static_cast<StubTrend&>(*trend).setReading(
        {{"marks", QVariantMap{{"a", 1'400'000'060.0}, {"b", 1'400'000'000.0}}}});
    window->actions().copyMarkedLink->trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith(
        QStringLiteral("&from=2014-05-13T16:53:20.000Z&to=2014-05-13T16:54:20.000Z")))
        << QApplication::clipboard()->text().toStdString();
}

TEST_F(SiteWindowTest, APictureOfTheTrendInFrontGoesIntoTheClipboard)
{
    openWindow();
    addTrend(QStringLiteral("Week"));
    window->actions().copyPicture->trigger();
    EXPECT_EQ(QApplication::clipboard()->image().size(), plotix::kUsualGraphSize * 2);
}

TEST_F(SiteWindowDropTest, SeveralFilesAreImportedOneAfterTheOther)
{
    openWindow();
    QList<QUrl> urls;
    for (const QString& name : {QStringLiteral("cellar"), QStringLiteral("attic")}) {
        QFile file(site.file(name + QStringLiteral(".csv")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("time,Humidity (%)\n2024-05-01T00:00:00Z,40\n2024-05-02T00:00:00Z,41\n");
        urls << QUrl::fromLocalFile(file.fileName());
    }
    ASSERT_TRUE(enter(urls.first().toLocalFile()));
    data.setUrls(urls);
    QSignalSpy ended(window.get(), &SiteWindow::importEnded);
    QStringList titles;
    QTimer acceptsDialogs;
    QObject::connect(&acceptsDialogs, &QTimer::timeout, &acceptsDialogs, [&] {
        if (auto* dialog = qobject_cast<plotix::ImportDialog*>(QApplication::activeModalWidget())) {
            titles << dialog->windowTitle();
            dialog->accept();
        } else if (shownBox() && shownBox()->isVisible()) {
            // Queued: the next file's dialog opens within, and this timer rests while its own slot runs.
            QMetaObject::invokeMethod(shownBox(), &QDialog::accept, Qt::QueuedConnection);
        }
    });
    acceptsDialogs.start(10);
    drop();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ended.size() == 2; }, 20'000));
    EXPECT_TRUE(site.document->agentNamed(QStringLiteral("cellar")));
    EXPECT_TRUE(site.document->agentNamed(QStringLiteral("attic")));
    EXPECT_EQ(titles, (QStringList{"Import Measurements (1 more to come)", "Import Measurements"}));
}

TEST_F(SiteWindowDropTest, CancellingOneImportLeavesTheRest)
{
    openWindow();
    QTimer::singleShot(50, [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
    window->askAndImportAll({QStringLiteral("/nowhere/a.csv"), QStringLiteral("/nowhere/b.csv")});
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
    QTest::qWait(50);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(SiteWindowDropTest, AFileCanBeSkipped)
{
    openWindow();
    QStringList asked;
    QTimer skips;
    QObject::connect(&skips, &QTimer::timeout, &skips, [&] {
        if (auto* dialog = qobject_cast<plotix::ImportDialog*>(QApplication::activeModalWidget())) {
            asked << dialog->file();
            dialog->done(plotix::ImportDialog::kSkipped);
        }
    });
    skips.start(10);
    window->askAndImportAll({QStringLiteral("/nowhere/a.csv"), QStringLiteral("/nowhere/b.csv")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return asked.size() == 2 && !QApplication::activeModalWidget(); }));
    EXPECT_EQ(asked, (QStringList{"/nowhere/a.csv", "/nowhere/b.csv"}));
}

class SiteWindowImportTest : public SiteWindowTest {
protected:
    QString write(const QByteArray& text)
    {
        const QString path = site.file(QStringLiteral("cellar.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }
    bool import(const QByteArray& text)
    {
        openWindow();
        QSignalSpy ended(window.get(), &SiteWindow::importEnded);
        plotix::ImportOptions options;
        options.timeZone = QStringLiteral("UTC");
        window->startImport(write(text), options);
        EXPECT_FALSE(window->actions().import->isEnabled());
        EXPECT_TRUE(ended.wait(20'000));
        return ended.value(0).value(0).toBool();
    }
};

TEST_F(SiteWindowImportTest, NewAgentGetsItsFirstTrendOverTheDatasRange)
{
    EXPECT_TRUE(import("time,Humidity (%)\n2024-05-01T00:00:00Z,40\n2024-05-02T00:00:00Z,41\n"));
    ASSERT_TRUE(site.document->agentNamed(QStringLiteral("cellar")));
    ASSERT_TRUE(window->selectedPlugIn());
    EXPECT_EQ(window->selectedPlugIn()->title(), QStringLiteral("cellar"));
    EXPECT_EQ(selectedStub().arguments().fromDate->seconds, 1714521600);
    EXPECT_EQ(selectedStub().arguments().toDate->seconds, 1714608000);
    EXPECT_EQ(window->propertyList().rowCount(), 2);
    EXPECT_TRUE(window->actions().import->isEnabled());
}

TEST_F(SiteWindowImportTest, FileThatDoesNotParseIsToldAndStoresNothing)
{
    EXPECT_FALSE(import("time,Humidity (%)\n2024-05-01T00:00:00Z,40\nno time at all,41\nnor here,42\n"));
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }));
    auto* dialog = qobject_cast<plotix::ImportDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(
        dialog->findChild<QLabel*>(QStringLiteral("problem"))->text().contains(QStringLiteral("looks like times")));
    EXPECT_EQ(dialog->options().timeZone, QStringLiteral("UTC"));
    EXPECT_EQ(site.document->agentNamed(QStringLiteral("cellar")), nullptr);
    EXPECT_FALSE(window->selectedPlugIn());
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
