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
/// A trend that is followed is moved every few seconds, as long as anybody sees it: the longer its span, the more
/// seldom, since less than a pixel shows nobody anything. It is let go as soon as its dates are others than those it
/// was moved to: the user has panned, zoomed or typed. A refresh of the span it was moved to is none of these, though
/// the dates come to stand at the first and last record then. Plug-ins are *weak*; they are moved by operations found
/// by name. Main thread only.
namespace plotix {

class TrendFollower : public QObject {
    Q_OBJECT
public:
    using Clock = std::function<double()>;  ///< seconds since 1970-01-01 UTC

    enum class Rests { WhileUnseen, Never };  ///< never: for views that are shown to others than this screen

    explicit TrendFollower(Clock clock, Rests rests = Rests::WhileUnseen);

    static bool canFollow(const KTVPlugIn* plugIn);
    bool isFollowing(const KTVPlugIn* plugIn) const;

    /// Moves it at once, or when it is first seen, its span as long as it is shown now. One that cannot be followed, or
    /// is already: nothing.
    void follow(const KTVPlugInPtr& plugIn);
    void stopFollowing(const KTVPlugIn* plugIn);

    /// Looks after every trend whose time has come; a timer does this every second while there are any.
    void moveThoseDue();

signals:
    void followingChanged();

private:
    using Range = std::pair<double, double>;
    struct Followed {
        std::weak_ptr<KTVPlugIn> plugIn;
        double span = 0;     ///< seconds
        Range asked, shown;  ///< where it was moved to last, and where it stood before the answer
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
