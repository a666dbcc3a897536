#include "hostapp/site/TrendFollower.h"

#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/TrendZone.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <limits>
#include <vector>

namespace plotix {

namespace {

constexpr int kFollowInterval = 1000;   // milliseconds
constexpr double kGraphPixels = 1000;   // about as many as a graph is wide
constexpr double kSoonestMove = 3;      // seconds
constexpr double kLatestMove = 60;      // seconds
constexpr double kLatestAnswer = 20;    // seconds; then it is moved again
constexpr double kShortestSpan = 10;    // seconds
constexpr double kLongestSpan = 3.0e8;  // seconds; a trend shows a little less than ten years
constexpr double kHour = 3600;          // seconds
constexpr double kDay = 86'400;         // seconds

/// A row for each span. The names are stored: never change.
struct SpanRow {
    FollowSpan span;
    const char* name;
};
constexpr SpanRow kRows[] = {{FollowSpan::PresentLength, "presentLength"},
                             {FollowSpan::LastHour, "lastHour"},
                             {FollowSpan::LastDay, "lastDay"},
                             {FollowSpan::Today, "today"},
                             {FollowSpan::All, "all"}};

/// The calendar day that holds a moment; by an invalid zone in the user's.
MomentSpan dayOf(double moment, const QTimeZone& chosen)
{
    const QTimeZone zone = chosen.isValid() ? chosen : QTimeZone::systemTimeZone();
    const QDate day = QDateTime::fromMSecsSinceEpoch(qint64(moment * 1000), zone).date();
    const auto start = [&zone](const QDate& date) { return double(date.startOfDay(zone).toMSecsSinceEpoch()) / 1000; };
    return {start(day), start(day.addDays(1))};
}

}  // namespace

QString followSpanName(FollowSpan span)
{
    const auto* row =
        std::find_if(std::begin(kRows), std::end(kRows), [span](const auto& r) { return r.span == span; });
    return QString::fromLatin1(row->name);
}

std::optional<FollowSpan> followSpanNamed(const QString& name)
{
    for (const SpanRow& row : kRows)
        if (name == QLatin1String(row.name))
            return row.span;
    return std::nullopt;
}

TrendFollower::TrendFollower(Clock clock, Rests rests) : m_clock(std::move(clock)), m_rests(rests)
{
    m_timer.setInterval(kFollowInterval);
    connect(&m_timer, &QTimer::timeout, this, &TrendFollower::moveThoseDue);
}

bool TrendFollower::canFollow(const KTVPlugIn* plugIn)
{
    return canShowRange(plugIn);
}

bool TrendFollower::isFollowing(const KTVPlugIn* plugIn) const
{
    return m_followed.contains(plugIn);
}

std::optional<FollowSpan> TrendFollower::followedSpan(const KTVPlugIn* plugIn) const
{
    const auto found = m_followed.find(plugIn);
    return found == m_followed.end() ? std::nullopt : std::optional(found->second.chosen);
}

void TrendFollower::follow(const KTVPlugInPtr& plugIn, FollowSpan chosen)
{
    if (!canFollow(plugIn.get()) || followedSpan(plugIn.get()) == chosen)
        return;
    const std::optional<Range> shown = shownRange(plugIn.get());
    if (!shown)
        return;
    constexpr double kNever = -std::numeric_limits<double>::infinity();
    const double length = std::clamp(shown->second - shown->first, kShortestSpan, kLongestSpan);
    Followed followed{plugIn, chosen, length, *shown, *shown, *shown, kNever};
    sendToReadSpans(plugIn.get(), "setSpanKept", true);
    if (isSeen(*plugIn))
        move(*plugIn, followed, m_clock());
    m_followed.insert_or_assign(plugIn.get(), followed);
    m_timer.start();
    emit followingChanged();
}

void TrendFollower::stopFollowing(const KTVPlugIn* plugIn)
{
    const auto found = m_followed.find(plugIn);
    if (found == m_followed.end())
        return;
    sendToReadSpans(found->second.plugIn.lock().get(), "setSpanKept", false);
    m_followed.erase(found);
    if (m_followed.empty())
        m_timer.stop();
    emit followingChanged();
}

void TrendFollower::moveThoseDue()
{
    const double now = m_clock();
    std::vector<const KTVPlugIn*> over;
    for (auto& [key, followed] : m_followed)
        if (lookAfter(followed, now) == Verdict::LetGo)
            over.push_back(key);
    for (const KTVPlugIn* plugIn : over)
        stopFollowing(plugIn);
}

TrendFollower::Verdict TrendFollower::lookAfter(Followed& followed, double now)
{
    const KTVPlugInPtr plugIn = followed.plugIn.lock();
    const std::optional<Range> shown = shownRange(plugIn.get());
    if (!shown)
        return Verdict::LetGo;
    const bool answered = isSameSpan(*shown, followed.asked);
    const bool waits = isSameSpan(*shown, followed.shown);
    if (!answered && !waits && !isRefreshed(*plugIn, followed, *shown))
        return Verdict::LetGo;
    if (!isSeen(*plugIn))
        return Verdict::Keep;  // it is moved when it is visible again
    const double due =
        answered ? std::clamp((followed.asked.second - followed.asked.first) / kGraphPixels, kSoonestMove, kLatestMove)
        : waits  ? kLatestAnswer
                 : 0;
    const double since = now - followed.askedAt;
    if (since >= due || since < 0)  // a clock that was set back is followed too
        move(*plugIn, followed, now);
    return Verdict::Keep;
}

bool TrendFollower::isSeen(KTVPlugIn& plugIn) const
{
    return plugIn.isViewLoaded() && plugIn.view() && (m_rests == Rests::Never || isViewVisible(plugIn));
}

/// Whether a refresh has set the dates to the records of a followed span, rather than the user.
bool TrendFollower::isRefreshed(const KTVPlugIn& plugIn, const Followed& followed, const Range& shown)
{
    const std::optional<Range> refreshed = refreshedRange(&plugIn);
    const bool isOurs =
        refreshed && (isSameSpan(*refreshed, followed.asked) || isSameSpan(*refreshed, followed.askedBefore) ||
                      isSameSpan(*refreshed, followed.shown));
    return isOurs && isWithin(shown, *refreshed);
}

TrendFollower::Range TrendFollower::rangeOf(const KTVPlugIn& plugIn, const Followed& followed, double now) const
{
    switch (followed.chosen) {
    case FollowSpan::PresentLength: break;
    case FollowSpan::LastHour: return {now - kHour, now};
    case FollowSpan::LastDay: return {now - kDay, now};
    case FollowSpan::Today: return dayOf(now, zoneOfTrend(&plugIn));
    case FollowSpan::All: {
        const std::optional<double> first = m_firstRecord ? m_firstRecord(plugIn) : std::nullopt;
        return {std::clamp(first.value_or(now - kHour), now - kLongestSpan, now - kShortestSpan), now};
    }
    }
    return {now - followed.length, now};
}

void TrendFollower::move(KTVPlugIn& plugIn, Followed& followed, double now)
{
    followed.shown = shownRange(&plugIn).value_or(followed.shown);
    followed.askedBefore = followed.asked;
    followed.asked = rangeOf(plugIn, followed, now);
    followed.askedAt = now;
    showRange(&plugIn, followed.asked.first, followed.asked.second);
}

}  // namespace plotix
