#pragma once

#include "hostapp/site/TrendSpans.h"

#include <QtCore/QObject>

#include <chrono>
#include <functional>

/// Reads the records that trends are to show, once the user has stopped moving them.
///
/// A chosen range, a typed date, a pan or a zoom only move dates and graph. When the change has settled, what is
/// missing is read quietly: nothing goes busy, and what the user does meanwhile counts. A range that was asked for once
/// is not asked for again until another one was: an answer that failed is left to Refresh, which says what is wrong.
///
/// Plug-ins are *weak*; one that cannot tell its spans is left alone. Main thread only.
namespace plotix {

class SpanReader : public QObject {
    Q_OBJECT
public:
    using IsMoving = std::function<bool()>;  ///< whether a gesture is under way, however long it rests

    static constexpr std::chrono::milliseconds kRest{300};

    /// By default a gesture is under way while a mouse button is held.
    explicit SpanReader(std::chrono::milliseconds rest = kRest, IsMoving isMoving = {});

    /// From now on, as long as both live.
    void lookAfter(const KTVPlugInPtr& plugIn);

private:
    void readWhatIsMissing(KTVPlugIn& plugIn, std::optional<MomentSpan>& lastAsked);

    std::chrono::milliseconds m_rest;
    IsMoving m_isMoving;
};

}  // namespace plotix
