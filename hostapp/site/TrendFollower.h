#pragma once

#include "hostapp/site/TrendSpans.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <map>
#include <optional>

/// Keeps chosen trends showing what is recorded now.
///
/// A followed trend is moved every few seconds while it is visible: the longer its span, the less often, since a move
/// by less than a pixel cannot be seen. Its span is the one that was chosen, however little of it holds records.
/// Following ends when its dates differ from those it was moved to, because the user has panned, zoomed or typed. A
/// refresh of the span it was moved to does not end it and leaves the span as it is; where the trend shrinks it to its
/// records all the same, it is moved back. Plug-ins are *weak*; they are moved by operations found by name. Main thread
/// only.
namespace plotix {

/// What a followed trend shows.
enum class FollowSpan {
    PresentLength,  ///< as much as it showed when following began, ending now
    LastHour,       ///< ending now
    LastDay,        ///< 24 hours, ending now
    Today,          ///< the whole calendar day, also what is still to come of it
    All             ///< from the agent's first record to now, at most as much as a trend can show
};
inline constexpr FollowSpan kFollowSpans[] = {FollowSpan::PresentLength, FollowSpan::LastHour, FollowSpan::LastDay,
                                              FollowSpan::Today, FollowSpan::All};

/// "presentLength", "lastHour", "lastDay", "today", "all". Stored: never change.
QString followSpanName(FollowSpan span);
std::optional<FollowSpan> followSpanNamed(const QString& name);

class TrendFollower : public QObject {
    Q_OBJECT
public:
    using Clock = std::function<double()>;  ///< seconds since 1970-01-01 UTC
    /// When the first record of a trend's agent was made; nothing: there is none.
    using FirstRecord = std::function<std::optional<double>(const KTVPlugIn&)>;

    enum class Rests { WhileUnseen, Never };  ///< never: for views that are shown elsewhere than on this screen

    explicit TrendFollower(Clock clock, Rests rests = Rests::WhileUnseen);

    static bool canFollow(const KTVPlugIn* plugIn);
    bool isFollowing(const KTVPlugIn* plugIn) const;
    std::optional<FollowSpan> followedSpan(const KTVPlugIn* plugIn) const;  ///< nothing: it is not followed
    void setFirstRecord(FirstRecord firstRecord) { m_firstRecord = std::move(firstRecord); }

    /// Moves the trend at once, or when it is first visible. One that cannot be followed, or is already like that:
    /// nothing.
    void follow(const KTVPlugInPtr& plugIn, FollowSpan span = FollowSpan::PresentLength);
    void stopFollowing(const KTVPlugIn* plugIn);

    /// Moves every trend that is due; a timer calls this every second while any is followed.
    void moveThoseDue();

signals:
    void followingChanged();

private:
    using Range = MomentSpan;
    struct Followed {
        std::weak_ptr<KTVPlugIn> plugIn;
        FollowSpan chosen;
        double length = 0;   ///< seconds, of the present length
        Range asked, shown;  ///< where it was moved to last, and its dates before that
        Range askedBefore;   ///< where it was moved to the time before: a refresh may answer late
        double askedAt = 0;
    };
    enum class Verdict { Keep, LetGo };
    Verdict lookAfter(Followed& followed, double now);
    bool isSeen(KTVPlugIn& plugIn) const;
    static bool isRefreshed(const KTVPlugIn& plugIn, const Followed& followed, const Range& shown);
    Range rangeOf(const KTVPlugIn& plugIn, const Followed& followed, double now) const;
    void move(KTVPlugIn& plugIn, Followed& followed, double now);

    Clock m_clock;
    FirstRecord m_firstRecord;
    Rests m_rests;
    std::map<const KTVPlugIn*, Followed> m_followed;
    QTimer m_timer;
};

}  // namespace plotix
