#pragma once

#include "hostapp/site/WorkingSite.h"
#include "hostapp/web/OpenSites.h"

/// A site on the web: its plug-ins are asked, its source list tells what there is to see.
///
/// *Shares* the plug-in that answers for the site, *borrows* the site, which must stay until it is withdrawn. What a
/// request takes from the source list it gives back on the main queue, where widgets may end. Made on the main thread;
/// then any thread but that one, as WebSite.
namespace plotix {

class PlugInWebSite : public WebSite {
public:
    /// Of the toolbar's plug-ins the first is asked, before the views: each of them answers for all trends of the site.
    explicit PlugInWebSite(const WorkingSite& site);

    QString name() const override { return m_name; }
    std::vector<WebView> views() const override;
    QString advertisement(const QUrl& baseUrl) override;
    std::optional<WebRendering> rendering(const QUrl& url) override;

private:
    /// The source list as it is published just now; lets go of it on the main queue.
    class Listed;

    QString m_name;
    const SourceListModel& m_sourceList;
    KTVPlugInPtr m_toolbarPlugIn;  ///< null when the site has none
};

/// Opens the site to the web under the name of its file; answers its identifier there. Main thread only.
QString openToWeb(OpenSites& sites, const WorkingSite& site);

/// The address of an open site's page on the server at `server`, which ends in a slash.
QString pageAddress(const QString& server, const QString& identifier);

}  // namespace plotix
