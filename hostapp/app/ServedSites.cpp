#include "hostapp/app/ServedSites.h"

#include "hostapp/site/HeadlessSite.h"
#include "hostapp/site/PlugInWebSite.h"
#include "hostapp/web/HttpServer.h"
#include "hostapp/web/OpenSites.h"
#include "hostapp/window/TerminationRequest.h"

#include <QtCore/QEventLoop>
#include <QtCore/QFileInfo>

namespace plotix {

namespace {

/// Waits for a signal, which may come before there is a loop to end.
class UntilTerminated {
public:
    UntilTerminated()
    {
        QObject::connect(&m_request, &TerminationRequest::received, &m_loop, [this] {
            m_isOver = true;
            m_loop.quit();
        });
    }
    bool isOver() const { return m_isOver; }
    void wait()
    {
        if (!m_isOver)
            m_loop.exec();
    }

private:
    TerminationRequest m_request;
    QEventLoop m_loop;
    bool m_isOver = false;
};

QString addToWeb(OpenSites& open, const HeadlessSite& site)
{
    const SiteDocument& document = *site.siteDocument();
    return open.add(QFileInfo(document.path()).completeBaseName(),
                    std::make_shared<PlugInWebSite>(document.siteName(), &site, site.toolbarPlugIns()));
}

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
    UntilTerminated untilTerminated;
    const QByteArray token = request.tokenFile.isEmpty() ? QByteArray() : AccessToken::readFrom(request.tokenFile);
    // In the order of need: the server asks the open sites, and those ask what stands behind them.
    std::vector<std::unique_ptr<HeadlessSite>> sites;
    OpenSites open;
    const HttpServer server(open, {request.address, static_cast<std::uint16_t>(request.port)}, token);
    QStringList lines(server.url());
    for (const auto& document : request.documents) {
        sites.push_back(std::make_unique<HeadlessSite>(document, module));
        sites.back()->load();
        sites.back()->follow();
        if (untilTerminated.isOver())
            return;
        sayUnreadable(request, *sites.back());
        const QString identifier = addToWeb(open, *sites.back());
        lines << QStringLiteral("%1sites/%2/  %3").arg(server.url(), identifier, document->siteName());
    }
    for (const QString& line : lines)
        request.say(line);
    if (!token.isEmpty())
        request.say(QStringLiteral("Browsers need the token in %1: add ?token= and its first line to an address.")
                        .arg(request.tokenFile));
    untilTerminated.wait();
}

}  // namespace plotix
