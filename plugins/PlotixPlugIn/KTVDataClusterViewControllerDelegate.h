#pragma once

#include "plugins/PlotixPlugIn/WeakReference.h"

#include <QtCore/QObject>

/// What the date range controller tells whoever embeds it. Held weakly by the controller. Main thread only.
///
/// The sender is the controller; callers other than the controller may pass null. `responds…` says whether the delegate
/// wants a message; the controller asks it only where the message's description says so.
class KTVDataClusterViewControllerDelegate : public WeaklyReferenced {
public:
    virtual bool respondsToDateChanged() const { return true; }
    virtual bool respondsToRefresh() const { return true; }

    /// A quick range was applied, or typing has paused. Sent only to a delegate that responds to it.
    virtual void dateChanged(QObject* sender) = 0;
    /// The button was pressed, or Return while no fetch runs. For Return alone the controller asks `responds…` first.
    virtual void refresh(QObject* sender) = 0;
    /// The button, or Return, was pressed while the button reads "Cancel". `responds…` is not asked.
    virtual void cancel(QObject* sender) = 0;
};
