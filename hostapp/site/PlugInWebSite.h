#pragma once

#include "hostapp/site/WorkingSite.h"
#include "hostapp/web/OpenSites.h"

#include <mutex>

/// A site for the web server: its plug-ins answer requests, its source list tells which views there are.
///
/// *Shares* the toolbar plug-in that answers for the site, *borrows* the site, which must stay until this is withdrawn
/// from the server; its name and that plug-in are those of the moment. A request releases items of the source list on
/// the main queue, because that may destroy widgets. Made on the main thread; then any other thread, as WebSite says.
namespace plotix {

class PlugInWebSite : public WebSite {
public:
    /// The first of the toolbar's plug-ins is asked, before the views: it answers for all trends of the site.
    explicit PlugInWebSite(const WorkingSite& site);

    QString name() const override;
    std::vector<WebView> views() const override;
    std::vector<WebView> viewsWithFootnotes() const override;
    QString advertisement(const QUrl& baseUrl) override;
    std::optional<WebRendering> rendering(const QUrl& url) override;
    std::optional<WebRendering> renderingOver(const WebRange& range, const QUrl& url) override;

private:
    /// The source list as it is published now; released on the main queue.
    class Listed;

    /// What may change while the site is served; set on the main thread.
    struct Present {
        mutable std::mutex mutex;  ///< guards the rest
        QString name;
        KTVPlugInPtr toolbarPlugIn;  ///< null when the site has none
    };
    static void bringUpToDate(Present& present, const WorkingSite& site);
    KTVPlugInPtr toolbarPlugIn() const;

    const WorkingSite& m_site;  // asked on the main queue alone
    const SourceListModel& m_sourceList;
    std::shared_ptr<Present> m_present = std::make_shared<Present>();
    QObject m_life;  ///< of the connections to the site
};

/// Opens the site to the web under the name of its file; answers its identifier there. Main thread only.
QString openToWeb(OpenSites& sites, const WorkingSite& site);

/// The address of an open site's page on the server at `server`, which ends in a slash.
QString pageAddress(const QString& server, const QString& identifier);

}  // namespace plotix
