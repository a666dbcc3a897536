#include "hostapp/app/WindowWebServing.h"

#include "base/MainQueue.h"
#include "hostapp/app/Composition.h"
#include "hostapp/app/ProgramServices.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/site/HeadlessSite.h"
#include "hostapp/site/PlugInWebSite.h"
#include "hostapp/site/WaitForRecords.h"
#include "hostapp/window/SiteWindowController.h"
#include "tests/hostapp/web/RawClient.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using plotix::Answer;
using plotix::Composition;
using plotix::Date;
using plotix::MainQueue;

namespace {

constexpr double kStart = 1'700'000'000;

/// Served sites with the real module: a day of records and one archived trend view, asked over loopback.
class ServedTrendTest : public testing::Test {
protected:
    ServedTrendTest() : composition(Composition::Audience::Nobody), station(site.addStation())
    {
        std::vector<double> times;
        for (int minute = 0; minute < 1440; ++minute)
            times.push_back(kStart + minute * 60.0);
        site.store(*station, times);
        plotix::ProgramServices(composition)
            .storeTrend({site.document, station, station->properties().objects(), Date{kStart}, Date{kStart + 86'400},
                         QStringLiteral("Day")});
    }

    void meanwhile(const std::function<void()>& client)
    {
        bool ended = false;
        std::thread thread([&] {
            client();
            MainQueue::main().async([&ended] { ended = true; });
        });
        MainQueue::main().runUntil([&ended] { return ended; });
        thread.join();
    }

    /// `address` as the window shows it, and what comes behind it.
    Answer get(const QString& address, const QString& rest = {})
    {
        const QUrl url(address + rest);
        Answer answer;
        meanwhile([&] {
            answer =
                plotix::ask(static_cast<std::uint16_t>(url.port()), "GET", url.path(QUrl::FullyEncoded).toLatin1());
        });
        return answer;
    }

    /// The view's own address below `address`.
    static QString rendering(const KTVSiteWindowController& controller, const char* extension)
    {
        const auto items = controller.itemsWithRepresentedObjectsOfClass(QStringLiteral("KTVPlotixPlugIn"));
        return items.front()->representedObject()->uniqueIdentifier() + QLatin1String(extension);
    }

    ScratchSite site;
    Composition composition;
    std::shared_ptr<plotix::SiteAgent> station;
};

class WindowWebServingTest : public ServedTrendTest {
protected:
    WindowWebServingTest()
    {
        controller = std::make_unique<plotix::SiteWindowController>(site.document, composition.module());
        controller->loadPlugIns();
        address = serving().start(*controller);
        plotix::waitForRecords(*station);
    }
    ~WindowWebServingTest() override { serving().stop(*controller); }

    plotix::WebServing& serving() { return composition.webServing(); }

    std::unique_ptr<plotix::SiteWindowController> controller;
    QString address;
};

TEST_F(WindowWebServingTest, TheAddressIsTheSitesPage)
{
    EXPECT_TRUE(address.startsWith(QStringLiteral("http://127.0.0.1:")));
    const Answer answer = get(address);
    EXPECT_EQ(answer.status, 200);
    EXPECT_TRUE(answer.body.contains("<h1>REST API for Plotix</h1>"));
    EXPECT_TRUE(answer.body.contains(rendering(*controller, ".png").toLatin1() + "\" target=\"_blank\">Day</a></h2>"));
}

TEST_F(WindowWebServingTest, AViewNobodyHasLookedAtIsDrawnToo)
{
    const Answer answer = get(address, rendering(*controller, ".png"));
    EXPECT_EQ(answer.header("Content-Type"), "image/png");
    EXPECT_EQ(QImage::fromData(answer.body, "PNG").size(), plotix::kHeadlessViewSize);
    const Answer pdf = get(address, rendering(*controller, ".pdf"));
    EXPECT_EQ(pdf.header("Content-Type"), "application/pdf");
    EXPECT_TRUE(pdf.body.startsWith("%PDF"));
}

TEST_F(WindowWebServingTest, OnlyTheExactExtensionCounts)
{
    EXPECT_EQ(get(address, rendering(*controller, ".PNG")).status, 404);
    EXPECT_EQ(get(address, rendering(*controller, ".png/")).status, 200);  // a slash at the end is passed over
    EXPECT_EQ(get(address, QStringLiteral("unknown.png")).status, 404);
}

TEST_F(WindowWebServingTest, AStoppedSiteIsGoneAndCanComeBack)
{
    serving().stop(*controller);
    serving().stop(*controller);
    address = serving().start(*controller);
    EXPECT_EQ(get(address).status, 200);
}

TEST_F(WindowWebServingTest, StartingAgainKeepsTheAddress)
{
    EXPECT_EQ(serving().start(*controller), address);
}

TEST_F(WindowWebServingTest, ItStopsWhileBrowsersWaitForTheirPictures)
{
    const QUrl url(address + rendering(*controller, ".png"));
    std::vector<std::thread> browsers;
    for (int number = 0; number < 8; ++number)
        browsers.emplace_back([url] {
            plotix::ask(static_cast<std::uint16_t>(url.port()), "GET", url.path(QUrl::FullyEncoded).toLatin1());
        });
    serving().stop(*controller);
    controller.reset();
    for (std::thread& browser : browsers)
        browser.join();
    EXPECT_EQ(get(address).status, 0);  // nobody listens any more
    controller = std::make_unique<plotix::SiteWindowController>(site.document, composition.module());
}

TEST_F(WindowWebServingTest, ATrendTakenAwayWhileItIsAskedForEndsOnTheMainThread)
{
    std::atomic<bool> isOver = false;
    bool endedOnMain = false;
    const KTVPlugIn* plugIn = controller->sourceList().plugInAt(0).get();
    QObject::connect(plugIn, &QObject::destroyed, [&] { endedOnMain = MainQueue::isMainThread(); });
    const QUrl url(address + rendering(*controller, ".png"));
    std::thread browser([&] {
        while (!isOver)
            plotix::ask(static_cast<std::uint16_t>(url.port()), "GET", url.path(QUrl::FullyEncoded).toLatin1());
    });
    int turns = 0;
    MainQueue::main().async([&] { controller->sourceList().remove(plugIn); });
    MainQueue::main().runUntil([&] { return endedOnMain || ++turns > 200; });
    isOver = true;
    serving().stop(*controller);
    browser.join();
    EXPECT_TRUE(endedOnMain);
}

class HeadlessSiteTest : public ServedTrendTest {
protected:
    HeadlessSiteTest() : headless(site.document, composition.module()) { headless.load(); }
    plotix::HeadlessSite headless;
};

TEST_F(HeadlessSiteTest, ItsViewsAreLoadedAtASensibleSizeWithTheirRecords)
{
    const auto items = headless.itemsWithRepresentedObjectsOfClass(QStringLiteral("KTVPlotixPlugIn"));
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items.front()->title(), QStringLiteral("Day"));
    EXPECT_EQ(items.front()->representedObject()->view()->size(), plotix::kHeadlessViewSize);
    EXPECT_EQ(station->siteArchiveManager()->pendingFetches(), 0);
}

TEST_F(HeadlessSiteTest, ThereIsOneToAnswerForIt)
{
    ASSERT_EQ(headless.toolbarPlugIns().size(), 1u);
    EXPECT_TRUE(headless.toolbarPlugIns().front()->inherits("KTVPlotixToolbarPlugIn"));
}

TEST_F(HeadlessSiteTest, TheSiteStaysAsItIsStored)
{
    const auto before = site.document->archivedPlugIns();
    {
        plotix::HeadlessSite another(site.document, composition.module());
        another.load();
    }
    const auto after = site.document->archivedPlugIns();
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.front().state, before.front().state);
}

TEST_F(HeadlessSiteTest, ARequestsViewsAreThoseOfTheSourceList)
{
    plotix::PlugInWebSite web(QStringLiteral("Garden"), &headless, headless.toolbarPlugIns());
    std::vector<plotix::WebView> views;
    meanwhile([&] { views = web.views(); });
    ASSERT_EQ(views.size(), 1u);
    EXPECT_EQ(views.front().title, QStringLiteral("Day"));
}

}  // namespace
