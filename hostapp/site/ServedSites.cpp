#include "hostapp/site/ServedSites.h"

#include "base/StopRequest.h"
#include "hostapp/site/HeadlessSite.h"
#include "hostapp/site/PlugInWebSite.h"
#include "hostapp/web/HttpServer.h"

namespace plotix {

namespace {

void sayUnreadable(const ServeRequest& request, const HeadlessSite& site)
{
    if (site.unreadableCount() > 0)
        request.say(QStringLiteral("%1 view(s) of %2 cannot be read by this version")
                        .arg(site.unreadableCount())
                        .arg(site.siteDocument()->path()));
}

}  // namespace

void serveSites(const ServeRequest& request, KTVPlugInModule* module)
{
    StopRequest stop;  // first: a request may come while the views are loaded
    const QByteArray token = request.tokenFile.isEmpty() ? QByteArray() : AccessToken::readFrom(request.tokenFile);
    // Declared in this order because the server borrows the open sites, and those borrow the sites here.
    std::vector<std::unique_ptr<HeadlessSite>> sites;
    OpenSites open;
    const HttpServer server(open, {request.address, static_cast<std::uint16_t>(request.port)}, token);
    QStringList lines(server.url());
    for (const auto& document : request.documents) {
        QObject::connect(document.get(), &SiteDocument::replaced, document.get(), request.say);
        sites.push_back(std::make_unique<HeadlessSite>(document, module));
        sites.back()->load();
        sites.back()->follow();
        if (StopRequest::isRequested())
            return;
        sayUnreadable(request, *sites.back());
        const QString page = pageAddress(server.url(), openToWeb(open, *sites.back()));
        lines << page + QStringLiteral("  ") + document->siteName();
    }
    for (const QString& line : lines)
        request.say(line);
    if (!token.isEmpty())
        request.say(QStringLiteral("Browsers need the token in %1: add ?token= and its first line to an address.")
                        .arg(request.tokenFile));
    stop.wait();
}

}  // namespace plotix
