#pragma once

#include "plugins/PlotixPlugIn/WeakReference.h"

#include <QtCore/QObject>

/// What the date range controller tells whoever embeds it. Held weakly by the controller. Main thread only.
///
/// The sender is the controller; operations that call these on their own behalf may pass none. `responds…` says whether
/// the delegate wants a message at all; the controller asks where the message's description says so.
class KTVDataClusterViewControllerDelegate : public WeaklyReferenced {
public:
    virtual bool respondsToDateChanged() const { return true; }
    virtual bool respondsToRefresh() const { return true; }

    /// A quick range was applied, or typing has paused. Sent only to a delegate that responds to it.
    virtual void dateChanged(QObject* sender) = 0;
    /// The button was pressed (unchecked), or Return while no fetch runs (only if the delegate responds to it).
    virtual void refresh(QObject* sender) = 0;
    /// The button, or Return, was pressed while the button reads "Cancel"; unchecked.
    virtual void cancel(QObject* sender) = 0;
};
