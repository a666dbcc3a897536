#pragma once

#include "plugins/PlotixPlugIn/host/KTVAgent.h"
#include "plugins/PlotixPlugIn/host/KTVSiteDocument.h"
#include "plugins/PlotixPlugIn/host/KTVSourceListItem.h"

#include <memory>
#include <vector>

class QWidget;

/// The site window: its window, its document, its source list of plug-in views. The host *owns* it. Main thread only,
/// except `itemsWithRepresentedObjectsOfClass`, which web requests may call from any thread.
class KTVHOST_EXPORT KTVSiteWindowController {
public:
    virtual ~KTVSiteWindowController();

    virtual QWidget* window() const = 0;  ///< borrowed; null without a window
    virtual std::shared_ptr<KTVSiteDocument> document() const = 0;
    virtual KTVAgentPtr agent() const = 0;

    /// Items whose represented object is of the class, or of a subclass; in list order.
    virtual std::vector<KTVSourceListItemPtr> itemsWithRepresentedObjectsOfClass(const QString& className) const = 0;
    virtual void addPlugIn(const std::shared_ptr<KTVPlugIn>& plugIn, bool select) = 0;
    virtual KTVSourceListItemPtr findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const = 0;
    virtual void openInSeparateWindow(const KTVSourceListItemPtr& item) = 0;
};
