#pragma once

#include "hostapp/web/WebSites.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

/// A site on the web: its plug-ins are asked, its source list tells what there is to see.
///
/// *Shares* the plug-ins, *borrows* the site window controller, which must stay until the site is withdrawn. What a
/// request takes from the source list it gives back on the main queue, where widgets may end. Any thread but the main
/// one, as WebSite.
namespace plotix {

class PlugInWebSite : public WebSite {
public:
    /// `plugIns` are asked beside those of the source list, and first; a null among them is passed over.
    PlugInWebSite(QString name, const KTVSiteWindowController* controller, std::vector<KTVPlugInPtr> plugIns);

    QString name() const override { return m_name; }
    std::vector<WebView> views() const override;
    QString advertisement(const QUrl& baseUrl) override;
    std::optional<WebRendering> rendering(const QUrl& url) override;

private:
    /// The source list as it is published just now; lets go of it on the main queue.
    class Listed;

    QString m_name;
    const KTVSiteWindowController* m_controller;
    std::vector<KTVPlugInPtr> m_plugIns;
};

/// A new plug-in of the module's that answers for all trends of a site; null when the site has no agent, or the module
/// no such class.
KTVPlugInPtr makeToolbarPlugIn(KTVPlugInModule& module, KTVSiteWindowController& controller);

}  // namespace plotix
