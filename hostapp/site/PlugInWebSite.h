#pragma once

#include "hostapp/site/WorkingSite.h"
#include "hostapp/web/OpenSites.h"

/// A site for the web server: its plug-ins answer requests, its source list tells which views there are.
///
/// *Shares* the toolbar plug-in that answers for the site, *borrows* the site, which must stay until this is withdrawn
/// from the server. A request releases items of the source list on the main queue, because that may destroy widgets.
/// Made on the main thread; then any other thread, as WebSite says.
namespace plotix {

class PlugInWebSite : public WebSite {
public:
    /// The first of the toolbar's plug-ins is asked, before the views: it answers for all trends of the site.
    explicit PlugInWebSite(const WorkingSite& site);

    QString name() const override { return m_name; }
    std::vector<WebView> views() const override;
    QString advertisement(const QUrl& baseUrl) override;
    std::optional<WebRendering> rendering(const QUrl& url) override;

private:
    /// The source list as it is published now; released on the main queue.
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
