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
    if (const auto served = m_served.find(&site); served != m_served.end())
        m_sites.withdraw(served->second.identifier);
    site.loadViews();  // also trends that were never shown, so that browsers see them too
    auto life = std::make_unique<QObject>();
    // Posted: whoever adds a trend is not done with it yet.
    QObject::connect(
        &site.sourceList(), &QAbstractItemModel::rowsInserted, life.get(), [&site] { site.loadViews(); },
        Qt::QueuedConnection);
    const QString identifier = openToWeb(m_sites, site);
    m_served[&site] = {identifier, std::move(life)};
    return pageAddress(m_server->url(), identifier);
}

void LocalWebServing::stop(WorkingSite& site)
{
    const auto served = m_served.find(&site);
    if (served == m_served.end())
        return;
    m_sites.withdraw(served->second.identifier);
    m_served.erase(served);
    if (m_sites.isEmpty())
        m_server.reset();
}

}  // namespace plotix
