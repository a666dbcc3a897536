#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QObject>

#include <functional>

class QKeyEvent;

/// The keys that the menus name for the trend in front, wherever in its window the focus is.
///
/// A trend's own keys, single letters mostly, count in its graph. With a list, a table or a button in focus they would
/// do nothing, or search the list. Here they reach the trend from there too, but not from a field that is typed into,
/// nor where the focused widget has a use of its own for them, as a button for the space bar. The site window *owns*
/// it. Main thread only.
namespace plotix {

class TrendKeys : public QObject {
    Q_OBJECT
public:
    /// `inFront` answers the trend that the menus act on; it may be null.
    explicit TrendKeys(std::function<KTVPlugInPtr()> inFront);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isMeantForTrend(const QWidget& focus, KTVPlugIn& trend) const;

    std::function<KTVPlugInPtr()> m_inFront;
};

}  // namespace plotix
