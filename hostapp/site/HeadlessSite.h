#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/SourceListModel.h"
#include "hostapp/site/TrendFollower.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"
#include "plugins/PlotixPlugIn/host/KTVSiteWindowController.h"

#include <QtCore/QSize>

#include <memory>

/// A site without a window: its archived views, loaded at a sensible size and never shown.
///
/// *Shares* the document, *owns* the source list, *shares* the plug-ins, *borrows* the module. Stores nothing: the site
/// stays as it was left. Plug-ins borrow it, so it lets go of them before it ends. Main thread only, except
/// `itemsWithRepresentedObjectsOfClass`.
namespace plotix {

/// Of a view that nobody has sized, points.
inline constexpr QSize kHeadlessViewSize{1200, 600};

class HeadlessSite : public KTVSiteWindowController {
public:
    HeadlessSite(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module);
    ~HeadlessSite() override;
    HeadlessSite(const HeadlessSite&) = delete;
    HeadlessSite& operator=(const HeadlessSite&) = delete;

    /// Makes the archived views and waits until the records they show at first have arrived. Once.
    void load();
    /// From now on the trends that the site's window followed end now, as they do there. After `load`.
    void follow();
    int unreadableCount() const { return m_unreadableCount; }  ///< archived views that could not be made

    const std::shared_ptr<SiteDocument>& siteDocument() const { return m_document; }
    /// What stands behind a site window's toolbar rather than in its source list.
    const std::vector<KTVPlugInPtr>& toolbarPlugIns() const { return m_toolbarPlugIns; }

    QWidget* window() const override { return nullptr; }
    std::shared_ptr<KTVSiteDocument> document() const override { return m_document; }
    KTVAgentPtr agent() const override;  ///< the site's first; null while it has none
    std::vector<KTVSourceListItemPtr> itemsWithRepresentedObjectsOfClass(const QString& className) const override;
    void addPlugIn(const KTVPlugInPtr& plugIn, bool select) override;
    KTVSourceListItemPtr findSourceListItemWithRepresentedObject(const KTVPlugIn* plugIn) const override;
    void openInSeparateWindow(const KTVSourceListItemPtr&) override {}  ///< there are no windows

private:
    std::shared_ptr<SiteDocument> m_document;
    KTVPlugInModule* m_module;
    SourceListModel m_sourceList;
    TrendFollower m_follower;
    std::vector<KTVPlugInPtr> m_toolbarPlugIns;
    int m_unreadableCount = 0;
};

}  // namespace plotix
