#include "hostapp/app/WindowWebServing.h"

#include "base/ReportableError.h"
#include "hostapp/site/HeadlessSite.h"
#include "hostapp/site/PlugInWebSite.h"
#include "hostapp/window/SiteWindowController.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

constexpr std::uint16_t kUsualPort = 8123;  // so that a browser's bookmark finds the site again

/// Trends that nobody has looked at yet have no size and no records; browsers are to see them too.
void loadViews(const SiteWindowController& site)
{
    for (const KTVSourceListItemPtr& item : site.itemsWithRepresentedObjectsOfClass(QStringLiteral("KTVPlugIn"))) {
        const KTVPlugInPtr plugIn = item->representedObject();
        if (!plugIn->isViewLoaded())
            plugIn->view()->resize(kHeadlessViewSize);
    }
}

}  // namespace

WindowWebServing::WindowWebServing() = default;
WindowWebServing::~WindowWebServing() = default;

void WindowWebServing::ensureServer()
{
    if (m_server)
        return;
    try {
        m_server =
            std::make_unique<HttpServer>(m_sites, HttpAddress{QStringLiteral("127.0.0.1"), kUsualPort}, QByteArray());
    } catch (const ReportableError&) {  // another program, or another Plotix, has it
        m_server = std::make_unique<HttpServer>(m_sites, HttpAddress{}, QByteArray());
    }
}

QString WindowWebServing::start(SiteWindowController& site)
{
    ensureServer();
    if (const auto served = m_identifiers.find(&site); served != m_identifiers.end())
        m_sites.withdraw(served->second);
    loadViews(site);
    const SiteDocument& document = *site.siteDocument();
    const auto onWeb = std::make_shared<PlugInWebSite>(document.siteName(), &site, site.toolbarPlugIns());
    const QString identifier = m_sites.add(QFileInfo(document.path()).completeBaseName(), onWeb);
    m_identifiers[&site] = identifier;
    return QStringLiteral("%1sites/%2/").arg(m_server->url(), identifier);
}

void WindowWebServing::stop(SiteWindowController& site)
{
    const auto served = m_identifiers.find(&site);
    if (served == m_identifiers.end())
        return;
    m_sites.withdraw(served->second);
    m_identifiers.erase(served);
    if (m_sites.isEmpty())
        m_server.reset();
}

}  // namespace plotix
