#include "hostapp/document/ArchiveManager.h"
#include "hostapp/document/ArchivedReferences.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/site/HeadlessSite.h"
#include "hostapp/site/LocalWebServing.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/PlugInWebSite.h"
#include "hostapp/site/RecordsWatch.h"
#include "hostapp/site/WindowMemory.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"
#include "tests/hostapp/site/ServedTrendFixture.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

namespace plotix {
namespace {

constexpr double kStart = 1'700'000'000, kDay = 86'400;

/// One site, open in two programs: each with a document, a connection and a trend "Day" of its own.
class TwoProgramsTest : public ServedTrendTest {
protected:
    struct Program {
        Program(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module)
            : site(std::move(document), module, WorkingSite::Use::OnScreen), told(&site, &WorkingSite::changedByOthers)
        {
            site.loadPlugIns();
        }
        KTVPlugInPtr trend() const { return site.sourceList().plugInAt(0); }
        QStringList titles() const { return titlesOf(site.sourceList()); }
        QString lastTold() const { return told.isEmpty() ? QString() : told.last().first().toString(); }

        WorkingSite site;
        QSignalSpy told;
    };

    TwoProgramsTest() : here(site.document, module()), there(SiteDocument::open(site.path()), module()) {}

    static QStringList titlesOf(const SourceListModel& list)
    {
        QStringList titles;
        for (const KTVSourceListItemPtr& item : list.items())
            titles << item->title();
        titles.sort();
        return titles;
    }
    QStringList archivedTitles() const
    {
        QStringList titles;
        for (const ArchivedPlugIn& plugIn : site.document->archivedPlugIns())
            if (plugIn.className == QLatin1String("KTVPlotixPlugIn"))
                titles << titleIn(plugIn.state);
        titles.sort();
        return titles;
    }
    static bool wait(const std::function<bool()>& until) { return QTest::qWaitFor(until, 10'000); }
    void show(Program& program)
    {
        loadViewAtSize(*program.trend(), {900, 600});
        program.site.waitForRecords();
    }
    void moveSpan(Program& program)
    {
        show(program);
        showRange(program.trend().get(), kStart + 600, kStart + 6000);
        program.site.waitForRecords();
        program.site.storeAll();
    }
    static std::optional<double> lastShown(const KTVPlugIn& trend)
    {
        const std::optional<TrendSpans> spans = spansOf(&trend);
        return spans && spans->held ? std::optional(spans->held->second) : std::nullopt;
    }

    Program here, there;
};

TEST_F(TwoProgramsTest, ATitleTypedInBothIsKeptTwice)
{
    here.trend()->setTitle(QStringLiteral("Mine"));
    there.trend()->setTitle(QStringLiteral("Theirs"));
    EXPECT_TRUE(there.lastTold().contains("two programs at once")) << there.lastTold().toStdString();
    const QStringList both{"Mine (changed elsewhere)", "Theirs"};
    EXPECT_EQ(archivedTitles(), both);
    EXPECT_TRUE(wait([&] { return here.titles() == both && there.titles() == both; }));
}

TEST_F(TwoProgramsTest, ASpanMovedHereLeavesATitleTypedThere)
{
    show(here);
    there.trend()->setTitle(QStringLiteral("Theirs"));
    showRange(here.trend().get(), kStart + 600, kStart + 6000);
    here.site.storeAll();
    EXPECT_EQ(archivedTitles(), QStringList{"Theirs"});
    EXPECT_TRUE(wait([&] { return here.titles() == QStringList{"Theirs"}; }));
    EXPECT_TRUE(here.lastTold().contains("renamed the trend “Day” to “Theirs”")) << here.lastTold().toStdString();
}

TEST_F(TwoProgramsTest, ATrendDeletedThereStaysWhereItWasChangedHere)
{
    there.site.removePlugIn(there.trend());
    here.trend()->setTitle(QStringLiteral("Mine"));
    EXPECT_TRUE(here.lastTold().contains("it stays")) << here.lastTold().toStdString();
    EXPECT_EQ(archivedTitles(), QStringList{"Mine"});
    EXPECT_TRUE(wait([&] { return there.titles() == QStringList{"Mine"}; }));
    EXPECT_EQ(here.titles(), QStringList{"Mine"});
}

TEST_F(TwoProgramsTest, ATrendDeletedThereIsNotStoredAgain)
{
    show(here);
    there.site.removePlugIn(there.trend());
    moveSpan(here);
    EXPECT_TRUE(wait([&] { return here.titles().isEmpty(); }));
    EXPECT_TRUE(here.lastTold().contains("deleted the trend “Day”")) << here.lastTold().toStdString();
    EXPECT_TRUE(archivedTitles().isEmpty());
}

TEST_F(TwoProgramsTest, ATrendDeletedThereAndBroughtBackIsListedOnce)
{
    const KTVPlugInPtr trend = there.trend();
    there.site.removePlugIn(trend);
    there.site.restorePlugIn(trend, 0);
    there.trend()->setTitle(QStringLiteral("Back"));
    EXPECT_TRUE(wait([&] { return here.titles() == QStringList{"Back"}; }));
}

TEST_F(TwoProgramsTest, ATrendAddedThereIsListedAndTold)
{
    const auto agent = there.site.siteDocument()->agents().front();
    there.site.newTrend(agent, agent->properties().objects(), Date{kStart}, Date{kStart + 60}, QStringLiteral("New"));
    EXPECT_TRUE(wait([&] { return here.titles() == QStringList{"Day", "New"}; }));
    EXPECT_TRUE(here.lastTold().contains("added the trend “New”")) << here.lastTold().toStdString();
}

TEST_F(TwoProgramsTest, WhatThisProgramStoresIsNotTold)
{
    here.trend()->setTitle(QStringLiteral("Mine"));
    EXPECT_TRUE(wait([&] { return there.titles() == QStringList{"Mine"}; }));
    EXPECT_TRUE(here.told.isEmpty());
}

TEST_F(TwoProgramsTest, RecordsStoredThereAreShownHere)
{
    show(here);
    const MomentSpan dates = spansOf(here.trend().get())->dates;
    site.store(*there.site.siteDocument()->agents().front(), {kStart + kDay - 1});
    EXPECT_TRUE(wait([&] { return lastShown(*here.trend()) == kStart + kDay - 1; }));
    EXPECT_TRUE(isSameSpan(spansOf(here.trend().get())->dates, dates));
}

TEST_F(TwoProgramsTest, RecordsThatATrendDoesNotShowAreNotRead)
{
    const auto cellar = there.site.siteDocument()->addAgent(QStringLiteral("Cellar"));
    cellar->addProperty(QStringLiteral("Humidity"), QStringLiteral("%"));
    const KTVPlugInPtr minutes = here.site.newTrend(station, station->properties().objects(), Date{kStart},
                                                    Date{kStart + 595}, QStringLiteral("Minutes"));
    loadViewAtSize(*minutes, {900, 600});
    here.site.waitForRecords();
    site.store(*there.site.siteDocument()->agents().front(), {kStart + 590});
    ASSERT_TRUE(wait([&] { return lastShown(*minutes) == kStart + 590; }));
    QTest::qWait(int(RecordsWatch::restAfter({kStart, kStart + 600}).count()));
    QSignalSpy fetches(station->siteArchiveManager(), &ArchiveManager::fetchAnswered);
    QSignalSpy changed(site.document.get(), &SiteDocument::changedElsewhere);
    site.store(*cellar, {kStart + 5});
    ASSERT_TRUE(changed.wait(5'000));
    QTest::qWait(1'500);
    EXPECT_EQ(fetches.count(), 0);
}

TEST_F(TwoProgramsTest, AComputedPropertyFollowsRecordsAndFormula)
{
    const auto cellar = there.site.siteDocument()->addAgent(QStringLiteral("Cellar"));
    cellar->addProperty(QStringLiteral("Humidity"), QStringLiteral("%"));
    site.store(*cellar, {kStart + 5});
    computeProperty(site.path(), station->id(), {"Damp", {"Cellar.Humidity * 2"}});
    site.document->reload();
    const auto damp = station->siteProperties().back();
    const KTVPlugInPtr trend =
        here.site.newTrend(station, {damp}, Date{kStart}, Date{kStart + 595}, QStringLiteral("Minutes"));
    loadViewAtSize(*trend, {900, 600});
    here.site.waitForRecords();
    site.store(*cellar, {kStart + 500});
    EXPECT_TRUE(wait([&] { return lastShown(*trend) == kStart + 500; }));
    QSignalSpy fetches(station->siteArchiveManager(), &ArchiveManager::fetchAnswered);
    computeProperty(site.path(), station->id(), {"Damp", {"Cellar.Humidity / 2"}}, damp->description().id);
    EXPECT_TRUE(wait([&] { return fetches.count() > 0; }));
}

TEST(RecordsWatchTest, TheLongerTheSpanTheLaterItIsReadAgain)
{
    EXPECT_EQ(RecordsWatch::restAfter({0, 60}), std::chrono::seconds(3));
    EXPECT_EQ(RecordsWatch::restAfter({0, 10'000}), std::chrono::seconds(10));
    EXPECT_EQ(RecordsWatch::restAfter({0, 1e9}), std::chrono::seconds(60));
}

/// A site served without a window, and a program that changes it.
class ServedChangesTest : public ServedTrendTest {
protected:
    ServedChangesTest() : served(SiteDocument::open(site.path()), module())
    {
        served.load();
        served.follow();
    }
    std::unique_ptr<WorkingSite> openWindow()
    {
        auto working = std::make_unique<WorkingSite>(site.document, module(), WorkingSite::Use::OnScreen);
        working->loadPlugIns();
        return working;
    }
    KTVPlugInPtr trend(int row) const { return served.sourceList().plugInAt(row); }
    static bool wait(const std::function<bool()>& until) { return QTest::qWaitFor(until, 10'000); }

    HeadlessSite served;
};

TEST_F(ServedChangesTest, ATrendAddedIsServedWithItsRecords)
{
    const auto window = openWindow();
    window->newTrend(station, station->properties().objects(), Date{kStart}, Date{kStart + 600}, QStringLiteral("New"));
    ASSERT_TRUE(wait([&] { return served.sourceList().rowCount() == 2; }));
    EXPECT_EQ(titleOf(*trend(1)), QStringLiteral("New"));
    served.waitForRecords();
    EXPECT_FALSE(graphImage(trend(1).get(), {300, 200}, 1, {}).isNull());
}

TEST_F(ServedChangesTest, ASpanStoredElsewhereIsServed)
{
    const auto window = openWindow();
    const KTVPlugInPtr shown = window->sourceList().plugInAt(0);
    loadViewAtSize(*shown, {900, 600});
    window->waitForRecords();
    showRange(shown.get(), kStart + 600, kStart + 6000);
    window->waitForRecords();
    window->storeAll();
    const MomentSpan span{kStart + 600, kStart + 6000};
    EXPECT_TRUE(
        wait([&] { return trend(0) && shownRange(trend(0).get()) && isSameSpan(*shownRange(trend(0).get()), span); }));
}

TEST_F(ServedChangesTest, RecordsStoredElsewhereAreServed)
{
    site.store(*station, {kStart + kDay - 1});
    EXPECT_TRUE(wait([&] {
        const std::optional<TrendSpans> spans = spansOf(trend(0).get());
        return spans && spans->held && spans->held->second == kStart + kDay - 1;
    }));
}

TEST_F(ServedChangesTest, ATrendIsFollowedOnceItsWindowFollowsIt)
{
    WindowState state;
    state.followed << trend(0)->uniqueIdentifier();
    WindowMemory(site.document).store(state);
    EXPECT_TRUE(wait([&] { return served.follower().isFollowing(trend(0).get()); }));
    WindowMemory(site.document).store({});
    EXPECT_TRUE(wait([&] { return !served.follower().isFollowing(trend(0).get()); }));
}

TEST_F(ServedChangesTest, TheSitesNameIsThatOfTheMoment)
{
    const PlugInWebSite web(served);
    site.document->setSite(QStringLiteral("Orchard"), {});
    EXPECT_TRUE(wait([&] { return web.name() == QLatin1String("Orchard"); }));
}

TEST_F(ServedChangesTest, NothingOfItIsStored)
{
    site.document->setSite(QStringLiteral("Orchard"), {});
    const auto before = site.document->archivedPlugIns();
    ASSERT_TRUE(wait([&] { return served.siteDocument()->siteName() == QLatin1String("Orchard"); }));
    ASSERT_EQ(site.document->archivedPlugIns().size(), before.size());
    EXPECT_EQ(site.document->archivedPlugIns().front().state, before.front().state);
}

/// A window's site that is served to this machine.
class ServedWindowTest : public ServedTrendTest {};

TEST_F(ServedWindowTest, ATrendAddedByAnotherProgramHasAPicture)
{
    LocalWebServing serving;
    WorkingSite here(site.document, module(), WorkingSite::Use::OnScreen);
    here.loadPlugIns();
    const QString address = serving.start(here);
    WorkingSite there(SiteDocument::open(site.path()), module(), WorkingSite::Use::OnScreen);
    there.loadPlugIns();
    const auto agent = there.siteDocument()->agents().front();
    const KTVPlugInPtr added =
        there.newTrend(agent, agent->properties().objects(), Date{kStart}, Date{kStart + 600}, QStringLiteral("New"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return here.sourceList().rowCount() == 2; }, 10'000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return here.sourceList().plugInAt(1)->isViewLoaded(); }, 10'000));
    here.waitForRecords();
    EXPECT_EQ(get(address, added->uniqueIdentifier() + QStringLiteral(".png")).status, 200);
    serving.stop(here);
}

}  // namespace
}  // namespace plotix
