#include "hostapp/site/SpanReader.h"

#include "base/ReportableError.h"
#include "hostapp/core/QuickRanges.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/WindowMemory.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"
#include "tests/hostapp/site/ServedTrendFixture.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

namespace plotix {

namespace {

/// A stored trend of the real module over a day of records, shown as a window shows it.
class SpanReaderTest : public ServedTrendTest {
protected:
    static constexpr double kStart = 1'700'000'000, kLast = kStart + 1439 * 60;

    SpanReaderTest()
    {
        KTVHostServices services;
        services.dateCreator = &quickRanges;
        servicesBefore = KTVHostServices::install(services);
    }
    ~SpanReaderTest() override { KTVHostServices::install(servicesBefore); }

    void open(WorkingSite::Use use = WorkingSite::Use::OnScreen)
    {
        working = std::make_unique<WorkingSite>(site.document, module(), use);
        working->loadPlugIns();
        trend = working->sourceList().plugInAt(0);
        loadViewAtSize(*trend, {900, 600});
        working->waitForRecords();
        fetches = std::make_unique<QSignalSpy>(station->siteArchiveManager(), &ArchiveManager::fetchAnswered);
    }
    void TearDown() override
    {
        trend.reset();
        working.reset();
    }
    TrendSpans spans() const { return *spansOf(trend.get()); }
    TrendNeed need() const { return needOf(spans(), Wanted::Covered); }
    template <class Widget>
    Widget& part(const char* name)
    {
        return *trend->view()->findChild<Widget*>(QLatin1String(name));
    }
    void press(Qt::Key key) { QTest::keyClick(&part<QWidget>("hostView"), key); }
    void chooseYesterday()
    {
        for (QAction* range : part<QPushButton>("quickDatePopupButton").menu()->actions())
            if (range->text() == QLatin1String("Yesterday"))
                range->trigger();
    }
    void type(const char* picker, double seconds)
    {
        part<QDateTimeEdit>(picker).setDateTime(QDateTime::fromMSecsSinceEpoch(qint64(seconds * 1000)));
    }
    void rest()
    {
        QTest::qWait(int(3 * SpanReader::kRest.count()));
        working->waitForRecords();
    }

    QuickRanges quickRanges;
    KTVHostServices servicesBefore;
    std::unique_ptr<WorkingSite> working;
    KTVPlugInPtr trend;
    std::unique_ptr<QSignalSpy> fetches;
};

TEST_F(SpanReaderTest, AQuickRangeIsFollowedByItsRecords)
{
    open();
    chooseYesterday();
    EXPECT_EQ(need(), TrendNeed::Show);
    EXPECT_EQ(fetches->count(), 0);
    rest();
    EXPECT_EQ(fetches->count(), 1);
    EXPECT_TRUE(isSameSpan(*spans().drawn, spans().dates));
    EXPECT_FALSE(spans().held);
}

TEST_F(SpanReaderTest, TypedDatesAreKeptAsTyped)
{
    open();
    type("fromDate", kStart - 7200);
    type("toDate", kStart + 7200);
    QTest::qWait(1000);
    rest();
    EXPECT_TRUE(isSameSpan(*spans().drawn, {kStart - 7200, kStart + 7200}));
    EXPECT_TRUE(isSameSpan(*spans().held, {kStart, kStart + 7200}));
}

TEST_F(SpanReaderTest, WhoIsStillTypingIsLeftAlone)
{
    open();
    type("fromDate", kStart - 7200);
    press(Qt::Key_F1);  // whatever else happens meanwhile
    QTest::qWait(600);
    EXPECT_EQ(fetches->count(), 0);
    EXPECT_EQ(spans().dates.first, kStart - 7200);
}

TEST_F(SpanReaderTest, ReversedDatesAreNotRead)
{
    open();
    type("fromDate", kLast + 7200);
    QTest::qWait(1000);
    rest();
    EXPECT_EQ(fetches->count(), 0);
}

TEST_F(SpanReaderTest, APanBeyondWhatWasReadIsReadOnceItRests)
{
    open();
    type("toDate", kStart + 3600);
    QTest::qWait(1000);
    rest();
    fetches->clear();
    const double hour = spans().drawn->second;
    for (int step = 0; step < 5; ++step)
        press(Qt::Key_Right);
    const MomentSpan shown = *spans().drawn;
    EXPECT_NEAR(shown.second - hour, 1800, 1);
    EXPECT_EQ(need(), TrendNeed::Read);
    rest();
    EXPECT_EQ(fetches->count(), 1);
    EXPECT_EQ(need(), TrendNeed::Nothing);
    EXPECT_TRUE(isSameSpan(*spans().drawn, shown));
    EXPECT_NEAR(spans().held->second, shown.second, 60);
}

TEST_F(SpanReaderTest, AZoomIntoWhatWasReadReadsNothing)
{
    open();
    press(Qt::Key_Plus);
    rest();
    EXPECT_EQ(fetches->count(), 0);
}

TEST_F(SpanReaderTest, WhileAGestureGoesOnNothingIsRead)
{
    open(WorkingSite::Use::Elsewhere);
    bool isHeld = true;
    SpanReader reader(SpanReader::kRest, [&isHeld] { return isHeld; });
    reader.lookAfter(trend);
    press(Qt::Key_Right);
    rest();
    EXPECT_EQ(fetches->count(), 0);
    isHeld = false;
    rest();
    EXPECT_EQ(fetches->count(), 1);
}

TEST_F(SpanReaderTest, ElsewhereNothingIsReadUnasked)
{
    open(WorkingSite::Use::Elsewhere);
    chooseYesterday();
    rest();
    EXPECT_EQ(fetches->count(), 0);
}

TEST_F(SpanReaderTest, SettlingBringsTheChosenDatesAtOnce)
{
    open();
    chooseYesterday();
    working->settle(*trend, Wanted::Exact);
    EXPECT_TRUE(isSameSpan(*spans().drawn, spans().dates));
    EXPECT_FALSE(spans().held);
}

TEST_F(SpanReaderTest, SettlingForPaperReadsNoMoreThanIsShown)
{
    open();
    press(Qt::Key_Plus);
    const TrendSpans before = spans();
    working->settle(*trend, Wanted::Covered);
    EXPECT_EQ(fetches->count(), 0);
    working->settle(*trend, Wanted::Exact);
    EXPECT_TRUE(isSameSpan(*spans().drawn, *before.drawn));
    EXPECT_TRUE(isWithin(*spans().held, spans().dates));
}

TEST_F(SpanReaderTest, SettlingReversedDatesSaysWhatToDo)
{
    open();
    type("fromDate", kLast + 7200);
    QTest::qWait(1100);
    EXPECT_THROW(working->settle(*trend, Wanted::Covered), ReportableError);
}

TEST_F(SpanReaderTest, WhoGivesUpWaitingIsToldSo)
{
    open();
    chooseYesterday();
    EXPECT_FALSE(working->settle(*trend, Wanted::Covered, [] { return false; }));
}

TEST_F(SpanReaderTest, AFollowedSpanIsRememberedWithTheSite)
{
    open();
    working->follower().follow(trend, FollowSpan::LastDay);
    WindowState state;
    state.followed = working->followedTrends();
    state.followSpans = working->followedSpans();
    WindowMemory(site.document).store(state);
    open();
    EXPECT_FALSE(working->follower().followedSpan(trend.get()));
    working->followAgain();
    EXPECT_EQ(working->follower().followedSpan(trend.get()), FollowSpan::LastDay);
}

TEST_F(SpanReaderTest, ARefreshWhileFollowingKeepsTheSpan)
{
    open(WorkingSite::Use::Elsewhere);
    working->follower().follow(trend, FollowSpan::All);
    working->waitForRecords();
    const TrendSpans followed = spans();
    EXPECT_TRUE(isSameSpan({followed.dates.first, 0}, {kStart, 0}));
    EXPECT_GT(followed.dates.second, kLast + 86'400);
    sendAction(trend.get(), "refresh", trend.get());
    working->waitForRecords();
    EXPECT_TRUE(isSameSpan(spans().dates, followed.dates));
    working->follower().stopFollowing(trend.get());
    sendAction(trend.get(), "refresh", trend.get());
    working->waitForRecords();
    EXPECT_TRUE(isSameSpan(spans().dates, {kStart, kLast}));
}

}  // namespace

}  // namespace plotix
