#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <map>
#include <optional>
#include <utility>

/// Keeps the spans of chosen trends ending now.
///
/// A followed trend is moved every few seconds while it is visible: the longer its span, the less often, since a move
/// by less than a pixel cannot be seen. Following ends when its dates differ from those it was moved to, because the
/// user has panned, zoomed or typed. A refresh of the span it was moved to does not end it, though that sets the dates
/// to the first and last record. Plug-ins are *weak*; they are moved by operations found by name. Main thread only.
namespace plotix {

class TrendFollower : public QObject {
    Q_OBJECT
public:
    using Clock = std::function<double()>;  ///< seconds since 1970-01-01 UTC

    enum class Rests { WhileUnseen, Never };  ///< never: for views that are shown elsewhere than on this screen

    explicit TrendFollower(Clock clock, Rests rests = Rests::WhileUnseen);

    static bool canFollow(const KTVPlugIn* plugIn);
    bool isFollowing(const KTVPlugIn* plugIn) const;

    /// Moves the trend at once, or when it is first visible; its present length is kept. One that cannot be followed,
    /// or is already: nothing.
    void follow(const KTVPlugInPtr& plugIn);
    void stopFollowing(const KTVPlugIn* plugIn);

    /// Moves every trend that is due; a timer calls this every second while any is followed.
    void moveThoseDue();

signals:
    void followingChanged();

private:
    using Range = std::pair<double, double>;
    struct Followed {
        std::weak_ptr<KTVPlugIn> plugIn;
        double span = 0;     ///< seconds
        Range asked, shown;  ///< where it was moved to last, and its dates before that
        Range askedBefore;   ///< where it was moved to the time before: a refresh may answer late
        double askedAt = 0;
    };
    enum class Verdict { Keep, LetGo };
    Verdict lookAfter(Followed& followed, double now);
    bool isSeen(KTVPlugIn& plugIn) const;
    static bool isRefreshed(const KTVPlugIn& plugIn, const Followed& followed, const Range& shown);
    void move(KTVPlugIn& plugIn, Followed& followed, double now);

    Clock m_clock;
    Rests m_rests;
    std::map<const KTVPlugIn*, Followed> m_followed;
    QTimer m_timer;
};

}  // namespace plotix
