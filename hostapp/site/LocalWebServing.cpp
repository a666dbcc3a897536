#include "hostapp/site/LocalWebServing.h"

#include "base/ReportableError.h"
#include "hostapp/core/Defaults.h"
#include "hostapp/site/PlugInWebSite.h"

namespace plotix {

LocalWebServing::LocalWebServing() = default;
LocalWebServing::~LocalWebServing() = default;

void LocalWebServing::ensureServer()
{
    if (m_server)
        return;
    HttpAddress address{QString::fromLatin1(kUsualWebAddress), kUsualWebPort};
    try {
        m_server = std::make_unique<HttpServer>(m_sites, address, QByteArray());
    } catch (const ReportableError&) {  // another program, or another Plotix, has it
        address.port = 0;
        m_server = std::make_unique<HttpServer>(m_sites, address, QByteArray());
    }
}

QString LocalWebServing::start(WorkingSite& site)
{
    ensureServer();
    if (const auto served = m_identifiers.find(&site); served != m_identifiers.end())
        m_sites.withdraw(served->second);
    site.loadViews();  // also trends that were never shown, so that browsers see them too
    const QString identifier = openToWeb(m_sites, site);
    m_identifiers[&site] = identifier;
    return pageAddress(m_server->url(), identifier);
}

void LocalWebServing::stop(WorkingSite& site)
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
