#include "hostapp/site/TrendFollower.h"

#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using plotix::Date;
using plotix::FollowSpan;
using plotix::TrendFollower;

/// A trend that shows the range it is asked for at once, or when it is told to answer.
class RangedTrend : public KTVPlugIn {
    Q_OBJECT
public:
    static std::shared_ptr<RangedTrend> make(const KTVAgentPtr& agent)
    {
        std::shared_ptr<RangedTrend> trend(new RangedTrend);
        return trend->initWithAgent(agent, nullptr) ? trend : nullptr;
    }

    Q_INVOKABLE QVariantList shownRange() const { return {from, to}; }
    Q_INVOKABLE QVariantList refreshedRange() const { return {refreshedFrom, refreshedTo}; }
    Q_INVOKABLE void showRange(double newFrom, double newTo)
    {
        ++moves;
        askedFrom = newFrom;
        askedTo = newTo;
        if (answersAtOnce)
            answer();
    }
    void answer()
    {
        from = askedFrom;
        to = askedTo;
    }

    /// The user asks for the records of the range shown; the dates become those of the first and the last of them.
    void refresh(double first, double last)
    {
        refreshedFrom = from;
        refreshedTo = to;
        from = first;
        to = last;
    }

    Q_INVOKABLE QVariantMap reading() const { return chosen; }
    Q_INVOKABLE void setReading(const QVariantMap& options) { chosen = options; }

    QVariantMap chosen;
    double from = 1000, to = 1600, askedFrom = 0, askedTo = 0, refreshedFrom = 0, refreshedTo = 0;
    int moves = 0;
    bool answersAtOnce = true;
};

class TrendFollowerTest : public testing::Test {
protected:
    TrendFollowerTest() : trend(RangedTrend::make(site.addStation())) { trend->view()->show(); }

    void follow() { follower.follow(trend); }
    void pass(double seconds)
    {
        now += seconds;
        follower.moveThoseDue();
    }
    bool isFollowed() const { return follower.isFollowing(trend.get()); }

    ScratchSite site;
    std::shared_ptr<RangedTrend> trend;
    double now = 100'000;
    TrendFollower follower{[this] { return now; }};
};

TEST_F(TrendFollowerTest, MovesTheSpanToEndNowAtOnce)
{
    follow();
    EXPECT_TRUE(isFollowed());
    EXPECT_EQ(trend->from, 99'400);
    EXPECT_EQ(trend->to, 100'000);
}

TEST_F(TrendFollowerTest, MovesEveryFewSecondsAndKeepsTheSpan)
{
    follow();
    pass(1);
    EXPECT_EQ(trend->moves, 1);
    pass(2);
    EXPECT_EQ(trend->moves, 2);
    EXPECT_EQ(trend->to, 100'003);
    EXPECT_EQ(trend->to - trend->from, 600);
}

TEST_F(TrendFollowerTest, ALongSpanMovesMoreSeldom)
{
    trend->to = trend->from + 86'400;
    follow();
    pass(30);
    EXPECT_EQ(trend->moves, 1);
    pass(31);
    EXPECT_EQ(trend->moves, 2);
}

TEST_F(TrendFollowerTest, LetsGoWhenTheUserMovesTheDates)
{
    QSignalSpy changes(&follower, &TrendFollower::followingChanged);
    follow();
    trend->from -= 60;
    trend->to -= 60;
    pass(1);
    EXPECT_FALSE(isFollowed());
    EXPECT_EQ(trend->moves, 1);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(TrendFollowerTest, AnAnswerThatTakesItsTimeIsWaitedFor)
{
    trend->answersAtOnce = false;
    follow();
    pass(10);
    EXPECT_TRUE(isFollowed());
    EXPECT_EQ(trend->moves, 1);
    trend->answer();
    pass(1);
    EXPECT_EQ(trend->moves, 2);
}

TEST_F(TrendFollowerTest, WithoutAnAnswerItAsksAgain)
{
    trend->answersAtOnce = false;
    follow();
    pass(21);
    EXPECT_EQ(trend->moves, 2);
    EXPECT_TRUE(isFollowed());
}

TEST_F(TrendFollowerTest, APanBeforeTheAnswerCountsToo)
{
    trend->answersAtOnce = false;
    follow();
    trend->from += 5;
    pass(1);
    EXPECT_FALSE(isFollowed());
}

TEST_F(TrendFollowerTest, ARefreshByTheUserIsFollowedOn)
{
    follow();
    trend->refresh(99'401, 99'990);
    pass(1);
    EXPECT_TRUE(isFollowed());
    EXPECT_EQ(trend->from, 99'401);
    EXPECT_EQ(trend->to, 100'001);
}

TEST_F(TrendFollowerTest, DatesMovedAfterARefreshAreTheUsers)
{
    follow();
    trend->refresh(99'401, 99'990);
    trend->from -= 100;
    pass(1);
    EXPECT_FALSE(isFollowed());
}

TEST_F(TrendFollowerTest, ARefreshOfDatesTheUserTypedEndsFollowing)
{
    follow();
    trend->from = 50'000;
    trend->to = 60'000;
    trend->refresh(50'001, 59'999);
    pass(1);
    EXPECT_FALSE(isFollowed());
}

TEST_F(TrendFollowerTest, ATrendNobodySeesYetIsMovedWhenItIsSeen)
{
    trend->view()->hide();
    follow();
    pass(60);
    EXPECT_TRUE(isFollowed());
    EXPECT_EQ(trend->moves, 0);
    trend->view()->show();
    pass(1);
    EXPECT_EQ(trend->to, 100'061);
}

TEST_F(TrendFollowerTest, AHiddenTrendRestsAndCatchesUp)
{
    follow();
    trend->view()->hide();
    pass(60);
    EXPECT_EQ(trend->moves, 1);
    trend->view()->show();
    pass(1);
    EXPECT_EQ(trend->to, 100'061);
}

TEST_F(TrendFollowerTest, OneThatNeverRestsMovesWhatThisScreenDoesNotShow)
{
    TrendFollower untiring([this] { return now; }, TrendFollower::Rests::Never);
    trend->view()->hide();
    untiring.follow(trend);
    now += 60;
    untiring.moveThoseDue();
    EXPECT_EQ(trend->to, 100'060);
}

TEST_F(TrendFollowerTest, HasSpansOfItsOwn)
{
    follower.follow(trend, FollowSpan::LastHour);
    EXPECT_EQ(trend->from, 96'400);
    follower.follow(trend, FollowSpan::LastDay);
    EXPECT_EQ(trend->from, 13'600);
    EXPECT_EQ(trend->to, 100'000);
    EXPECT_EQ(follower.followedSpan(trend.get()), FollowSpan::LastDay);
}

TEST_F(TrendFollowerTest, TodayIsTheWholeDayAndIsReadAgain)
{
    follower.follow(trend, FollowSpan::Today);
    EXPECT_EQ(trend->from, 86'400);
    EXPECT_EQ(trend->to, 172'800);
    pass(60);
    EXPECT_EQ(trend->moves, 2);
    now = 172'801;
    pass(60);
    EXPECT_EQ(trend->from, 172'800);
    EXPECT_TRUE(isFollowed());
}

TEST_F(TrendFollowerTest, TodayIsThatOfTheTrendsClocks)
{
    trend->setReading({{"clock", QVariantMap{{"zone", "Asia/Kathmandu"}}}});
    follower.follow(trend, FollowSpan::Today);
    EXPECT_EQ(std::fmod(trend->from + 19'800, 86'400), 0);  // five hours and a half before UTC, in 1970
    EXPECT_EQ(trend->to - trend->from, 86'400);
}

TEST_F(TrendFollowerTest, AllBeginsWithTheFirstRecord)
{
    follower.setFirstRecord([](const KTVPlugIn&) { return std::optional(500.0); });
    follower.follow(trend, FollowSpan::All);
    EXPECT_EQ(trend->from, 500);
    EXPECT_EQ(trend->to, 100'000);
}

TEST_F(TrendFollowerTest, EverySpanHasANameOfItsOwn)
{
    for (const FollowSpan span : plotix::kFollowSpans)
        EXPECT_EQ(plotix::followSpanNamed(plotix::followSpanName(span)), span);
    EXPECT_FALSE(plotix::followSpanNamed(QStringLiteral("yesterday")));
}

TEST_F(TrendFollowerTest, StopsWhenToldTo)
{
    follow();
    follower.stopFollowing(trend.get());
    pass(60);
    EXPECT_FALSE(isFollowed());
    EXPECT_EQ(trend->moves, 1);
}

TEST_F(TrendFollowerTest, ATrendThatIsGoneIsForgotten)
{
    follow();
    const KTVPlugIn* gone = trend.get();
    trend.reset();
    pass(10);
    EXPECT_FALSE(follower.isFollowing(gone));
}

TEST_F(TrendFollowerTest, AViewThatKnowsNoRangeCannotBeFollowed)
{
    KTVPlugInModule::Arguments arguments;
    arguments.agent = site.document->agents().front();
    const auto other = StubTrend::make(arguments);
    EXPECT_FALSE(TrendFollower::canFollow(other.get()));
    EXPECT_FALSE(TrendFollower::canFollow(nullptr));
    follower.follow(other);
    EXPECT_FALSE(follower.isFollowing(other.get()));
}

}  // namespace

#include "TrendFollowerTest.moc"
