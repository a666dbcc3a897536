#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtCore/QVariant>
#include <QtGui/QUndoCommand>

#include <functional>

class QUndoStack;

namespace plotix {

/// Makes what the user changes in trends undoable: their properties, hidden lines and ranges.
///
/// A trend that offers its state as a value (`changeableState`) is looked at when the user begins to do something, and
/// again once that has come to rest: what differs becomes a command. Changes that come by themselves, such as a
/// followed trend's range or the fit after a refresh, are none of the user's, and make no command. Steps of one zoom
/// are one, and so are all steps of the value line in a row. *Borrows* the stack; the commands *share* the trends. Main
/// thread only.
class TrendHistory : public QObject {
    Q_OBJECT
public:
    using Trends = std::function<std::vector<KTVPlugInPtr>()>;
    using IsFollowed = std::function<bool(const KTVPlugIn*)>;
    using IsOurs = std::function<bool(const QWidget*)>;

    /// `trends` are those on the screen; `isOurs` says whether input to a widget may change them.
    TrendHistory(QUndoStack& stack, Trends trends, IsFollowed isFollowed, IsOurs isOurs);

    /// Makes commands of what was changed up to now.
    void settle();

    /// The state as it is counts as seen: what changed it was an undoing, or not the user.
    void adopt();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void compare(const KTVPlugInPtr& trend);

    QUndoStack& m_stack;
    Trends m_trends;
    IsFollowed m_isFollowed;
    IsOurs m_isOurs;
    QTimer m_rest;  ///< runs while the user's last input may still have effects
    QHash<const KTVPlugIn*, QVariantMap> m_seen;
};

/// From one state of a trend to another. The trend is in the later one already, so the first `redo` does nothing.
class TrendChangeCommand : public QUndoCommand {
public:
    TrendChangeCommand(TrendHistory& history, KTVPlugInPtr trend, QVariantMap before, QVariantMap after);

    void undo() override { apply(m_before); }
    void redo() override;
    int id() const override { return 1; }
    bool mergeWith(const QUndoCommand* other) override;

private:
    void apply(const QVariantMap& state);
    bool isRangeOnly() const;

    TrendHistory& m_history;
    KTVPlugInPtr m_trend;
    QVariantMap m_before, m_after;
    QElapsedTimer m_age;
    bool m_done = true;  ///< by the user, before the command was made
};

}  // namespace plotix
