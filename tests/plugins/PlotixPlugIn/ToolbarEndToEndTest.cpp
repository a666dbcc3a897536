#include "ToolbarFixture.h"

#include "base/MainQueue.h"

#include <QtTest/QTest>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <thread>

// From the button in a window's toolbar through the sheet to the trend, as a user goes; and which thread a page and its
// pictures are made on.

namespace {

class ToolbarEndToEnd : public ToolbarFixture {
protected:
    void clickTheToolbarsButton()
    {
        auto* bar = new QToolBar(window().window());
        QAction* item = toolbar->toolbarItem();
        item->setParent(bar);
        bar->addAction(item);
        window().window()->show();
        QTest::mouseClick(bar->widgetForAction(item), Qt::LeftButton);
        ASSERT_NE(toolbar->configurationWindow(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet()));
    }
    void clickTickBox(int row)
    {
        QTableView& table = *toolbar->propertyTable();
        const QRect cell = table.visualRect(table.model()->index(row, 0));
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, {cell.left() + 10, cell.center().y()});
    }
    void clickButton(const char* name)
    {
        QTest::mouseClick(control<QPushButton>(name), Qt::LeftButton);
        drain();
    }
    /// Runs `work` on a server's thread, and the event loop here until it is done.
    template <class Work>
    static void onServerThread(Work work)
    {
        bool isDone = false;
        std::thread server([&] {
            work();
            plotix::MainQueue::main().async([&isDone] { isDone = true; });
        });
        while (!isDone)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        server.join();
    }
};

TEST_F(ToolbarEndToEnd, ButtonTicksTitleAndDoneMakeATrendThatFetches)
{
    clickTheToolbarsButton();
    clickTickBox(2);
    clickTickBox(0);
    toolbar->titleField()->selectAll();
    QTest::keyClicks(toolbar->titleField(), "Week");
    clickButton("doneButton");
    ASSERT_EQ(trendCount(), 1U);
    EXPECT_FALSE(sheet().isVisible());
    EXPECT_EQ(trend().title(), "Week");
    EXPECT_EQ(trend().properties(), KTVPropertyList({property("airTemperature"), property("wind")}));
    trend().view();
    EXPECT_EQ(host.archiveManager().lastFetch().properties, trend().properties());
    EXPECT_EQ(host.archiveManager().lastFetch().fromDate, dates().fromDateValue());
}

TEST_F(ToolbarEndToEnd, CancelMakesNothing)
{
    clickTheToolbarsButton();
    clickTickBox(1);
    clickButton("cancelButton");
    EXPECT_EQ(trendCount(), 0U);
    EXPECT_FALSE(sheet().isVisible());
}

TEST_F(ToolbarEndToEnd, RowsAreBroughtUpToDateInTheNewWindow)
{
    showSheet();
    cancel();
    host.addProperty("Rain", "mm");
    QDialog* windowOfTheNewRow = nullptr;
    const auto connection = QObject::connect(toolbar->selectablePropertiesArrayController()->changes(),
                                             &KTVArrayControllerSignals::arrangedObjectsChanged, toolbar.get(),
                                             [&] { windowOfTheNewRow = toolbar->configurationWindow(); });
    showSheet();
    QObject::disconnect(connection);
    EXPECT_EQ(rows().last(), "Rain");
    EXPECT_EQ(windowOfTheNewRow, &sheet());
}

/// An archive that has lost one key.
class ToolbarArchiveWithout : public ToolbarFixture, public testing::WithParamInterface<const char*> {};

TEST_P(ToolbarArchiveWithout, KeepsEveryOtherKeyAndTakesItsFallback)
{
    fakehost::FakeArchive archive = archived();
    archive.setValue("lastUsedTitle", "Weather");
    archive.setValue("openInSeparateWindow", true);
    const QString missing = GetParam();
    archive.remove(missing);
    const auto copy = decoded(archive);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->desiredTitle(), missing == "lastUsedTitle" ? "" : "Weather");
    EXPECT_EQ(copy->openInSeparateWindow(), missing != "openInSeparateWindow");
    EXPECT_NE(copy->dataClusterViewController(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(OneKey, ToolbarArchiveWithout,
                         testing::Values("dataClusterViewController", "lastUsedTitle", "openInSeparateWindow"),
                         [](const auto& key) { return std::string(key.param); });

// Threads.

/// Keeps the thread it was last asked on for what it shows.
class WatchedWindow : public fakehost::FakeWindowController {
public:
    using FakeWindowController::FakeWindowController;
    std::shared_ptr<KTVPlugIn> contentViewController() const override
    {
        askedOn = std::this_thread::get_id();
        return FakeWindowController::contentViewController();
    }
    mutable std::thread::id askedOn;
};

/// Keeps the thread it was last painted on.
class WatchedWidget : public QWidget {
public:
    using QWidget::QWidget;
    std::thread::id paintedOn;

protected:
    void paintEvent(QPaintEvent*) override { paintedOn = std::this_thread::get_id(); }
};

TEST_F(ToolbarEndToEnd, PageAskedForByTheServerIsMadeOnTheMainThread)
{
    makeTrend({0});
    const auto watched = std::make_shared<WatchedWindow>(window().items().at(0)->representedObject());
    window().fakeDocument().addWindowController(watched);
    std::optional<QString> page;
    onServerThread([&] { page = toolbar->webServiceAdvertisementForBaseURL("http://host"); });
    EXPECT_EQ(page->count(trend().uniqueIdentifier()), 2);
    EXPECT_EQ(watched->askedOn, std::this_thread::get_id());
}

TEST_F(ToolbarEndToEnd, PicturesAskedForByTheServerArePaintedOnTheMainThread)
{
    makeTrend({0});
    auto* watched = new WatchedWidget(trend().view());
    watched->resize(20, 20);
    for (const char* extension : {".png", ".pdf"}) {
        watched->paintedOn = {};
        const QUrl url("http://host/" + trend().uniqueIdentifier() + extension);
        onServerThread([&] { EXPECT_NE(toolbar->webServiceResponseForRequest({url}), nullptr); });
        EXPECT_EQ(watched->paintedOn, std::this_thread::get_id()) << extension;
    }
}

}  // namespace
