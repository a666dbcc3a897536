#include "hostapp/site/LocalWebServing.h"

#include "hostapp/core/Defaults.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/TrendPicture.h"
#include "storage/Database.h"
#include "tests/hostapp/site/ServedTrendFixture.h"

#include <atomic>

using plotix::Answer;
using plotix::MainQueue;
using plotix::WorkingSite;

namespace {

class LocalWebServingTest : public plotix::ServedTrendTest {
protected:
    LocalWebServingTest()
    {
        working = makeSite();
        working->loadPlugIns();
        address = serving.start(*working);
        working->waitForRecords();
    }
    ~LocalWebServingTest() override { serving.stop(*working); }

    std::unique_ptr<WorkingSite> makeSite()
    {
        return std::make_unique<WorkingSite>(site.document, module(), WorkingSite::Use::OnScreen);
    }

    std::unique_ptr<WorkingSite> working;
    plotix::LocalWebServing serving;
    QString address;
};

TEST_F(LocalWebServingTest, TheAddressIsTheSitesPage)
{
    EXPECT_TRUE(address.startsWith(QStringLiteral("http://127.0.0.1:")));
    const Answer answer = get(address);
    EXPECT_EQ(answer.status, 200);
    EXPECT_TRUE(answer.body.contains("<h1>REST API for Plotix</h1>"));
    EXPECT_TRUE(answer.body.contains(rendering(*working, ".png").toLatin1() + "\" target=\"_blank\">Day</a></h2>"));
}

TEST_F(LocalWebServingTest, ASiteOfSeveralAgentsListsEachTrendOnce)
{
    site.document->addAgent(QStringLiteral("Cellar"));
    site.document->addAgent(QStringLiteral("Roof"));
    serving.stop(*working);
    working.reset();
    working = makeSite();
    working->loadPlugIns();
    address = serving.start(*working);
    working->waitForRecords();
    ASSERT_EQ(working->toolbarPlugIns().size(), 3U);
    const Answer answer = get(address);
    EXPECT_EQ(answer.body.count("<h1>REST API for Plotix</h1>"), 1);
    EXPECT_EQ(answer.body.count(">Day</a></h2>"), 1);
}

TEST_F(LocalWebServingTest, AViewNobodyHasLookedAtIsDrawnToo)
{
    const Answer answer = get(address, rendering(*working, ".png"));
    EXPECT_EQ(answer.header("Content-Type"), "image/png");
    EXPECT_EQ(QImage::fromData(answer.body, "PNG").size(), plotix::kUsualGraphSize);
    const Answer pdf = get(address, rendering(*working, ".pdf"));
    EXPECT_EQ(pdf.header("Content-Type"), "application/pdf");
    EXPECT_TRUE(pdf.body.startsWith("%PDF"));
}

TEST_F(LocalWebServingTest, ARangeIsDrawnAndTheTrendStaysAsItIs)
{
    const QString hour = QStringLiteral("?from=2023-11-15T00:00:00.000Z&to=2023-11-15T01:00:00.000Z");
    const KTVPlugInPtr trend = working->sourceList().plugInAt(0);
    const auto before = plotix::shownRange(trend.get());
    const Answer whole = get(address, rendering(*working, ".png"));
    const Answer part = get(address, rendering(*working, ".png") + hour);
    EXPECT_EQ(part.header("Content-Type"), "image/png");
    EXPECT_EQ(QImage::fromData(part.body, "PNG").size(), plotix::kUsualGraphSize);
    EXPECT_NE(part.body, whole.body);
    EXPECT_EQ(get(address, rendering(*working, ".png") + hour).body, part.body);
    EXPECT_EQ(get(address, rendering(*working, ".png")).body, whole.body);
    EXPECT_EQ(plotix::shownRange(trend.get()), before);
    EXPECT_TRUE(get(address, rendering(*working, ".pdf") + hour).body.startsWith("%PDF"));
    EXPECT_EQ(get(address, QStringLiteral("unknown.png") + hour).status, 404);
}

TEST_F(LocalWebServingTest, ItStopsWhileRangesAreRead)
{
    const QUrl url(address + rendering(*working, ".png"));
    std::vector<std::thread> browsers;
    for (int number = 0; number < 4; ++number)
        browsers.emplace_back([url, number] {
            plotix::ask(static_cast<std::uint16_t>(url.port()), "GET",
                        url.path(QUrl::FullyEncoded).toLatin1() + "?from=2023-11-15T00:00:00Z&to=2023-11-15T0" +
                            QByteArray::number(number + 1) + ":00:00Z");
        });
    serving.stop(*working);
    working.reset();
    for (std::thread& browser : browsers)
        browser.join();
    working = makeSite();
}

TEST_F(LocalWebServingTest, OnlyTheExactExtensionCounts)
{
    EXPECT_EQ(get(address, rendering(*working, ".PNG")).status, 404);
    EXPECT_EQ(get(address, rendering(*working, ".png/")).status, 200);  // a slash at the end is ignored
    EXPECT_EQ(get(address, QStringLiteral("unknown.png")).status, 404);
}

TEST_F(LocalWebServingTest, AStoppedSiteIsGoneAndCanComeBack)
{
    serving.stop(*working);
    serving.stop(*working);
    address = serving.start(*working);
    EXPECT_EQ(get(address).status, 200);
}

TEST_F(LocalWebServingTest, StartingAgainKeepsTheAddress)
{
    EXPECT_EQ(serving.start(*working), address);
}

TEST_F(LocalWebServingTest, ItStopsWhileBrowsersWaitForTheirPictures)
{
    const QUrl url(address + rendering(*working, ".png"));
    std::vector<std::thread> browsers;
    for (int number = 0; number < 8; ++number)
        browsers.emplace_back([url] {
            plotix::ask(static_cast<std::uint16_t>(url.port()), "GET", url.path(QUrl::FullyEncoded).toLatin1());
        });
    serving.stop(*working);
    working.reset();
    for (std::thread& browser : browsers)
        browser.join();
    EXPECT_NE(get(address).status, 200);  // of whoever else may have been given the port meanwhile
    working = makeSite();
}

TEST_F(LocalWebServingTest, ATrendTakenAwayWhileItIsAskedForEndsOnTheMainThread)
{
    std::atomic<bool> isOver = false;
    bool endedOnMain = false;
    const KTVPlugIn* plugIn = working->sourceList().plugInAt(0).get();
    QObject::connect(plugIn, &QObject::destroyed, [&] { endedOnMain = MainQueue::isMainThread(); });
    const QUrl url(address + rendering(*working, ".png"));
    std::thread browser([&] {
        while (!isOver)
            plotix::ask(static_cast<std::uint16_t>(url.port()), "GET", url.path(QUrl::FullyEncoded).toLatin1());
    });
    int turns = 0;
    MainQueue::main().async([&] { working->sourceList().remove(plugIn); });
    MainQueue::main().runUntil([&] { return endedOnMain || ++turns > 200; });
    isOver = true;
    serving.stop(*working);
    browser.join();
    EXPECT_TRUE(endedOnMain);
}

/// Seventy days of minutes, too long to be read at once with so little memory, and a trend of them.
class DamagedServingTest : public plotix::ServedTrendTest {
protected:
    DamagedServingTest()
    {
        constexpr double kFirst = 1'600'000'000;
        std::vector<double> times;
        for (int minute = 0; minute < 100'000; ++minute)
            times.push_back(kFirst + minute * 60.0);
        site.store(*station, times);
        plotix::storeTrend(*module(), {site.document, station, station->properties().objects(), plotix::Date{kFirst},
                                       plotix::Date{times.back()}, QStringLiteral("Long")});
        qputenv("PLOTIX_MEMORY_BUDGET", "1 MB");
        station.reset();
        site.reopen();
        qunsetenv("PLOTIX_MEMORY_BUDGET");
        working = std::make_unique<WorkingSite>(site.document, module(), WorkingSite::Use::OnScreen);
        working->loadPlugIns();
        address = serving.start(*working);
        trend = working->sourceList().plugInAt(1);
    }
    ~DamagedServingTest() override { serving.stop(*working); }

    /// Shows the trend; its values are there to be read no more.
    void damage()
    {
        trend->view();
        working->waitForRecords();
        plotix::Database(site.path(), plotix::siteSchema(), plotix::Database::Access::ReadWrite)
            .execute("UPDATE segment SET data = zeroblob(length(data)) WHERE id % 1048576 > 0");
    }
    QByteArray picture() { return get(address, trend->uniqueIdentifier() + QStringLiteral(".png")).body; }
    QByteArray titled(const char* title)
    {
        return plotix::pictureOf(trend, {.size = QSizeF(plotix::kUsualGraphSize), .density = 1, .title = title});
    }

    std::unique_ptr<WorkingSite> working;
    plotix::LocalWebServing serving;
    QString address;
    KTVPlugInPtr trend;
};

TEST_F(DamagedServingTest, APictureThatLacksRecordsSaysSo)
{
    damage();
    EXPECT_EQ(picture(), titled("Long – some records could not be read"));
    EXPECT_NE(picture(), titled("Long"));
}

TEST_F(DamagedServingTest, ThePageSaysOfAViewThatItLacksRecords)
{
    EXPECT_FALSE(get(address).body.contains("Some records could not be read."));
    damage();
    picture();
    EXPECT_EQ(get(address).body.count("Some records could not be read."), 1);
}

}  // namespace
