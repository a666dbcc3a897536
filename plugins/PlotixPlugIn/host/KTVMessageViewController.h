#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <memory>

/// An overlay that shows one centred message over a view.
///
/// Whoever made it *owns* it; its view is deleted with it. Main thread only.
class KTVHOST_EXPORT KTVMessageViewController {
public:
    virtual ~KTVMessageViewController();

    /// A new overlay, made by the installed host.
    static std::unique_ptr<KTVMessageViewController> create();

    /// Puts the overlay's view over `view`, centred there also after `view` is resized, showing the message.
    /// A null view: nothing happens.
    virtual void centerOnView(QWidget* view, const QString& message) = 0;

    virtual QWidget* view() const = 0;
};

/// Takes a view out of the view that holds it, hidden and without parent. Null, or no parent: nothing happens.
KTVHOST_EXPORT void removeFromSuperview(QWidget* view);
