#include "hostapp/site/TrendFollower.h"

#include "hostapp/site/PlugInOperations.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace plotix {

namespace {

constexpr int kLookInterval = 1000;     // milliseconds
constexpr double kPixels = 1000;        // about as many as a graph is wide
constexpr double kSoonestMove = 3;      // seconds
constexpr double kLatestMove = 60;      // seconds
constexpr double kLatestAnswer = 20;    // seconds; then it is moved again
constexpr double kShortestSpan = 10;    // seconds
constexpr double kLongestSpan = 3.0e8;  // seconds; a trend shows a little less than ten years
constexpr double kSameMoment = 0.01;    // seconds; a range is stored as location and length, which rounds its end

bool isSame(const std::pair<double, double>& one, const std::pair<double, double>& other)
{
    return std::abs(one.first - other.first) < kSameMoment && std::abs(one.second - other.second) < kSameMoment;
}

}  // namespace

TrendFollower::TrendFollower(Clock clock, Rests rests) : m_clock(std::move(clock)), m_rests(rests)
{
    m_timer.setInterval(kLookInterval);
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

void TrendFollower::follow(const KTVPlugInPtr& plugIn)
{
    if (!canFollow(plugIn.get()) || isFollowing(plugIn.get()))
        return;
    const std::optional<Range> shown = shownRange(plugIn.get());
    if (!shown)
        return;
    constexpr double kNever = -std::numeric_limits<double>::infinity();
    const double span = std::clamp(shown->second - shown->first, kShortestSpan, kLongestSpan);
    Followed followed{plugIn, span, *shown, *shown, *shown, kNever};
    if (isSeen(*plugIn))
        move(*plugIn, followed, m_clock());
    m_followed.emplace(plugIn.get(), followed);
    m_timer.start();
    emit followingChanged();
}

void TrendFollower::stopFollowing(const KTVPlugIn* plugIn)
{
    if (m_followed.erase(plugIn) == 0)
        return;
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
    const bool answered = isSame(*shown, followed.asked);
    const bool waits = isSame(*shown, followed.shown);
    if (!answered && !waits && !isRefreshed(*plugIn, followed, *shown))
        return Verdict::LetGo;
    if (!isSeen(*plugIn))
        return Verdict::Keep;  // it is moved when it is visible again
    const double due = answered ? std::clamp(followed.span / kPixels, kSoonestMove, kLatestMove)
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
    const bool isOurs = refreshed && (isSame(*refreshed, followed.asked) || isSame(*refreshed, followed.askedBefore) ||
                                      isSame(*refreshed, followed.shown));
    return isOurs && shown.first >= refreshed->first - kSameMoment && shown.second <= refreshed->second + kSameMoment;
}

void TrendFollower::move(KTVPlugIn& plugIn, Followed& followed, double now)
{
    followed.shown = shownRange(&plugIn).value_or(followed.shown);
    followed.askedBefore = followed.asked;
    followed.asked = {now - followed.span, now};
    followed.askedAt = now;
    showRange(&plugIn, followed.asked.first, followed.asked.second);
}

}  // namespace plotix
